// The eras, their marks and the characters that dates are written with.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "base/sjis_literal.h"
#include "textutil/width_tables.h"

namespace tq::textutil {

// Eras by their number. A Western year is the era's year plus the offset.
struct Era {
  std::string_view name;  // two characters; the first alone marks the era too
  char letter;            // mark in either case; none for Western years
  short offset;
};

inline constexpr Era kEras[] = {
    {"西暦"_sjis, '\0', 0},   {"明治"_sjis, 'M', 1867}, {"大正"_sjis, 'T', 1911},
    {"昭和"_sjis, 'S', 1925}, {"平成"_sjis, 'H', 1988},
};

// Separators by their number; -1 is none, any other number the first of these.
inline constexpr std::string_view kDateSeparators = "/-.:;,";

// The characters with two widths that dates know, in code order.
inline constexpr WidthList kDateForms[] = {
    {"　 ， ． ・ ： ； ／ －"_sjis, "SP , . ･ : ; / -"_sjis},
    {"０ １ ２ ３ ４ ５ ６ ７ ８ ９"_sjis, "0 1 2 3 4 5 6 7 8 9"_sjis},
    {"Ｈ Ｍ Ｓ Ｔ ｈ ｍ ｓ ｔ"_sjis, "H M S T h m s t"_sjis},
};

// Half-width partners by [lead byte - 0x81][second byte], full-width ones by byte; 0 for none.
struct DateWidths {
  std::array<std::array<char, 256>, 2> half{};
  std::array<std::array<char, 2>, 256> full{};
};

consteval DateWidths make_date_widths() {
  DateWidths widths;
  width_detail::for_each(kDateForms, [&](std::string_view full, std::string_view half) {
    widths.half[index_of(full[0]) - 0x81][index_of(full[1])] = half[0];
    widths.full[index_of(half[0])] = {full[0], full[1]};
  });
  return widths;
}

inline constexpr DateWidths kDateWidths = make_date_widths();

// The half-width partner of a two-byte character, 0 for none.
constexpr char half_in_dates(char lead, char trail) {
  const std::size_t row = index_of(lead) - 0x81;
  return row < kDateWidths.half.size() ? kDateWidths.half[row][index_of(trail)] : '\0';
}

}  // namespace tq::textutil
