// The orders that the documented sorts give, ties included, without their cost.
//
// Both sorts are quadratic and unstable, and what they do to equal keys is visible to callers.
// Where all keys differ, or the input is in order already, a fast sort gives the same result. Ties
// in disorder take the exchange sort's own turns, worked out without running it; the selection sort
// is run as it is, since its tables are short. Each function returns the places: entry i is the old
// index of what comes to place i. `before(a, b)` says whether the key at old index a sorts strictly
// before the one at b.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "common/count_tree.h"

namespace tq {

namespace sorting_detail {

enum class Input { kInOrder, kDistinct, kTies };

// Fills `order` with 0..n-1 in sorted order, equal keys by their index.
template <class Before>
Input prepare(std::vector<std::uint32_t>& order, Before before) {
  std::iota(order.begin(), order.end(), 0U);
  const auto less = [&](std::uint32_t a, std::uint32_t b) { return before(a, b); };
  if (std::is_sorted(order.begin(), order.end(), less)) return Input::kInOrder;
  std::stable_sort(order.begin(), order.end(), less);
  const auto tie = std::adjacent_find(order.begin(), order.end(), [&](auto a, auto b) {
    return !before(a, b);  // in sorted order this means equal keys
  });
  return tie == order.end() ? Input::kDistinct : Input::kTies;
}

// Puts entries of one key, given by rising place, into the order in which the exchange sort leaves
// them.
//
// While the sort takes the smaller keys to the front, one in each pass, it moves the first entry of
// our key behind those of its kind that stand before the first smaller key; and the places of the
// smaller keys, as a set, lose exactly their first one in each pass. So between the m-th and the
// next entry of our kind as many left turns of the first m entries happen as smaller keys stand
// there at the start. Walking these turns back from the last one tells where each entry ends.
inline void turn_ties(std::span<std::uint32_t> entries, const CountTree& smaller) {
  const std::vector<std::uint32_t> from(entries.begin(), entries.end());
  CountTree free_places(from.size(), 1);
  std::size_t first = 0;  // where, among the free places, the m entries begin
  std::uint32_t behind = smaller.before(smaller.size());
  for (std::size_t m = from.size(); m > 0; --m) {
    const std::uint32_t until_here = smaller.before(from[m - 1]);
    const std::size_t turns = (behind - until_here) % m;
    behind = until_here;
    const std::size_t rank = (first + 2 * m - 1 - turns) % m;
    const std::size_t place = free_places.find(static_cast<std::uint32_t>(rank));
    entries[place] = from[m - 1];
    free_places.subtract(place, 1);
    first = rank == m - 1 ? 0 : rank;
  }
}

}  // namespace sorting_detail

// For i ascending, for j > i: entries i and j change places whenever j's key is before i's.
template <class Before>
std::vector<std::uint32_t> exchange_order(std::size_t n, Before before) {
  std::vector<std::uint32_t> order(n);
  if (sorting_detail::prepare(order, before) != sorting_detail::Input::kTies) return order;
  CountTree smaller(n, 0);
  for (std::size_t begin = 0, end = 0; begin < n; begin = end) {
    end = begin + 1;
    while (end < n && !before(order[begin], order[end])) ++end;
    const std::span<std::uint32_t> equal(order.data() + begin, end - begin);
    if (equal.size() > 1) sorting_detail::turn_ties(equal, smaller);
    for (const std::uint32_t place : equal) smaller.add(place, 1);
  }
  return order;
}

// For i ascending: the first smallest entry from i on changes places with entry i.
template <class Before>
std::vector<std::uint32_t> selection_order(std::size_t n, Before before) {
  std::vector<std::uint32_t> order(n);
  if (sorting_detail::prepare(order, before) != sorting_detail::Input::kTies) return order;
  std::iota(order.begin(), order.end(), 0U);
  for (std::size_t i = 0; i + 1 < n; ++i) {
    std::size_t smallest = i;
    for (std::size_t j = i + 1; j < n; ++j) {
      if (before(order[j], order[smallest])) smallest = j;
    }
    std::swap(order[i], order[smallest]);
  }
  return order;
}

// Brings what `exchange(i, j)` exchanges, one or several tables at once, into such an order without
// another copy of it. `order` is used up.
template <class Exchange>
void apply_order(std::vector<std::uint32_t>& order, Exchange exchange) {
  for (std::uint32_t start = 0; start < order.size(); ++start) {
    std::uint32_t place = start;
    while (order[place] != start) {
      const std::uint32_t from = std::exchange(order[place], place);
      exchange(place, from);
      place = from;
    }
    order[place] = place;
  }
}

}  // namespace tq
