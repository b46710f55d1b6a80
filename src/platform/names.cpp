#include "platform/names.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "base/cp932.h"
#include "base/cp932_lookup.h"
#include "base/sjis.h"

namespace tq::platform {
namespace {

constexpr bool is_separator(char c) { return c == '\\' || c == '/'; }
constexpr bool is_letter(char c) {
  return sjis::upper_ascii(c) >= 'A' && sjis::upper_ascii(c) <= 'Z';
}

constexpr bool is_refused(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F ||
         std::string_view("\"*:<>?|").find(c) != std::string_view::npos;
}

// Two-byte letters that have an upper case: each run of lower-case codes and where its upper case
// begins. Runs that step over 0x7F, which is no trail byte, stand in two pieces.
struct CaseRun {
  std::uint16_t first, last, upper;
};
constexpr CaseRun kCaseRuns[] = {
    {0x8281, 0x829A, 0x8260},  // full-width Latin
    {0x83BF, 0x83D6, 0x839F},  // Greek
    {0x8470, 0x847E, 0x8440},  // Cyrillic
    {0x8480, 0x8491, 0x844F},
    {0xFA40, 0xFA49, 0x8754},  // Roman numerals, as the code page's IBM extensions have them
    {0xEEEF, 0xEEF8, 0x8754},  // and their second codes
};

constexpr unsigned upper_pair(unsigned code) {
  for (const CaseRun& run : kCaseRuns) {
    if (code >= run.first && code <= run.last) return code - run.first + run.upper;
  }
  return code;
}

// The names that Windows gives to devices in every folder, with any extension.
bool is_device(std::string_view name) {
  std::string_view stem = name.substr(0, name.find('.'));
  while (stem.ends_with(' ')) stem.remove_suffix(1);
  if (stem.size() < 3 || stem.size() > 7) return false;
  const std::string upper = upper_name(stem);
  if (upper.size() == 4 && (upper.starts_with("COM") || upper.starts_with("LPT"))) {
    return upper[3] >= '1' && upper[3] <= '9';
  }
  static constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
  return std::find(std::begin(kDevices), std::end(kDevices), upper) != std::end(kDevices);
}

// The names of a path while it is taken apart.
struct Names {
  std::string text;  // `\` before each
  int count = 0;
  int fixed = 0;  // so many belong to the root: server and share
};

// Adds one name to those before it; null, or why it cannot be.
const char* add_name(std::string_view name, Names& names) {
  if (name.empty() || name == ".") return nullptr;
  if (name == "..") {
    if (names.count <= names.fixed) return "leads above the root";
    names.text.resize(sjis::find_last(names.text, "\\"));
    --names.count;
    return nullptr;
  }
  std::size_t size = name.size();
  while (size > 0 && (name[size - 1] == '.' || name[size - 1] == ' ')) --size;
  if (size == 0) return "holds a name of dots and spaces only";
  if (is_device(name)) return "names a device";
  names.text += '\\';
  names.text += name.substr(0, size);
  ++names.count;
  return nullptr;
}

// Null, or why the character at `pos` can stand in no name.
const char* check_char(std::string_view text, std::size_t pos) {
  if (!sjis::is_lead(text[pos])) {
    return is_refused(text[pos]) ? "holds a character that no name can have" : nullptr;
  }
  if (!sjis::is_pair(text, pos)) return "holds half of a two-byte character";
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const bool known = cp932::unit_of_pair(byte(pos), byte(pos + 1)) != 0;
  return known ? nullptr : "holds a code that stands for no character";
}

// Adds all names that `rest` holds.
const char* add_names(std::string_view rest, Names& names) {
  names.text.reserve(rest.size() + 1);
  std::size_t begin = 0;
  std::size_t pos = 0;
  while (pos < rest.size()) {
    if (is_separator(rest[pos])) {
      if (const char* fault = add_name(rest.substr(begin, pos - begin), names)) return fault;
      begin = pos + 1;
    } else if (const char* fault = check_char(rest, pos)) {
      return fault;
    }
    pos += sjis::char_size(rest, pos);
  }
  return add_name(rest.substr(begin), names);
}

bool is_relative(std::string_view path) {
  const bool has_drive = path.size() >= 2 && path[1] == ':';
  return !path.empty() && !is_separator(path[0]) && !has_drive;
}

const char* parse(std::string_view path, ParsedPath& parsed) {
  Names names;
  if (path.empty()) return "is empty";
  if (path.size() >= 2 && path[1] == ':') {
    if (!is_letter(path[0])) return "has no drive letter";
    parsed.drive = sjis::upper_ascii(path[0]);
    path.remove_prefix(2);
    if (!path.empty() && !is_separator(path[0])) return "is relative to a drive's current folder";
  } else if (path.size() >= 2 && is_separator(path[0]) && is_separator(path[1])) {
    parsed.share = true;
    names.fixed = 2;
    path.remove_prefix(2);
    if (path.starts_with('?') || path.starts_with('.')) return "is a device path";
    if (!path.empty() && is_separator(path[0])) return "names no share";
  }
  if (const char* fault = add_names(path, names)) return fault;
  if (names.count < names.fixed) return "names no share";
  parsed.names = std::move(names.text);
  return nullptr;
}

// Iterative matching of `*` and `?`: after a mismatch the last star takes one character more.
bool glob(std::string_view pattern, std::string_view name) {
  std::size_t p = 0, n = 0;
  std::size_t star = std::string_view::npos, resume = 0;
  while (n < name.size()) {
    const std::size_t step = sjis::char_size(name, n);
    const std::size_t width = p < pattern.size() ? sjis::char_size(pattern, p) : 0;
    if (width == 1 && pattern[p] == '*') {
      star = ++p;
      resume = n;
    } else if (width > 0 &&
               (pattern[p] == '?' || pattern.substr(p, width) == name.substr(n, step))) {
      p += width;
      n += step;
    } else if (star != std::string_view::npos) {
      resume += sjis::char_size(name, resume);
      p = star;
      n = resume;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}  // namespace

Status parse_path(std::string_view path, ParsedPath& parsed) {
  parsed = {};
  std::string complete;
  if (is_relative(path)) {
    if (Status status = path_from_native(".", complete); !status.ok()) return status;
    path = complete.append("\\").append(path);
  }
  const char* fault = parse(path, parsed);
  if (fault == nullptr) return {};
  parsed = {};
  return refusal(Code::kInvalid, "take apart", path, std::string("the path ") + fault);
}

bool is_plain_name(std::string_view name) {
  Names names;
  return add_names(name, names) == nullptr && names.count == 1 &&
         names.text.size() == name.size() + 1;
}

std::string upper_name(std::string_view name) {
  std::string upper(name);
  for (std::size_t pos = 0; pos < upper.size(); pos += sjis::char_size(upper, pos)) {
    if (sjis::char_size(upper, pos) == 1) {
      upper[pos] = sjis::upper_ascii(upper[pos]);
      continue;
    }
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(upper[at]); };
    const unsigned code = upper_pair(byte(pos) * 256u + byte(pos + 1));
    upper[pos] = static_cast<char>(code >> 8);
    upper[pos + 1] = static_cast<char>(code & 0xFF);
  }
  return upper;
}

bool Pattern::matches(std::string_view name) const {
  if (upper_ == "*" || upper_ == "*.*") return true;
  const std::string upper = upper_name(name);
  if (glob(upper_, upper)) return true;
  if (!upper_.ends_with(".*")) return false;
  return glob(std::string_view(upper_).substr(0, upper_.size() - 2), upper);
}

void sort_entries(std::vector<FolderEntry>& entries) {
  std::vector<std::pair<std::string, FolderEntry>> keyed;
  keyed.reserve(entries.size());
  for (FolderEntry& entry : entries) keyed.emplace_back(upper_name(entry.name), std::move(entry));
  std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
    return a.first != b.first ? a.first < b.first : a.second.name < b.second.name;
  });
  std::transform(keyed.begin(), keyed.end(), entries.begin(),
                 [](auto& key_and_entry) { return std::move(key_and_entry.second); });
}

Status refusal(Code code, const char* doing, std::string_view path, const std::string& why) {
  return {code, std::string(doing) + " " + cp932::to_utf8(path) + ": " + why};
}

PatternParts split_pattern(std::string_view pattern) {
  const std::size_t last = sjis::find_last(pattern, ":\\/");
  const std::size_t cut = last == std::string_view::npos ? 0 : last + 1;
  return {pattern.substr(0, cut), pattern.substr(cut)};
}

std::string join(std::string_view folder, std::string_view name) {
  const bool separated = sjis::ends_with(folder, '\\') || sjis::ends_with(folder, '/');
  std::string path(folder);
  if (!separated) path += '\\';
  return path.append(name);
}

UniqueNames::UniqueNames(std::string_view prefix) {
  std::size_t size = 0;
  for (int count = 0; count < 3 && size < prefix.size(); ++count) {
    size += sjis::char_size(prefix, size);
  }
  prefix_ = prefix.substr(0, size);
  // The clock's low bits spread by a multiplication; the address differs between processes.
  static std::uint32_t calls = 0;
  const auto place = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(this));
  const std::uint64_t seed = (utc_now() ^ place << 16) + ++calls;
  number_ = static_cast<std::uint32_t>(seed * 0x9E3779B97F4A7C15u >> 44);
}

std::string UniqueNames::next() {
  char digits[16];
  std::snprintf(digits, sizeof digits, "%05x.tmp", static_cast<unsigned>(number_++ & 0xFFFFF));
  return prefix_ + digits;
}

}  // namespace tq::platform
