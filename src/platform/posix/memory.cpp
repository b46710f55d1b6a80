// Linux has no movable global memory; zeroed memory that stays where it is serves as well.
#include <cstdlib>

#include "platform/fault.h"
#include "platform/platform.h"

namespace tq::platform {

void* alloc_movable(std::size_t bytes) noexcept {
  if (!fault::gate("allocate", "", false).ok()) return nullptr;
  return std::calloc(bytes == 0 ? 1 : bytes, 1);
}

void free_movable(void* block) noexcept { std::free(block); }

}  // namespace tq::platform
