// What the AVX2 width conversions look up, made from the lists of width_tables.h, and how the forms
// follow from the codes where that takes less time than a table.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>

#include "textutil/width_tables.h"

namespace tq::textutil::avx2 {

inline constexpr std::size_t kWidth = 32;  // bytes of a vector

// The bytes of a vector: the same everywhere, or one for each place.
struct alignas(kWidth) Vector {
  explicit constexpr Vector(int byte) { bytes.fill(static_cast<std::uint8_t>(byte)); }
  explicit constexpr Vector(std::invocable<std::size_t> auto byte_at) {
    for (std::size_t i = 0; i < kWidth; ++i) bytes[i] = static_cast<std::uint8_t>(byte_at(i));
  }
  std::array<std::uint8_t, kWidth> bytes{};
};

// The bytes from `first` to `last`, for one signed comparison: moved to the bottom.
struct Range {
  constexpr Range(int first, int last) : move(0x80 - first), end(0x81 + last - first) {}
  Vector move;
  Vector end;
};

// Sixteen entries, for the bytes that share their upper half.
using Row = std::array<std::uint8_t, 16>;

// A table of up to eight rows. Looking a byte up adds (exclusive or) the rows up to its own, so
// each row holds its difference from the one before it.
template <std::size_t kRows>
consteval auto make_rows(auto entry) {
  std::array<Row, kRows> rows{};
  for (std::size_t i = 0; i < kRows * 16; ++i) {
    const std::size_t before = i < 16 ? 0 : entry(i - 16);
    rows[i / 16][i % 16] = static_cast<std::uint8_t>(entry(i) ^ before);
  }
  return rows;
}

// ---- To half width: by the second byte less 0x40, where those of rows 1, 3 and 5 begin ----

inline constexpr unsigned kFirstTrail = 0x40;
inline constexpr std::size_t kTrailRows = 6;

constexpr const Form& half_form(unsigned char lead, std::size_t i) {
  return kHalfForms[half_index(lead, static_cast<unsigned char>(kFirstTrail + i))];
}

constexpr bool has_half_form(unsigned char lead, std::size_t i) {
  const Form& form = half_form(lead, i);
  return form.size == 1 || index_of(form.bytes[0]) != lead;
}

// What the pairs begin with at half width; 0 for those that have no such form.
consteval auto make_half_rows(unsigned char lead) {
  return make_rows<kTrailRows>([lead](std::size_t i) {
    return has_half_form(lead, i) ? index_of(half_form(lead, i).bytes[0]) : 0;
  });
}

// A set of second bytes: bit h of entry l for 16 * h + l.
consteval Row make_set(auto holds) {
  Row set{};
  for (std::size_t i = 0; i < kTrailRows * 16; ++i) {
    if (holds(i)) set[i % 16] |= static_cast<std::uint8_t>(1u << i / 16);
  }
  return set;
}

consteval Row make_letters() {
  return make_set([](std::size_t i) { return has_half_form(0x82, i); });
}

// The katakana that become a kana and this mark.
consteval Row make_marked(std::size_t mark) {
  return make_set([mark](std::size_t i) {
    const Form& form = half_form(0x83, i);
    return has_half_form(0x83, i) && form.size == 2 && index_of(form.bytes[1]) == mark;
  });
}

// Row 3 lies in the order of the single bytes, but for the gap that 0x7F leaves in the second
// bytes.
inline constexpr int kLetterMove = 0x1F;
static_assert([] {
  for (std::size_t i = 0; i < kTrailRows * 16; ++i) {
    const std::size_t letter = kFirstTrail + i - kLetterMove - (kFirstTrail + i >= 0x80 ? 1 : 0);
    if (has_half_form(0x82, i) && index_of(half_form(0x82, i).bytes[0]) != letter) return false;
  }
  return true;
}());

// Of rows 1 and 3 nothing becomes two bytes.
static_assert([] {
  for (std::size_t i = 0; i < kTrailRows * 16; ++i) {
    if (has_half_form(0x81, i) && half_form(0x81, i).size != 1) return false;
    if (has_half_form(0x82, i) && half_form(0x82, i).size != 1) return false;
  }
  return true;
}());

// ---- To full width ----

// The second bytes of the full-width forms of `first` and the bytes behind it.
template <std::size_t kRows>
consteval auto make_full_rows(std::size_t first) {
  return make_rows<kRows>(
      [first](std::size_t i) { return index_of(kFullForms[kPlain][first + i].bytes[1]); });
}

// The voiced letters follow the plain ones in row 5, but for ヴ.
inline constexpr int kVuMove = 0x94 - 0x45;
static_assert([] {
  for (std::size_t byte = 0xA0; byte <= 0xDF; ++byte) {
    const auto trail = [byte](Mark mark) { return index_of(kFullForms[mark][byte].bytes[1]); };
    const bool ha_to_ho = byte >= 0xCA && byte <= 0xCE;
    const bool ka_to_to = byte >= 0xB6 && byte <= 0xC4;
    const std::size_t voiced = byte == 0xB3 ? kVuMove : ka_to_to || ha_to_ho ? 1 : 0;
    if (trail(kVoicedMark) != trail(kPlain) + voiced) return false;
    if (trail(kSemiVoicedMark) != trail(kPlain) + (ha_to_ho ? 2 : 0)) return false;
  }
  return true;
}());

// Letters and digits stand in row 3, kana in row 5 but for the prolonged sound mark, all else in
// row 1.
static_assert([] {
  for (std::size_t byte = 0x20; byte <= 0xDF; ++byte) {
    const bool letter = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                        (byte >= 'a' && byte <= 'z');
    const bool kana = byte >= 0xA6 && byte <= 0xDD && byte != 0xB0;
    const Form& form = kFullForms[kPlain][byte];
    const std::size_t lead = letter ? 0x82 : kana ? 0x83 : 0x81;
    if (form.size == 2 && index_of(form.bytes[0]) != lead) return false;
  }
  return true;
}());

struct Tables {
  std::array<Row, kTrailRows> symbols = make_half_rows(0x81);
  std::array<Row, kTrailRows> katakana = make_half_rows(0x83);
  Row letters = make_letters();
  Row voiced_katakana = make_marked(0xDE);
  Row semi_voiced_katakana = make_marked(0xDF);
  Row one_of = {1, 2, 4, 8, 16, 32, 64, 128};
  std::array<Row, 6> full_ascii = make_full_rows<6>(0x20);
  std::array<Row, 4> full_kana = make_full_rows<4>(0xA0);

  Range turned_leads{0xA1, 0xDC};  // the lead bytes of code page 932, with bit 0x20 turned
  Range changing_leads{0x81, 0x83};
  Range changing_trails{0x40, 0x9E};
  Range ascii{0x20, 0x7E};
  Range kana{0xA0, 0xDF};
  Range no_trails{0x20, 0x3F};
  Range marks{0xDE, 0xDF};
  Range small_letters{'a', 'z'};
  Range digits{'0', '9'};
  Range wo_to_n{0xA6, 0xDD};  // ｦ to ﾝ
  Range ka_to_to{0xB6, 0xC4};
  Range ha_to_ho{0xCA, 0xCE};

  Vector row{16};
  Vector first_trail{static_cast<int>(kFirstTrail)};
  Vector letter_move{kLetterMove};
  Vector low_half{0x0F};
  Vector symbol_lead{0x81};
  Vector letter_lead{0x82};
  Vector voiced_mark{0xDE};
  Vector semi_voiced_mark{0xDF};
  Vector first_ascii{0x20};  // also what tells small letters from capitals
  Vector first_kana{0xA0};
  Vector prolonged{0xB0};
  Vector kana_u{0xB3};
  Vector vu_move{kVuMove};

  // Bit n of a mask is bit n % 8 of its byte n / 8.
  Vector byte_of_bit{[](std::size_t n) { return n / 8; }};
  Vector bit_in_byte{[](std::size_t n) { return 1u << n % 8; }};

  // Moves the first bytes of sixteen out: read from here plus 16 less their number.
  Vector moves{[](std::size_t n) { return n < 16 ? n : 0x80; }};
};

inline constexpr Tables kTables;

// How to close the gaps in eight bytes, by the bits of those that stay.
inline constexpr auto kPackings = [] {
  std::array<std::array<std::uint8_t, 8>, 256> packings{};
  for (unsigned bits = 0; bits < 256; ++bits) {
    std::size_t size = 0;
    for (std::uint8_t i = 0; i < 8; ++i) {
      if (bits >> i & 1) packings[bits][size++] = i;
    }
  }
  return packings;
}();

// How to interleave eight bytes with the eight behind them, by the bits of those that get a second
// byte.
inline constexpr auto kPairings = [] {
  std::array<Row, 256> pairings{};
  for (unsigned bits = 0; bits < 256; ++bits) {
    std::size_t size = 0;
    for (std::uint8_t i = 0; i < 8; ++i) {
      pairings[bits][size++] = i;
      if (bits >> i & 1) pairings[bits][size++] = static_cast<std::uint8_t>(8 + i);
    }
  }
  return pairings;
}();

}  // namespace tq::textutil::avx2
