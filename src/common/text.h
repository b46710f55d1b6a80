// Small text routines that every family's readers share: bounded copies, decimal numbers, tokens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>

namespace tq {

// A C string as a view; null reads as empty. A fixed array ends at its terminator or at its own
// end, since records come from callers and files. (One template: an overload for pointers would
// take arrays as well.)
template <class Text>
constexpr std::string_view view(const Text& text) {
  if constexpr (std::is_array_v<Text>) {
    const char* end = std::char_traits<char>::find(text, std::size(text), '\0');
    return {text, end == nullptr ? std::size(text) : static_cast<std::size_t>(end - text)};
  } else {
    const char* start = text;
    return start == nullptr ? std::string_view() : std::string_view(start);
  }
}

// Copies as much of `text` as fits into `size` bytes with the terminator, cut at a character
// boundary. Null or size 0 copies nothing. `to` may overlap `text`.
void copy_text(char* to, std::size_t size, std::string_view text);

template <std::size_t N>
void copy_text(char (&to)[N], std::string_view text) {
  copy_text(to, N, text);
}

// Appends `text` as one line. Line breaks in it become blanks, since they would shift every line
// after it.
void append_line(std::string& out, std::string_view text);

// A decimal number at the start of the text: optional blanks and sign, then digits. 0 when there is
// none; numbers past 32 bits stop at the limit.
std::int32_t decimal(std::string_view text);

// The low 16 bits of `decimal`, as the 16-bit fields of the file formats take it.
inline short decimal16(std::string_view text) { return static_cast<short>(decimal(text)); }

// Takes tokens off the front of a text. A run of separators counts as one and separators before a
// token are skipped, so no token is empty. Separators are single bytes; the text's two-byte
// characters are not looked at, as in the file formats that this serves.
class Tokens {
 public:
  explicit Tokens(std::string_view text) : rest_(text) {}
  // The next token up to `separator`; false when none is left.
  bool next(char separator, std::string_view& token) {
    // Tokens are a few bytes long: a loop is done before a search would have started.
    const std::size_t size = rest_.size();
    std::size_t start = 0;
    while (start < size && rest_[start] == separator) ++start;
    std::size_t end = start;
    while (end < size && rest_[end] != separator) ++end;
    token = rest_.substr(start, end - start);
    rest_.remove_prefix(end < size ? end + 1 : end);
    return end != start;
  }

 private:
  std::string_view rest_;
};

}  // namespace tq
