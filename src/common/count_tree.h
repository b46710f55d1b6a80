// Counts at places 0, 1, 2, …: how many stand before a place, and which place holds the n-th, both
// in logarithmic time while counts change.
//
// Turns the index of a live record into its place among dead ones and back. Only growing allocates
// (std::bad_alloc, tree unchanged).
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tq {

class CountTree {
 public:
  CountTree() = default;
  // `places` places, each counting `each`.
  CountTree(std::size_t places, std::uint32_t each) {
    sums_.reserve(places + 1);
    while (size() < places) append(each);
  }

  std::size_t size() const { return sums_.size() - 1; }

  // After this one place can be appended without allocating.
  void make_room() {
    if (sums_.size() == sums_.capacity()) sums_.reserve(sums_.size() * 2);
  }

  // A new last place.
  void append(std::uint32_t count) {
    const std::size_t place = sums_.size();
    for (std::size_t step = 1; (place & step) == 0; step *= 2) count += sums_[place - step];
    sums_.push_back(count);
  }

  void add(std::size_t place, std::uint32_t count) noexcept {
    for (++place; place < sums_.size(); place += place & (~place + 1)) sums_[place] += count;
  }
  void subtract(std::size_t place, std::uint32_t count) noexcept { add(place, 0U - count); }

  // The sum of all places before this one.
  std::uint32_t before(std::size_t place) const noexcept {
    std::uint32_t sum = 0;
    for (; place > 0; place &= place - 1) sum += sums_[place];
    return sum;
  }

  // The place that holds the n-th count from 0; there must be more than n.
  std::size_t find(std::uint32_t n) const noexcept {
    std::size_t place = 0;
    for (std::size_t step = std::bit_floor(size()); step > 0; step /= 2) {
      if (place + step > size() || sums_[place + step] > n) continue;
      place += step;
      n -= sums_[place];
    }
    return place;
  }

 private:
  std::vector<std::uint32_t> sums_{0};  // entry i: the sum of the (i & -i) places that end at i - 1
};

}  // namespace tq
