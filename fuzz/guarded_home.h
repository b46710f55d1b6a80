// A home folder with files that no input may lead to.
#pragma once

#include <string>
#include <vector>

#include "support/home.h"
#include "target.h"

struct GuardedHome : tq::test::TestHome {
  explicit GuardedHome(std::vector<std::string> files) : files(std::move(files)) {
    for (const std::string& name : this->files) write(name, "precious");
  }
  void check() const {
    for (const std::string& name : files) require(read(name) == "precious");
  }
  std::vector<std::string> files;
};
