// Sets an environment variable (UTF-8) for the length of a test and puts the old value back.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

namespace tq::test {

class ScopedVariable {
 public:
  ScopedVariable(const std::string& name, const std::string& value)
      : name_(native(name)), old_(get(name_)) {
    set(name_, native(value));
  }
  ~ScopedVariable() { set(name_, old_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  // Wide on Windows: past the C library, whose own copy the code under test does not look at.
  using Text = std::filesystem::path::string_type;

  static Text native(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).native();
  }
  static std::optional<Text> get(const Text& name);
  static void set(const Text& name, const std::optional<Text>& value);  // nothing: removes it

  Text name_;
  std::optional<Text> old_;
};

#ifdef _WIN32

inline std::optional<std::wstring> ScopedVariable::get(const Text& name) {
  Text value(32767, L'\0');  // the longest that Windows keeps
  const DWORD size = GetEnvironmentVariableW(name.c_str(), value.data(), 32767);
  if (size == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
  value.resize(size);
  return value;
}

inline void ScopedVariable::set(const Text& name, const std::optional<Text>& value) {
  SetEnvironmentVariableW(name.c_str(), value ? value->c_str() : nullptr);
}

#else

inline std::optional<std::string> ScopedVariable::get(const Text& name) {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? std::nullopt : std::optional<Text>(value);
}

inline void ScopedVariable::set(const Text& name, const std::optional<Text>& value) {
  if (value) {
    setenv(name.c_str(), value->c_str(), 1);
  } else {
    unsetenv(name.c_str());
  }
}

#endif

}  // namespace tq::test
