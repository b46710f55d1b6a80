// Lets C++ allocations fail. A test program that uses it lists support/short_memory.cpp among its
// sources.
#pragma once

#include <new>

namespace tq::test {

// Allocations that still succeed; negative: all.
extern int allocations_left;

// Runs an operation with no allocation allowed, then with one, with two, ... until it gets through.
// After each failure, which shows as std::bad_alloc, `check` looks whether anything has changed.
template <class Operation, class Check>
void starve(Operation operation, Check check) {
  for (int allowed = 0;; ++allowed) {
    try {
      allocations_left = allowed;
      operation();
      allocations_left = -1;
      return;
    } catch (const std::bad_alloc&) {
      allocations_left = -1;
      check();
    }
  }
}

}  // namespace tq::test
