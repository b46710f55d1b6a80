// Where in a file something is wrong, and the error that says so.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "failure.h"

namespace tqsync {

// "friends.csv, line 12: what is wrong and what to do".
inline std::string at_line(const std::string& file, std::size_t line, const std::string& what) {
  return file + ", line " + std::to_string(line) + ": " + what;
}

[[noreturn]] inline void fail_at(const std::string& file, std::size_t line,
                                 const std::string& what) {
  throw Failure(at_line(file, line, what));
}

// The line, counted from 1, in which the byte at `pos` stands. Lines end in LF, CR LF or CR.
inline std::size_t line_of(std::string_view text, std::size_t pos) {
  std::size_t line = 1;
  for (std::size_t at = 0; at < std::min(pos, text.size()); ++at) {
    const bool pair = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
    if (text[at] == '\n' || (text[at] == '\r' && !pair)) ++line;
  }
  return line;
}

}  // namespace tqsync
