// Sets an environment variable (UTF-8) for the length of a test and puts the old value back.
#pragma once

#include <filesystem>
#include <string>

#include "platform/platform.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cstdlib>
#endif

namespace tq::test {

class ScopedVariable {
 public:
  ScopedVariable(const std::string& name, const std::string& value)
      : name_(name), old_(platform::environment(name.c_str())) {
    set(value);
  }
  ~ScopedVariable() { set(old_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  // An empty value removes it. Wide on Windows: past the C library, whose own copy the code under
  // test does not look at.
  void set(const std::string& value) const {
#ifdef _WIN32
    const std::filesystem::path name = std::u8string(name_.begin(), name_.end());
    const std::filesystem::path wide = std::u8string(value.begin(), value.end());
    ::SetEnvironmentVariableW(name.c_str(), value.empty() ? nullptr : wide.c_str());
#else
    value.empty() ? ::unsetenv(name_.c_str()) : ::setenv(name_.c_str(), value.c_str(), 1);
#endif
  }

  std::string name_, old_;
};

}  // namespace tq::test
