// Half-width and full-width forms of Shift-JIS text, and removal of spaces and of single bytes.
//
// All four read a zero-terminated text (null counts as empty) and write the result, zero byte
// included, to `dst`, which may be null and may overlap the text. They return the length of the
// result, or -1 with `dst` untouched when there is no memory or the result could pass 2^31-1 bytes.
// They keep no state and may run in several threads.
//
// A byte pair is a two-byte character only if a lead byte is followed by a trail byte. Any other
// lead byte is copied and the byte after it stands for itself.
#pragma once

#include <cstdint>

namespace tq::textutil {

// Symbols, digits, letters and katakana to half width; at most as long as the text.
std::int32_t to_half(const char* src, char* dst);

// Single bytes to full width, a kana with its voicing mark to one character; at most twice as long.
std::int32_t to_full(const char* src, char* dst);

// Without half-width and full-width spaces.
std::int32_t without_spaces(const char* src, char* dst);

// Without the bytes that occur in `unwanted` (null: none), second bytes of characters included.
std::int32_t without_bytes(const char* unwanted, const char* src, char* dst);

}  // namespace tq::textutil
