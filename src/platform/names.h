// What file names and paths mean, wherever the library runs: which names there can be, which two
// are the same, which match a pattern. Both twins of the platform layer take paths apart here, so
// that a hostile path is refused alike everywhere.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"
#include "platform/platform.h"

namespace tq::platform {

// Where a path leads, taken apart.
struct ParsedPath {
  char drive = 0;      // 'A' to 'Z'; 0: the drive of the current folder
  bool share = false;  // `\\server\share\...`; `names` begins with these two
  // The names on the way from the root, `\` before each; empty is the root itself. "." and ".." are
  // resolved; dots and spaces at the end of a name are gone, as Windows drops them.
  std::string names;
};

// Takes a path apart, a relative one as seen from the current folder. kInvalid, and nothing to work
// with, for what names no file on Windows or would lead elsewhere than it seems to: a `..` above
// the root, control characters and
// `"*:<>?|`, halves of two-byte characters, names made of dots and spaces, devices (`NUL`,
// `COM1.txt`),
// `\\?\` and `\\.\`, an empty path, a drive's current folder (`C:name`).
Status parse_path(std::string_view path, ParsedPath& parsed);

// Whether a single name can stand in a path unchanged.
bool is_plain_name(std::string_view name);

// The name with every letter in upper case: ASCII, full-width, Greek, Cyrillic and Roman numerals,
// which are all the letters with case that code page 932 has. Names that are equal in this form are
// the same name; listings are in byte order of it.
std::string upper_name(std::string_view name);

// A pattern of `*` (any characters) and `?` (one character), case ignored. `*.*` matches every
// name, and `.*` at the end of a pattern also matches no extension.
class Pattern {
 public:
  explicit Pattern(std::string_view pattern) : upper_(upper_name(pattern)) {}
  bool matches(std::string_view name) const;

 private:
  std::string upper_;
};

// Orders entries by `upper_name`, names that differ in case only by their bytes.
void sort_entries(std::vector<FolderEntry>& entries);

// "<doing> <path>: <why>", the form that all texts of the layer have. `path` is Shift-JIS.
Status refusal(Code code, const char* doing, std::string_view path, const std::string& why);

// A pattern path in its two parts; the folder keeps its separator and is empty when there is none.
struct PatternParts {
  std::string_view folder;
  std::string_view mask;
};
PatternParts split_pattern(std::string_view pattern);

// Folder, a backslash when it does not end in a separator, name.
std::string join(std::string_view folder, std::string_view name);

// The names that `unique_file` tries, one after the other: the prefix's first three characters,
// five hexadecimal digits, ".tmp". Two processes begin at different places.
class UniqueNames {
 public:
  explicit UniqueNames(std::string_view prefix);
  std::string next();

 private:
  std::string prefix_;
  std::uint32_t number_;
};

}  // namespace tq::platform
