#include "terminal/console.h"

#ifdef _WIN32
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>
#else
#include <unistd.h>

#include <cstdlib>
#endif

namespace tqsync {

#ifdef _WIN32

namespace {

std::string narrow(const wchar_t* wide) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide, -1, utf8.data(), size, nullptr, nullptr);
  utf8.resize(utf8.size() - 1);  // the terminator
  return utf8;
}

std::wstring widen(const std::string& utf8) {
  const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.c_str(), -1, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.c_str(), -1, wide.data(), size);
  wide.resize(wide.size() - 1);
  return wide;
}

}  // namespace

// What main gets has passed through the system's code page and lost what that does not have.
std::vector<std::string> utf8_arguments(int, char**) {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; wide != nullptr && i < count; ++i) arguments.push_back(narrow(wide[i]));
  LocalFree(wide);
  return arguments;
}

unsigned use_utf8_output() {
  const unsigned before = GetConsoleOutputCP();
  SetConsoleOutputCP(CP_UTF8);
  return before;
}

void use_output_code_page(unsigned code_page) {
  if (code_page != 0) SetConsoleOutputCP(code_page);
}

void set_environment(const std::string& name, const std::string& value) {
  SetEnvironmentVariableW(widen(name).c_str(), widen(value).c_str());
}

// _isatty also says yes for NUL, where nobody answers.
bool input_is_terminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

#else

std::vector<std::string> utf8_arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

unsigned use_utf8_output() { return 0; }
void use_output_code_page(unsigned) {}

void set_environment(const std::string& name, const std::string& value) {
  setenv(name.c_str(), value.c_str(), 1);
}

bool input_is_terminal() { return isatty(STDIN_FILENO) != 0; }

#endif

}  // namespace tqsync
