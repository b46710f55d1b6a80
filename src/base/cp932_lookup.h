// One step between a code of code page 932 and a UTF-16 unit, at compile time too. For whole texts
// see cp932.h; for literals sjis_literal.h.
#pragma once

#include "base/cp932_table.h"

namespace tq::cp932 {

// The unit of a single byte; 0 for a lead byte (and for the byte 0, which is itself).
constexpr char16_t unit_of_byte(unsigned char byte) {
  if (byte <= 0x80) return byte;
  if (byte >= 0xA1 && byte <= 0xDF) return static_cast<char16_t>(0xFF61 + (byte - 0xA1));
  if (byte == 0xA0) return 0xF8F0;
  if (byte >= 0xFD) return static_cast<char16_t>(0xF8F1 + (byte - 0xFD));
  return 0;
}

// The unit of a two-byte code; 0 when the code page has no such character.
constexpr char16_t unit_of_pair(unsigned char lead, unsigned char trail) {
  const bool low = lead >= 0x81 && lead <= 0x9F;
  const bool high = lead >= 0xE0 && lead <= 0xFC;
  if ((!low && !high) || trail < 0x40 || trail > 0xFC) return 0;
  return kPairToUnit[low ? lead - 0x81 : lead - 0xE0 + 31][trail - 0x40];
}

// The code of a unit: below 0x100 a single byte, else lead byte << 8 | trail byte; 0 for none (and
// for the unit 0, which is the byte 0).
constexpr unsigned code_of(char16_t unit) {
  if (unit < 0x80) return unit;
  return kPageToCode[kUnitPage[unit >> 8]][unit & 0xFF];
}

}  // namespace tq::cp932
