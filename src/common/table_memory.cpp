#include "common/table_memory.h"

#include <atomic>
#include <limits>

#include "platform/platform.h"

namespace tq {
namespace {

std::atomic<std::int32_t> live_blocks{0};

}  // namespace

void* TblAlloc(std::size_t count, std::size_t size) noexcept {
  if (size != 0 && count > std::numeric_limits<std::size_t>::max() / size) return nullptr;
  void* block = platform::alloc_movable(count * size);
  if (block != nullptr) ++live_blocks;
  return block;
}

void TblFree(void* block) noexcept {
  if (block == nullptr) return;
  platform::free_movable(block);
  --live_blocks;
}

std::int32_t live_tables() noexcept { return live_blocks; }

}  // namespace tq
