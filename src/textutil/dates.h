// Dates typed in any form, Western or by Japanese era, to numbers and to one chosen form.
//
// All take at most the first kDateTextMax bytes of a text, cut at a character, and check neither
// month nor day. A number that does not fit into 16 bits keeps its low 16 bits. Null counts as an
// empty text. No state, no memory is allocated.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tq::textutil {

inline constexpr std::size_t kDateTextMax = 1000;

struct Date {
  short year = 0;
  short month = 0;
  short day = 0;
};

// The characters that dates are written with, to half width or to full width (at most twice as
// long); everything else is copied. To half width a lead byte without a trail byte is dropped
// together with the byte behind it. `dst` may be null or the text. The length of the result.
std::int32_t date_width(const char* src, char* dst, bool to_full);

enum class DateForm : short {
  kDate = 0,     // year, month and day were found
  kCompact = 1,  // nothing but digits: see parse_compact_date
  kNoDate = -1,
};

// Finds year, month and day in a text with an era mark or without. The year comes in the era
// `era_out` (1 to 4), else as a Western year. `date` is all zeros unless the result is kDate.
DateForm parse_date(const char* src, short era_out, Date& date);

// Reads five to eight bytes: year, two bytes of month, two of day. False for any other length, and
// `date` is all zeros.
bool parse_compact_date(const char* src, Date& date);

// Rewrites a date with Western year and the separator `mode` (see print_date); modes 200 to 299
// also turn years below 100 into 1920 to 2019. True: `dst` holds the date; false: the text is no
// date and `dst` holds it as it was. `dst` may be null or the text.
bool normalise_date(const char* src, char* dst, short mode, bool pad);

// Prints a date of an era (1 to 4; any other: Western) with Western year. Separators: -1 none, 0
// "/", 1 "-", 2 ".", 3 ":", 4 ";", 5 ","; any other "/". `pad` gives month and day two digits. At
// most kDatePrintMax bytes and a zero byte; the length. `dst` may be null.
inline constexpr std::size_t kDatePrintMax = 20;
std::int32_t print_date(short era, const Date& date, char* dst, short separator, bool pad);

}  // namespace tq::textutil
