// Drives an operation through every failure of the platform layer.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>

#include "platform/fault.h"

namespace fault = tq::platform::fault;

namespace tq::test {

// Arms the gate with the 1st, 2nd, ... operation of each kind when the attempt asks for it, until
// an attempt gets through without a failure. An attempt prepares what it needs, makes a FailNth of
// its arguments, and gives whether that was hit. It must leave no file open.
template <class Attempt>
void each_fault(std::initializer_list<fault::Kind> kinds, Attempt attempt) {
  for (const fault::Kind kind : kinds) {
    bool hit = true;
    for (int nth = 1; hit; ++nth) {
      SCOPED_TRACE("operation " + std::to_string(nth));
      const int open_before = fault::open_handles();
      hit = attempt(nth, kind);
      fault::disarm();
      EXPECT_EQ(fault::open_handles(), open_before);
    }
  }
}

}  // namespace tq::test
