// Objects behind small numbers: the flat interface hands out slot + 1, and 0 is never valid.
//
// One table a class, process-wide, without a lock (one calling thread at a time). Objects that are
// open when the library goes are not destroyed. Nothing here throws; a failed allocation is a
// handle of 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "common/guarded.h"

namespace tq {

template <class T, std::size_t N>
class HandleTable {
 public:
  // Puts a new object into the lowest empty slot and lets `start` do what the opening function
  // stands for; when it says false the object goes again. The handle, or 0.
  template <class Start>
  std::int32_t open(Start&& start) noexcept {
    for (std::size_t slot = 0; slot < N; ++slot) {
      if (slots_[slot] != nullptr) continue;
      std::unique_ptr<T> object;
      const bool started = guarded(false, [&] {
        object = std::make_unique<T>();
        slots_[slot] = object.get();
        return std::forward<Start>(start)(*object);
      });
      if (!started) {
        slots_[slot] = nullptr;
        return 0;
      }
      static_cast<void>(object.release());
      return static_cast<std::int32_t>(slot) + 1;
    }
    return 0;
  }

  // Destroys the object of a handle and empties its slot. `failure` for handle 0; 0 otherwise, also
  // for a slot that is empty or does not exist.
  short close(std::int32_t handle, short failure) noexcept {
    if (handle == 0) return failure;
    if (T* object = find(handle)) {
      slots_[static_cast<std::size_t>(handle) - 1] = nullptr;
      delete object;
    }
    return 0;
  }

  // The object of a handle; null for 0, for a closed slot and for a number that never was a handle.
  T* find(std::int32_t handle) const noexcept {
    if (handle < 1 || static_cast<std::size_t>(handle) > N) return nullptr;
    return slots_[static_cast<std::size_t>(handle) - 1];
  }

 private:
  std::array<T*, N> slots_{};
};

// What every other flat function does: find the object, run the body on it. `failure` for a dead
// handle and for anything thrown.
template <class Table, class Value, class Body>
Value with(const Table& table, std::int32_t handle, Value failure, Body&& body) noexcept {
  auto* object = table.find(handle);
  if (object == nullptr) return failure;
  return guarded(failure, [&] { return std::forward<Body>(body)(*object); });
}

}  // namespace tq
