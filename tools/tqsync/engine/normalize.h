// Names, telephone numbers and mail addresses brought into the one form in which they are compared.
// What two keys have in common is told here; who is who is decided in match.h.
//
// All texts are UTF-8. An empty key, or no key, means that there is nothing to compare.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tqsync {

// A name without spaces, dots and a trailing 様, in full width, letters in lower case. In a name of
// Latin letters the order of the words does not count.
std::string name_key(std::string_view name);
// A name key with every kanji in its common spelling.
std::string common_spelling(std::string_view name_key);

// A reading in full-width katakana, small kana written large (old machines have no small ones).
std::string reading_key(std::string_view reading);
// Whether a name consists of nothing but kana, so that it is its own reading.
bool is_kana(std::string_view name_key);

// The telephone numbers of a cell: digits with the leading 0 of Japan ("+81 3-…", and numbers whose
// 0 a spreadsheet has eaten), "+" and digits for other countries. Extensions are cut; numbers
// without area code and fillers such as 000-0000-0000 give nothing.
std::vector<std::string> phone_keys(std::string_view cell);

// The mail addresses of a cell, in half width and lower case, without display names.
std::vector<std::string> mail_keys(std::string_view cell);

// Whether two cells, by their keys, have a telephone number or a mail address in common.
bool share_key(const std::vector<std::string>& a, const std::vector<std::string>& b);

// An address without its prefecture: in half width, no spaces, kanji numbers as digits, the words
// between the numbers (丁目, 番地, 番, 号) and every kind of dash as a hyphen, kanji in their
// common spelling. An address without a number says too little and gives nothing.
std::string address_key(std::string_view address);

// A column heading in half width and lower case, without spaces, hyphens and underscores.
std::string heading_key(std::string_view heading);

}  // namespace tqsync
