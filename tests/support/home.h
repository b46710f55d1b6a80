// A home folder of the test's own for the built-in siblings: every folder that the library asks for
// lies in it, under its default name.
#pragma once

#include <filesystem>
#include <string>

#include "support/scoped_variable.h"
#include "support/test_folder.h"

namespace tq::test {

class TestHome : public TestFolder {
 public:
  TestHome()
      : TestFolder("home"),
        variable_("TQUTIL_HOME", reinterpret_cast<const char*>(native().u8string().c_str())) {}

 private:
  ScopedVariable variable_;
};

}  // namespace tq::test
