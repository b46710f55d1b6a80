#include "terminal/filter_io.h"

#ifdef _WIN32
#include <windows.h>
// After windows.h, which it needs.
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "failure.h"

namespace tqsync {
namespace {

#ifdef _WIN32

std::ptrdiff_t read_some(char* bytes, std::size_t size) {
  return ::_read(0, bytes, static_cast<unsigned>(size));
}

#else

std::ptrdiff_t read_some(char* bytes, std::size_t size) {
  std::ptrdiff_t got = 0;
  do {
    got = ::read(STDIN_FILENO, bytes, size);
  } while (got < 0 && errno == EINTR);
  return got;
}

#endif

}  // namespace

#ifdef _WIN32

bool locale_is_shift_jis() { return ::GetACP() == 932; }

void use_binary_streams() {
  ::_setmode(0, _O_BINARY);
  ::_setmode(1, _O_BINARY);
}

#else

bool locale_is_shift_jis() {
  std::string locale;
  for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') {
      locale = value;
      break;
    }
  }
  locale.erase(0, std::min(locale.find('.'), locale.size()));
  std::string plain;
  for (const char c : locale) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0) plain += static_cast<char>(std::tolower(byte));
  }
  return plain == "sjis" || plain == "shiftjis" || plain == "cp932" || plain == "windows31j";
}

void use_binary_streams() {}

#endif

std::size_t read_input(char* bytes, std::size_t size) {
  const std::ptrdiff_t got = read_some(bytes, size);
  if (got < 0) throw Failure("the input cannot be read. Check what it is redirected from.");
  return static_cast<std::size_t>(got);
}

void write_output(std::string_view bytes) {
  const bool taken = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
  if (!taken || std::fflush(stdout) != 0) {
    throw Failure("the output cannot be written. Check the disk or whoever reads it.");
  }
}

}  // namespace tqsync
