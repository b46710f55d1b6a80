// Where exceptions end: nothing throws across the interface, to a host or to its tables.
#pragma once

#include <utility>

namespace tq {

// What a body returns, or `failure` when it throws, which only memory that runs out does.
template <class Result, class Body>
Result guarded(Result failure, Body&& body) noexcept {
  try {
    return static_cast<Result>(std::forward<Body>(body)());
  } catch (...) {
    return failure;
  }
}

// The same for a body whose failure nobody is told of: what it did until then stands.
template <class Body>
void guarded(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
  } catch (...) {  // out of memory: the rest is left undone
  }
}

}  // namespace tq
