// The orders that the documented sorts give, ties included, without their cost where it cannot be
// seen.
//
// Both sorts are quadratic and unstable, and what they do to equal keys is visible to callers.
// Where all keys differ, or the input is in order already, a fast sort gives the same result; only
// ties in disorder need the sort itself. Each function returns the places: entry i is the old index
// of what comes to place i. `before(a, b)` says whether the key at old index a sorts strictly
// before the one at b.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

namespace tq {

namespace sorting_detail {

enum class Input { kInOrder, kDistinct, kTies };

// Fills `order` with 0..n-1, sorted unless they are in order already.
template <class Before>
Input prepare(std::vector<std::uint32_t>& order, Before before) {
  std::iota(order.begin(), order.end(), 0U);
  const auto less = [&](std::uint32_t a, std::uint32_t b) { return before(a, b); };
  if (std::is_sorted(order.begin(), order.end(), less)) return Input::kInOrder;
  std::stable_sort(order.begin(), order.end(), less);
  const auto tie = std::adjacent_find(order.begin(), order.end(), [&](auto a, auto b) {
    return !before(a, b);  // in sorted order this means equal keys
  });
  if (tie == order.end()) return Input::kDistinct;
  std::iota(order.begin(), order.end(), 0U);
  return Input::kTies;
}

}  // namespace sorting_detail

// For i ascending, for j > i: entries i and j change places whenever j's key is before i's.
template <class Before>
std::vector<std::uint32_t> exchange_order(std::size_t n, Before before) {
  std::vector<std::uint32_t> order(n);
  if (sorting_detail::prepare(order, before) != sorting_detail::Input::kTies) return order;
  for (std::size_t i = 0; i + 1 < n; ++i) {
    for (std::size_t j = i + 1; j < n; ++j) {
      if (before(order[j], order[i])) std::swap(order[i], order[j]);
    }
  }
  return order;
}

// For i ascending: the first smallest entry from i on changes places with entry i.
template <class Before>
std::vector<std::uint32_t> selection_order(std::size_t n, Before before) {
  std::vector<std::uint32_t> order(n);
  if (sorting_detail::prepare(order, before) != sorting_detail::Input::kTies) return order;
  for (std::size_t i = 0; i + 1 < n; ++i) {
    std::size_t smallest = i;
    for (std::size_t j = i + 1; j < n; ++j) {
      if (before(order[j], order[smallest])) smallest = j;
    }
    std::swap(order[i], order[smallest]);
  }
  return order;
}

}  // namespace tq
