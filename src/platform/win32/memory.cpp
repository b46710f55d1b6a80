// Movable blocks of global memory, locked for as long as they live: hosts may ask the system for
// the handle of a table that they were given. A process has 65,536 such handles, the host's own
// among them, so that beyond our share blocks are fixed; the same calls release both.
#include <windows.h>

#include <atomic>

#include "platform/fault.h"
#include "platform/platform.h"

namespace tq::platform {
namespace {

constexpr int kMovableShare = 16384;
std::atomic<int> movable_blocks{0};

void* alloc_locked(std::size_t bytes) noexcept {
  const HGLOBAL block = ::GlobalAlloc(GHND, bytes);
  if (block == nullptr) return nullptr;
  void* locked = ::GlobalLock(block);
  if (locked == nullptr) ::GlobalFree(block);
  return locked;
}

}  // namespace

void* alloc_movable(std::size_t bytes) noexcept {
  if (!fault::gate("allocate", "", false).ok()) return nullptr;
  if (bytes == 0) bytes = 1;  // a movable block of no bytes would be discarded and never locked
  if (movable_blocks < kMovableShare) {
    if (void* block = alloc_locked(bytes)) {
      ++movable_blocks;
      return block;
    }
  }
  return ::GlobalAlloc(GPTR, bytes);
}

void free_movable(void* block) noexcept {
  if (block == nullptr) return;
  const HGLOBAL handle = ::GlobalHandle(block);
  if (handle != block) {  // a fixed block is its own handle
    ::GlobalUnlock(handle);
    --movable_blocks;
  }
  ::GlobalFree(handle);
}

}  // namespace tq::platform
