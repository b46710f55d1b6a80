// Converting whole texts between Shift-JIS (Windows code page 932) and Unicode.
//
// Everything that the code page can say survives to Unicode and back, except the codes that Windows
// itself folds (the NEC-selected copies of the IBM extensions and a few doubled symbols).
// The functions allocate, so they may throw std::bad_alloc; they keep no state.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tq::cp932 {

// Which characters the way to Shift-JIS takes.
enum class Accept {
  kExact,        // only what comes back as the same character: file names
  kJisSpellings  // also the JIS spellings of seven symbols that Windows spells in its own way
                 // (U+301C wave dash, U+2212 minus, ...; other systems type them): text
};

// From Shift-JIS. A code that the code page does not have, a lead byte before a byte that cannot
// follow it and one at the end become U+FFFD; in the last two cases the next byte stands for
// itself.
std::u16string to_utf16(std::string_view sjis);
std::string to_utf8(std::string_view sjis);

// To Shift-JIS, up to the first character that is malformed or that the code page does not have.
// `out` is replaced by what could be converted; the result is the number of bytes (units) taken,
// which is the size of the text when all of it could be converted and else the place of the fault.
std::size_t convert_utf8(std::string_view utf8, std::string& out, Accept accept = Accept::kExact);
std::size_t convert_utf16(std::u16string_view utf16, std::string& out,
                          Accept accept = Accept::kExact);

// The same as a yes or no: false when not all of the text could be converted.
bool from_utf8(std::string_view utf8, std::string& out, Accept accept = Accept::kExact);
bool from_utf16(std::u16string_view utf16, std::string& out, Accept accept = Accept::kExact);

}  // namespace tq::cp932
