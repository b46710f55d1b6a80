// Growable tables of plain records, one zero-filled block each.
//
// The capacity of a table lives in a spare field of its first record, because tables cross the
// interface as bare arrays. Everything that moves records therefore goes through here: this is the
// one guardian of that field. Single-threaded; a failed growth leaves the table as it was.
#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <limits>
#include <span>
#include <type_traits>
#include <utility>

#include "common/table_memory.h"

namespace tq {

// What a table must know about its records: `kBlock`, the records per growth step, and `capacity`,
// which field of the first record holds the capacity.
template <class T>
struct RecordTraits;

template <class T>
concept TableRecord = std::is_trivially_copyable_v<T> &&
    std::convertible_to<decltype(RecordTraits<T>::kBlock), std::size_t> &&
    std::integral<std::remove_cvref_t<decltype(RecordTraits<T>::capacity(std::declval<T&>()))>>;

template <TableRecord T>
class RecordTable {
 public:
  RecordTable() = default;
  ~RecordTable() { clear(); }
  RecordTable(RecordTable&& other) noexcept { swap(other); }
  RecordTable& operator=(RecordTable&& other) noexcept {
    swap(other);
    return *this;
  }
  RecordTable(const RecordTable&) = delete;
  RecordTable& operator=(const RecordTable&) = delete;

  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }
  // Good until the next growth. Null while nothing was ever allocated.
  T* data() { return rows_; }
  const T* data() const { return rows_; }
  T& operator[](std::size_t index) { return rows_[index]; }
  const T& operator[](std::size_t index) const { return rows_[index]; }
  std::span<T> records() { return {rows_, count_}; }
  std::span<const T> records() const { return {rows_, count_}; }
  // Records that the block has room for, as its first record says.
  std::size_t capacity() const {
    return rows_ == nullptr ? 0 : static_cast<std::size_t>(RecordTraits<T>::capacity(*rows_));
  }

  // Starts over with room for exactly `capacity` records. False: no memory, table unchanged.
  bool allocate(std::size_t capacity) {
    if (capacity == 0 || capacity > kMaxCapacity) return false;
    T* block = static_cast<T*>(TblAlloc(capacity, sizeof(T)));
    if (block == nullptr) return false;
    TblFree(rows_);
    rows_ = block;
    count_ = 0;
    set_capacity(capacity);
    return true;
  }

  // Makes room for `needed` records. A capacity must exceed what is needed, else a block of
  // ((needed + k - 1) / k + 1) * k records replaces the old one. Long tables grow by half instead,
  // so that adding n records one by one stays linear. False: no memory, table unchanged.
  bool reserve(std::size_t needed) {
    const std::size_t old = capacity();
    if (needed < old) return true;
    if (needed >= kMaxCapacity) return false;
    std::size_t wanted = ((needed + kBlock - 1) / kBlock + 1) * kBlock;
    if (needed >= kLongTable) wanted = std::max(wanted, needed + needed / 2);
    wanted = std::min(wanted, kMaxCapacity);
    T* block = static_cast<T*>(TblAlloc(wanted, sizeof(T)));
    if (block == nullptr) return false;
    if (rows_ != nullptr) std::memcpy(static_cast<void*>(block), rows_, old * sizeof(T));
    TblFree(rows_);
    rows_ = block;
    set_capacity(wanted);
    return true;
  }

  // Adds a zeroed record at the end; null when there is no memory (table unchanged). Records past
  // the end are zero at all times, so there is nothing to clear.
  T* append() { return reserve(count_ + 1) ? rows_ + count_++ : nullptr; }

  // `record`'s own capacity field is ignored.
  bool append(const T& record) { return insert(count_, record); }

  // Like `append`, but the block is used up before it grows: for tables whose size was announced.
  bool fill(const T& record) {
    if (count_ >= capacity()) return append(record);
    rearrange([&] {
      rows_[count_] = record;
      RecordTraits<T>::capacity(rows_[count_++]) = 0;
    });
    return true;
  }

  // Records from `index` on move up one place. False: no memory or index past the end.
  bool insert(std::size_t index, const T& record) {
    const T copy = record;  // `record` may lie in the block that is about to move
    if (index > count_ || !reserve(count_ + 1)) return false;
    rearrange([&] {
      std::memmove(static_cast<void*>(rows_ + index + 1), rows_ + index,
                   (count_ - index) * sizeof(T));
      rows_[index] = copy;
      ++count_;
      RecordTraits<T>::capacity(rows_[index]) = 0;
      if (index == 0 && count_ > 1) RecordTraits<T>::capacity(rows_[1]) = 0;
    });
    return true;
  }

  // Later records move down one place and the freed place is zeroed. False: no such record.
  bool erase(std::size_t index) {
    if (index >= count_) return false;
    rearrange([&] {
      std::memmove(static_cast<void*>(rows_ + index), rows_ + index + 1,
                   (count_ - index - 1) * sizeof(T));
      rows_[--count_] = T{};
    });
    return true;
  }

  // Runs `change`, which may move records but not grow the table, and puts the capacity back into
  // the record that is first then.
  template <class Change>
  void rearrange(Change&& change) {
    const std::size_t keep = capacity();
    if (rows_ != nullptr) RecordTraits<T>::capacity(*rows_) = 0;
    std::forward<Change>(change)();
    if (rows_ != nullptr) set_capacity(keep);
  }

  // Puts record `order[i]` at place i. `order` must be a permutation of all places.
  template <class Order>
  bool permute(const Order& order) {
    if (count_ < 2) return true;
    T* copy = static_cast<T*>(TblAlloc(count_, sizeof(T)));
    if (copy == nullptr) return false;
    rearrange([&] {
      std::memcpy(static_cast<void*>(copy), rows_, count_ * sizeof(T));
      for (std::size_t i = 0; i < count_; ++i) rows_[i] = copy[order[i]];
    });
    TblFree(copy);
    return true;
  }

  // Releases the block.
  void clear() {
    TblFree(rows_);
    rows_ = nullptr;
    count_ = 0;
  }

  void swap(RecordTable& other) noexcept {
    std::swap(rows_, other.rows_);
    std::swap(count_, other.count_);
  }

 private:
  using Capacity = std::remove_cvref_t<decltype(RecordTraits<T>::capacity(std::declval<T&>()))>;
  static constexpr std::size_t kBlock = RecordTraits<T>::kBlock;
  static constexpr std::size_t kLongTable = 1000;
  static constexpr std::size_t kMaxCapacity =
      std::min<std::uintmax_t>(std::numeric_limits<Capacity>::max(), 0x7FFFFFFF);

  void set_capacity(std::size_t capacity) {
    RecordTraits<T>::capacity(*rows_) = static_cast<Capacity>(capacity);
  }

  T* rows_ = nullptr;
  std::size_t count_ = 0;
};

}  // namespace tq
