#!/usr/bin/env python3
"""Generates src/base/cp932_table.h: code page 932 to UTF-16 and back.

Usage: scripts/make_cp932.py > src/base/cp932_table.h

Python's own cp932 codec is the source of the forward table. Where several codes stand for one
Unicode character, the way back follows the code page's rule: JIS X 0208 before NEC row 13 before
the IBM extensions (0xFA40 and up), and the NEC-selected copies of the IBM extensions (0xED, 0xEE)
never. The codec's own encoder differs there (it prefers the NEC-selected copies), so it is not used.
"""

LEADS = [*range(0x81, 0xA0), *range(0xE0, 0xFD)]
TRAILS = range(0x40, 0xFD)

HEADER = """\
// clang-format off
// Code page 932 and UTF-16, both ways, as data. Made by scripts/make_cp932.py; do not edit.
//
// The forward side is Windows' code page 932: JIS X 0201 and JIS X 0208, the NEC special characters
// (row 13, 0x87xx), the NEC-selected IBM extensions (0xED, 0xEE), the IBM extensions (0xFA to 0xFC)
// and the user-defined area (0xF040 to 0xF9FC = U+E000 to U+E757). Of the single bytes that are not
// characters 0x80 is U+0080, and 0xA0, 0xFD, 0xFE, 0xFF are U+F8F0 to U+F8F3, so that they survive a
// round trip. A character that has several codes goes back to the one that Windows chooses: JIS
// X 0208 first, then NEC row 13, then the IBM extensions; never the NEC-selected copies.
#pragma once

#include <cstdint>

namespace tq::cp932 {
"""


def decode(code):
    data = bytes([code >> 8, code & 0xFF]) if code > 0xFF else bytes([code])
    try:
        text = data.decode("cp932")
    except UnicodeDecodeError:
        return 0
    return ord(text) if len(text) == 1 else 0


def preference(code):
    return (0xED00 <= code <= 0xEEFF, code)


def rows(values, per_line=16):
    for at in range(0, len(values), per_line):
        yield "  " + " ".join(f"0x{v:04X}," for v in values[at:at + per_line])


def main():
    pairs = {lead << 8 | trail: decode(lead << 8 | trail) for lead in LEADS for trail in TRAILS}
    back = {}
    for code, unit in pairs.items():
        if unit and (unit not in back or preference(code) < preference(back[unit])):
            back[unit] = code
    for byte in (*range(0x80, 0x81), *range(0xA0, 0xE0), *range(0xFD, 0x100)):
        back[decode(byte)] = byte

    print(HEADER)
    print("// UTF-16 unit of every pair, 0 for none: a row of 189 for each lead byte (0x81 to 0x9F, then")
    print("// 0xE0 to 0xFC), a column for each second byte from 0x40 to 0xFC (0x7F has none).")
    print("inline constexpr std::uint16_t kPairToUnit[60][189] = {")
    for lead in LEADS:
        print(f"  {{  // {lead:02X}")
        print("\n".join(rows([pairs[lead << 8 | trail] for trail in TRAILS])))
        print("  },")
    print("};\n")

    pages = sorted({unit >> 8 for unit in back})
    number = {page: n + 1 for n, page in enumerate(pages)}
    print("// The way back in two steps: the high byte of the unit chooses a page (page 0 is empty), the low")
    print("// byte the code in it; 0 for none. ASCII is not in it: it stands for itself.")
    print("inline constexpr std::uint8_t kUnitPage[256] = {")
    for at in range(0, 256, 16):
        print("  " + " ".join(f"{number.get(page, 0):3}," for page in range(at, at + 16)))
    print("};\n")
    print(f"inline constexpr std::uint16_t kPageToCode[{len(pages) + 1}][256] = {{\n  {{}},")
    for page in pages:
        print(f"  {{  // U+{page:02X}xx")
        print("\n".join(rows([back.get(page << 8 | low, 0) for low in range(256)])))
        print("  },")
    print("};\n\n}  // namespace tq::cp932")


if __name__ == "__main__":
    main()
