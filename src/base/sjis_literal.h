// Japanese literals: "住所録"_sjis is the zero-terminated Shift-JIS text of a UTF-8 source literal,
// converted at compile time and kept in static storage.
//
// A character that code page 932 does not have is a compile error. The text must not hold a zero
// byte of its own, since the result carries no length.
//
// The operator takes its characters as a pack, an extension of both compilers. The standard's form,
// with the text as one template argument, crashes clang 14 where it explains why an initialiser
// that holds such a literal is not constant.
#pragma once

#include <cstddef>
#include <string_view>

#include "base/cp932_lookup.h"
#include "base/utf8.h"

namespace tq {
namespace sjis_literal_detail {

// A literal as a template argument.
template <std::size_t kSize>
struct FixedText {
  consteval FixedText(const char (&text)[kSize]) {
    for (std::size_t at = 0; at < kSize; ++at) bytes[at] = text[at];
  }
  char bytes[kSize] = {};
};

// Shift-JIS never takes more bytes than UTF-8, so the source's size is room enough.
template <FixedText kText>
consteval auto encode() {
  auto out = kText;
  std::size_t size = 0;
  const std::string_view source(kText.bytes, sizeof kText.bytes - 1);
  for (std::size_t at = 0; at < source.size();) {
    const utf8::Char next = utf8::first(source.substr(at));
    if (next.code > 0xFFFF) throw "this character has no code in code page 932";
    const unsigned code = cp932::code_of(static_cast<char16_t>(next.code));
    if (code == 0) throw "this character has no code in code page 932";
    if (code > 0xFF) out.bytes[size++] = static_cast<char>(code >> 8);
    out.bytes[size++] = static_cast<char>(code & 0xFF);
    at += next.size;
  }
  while (size < sizeof out.bytes) out.bytes[size++] = '\0';
  return out;
}

template <FixedText kText>
inline constexpr auto kEncoded = encode<kText>();

}  // namespace sjis_literal_detail

inline namespace literals {

template <typename Char, Char... kChars>
consteval const char* operator""_sjis() {
  return sjis_literal_detail::kEncoded<sjis_literal_detail::FixedText({kChars..., '\0'})>.bytes;
}

}  // namespace literals
}  // namespace tq
