// Walking Shift-JIS text by characters. The one place that knows lead and trail bytes.
//
// Two readings of a two-byte character are in use and both are kept apart here:
//   - paths and cuts: a lead byte owns the next byte whatever it is, so that no half of a character
//     is ever taken for a separator or left behind by a cut (`char_size`);
//   - text conversion: a pair counts only when the second byte is a trail byte (`is_pair`).
#pragma once

#include <cstddef>
#include <string_view>

namespace tq::sjis {

// Lead bytes of code page 932: 0x81-0x9F and 0xE0-0xFC.
constexpr bool is_lead(char byte) {
  const auto b = static_cast<unsigned char>(byte);
  return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
}

// Trail bytes of code page 932: 0x40-0x7E and 0x80-0xFC.
constexpr bool is_trail(char byte) {
  const auto b = static_cast<unsigned char>(byte);
  return b >= 0x40 && b <= 0xFC && b != 0x7F;
}

// Bytes of the character that starts at `pos` (which must be inside the text): 2 for a lead byte
// that has a byte after it, else 1.
constexpr std::size_t char_size(std::string_view text, std::size_t pos) {
  return is_lead(text[pos]) && pos + 1 < text.size() ? 2 : 1;
}

// Whether a well-formed two-byte character starts at `pos`: a lead byte followed by a trail byte.
constexpr bool is_pair(std::string_view text, std::size_t pos) {
  return is_lead(text[pos]) && pos + 1 < text.size() && is_trail(text[pos + 1]);
}

// Longest prefix of at most `max` bytes that does not end in the first half of a character that
// the text holds whole.
constexpr std::size_t cut_size(std::string_view text, std::size_t max) {
  if (text.size() <= max) return text.size();
  std::size_t pos = 0;
  while (pos < max) {
    const std::size_t step = char_size(text, pos);
    if (pos + step > max) break;
    pos += step;
  }
  return pos;
}

constexpr std::string_view cut(std::string_view text, std::size_t max) {
  return text.substr(0, cut_size(text, max));
}

// Position of the last single-byte `wanted` (never the second half of a character), npos if none.
constexpr std::size_t find_last(std::string_view text, std::string_view wanted) {
  std::size_t found = std::string_view::npos;
  for (std::size_t pos = 0; pos < text.size(); pos += char_size(text, pos)) {
    if (!is_lead(text[pos]) && wanted.find(text[pos]) != std::string_view::npos) found = pos;
  }
  return found;
}

// Whether the text's last character is the single byte `wanted`.
constexpr bool ends_with(std::string_view text, char wanted) {
  if (text.empty() || text.back() != wanted) return false;
  std::size_t pos = 0;
  std::size_t last = 0;
  while (pos < text.size()) {
    last = pos;
    pos += char_size(text, pos);
  }
  return last == text.size() - 1;
}

// ASCII letters only; bytes of two-byte characters stay as they are.
constexpr char upper_ascii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

}  // namespace tq::sjis
