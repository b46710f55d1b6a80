// UTF-8 and code points, strictly: overlong forms, surrogates and values past U+10FFFF are no
// characters. tqsync sees only the library's public face, so it brings its own few lines for this.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tqsync {

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// U+FFFD, which stands for what is no character; Shift-JIS does not have it.
inline constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// The character at the start of a text that is not empty: its code point and the bytes it takes.
// Nothing when the bytes are no character.
struct Character {
  char32_t code;
  std::size_t size;
};
std::optional<Character> first_character(std::string_view utf8);

// The place of the first byte that is no UTF-8, npos when there is none.
std::size_t find_malformed(std::string_view utf8);

// Code points of a text and back. Malformed bytes become U+FFFD, one each.
std::u32string to_code_points(std::string_view utf8);
void append_utf8(std::string& out, char32_t code);
std::string to_utf8(std::u32string_view codes);

}  // namespace tqsync
