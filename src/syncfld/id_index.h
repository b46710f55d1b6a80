// Places by field id, in constant time: the first place that was noted for an id.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace tq {

class IdIndex {
 public:
  // Notes a place unless the id has one.
  void add(short fldId, std::int32_t place) {
    const auto id = static_cast<std::uint16_t>(fldId);
    if (id >= places_.size()) places_.resize(std::size_t{id} + 1, kNone);
    if (places_[id] == kNone) places_[id] = place;
  }
  // -1 when the id has none.
  std::int32_t find(short fldId) const {
    const auto id = static_cast<std::uint16_t>(fldId);
    return id < places_.size() ? places_[id] : kNone;
  }
  void clear() { places_.clear(); }

 private:
  static constexpr std::int32_t kNone = -1;

  std::vector<std::int32_t> places_;
};

}  // namespace tq
