// The characters that matter to numbers in addresses, and the table that tells them from the rest
// in one step.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/sjis.h"
#include "base/sjis_literal.h"

namespace tq::textutil {

// What one character is to a number: a digit or a unit of it, a character that may stand behind it,
// a space (which may, too, and is dropped), or none of these.
struct Sign {
  enum Kind : std::uint8_t { kOther, kDigit, kUnit, kTerminator, kSpace } kind;
  std::uint8_t value;  // kDigit: 0 to 9; kUnit: its decimal place, 1 for tens to 3 for thousands
};

namespace kanji_detail {

// The numerals in the order of their value, 0 to 9, and the second forms of 0 to 3.
inline constexpr std::string_view kDigits = "〇一二三四五六七八九"_sjis;
inline constexpr std::string_view kOtherDigits = "零壱弐参"_sjis;
// Tens, hundreds, thousands.
inline constexpr std::string_view kUnits = "十百千"_sjis;
// What a number stands before in an address.
inline constexpr std::string_view kTerminators = "条区丁番号階ＦFのノﾉ－-／/、，,・･（("_sjis;
inline constexpr std::string_view kSpaces = "　 "_sjis;

// Calls put(character) for each character of a text.
constexpr void for_each_character(std::string_view text, auto put) {
  while (!text.empty()) {
    const std::size_t size = sjis::char_size(text, 0);
    put(text.substr(0, size));
    text.remove_prefix(size);
  }
}

constexpr std::size_t index(char byte) { return static_cast<unsigned char>(byte); }

}  // namespace kanji_detail

// Signs by the bytes of a character. Lead bytes with a listed character have a row of their own,
// all others share row 0, which is empty; row 1 holds the single bytes.
class SignTable {
 public:
  consteval SignTable() {
    put_values(kanji_detail::kDigits, Sign::kDigit, 0);
    put_values(kanji_detail::kOtherDigits, Sign::kDigit, 0);
    put_values(kanji_detail::kUnits, Sign::kUnit, 1);
    const auto put_kind = [this](std::string_view text, Sign::Kind kind) {
      kanji_detail::for_each_character(text, [&](std::string_view c) { put(c, {kind, 0}); });
    };
    put_kind(kanji_detail::kTerminators, Sign::kTerminator);
    put_kind(kanji_detail::kSpaces, Sign::kSpace);
  }

  constexpr Sign of_byte(char byte) const { return signs_[1][kanji_detail::index(byte)]; }
  constexpr Sign of_pair(char lead, char trail) const {
    return signs_[rows_[kanji_detail::index(lead)]][kanji_detail::index(trail)];
  }

 private:
  static constexpr std::size_t kRows = 22;

  constexpr void put_values(std::string_view text, Sign::Kind kind, std::uint8_t value) {
    kanji_detail::for_each_character(text, [&](std::string_view c) { put(c, {kind, value++}); });
  }

  constexpr void put(std::string_view character, Sign sign) {
    if (character.size() == 1) {
      signs_[1][kanji_detail::index(character[0])] = sign;
      return;
    }
    std::uint8_t& row = rows_[kanji_detail::index(character[0])];
    if (row == 0) row = used_++;
    signs_[row][kanji_detail::index(character[1])] = sign;
  }

  std::uint8_t used_ = 2;
  std::array<std::uint8_t, 256> rows_{};
  std::array<std::array<Sign, 256>, kRows> signs_{};
};

inline constexpr SignTable kSigns;

}  // namespace tq::textutil
