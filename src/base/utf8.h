// Reading and writing single characters of UTF-8, strictly: overlong forms, surrogates and values
// past U+10FFFF are malformed. Usable at compile time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tq::utf8 {

inline constexpr char32_t kMalformed = 0xFFFFFFFF;

// One character of a text: its code point (kMalformed if it is none) and how many bytes it takes.
// A malformed character takes the bytes that could still have begun one, at least 1.
struct Char {
  char32_t code;
  std::size_t size;
};

// The character at the start of `text`, which must not be empty.
constexpr Char first(std::string_view text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned lead = byte(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4) return {kMalformed, 1};
  // Only the second byte has a narrower range: no overlong form, no surrogate, not past U+10FFFF.
  const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  char32_t code = lead & (0x7Fu >> size);
  for (std::size_t at = 1; at < size; ++at) {
    if (at == text.size()) return {kMalformed, at};
    const unsigned next = byte(at);
    const bool fits = at == 1 ? next >= low && next <= high : (next & 0xC0) == 0x80;
    if (!fits) return {kMalformed, at};
    code = code << 6 | (next & 0x3F);
  }
  return {code, size};
}

// Appends a code point, which must be a valid one (no surrogate, at most U+10FFFF).
inline void append(std::string& out, char32_t code) {
  const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (code < 0x80) return put(code);
  if (code < 0x800) {
    put(0xC0 | code >> 6);
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
  }
  put(0x80 | (code & 0x3F));
}

}  // namespace tq::utf8
