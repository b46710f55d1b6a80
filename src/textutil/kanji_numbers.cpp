#include "textutil/kanji_numbers.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "base/sjis.h"
#include "textutil/kanji_tables.h"
#include "textutil/source.h"
#include "textutil/writer.h"

namespace tq::textutil {
namespace {

// A unit is one character of two bytes and can write as many as four digits of two bytes, which
// come before the run's own text when the run turns out to be part of a name.
constexpr std::size_t kGrowth = 5;

// The number that a run of numerals and units has built so far, a digit in each decimal place.
class Number {
 public:
  // Takes a numeral. Numerals in a row are places of one number (一二三 is 123); behind a unit a
  // second numeral begins another number, and the first one is written.
  void digit(std::uint8_t value, Writer& out) {
    if (unit_seen_ && places_[kOnes] != 0) {
      write(out);
    } else if (!unit_seen_) {
      std::memmove(places_, places_ + 1, kOnes);  // a digit that falls off the front is lost
      first_ = first_ > 0 ? first_ - 1 : 0;
    }
    set(kOnes, value);
  }

  // Takes a unit: the ones become its digit, or it stands for one of itself. A unit whose place is
  // taken begins another number.
  void unit(std::uint8_t power, Writer& out) {
    const std::size_t place = kOnes - power;
    if (places_[place] != 0) write(out);
    const std::uint8_t count = places_[kOnes] != 0 ? places_[kOnes] : 1;
    places_[kOnes] = 0;
    set(place, count);
    unit_seen_ = true;
  }

  // Writes the places from the first that is not 0, as full-width digits, and clears them all.
  void write(Writer& out) {
    char* at = out.room(2 * kPlaces);
    std::size_t place = first_;
    while (place < kPlaces && places_[place] == 0) ++place;
    for (; place < kPlaces; ++place) {
      *at++ = '\x82';
      *at++ = static_cast<char>(0x4F + places_[place]);
    }
    out.advance(at);
    std::memset(places_, 0, kPlaces);
    first_ = kPlaces;
  }

 private:
  static constexpr std::size_t kPlaces = 31;
  static constexpr std::size_t kOnes = kPlaces - 1;

  void set(std::size_t place, std::uint8_t value) {
    places_[place] = value;
    first_ = std::min(first_, place);
  }

  std::uint8_t places_[kPlaces] = {};
  std::size_t first_ = kPlaces;  // no place before this one holds a digit
  bool unit_seen_ = false;
};

Sign sign_at(std::string_view text, std::size_t pos) {
  return sjis::is_pair(text, pos) ? kSigns.of_pair(text[pos], text[pos + 1])
                                  : kSigns.of_byte(text[pos]);
}

// Writes the run of numerals and units that begins at `pos`: as a number when the character behind
// it allows that, else as it stands. Numbers that were completed within the run are written in
// either case. The position behind the run.
std::size_t write_run(std::string_view text, std::size_t pos, Writer& out) {
  const std::size_t begin = pos;
  Number number;
  Sign sign{Sign::kTerminator, 0};  // what the end of the text counts as
  for (; pos < text.size(); pos += 2) {
    sign = sign_at(text, pos);
    if (sign.kind == Sign::kDigit) {
      number.digit(sign.value, out);
    } else if (sign.kind == Sign::kUnit) {
      number.unit(sign.value, out);
    } else {
      break;
    }
  }
  const bool ends =
      pos == text.size() || sign.kind == Sign::kTerminator || sign.kind == Sign::kSpace;
  if (ends) {
    number.write(out);
  } else {
    out.append(text.substr(begin, pos - begin));
  }
  return pos;
}

// Copies from `pos` to the next numeral or unit, or about as far as one filling of the writer goes,
// leaving out the spaces. The position reached.
std::size_t copy_others(std::string_view text, std::size_t pos, Writer& out) {
  constexpr std::size_t kMost = 1024;
  const std::size_t end = text.size() - pos > kMost ? pos + kMost : text.size();
  char* at = out.room(kMost + 2);
  while (pos < end) {
    if (sjis::is_pair(text, pos)) {
      const Sign sign = kSigns.of_pair(text[pos], text[pos + 1]);
      if (sign.kind == Sign::kDigit || sign.kind == Sign::kUnit) break;
      std::memcpy(at, text.data() + pos, 2);
      at += sign.kind == Sign::kSpace ? 0 : 2;
      pos += 2;
    } else {
      *at = text[pos];
      at += text[pos] == ' ' ? 0 : 1;
      ++pos;
    }
  }
  out.advance(at);
  return pos;
}

}  // namespace

std::int32_t kanji_numbers_to_digits(const char* src, char* dst) {
  Source source(src, kGrowth);
  if (!source.size_fits()) return -1;
  if (source.text().size() > Writer::kKept / kGrowth && !source.keep_from(dst)) return -1;
  const std::string_view text = source.text();
  Writer out(dst);
  for (std::size_t pos = 0; pos < text.size();) {
    pos = copy_others(text, pos, out);
    if (pos < text.size()) pos = write_run(text, pos, out);
  }
  return out.finish();
}

}  // namespace tq::textutil
