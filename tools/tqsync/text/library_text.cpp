#include "text/library_text.h"

#include <cstdint>
#include <new>

#include "failure.h"
#include "text/unicode.h"
#include "tqutil/host.h"
#include "tqutil/records.h"

namespace tqsync {
namespace {

// Shift-JIS of the text up to its first character without a code; the bytes that could be taken.
std::size_t convert_prefix(std::string_view utf8, std::string& sjis) {
  sjis.resize(utf8.size() + 1);  // Shift-JIS never takes more bytes than UTF-8
  const auto size = static_cast<std::int32_t>(utf8.size());
  std::int32_t used = tqUtf8ToSjis(utf8.data(), size, sjis.data(), size + 1);
  std::size_t taken = utf8.size();
  if (used < 0) {
    taken = static_cast<std::size_t>(-1 - used);
    used = tqUtf8ToSjis(utf8.data(), static_cast<std::int32_t>(taken), sjis.data(), size + 1);
  }
  if (used < 0) throw std::bad_alloc();
  sjis.resize(static_cast<std::size_t>(used));
  return taken;
}

std::size_t character_size(std::string_view utf8) {
  return first_character(utf8).value_or(Character{0, 1}).size;
}

}  // namespace

std::string to_sjis(const std::string& what, std::string_view utf8) {
  std::string sjis;
  const std::size_t taken = convert_prefix(utf8, sjis);
  if (taken < utf8.size()) {
    const std::string_view rest = utf8.substr(taken);
    throw Failure(what + ": Shift-JIS does not have the character \"" +
                  std::string(rest.substr(0, character_size(rest))) + "\". Write it without.");
  }
  return sjis;
}

std::string to_sjis_or_mark(std::string_view utf8) {
  std::string all, sjis;
  for (;;) {
    utf8.remove_prefix(convert_prefix(utf8, sjis));
    all += sjis;
    if (utf8.empty()) return all;
    all += '?';
    utf8.remove_prefix(character_size(utf8));
  }
}

std::string from_sjis(std::string_view sjis) {
  std::string utf8(3 * sjis.size() + 1, '\0');  // a byte becomes at most three
  const std::int32_t used = tqSjisToUtf8(sjis.data(), static_cast<std::int32_t>(sjis.size()),
                                         utf8.data(), static_cast<std::int32_t>(utf8.size()));
  if (used < 0) throw std::bad_alloc();
  utf8.resize(static_cast<std::size_t>(used));
  return utf8;
}

std::string convert_text(TextFunction function, std::string_view utf8) {
  std::string out, sjis, converted;
  while (!utf8.empty()) {
    const std::size_t taken = convert_prefix(utf8, sjis);
    converted.resize(5 * sjis.size() + 1);  // none of the functions asks for more
    const std::int32_t used = function(sjis.c_str(), converted.data());
    if (used < 0) throw std::bad_alloc();
    converted.resize(static_cast<std::size_t>(used));
    out += from_sjis(converted);
    utf8.remove_prefix(taken);
    if (utf8.empty()) break;
    const std::size_t odd = character_size(utf8);
    out += utf8.substr(0, odd);
    utf8.remove_prefix(odd);
  }
  return out;
}

std::string to_library_path(const std::string& native) {
  char path[TQ_PATH_SIZE];
  if (tqPathFromNative(native.c_str(), path) != 0) {
    throw Failure(native +
                  ": this path is too long (261 bytes at most) or holds a character that " +
                  "Shift-JIS does not have. Move the file to another folder or rename it.");
  }
  return path;
}

std::string to_native_path(const std::string& path) {
  // A character takes at most three bytes in UTF-8, and the drive may lead to a longer path.
  char native[8 * TQ_PATH_SIZE];
  if (tqPathToNative(path.c_str(), native, sizeof native) != 0) return from_sjis(path);
  return native;
}

}  // namespace tqsync
