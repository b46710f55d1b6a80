// Movable blocks of global memory, locked for as long as they live: hosts may ask the system for
// the handle of a table that they were given.
#include <windows.h>

#include "platform/fault.h"
#include "platform/platform.h"

namespace tq::platform {

void* alloc_movable(std::size_t bytes) noexcept {
  if (!fault::gate("allocate", "", false).ok()) return nullptr;
  // A movable block of no bytes would be discarded and could not be locked.
  const HGLOBAL block = ::GlobalAlloc(GHND, bytes == 0 ? 1 : bytes);
  if (block == nullptr) return nullptr;
  void* locked = ::GlobalLock(block);
  if (locked == nullptr) ::GlobalFree(block);
  return locked;
}

void free_movable(void* block) noexcept {
  if (block == nullptr) return;
  const HGLOBAL handle = ::GlobalHandle(block);
  ::GlobalUnlock(handle);
  ::GlobalFree(handle);
}

}  // namespace tq::platform
