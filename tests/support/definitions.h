// A home folder for tests of definition files: the library's tables are read anew in it, and again
// when it goes.
#pragma once

#include <gtest/gtest.h>

#include "support/home.h"
#include "tqutil/siblings.h"

namespace tq::test {

class DefinitionHome : public TestHome {
 public:
  DefinitionHome() { read_again(); }
  ~DefinitionHome() { read_again(); }

  // Makes the library forget what it read from definition files.
  static void read_again() { EXPECT_EQ(tqSetSiblings(nullptr), 0); }
};

}  // namespace tq::test
