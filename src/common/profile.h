// Settings files of the private-profile (INI) form, in Shift-JIS on every system.
//
// Sections `[name]`, lines `key=value`; names compare without regard to ASCII case; blanks around
// keys and values and one pair of quotes around a value do not count; lines that begin with ';' are
// comments. What is not understood is kept. A file is read whole and, when changed, replaced whole,
// with its order, comments, other sections and line ends as they were.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"

namespace tq {

class Profile {
 public:
  // A missing file is an empty profile and success.
  Status load(std::string_view path);

  // The value of a key, `fallback` when it is missing.
  std::string text(std::string_view section, std::string_view key, std::string_view fallback) const;
  // The decimal number at the start of a value, sign included; `fallback` when the key is missing.
  std::int32_t number(std::string_view section, std::string_view key, std::int32_t fallback) const;

  // Sets a key, adding it (and its section) at the end when missing. Line breaks in the value are
  // refused.
  Status set(std::string_view section, std::string_view key, std::string_view value);
  // Replaces the file that was loaded. On failure it is as before.
  Status save() const;

 private:
  const std::string* find(std::string_view section, std::string_view key) const;

  std::string path_;
  std::string line_end_ = "\r\n";
  std::vector<std::string> lines_;
};

}  // namespace tq
