// Kanji numbers in addresses, rewritten as full-width digits.
#pragma once

#include <cstdint>

namespace tq::textutil {

// Writes the address with its kanji numbers as digits and without its spaces to `dst`, which may be
// null and may overlap the text; at most five times as long as the text (*千千千*). Kanji that are
// not followed by a word such as 丁目 or 番, or by the end, belong to a name and stay. The length
// of the result, or -1 with `dst` untouched when there is no memory or the text is too long (above
// 2^31/5 bytes). Null counts as an empty text.
std::int32_t kanji_numbers_to_digits(const char* src, char* dst);

}  // namespace tq::textutil
