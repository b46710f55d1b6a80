// A lookup beside a table: finds records by a 64-bit key without keeping the key.
//
// It holds record numbers only; whoever owns the table says whether a record is the one that is
// looked for. Open addressing with linear probing, eight bytes a slot, at most three quarters full.
// Keys come from files, so every index mixes in a seed of its own: nobody can prepare a file whose
// keys all fall together. Only `make_room` allocates, and it throws std::bad_alloc with the index
// unchanged.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tq {

inline constexpr std::uint32_t kNoRecord = 0xFFFFFFFF;

class HashIndex {
 public:
  HashIndex() : seed_(reinterpret_cast<std::uintptr_t>(this) * 0x9E3779B97F4A7C15U) {}
  HashIndex(const HashIndex&) = delete;
  HashIndex& operator=(const HashIndex&) = delete;

  // Lets the processor fetch where the search for a key begins while something else is done.
  void prefetch(std::uint64_t key) const {
    if (!slots_.empty()) __builtin_prefetch(&slots_[tag_of(key) & mask()]);
  }

  // The record with this key for which `same(record)` is true, kNoRecord when there is none.
  template <class Same>
  std::uint32_t find(std::uint64_t key, Same same) const {
    if (slots_.empty()) return kNoRecord;
    const std::uint32_t tag = tag_of(key);
    for (std::size_t at = tag & mask(); slots_[at].record != kNoRecord; at = (at + 1) & mask()) {
      if (slots_[at].tag == tag && same(slots_[at].record)) return slots_[at].record;
    }
    return kNoRecord;
  }

  // After this `extra` records can be added.
  void make_room(std::size_t extra) {
    const std::size_t needed = (count_ + extra) * 4 / 3 + 1;
    if (needed <= slots_.size()) return;
    std::size_t size = std::max<std::size_t>(slots_.size(), 16);
    while (size < needed) size *= 2;
    std::vector<Slot> old(size);
    old.swap(slots_);
    for (const Slot& slot : old) {
      if (slot.record != kNoRecord) slots_[free_slot(slot.tag)] = slot;
    }
  }

  // There must be room.
  void add(std::uint64_t key, std::uint32_t record) noexcept {
    const std::uint32_t tag = tag_of(key);
    slots_[free_slot(tag)] = {tag, record};
    ++count_;
  }

  // `from`, which must be in here under this key, makes way for `to`.
  void replace(std::uint64_t key, std::uint32_t from, std::uint32_t to) noexcept {
    slots_[slot_of(key, from)].record = to;
  }

  // `record` must be in here under this key.
  void remove(std::uint64_t key, std::uint32_t record) noexcept {
    std::size_t hole = slot_of(key, record);
    // Whatever was pushed past the hole and may stand in it moves there, so that probes still meet.
    for (std::size_t at = (hole + 1) & mask(); slots_[at].record != kNoRecord;
         at = (at + 1) & mask()) {
      const std::size_t home = slots_[at].tag & mask();
      if (((at - home) & mask()) < ((at - hole) & mask())) continue;
      slots_[hole] = slots_[at];
      hole = at;
    }
    slots_[hole] = {};
    --count_;
  }

  void clear() noexcept {
    slots_ = {};
    count_ = 0;
  }

 private:
  struct Slot {
    std::uint32_t tag = 0;  // hash of the key; its low bits are the slot to start from
    std::uint32_t record = kNoRecord;
  };

  // Record numbers mostly run on: keys that differ only in their last bits share a cache line.
  static constexpr std::uint64_t kNeighbours = 8;

  std::size_t mask() const { return slots_.size() - 1; }

  std::uint32_t tag_of(std::uint64_t key) const {
    std::uint64_t hash = (key / kNeighbours ^ seed_) * 0xBF58476D1CE4E5B9U;
    hash ^= hash >> 32;
    hash = (hash * 0x94D049BB133111EBU) >> 32;
    return static_cast<std::uint32_t>((hash & ~(kNeighbours - 1)) | (key & (kNeighbours - 1)));
  }

  std::size_t free_slot(std::uint32_t tag) const {
    std::size_t at = tag & mask();
    while (slots_[at].record != kNoRecord) at = (at + 1) & mask();
    return at;
  }

  std::size_t slot_of(std::uint64_t key, std::uint32_t record) const {
    std::size_t at = tag_of(key) & mask();
    while (slots_[at].record != record) at = (at + 1) & mask();
    return at;
  }

  std::vector<Slot> slots_;  // a power of two, or none
  std::size_t count_ = 0;
  std::uint64_t seed_;
};

}  // namespace tq
