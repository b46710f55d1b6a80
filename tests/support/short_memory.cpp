#include "support/short_memory.h"

#include <cstdlib>

int tq::test::allocations_left = -1;

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  using tq::test::allocations_left;
  if (allocations_left == 0) return nullptr;
  if (allocations_left > 0) --allocations_left;
  return std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size) {
  if (void* block = ::operator new(size, std::nothrow)) return block;
  throw std::bad_alloc();
}

void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
