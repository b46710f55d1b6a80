// The text utilities once more, one character after the other and step by step, for comparison with
// the fast code.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/sjis.h"
#include "base/sjis_literal.h"
#include "textutil/width_rules.h"
#include "tqutil/textutil.h"

namespace tq::test {

using namespace tq::literals;

// The characters of a text: two bytes for a lead byte before a trail byte, else one.
inline std::string_view first_character(std::string_view text) {
  return text.substr(0, sjis::is_pair(text, 0) ? 2 : 1);
}

// The loop over characters, which the code that works on blocks must agree with.
template <class Rule>
std::string by_character(std::string_view text) {
  const std::string whole(text);  // with a zero byte behind it
  std::string out(2 * text.size() + textutil::kSlack, '\0');
  const auto done = textutil::rewrite_by_character<Rule>(whole, text.size(), out.data());
  return out.substr(0, static_cast<std::size_t>(done.out - out.data()));
}

inline std::string reference_half(std::string_view text) {
  return by_character<textutil::ToHalf>(text);
}
inline std::string reference_full(std::string_view text) {
  return by_character<textutil::ToFull>(text);
}
inline std::string reference_without_spaces(std::string_view text) {
  return by_character<textutil::WithoutSpaces>(text);
}

// Where a character stands in a list of two-byte characters, npos if it is not there.
inline std::size_t place_in(std::string_view list, std::string_view character) {
  for (std::size_t at = 0; at < list.size(); at += 2) {
    if (list.substr(at, 2) == character) return at / 2;
  }
  return std::string_view::npos;
}

// The state machine of the kanji numbers as a table of places and a flag.
inline std::string reference_address(std::string_view text) {
  constexpr std::size_t kOnes = 30;
  std::array<std::size_t, kOnes + 1> places{};
  std::string out, raw;
  bool unit_seen = false;
  const auto emit = [&] {
    const auto* first = std::find_if(places.begin(), places.end(), [](auto n) { return n != 0; });
    for (; first != places.end(); ++first) (out += '\x82') += static_cast<char>(0x4F + *first);
    places.fill(0);
  };
  for (std::string_view character; !text.empty(); text.remove_prefix(character.size())) {
    character = first_character(text);
    const std::size_t digit = place_in("〇一二三四五六七八九零壱弐参"_sjis, character);
    const std::size_t unit = place_in("一十百千"_sjis, character);
    if (digit != std::string_view::npos) {
      if (unit_seen && places[kOnes] != 0) emit();
      if (!unit_seen) std::rotate(places.begin(), places.begin() + 1, places.end());
      places[kOnes] = digit % 10;
    } else if (unit != std::string_view::npos) {
      if (places[kOnes - unit] != 0) emit();
      places[kOnes - unit] = std::max<std::size_t>(places[kOnes], 1);
      places[kOnes] = 0;
      unit_seen = true;
    } else {
      const bool ends =
          std::string_view("F -/,(ﾉ･"_sjis).find(character) != std::string_view::npos ||
          place_in("条区丁番号階Ｆのノ－／、，・（　"_sjis, character) != std::string_view::npos;
      if (ends) {
        emit();
      } else {
        out += raw;
      }
      if (character != " " && character != "　"_sjis) out += character;
      places.fill(0);
      raw.clear();
      unit_seen = false;
      continue;
    }
    raw += character;
  }
  emit();
  return out;
}

// Dates by way of the C library.
struct ReferenceDate {
  int form = -1;  // 0 date, 1 digits only, -1 none
  short year = 0, month = 0, day = 0;
};

inline ReferenceDate reference_date(const std::string& text, int era_out) {
  static const std::string_view kNames[] = {"西暦"_sjis, "明治"_sjis, "大正"_sjis, "昭和"_sjis,
                                            "平成"_sjis};
  static const int kOffsets[] = {0, 1867, 1911, 1925, 1988};
  std::string half(text.size() + 1, '\0');
  half.resize(static_cast<std::size_t>(tqDateFormatZH(text.c_str(), half.data(), 0)));
  int era = 0;
  std::size_t skip = 0;
  for (int i = 0; i < 5; ++i) {
    if (half.empty()) break;
    if (half.substr(0, 2) == kNames[i].substr(0, 2)) {
      era = i;
      skip = half.substr(0, 4) == kNames[i] ? 4 : 2;
    } else if (i > 0 && (half[0] == " MTSH"[i] || half[0] == " mtsh"[i])) {
      era = i;
      skip = 1;
    }
  }
  ReferenceDate date;
  std::size_t pos = skip;
  short numbers[3] = {};
  for (int field = 0; field < 3; ++field) {
    const std::size_t begin = half.find_first_of("0123456789", pos);
    if (begin == std::string::npos) return date;
    pos = std::min(half.find_first_not_of("0123456789", begin), half.size());
    const long long number = std::strtoll(half.substr(begin, pos - begin).c_str(), nullptr, 10);
    numbers[field] = static_cast<short>(std::min<long long>(number, INT32_MAX));
    if (pos == half.size() && field < 2) {
      if (field == 0 && begin == 0 && era == 0) date.form = 1;
      return date;
    }
  }
  const int offset = kOffsets[era] - (era_out >= 1 && era_out <= 4 ? kOffsets[era_out] : 0);
  return {0, static_cast<short>(numbers[0] + offset), numbers[1], numbers[2]};
}

inline std::string reference_print(int year, int month, int day, int separator, bool pad) {
  static const char* const kSeparators[] = {"", "/", "-", ".", ":", ";", ","};
  const char* between = separator >= -1 && separator <= 5 ? kSeparators[separator + 1] : "/";
  char out[64];
  std::snprintf(out, sizeof out, pad ? "%d%s%02d%s%02d" : "%d%s%d%s%d", year, between, month,
                between, day);
  return out;
}

}  // namespace tq::test
