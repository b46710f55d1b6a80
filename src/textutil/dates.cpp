#include "textutil/dates.h"

#include <cstring>
#include <iterator>
#include <string_view>

#include "base/sjis.h"
#include "common/text.h"
#include "textutil/date_tables.h"

namespace tq::textutil {
namespace {

// As much of the text as is looked at, without reading further.
std::string_view date_text(const char* src) {
  if (src == nullptr) return {};
  const void* end = std::memchr(src, '\0', kDateTextMax + 1);
  if (end != nullptr) return {src, static_cast<std::size_t>(static_cast<const char*>(end) - src)};
  return sjis::cut({src, kDateTextMax + 1}, kDateTextMax);
}

// To half width; `out` has room for the whole text. The end of the result.
char* narrow(std::string_view text, char* out) {
  for (std::size_t pos = 0; pos < text.size(); ++pos) {
    if (!sjis::is_lead(text[pos])) {
      *out++ = text[pos];
    } else if (sjis::is_pair(text, pos)) {
      const char half = half_in_dates(text[pos], text[pos + 1]);
      *out++ = half != '\0' ? half : text[pos];
      if (half == '\0') *out++ = text[pos + 1];
      ++pos;
    } else {
      ++pos;  // neither the lead byte nor what it was torn from means anything here
    }
  }
  return out;
}

// To full width; `out` has room for twice the text. The end of the result.
char* widen(std::string_view text, char* out) {
  for (std::size_t pos = 0; pos < text.size(); ++pos) {
    if (sjis::is_pair(text, pos)) {
      *out++ = text[pos++];
      *out++ = text[pos];
    } else if (const auto& full = kDateWidths.full[index_of(text[pos])]; full[0] != '\0') {
      *out++ = full[0];
      *out++ = full[1];
    } else {
      *out++ = text[pos];
    }
  }
  return out;
}

// The text in half width.
class HalfText {
 public:
  explicit HalfText(const char* src) : end_(narrow(date_text(src), buffer_)) {}
  std::string_view text() const { return {buffer_, static_cast<std::size_t>(end_ - buffer_)}; }

 private:
  char buffer_[kDateTextMax];
  char* end_;
};

// The era that a text begins with and the size of its mark; Western and nothing without one.
struct EraMark {
  short era = 0;
  std::size_t size = 0;
};

EraMark era_mark(std::string_view text) {
  if (text.empty()) return {};
  const bool pair = sjis::is_pair(text, 0);
  for (std::size_t era = 0; era < std::size(kEras); ++era) {
    const auto number = static_cast<short>(era);
    if (!pair) {
      if (era != 0 && sjis::upper_ascii(text[0]) == kEras[era].letter) return {number, 1};
      continue;
    }
    const std::string_view name = kEras[era].name;
    if (text[0] != name[0] || text[1] != name[1]) continue;
    const bool whole = text.size() >= 4 && text[2] == name[2] && text[3] == name[3];
    return {number, whole ? name.size() : 2};
  }
  return {};
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// So many digits fit an int.
constexpr std::size_t kSmallDigits = 9;

// The first run of digits at or behind `pos`, which moves behind it; false when there is none.
bool next_number(std::string_view text, std::size_t& pos, short& value) {
  while (pos < text.size() && !is_digit(text[pos])) ++pos;
  const std::size_t first = pos;
  int small = 0;
  for (; pos < text.size() && is_digit(text[pos]); ++pos) {
    if (pos - first < kSmallDigits) small = small * 10 + (text[pos] - '0');
  }
  const std::size_t size = pos - first;
  value = size <= kSmallDigits ? static_cast<short>(small) : decimal16(text.substr(first, size));
  return size != 0;
}

short offset_of(short era) {
  return era >= 1 && era < static_cast<short>(std::size(kEras)) ? kEras[era].offset : short{0};
}

DateForm parse_half(std::string_view text, short era_out, Date& date) {
  const EraMark mark = era_mark(text);
  std::size_t pos = mark.size;
  short year = 0;
  if (!next_number(text, pos, year)) return DateForm::kNoDate;
  if (mark.era == 0 && pos == text.size() && is_digit(text[0])) return DateForm::kCompact;
  Date found;
  if (!next_number(text, pos, found.month) || !next_number(text, pos, found.day)) {
    return DateForm::kNoDate;
  }
  found.year = static_cast<short>(year + offset_of(mark.era) - offset_of(era_out));
  date = found;
  return DateForm::kDate;
}

bool parse_half_compact(std::string_view text, Date& date) {
  if (text.size() < 5 || text.size() > 8) return false;
  int value = 0;
  bool digits = true;
  for (const char c : text) {
    digits = digits && is_digit(c);
    value = value * 10 + (c - '0');
  }
  if (digits) {
    date = {static_cast<short>(value / 10000), static_cast<short>(value / 100 % 100),
            static_cast<short>(value % 100)};
    return true;
  }
  const std::size_t year = text.size() - 4;
  date = {decimal16(text.substr(0, year)), decimal16(text.substr(year, 2)),
          decimal16(text.substr(year + 2))};
  return true;
}

// Appends a number, with a leading zero when it has one character only and `pad` asks for two.
char* put_number(char* out, int value, bool pad) {
  if (value < 0) *out++ = '-';
  unsigned rest = value < 0 ? 0u - static_cast<unsigned>(value) : static_cast<unsigned>(value);
  std::size_t size = pad && value >= 0 ? 2 : 1;
  for (unsigned limit = size == 2 ? 100 : 10; rest >= limit; limit *= 10) ++size;
  for (std::size_t at = size; at > 0; rest /= 10) out[--at] = static_cast<char>('0' + rest % 10);
  return out + size;
}

std::int32_t print(int year, const Date& date, char* dst, short separator, bool pad) {
  const bool known = separator >= 0 && separator < static_cast<short>(kDateSeparators.size());
  const char between = kDateSeparators[known ? static_cast<std::size_t>(separator) : 0];
  char unwanted[kDatePrintMax + 1];
  char* const begin = dst != nullptr ? dst : unwanted;
  char* out = put_number(begin, year, false);
  for (const short value : {date.month, date.day}) {
    if (separator != -1) *out++ = between;
    out = put_number(out, value, pad);
  }
  *out = '\0';
  return static_cast<std::int32_t>(out - begin);
}

}  // namespace

std::int32_t date_width(const char* src, char* dst, bool to_full) {
  char buffer[2 * kDateTextMax];
  const std::string_view text = date_text(src);
  const char* end = to_full ? widen(text, buffer) : narrow(text, buffer);
  const auto size = static_cast<std::size_t>(end - buffer);
  copy_text(dst, size + 1, {buffer, size});
  return static_cast<std::int32_t>(size);
}

DateForm parse_date(const char* src, short era_out, Date& date) {
  date = {};
  return parse_half(HalfText(src).text(), era_out, date);
}

bool parse_compact_date(const char* src, Date& date) {
  date = {};
  return parse_half_compact(HalfText(src).text(), date);
}

bool normalise_date(const char* src, char* dst, short mode, bool pad) {
  const HalfText half(src);
  Date date;
  const DateForm form = parse_half(half.text(), 0, date);
  if (form == DateForm::kNoDate ||
      (form == DateForm::kCompact && !parse_half_compact(half.text(), date))) {
    copy_text(dst, kDateTextMax + 1, date_text(src));
    return false;
  }
  if (mode / 100 == 2 && date.year >= 0 && date.year < 100) {
    date.year = static_cast<short>(date.year + (date.year >= 20 ? 1900 : 2000));
  }
  print(date.year, date, dst, mode, pad);
  return true;
}

std::int32_t print_date(short era, const Date& date, char* dst, short separator, bool pad) {
  return print(date.year + offset_of(era), date, dst, separator, pad);
}

}  // namespace tq::textutil
