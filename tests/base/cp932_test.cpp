// Code page 932: every code and every Unicode character against the system's own conversion, and
// what whole texts add to it.
#include "base/cp932.h"

#include <string_view>

#include "base/sjis.h"
#include "support/code_page.h"
#include "support/test.h"

namespace {

using tq::cp932::Accept;

constexpr char16_t kReplacement = 0xFFFD;

std::string bytes_of(int first, int second) {
  return second < 0 ? std::string(1, static_cast<char>(first))
                    : std::string{static_cast<char>(first), static_cast<char>(second)};
}

TEST(CodePage, EveryCodeIsTheSystemsCharacter) {
  const SystemCodePage system;
  if (!system.usable()) GTEST_SKIP() << "the C library has no tables for code page 932";
  // Bytes that are no characters, kept through a round trip; the system may refuse them.
  const std::string_view kOurOwn = "\x80\xA0\xFD\xFE\xFF";
  int pairs = 0;
  for (int first = 1; first < 256; ++first) {
    const bool lead = tq::sjis::is_lead(static_cast<char>(first));
    for (int second = lead ? 0x40 : -1; second < (lead ? 0xFD : 0); ++second) {
      const std::string bytes = bytes_of(first, second);
      if (second == 0x7F || kOurOwn.find(bytes) != std::string_view::npos) continue;
      std::u16string want = system.decode(bytes);
      if (want.empty()) want = kReplacement;
      EXPECT_EQ(tq::cp932::to_utf16(bytes), want) << std::hex << first << ' ' << second;
      pairs += lead && want[0] != kReplacement ? 1 : 0;
    }
  }
  EXPECT_EQ(pairs, 9604);
}

TEST(CodePage, EveryCharacterHasTheSystemsCode) {
  const SystemCodePage system;
  if (!system.usable()) GTEST_SKIP() << "the C library has no tables for code page 932";
  // The C library also takes spellings of other code pages, which do not come back.
  const std::u16string_view kForeign = u"\u00A2\u00A3\u00A5\u00AC\u2014\u2016\u203E\u2212\u301C";
  const std::u16string_view kOurOwn = u"\u0080\uF8F0\uF8F1\uF8F2\uF8F3";
  for (unsigned code = 1; code < 0x10000; ++code) {
    if (code == 0xD800) code = 0xE000;
    const auto unit = static_cast<char16_t>(code);
    if (kForeign.find(unit) != std::u16string_view::npos) continue;
    if (kOurOwn.find(unit) != std::u16string_view::npos) continue;
    std::string ours;
    const bool converted = tq::cp932::from_utf16({&unit, 1}, ours);
    EXPECT_EQ(ours, system.encode(unit)) << std::hex << code;
    EXPECT_EQ(converted, !ours.empty()) << std::hex << code;
  }
}

TEST(CodePage, EveryByteComesBackExceptTheFoldedCodes) {
  int folded = 0;
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const std::string bytes = bytes_of(first, second);
      const std::u16string utf16 = tq::cp932::to_utf16(bytes);
      if (utf16.find(kReplacement) != std::u16string::npos) continue;
      std::string back;
      ASSERT_TRUE(tq::cp932::from_utf16(utf16, back));
      if (back != bytes) ++folded;
      EXPECT_EQ(tq::cp932::to_utf16(back), utf16);
      ASSERT_TRUE(tq::cp932::from_utf8(tq::cp932::to_utf8(bytes), back));
      EXPECT_EQ(tq::cp932::to_utf16(back), utf16);
    }
  }
  // 374 NEC-selected copies of IBM extensions, 9 symbols of NEC row 13, 15 of the IBM extensions.
  EXPECT_EQ(folded, 398);
}

TEST(CodePage, BrokenShiftJisIsReplacedByteByByte) {
  const std::tuple<std::string_view, std::u16string_view, const char*> cases[] = {
      {"a\x82", u"a\uFFFD", "a lead byte at the end"},
      {"\x82 b", u"\uFFFD b", "a lead byte before a byte that cannot follow"},
      {"\x85\x40z", u"\uFFFDz", "a pair without a character takes both bytes"},
      {"\x82\x82\xA0", u"\uFF42\uF8F0", "pairs are taken from the front"},
  };
  for (const auto& [bytes, want, why] : cases) EXPECT_EQ(tq::cp932::to_utf16(bytes), want) << why;
}

TEST(CodePage, ARefusedTextSaysWhere) {
  const std::tuple<std::string_view, std::size_t, const char*> cases[] = {
      {"東京", 6, "all of it"},
      {"東😀京", 3, "outside the basic plane"},
      {"é", 0, "no code"},
      {"a\xE6\x9D", 1, "cut off"},
      {"a\xC0\xAF", 1, "overlong"},
      {"a\xED\xA0\x80", 1, "a surrogate"},
      {"a\xF4\x90\x80\x80", 1, "past the last code point"},
      {"a\x80", 1, "a byte that cannot begin a character"},
      {std::string_view("a\0b", 3), 3, "zero bytes are characters"},
  };
  for (const auto& [utf8, taken, why] : cases) {
    std::string out = "before";
    EXPECT_EQ(tq::cp932::convert_utf8(utf8, out), taken) << why;
    EXPECT_EQ(tq::cp932::to_utf8(out), utf8.substr(0, taken)) << why;
    EXPECT_EQ(tq::cp932::from_utf8(utf8, out), taken == utf8.size()) << why;
  }
}

TEST(CodePage, JisSpellingsAreTakenInTextOnly) {
  std::string out;
  EXPECT_FALSE(tq::cp932::from_utf8("〜−‖—¢£¬", out));
  ASSERT_TRUE(tq::cp932::from_utf8("〜−‖—¢£¬", out, Accept::kJisSpellings));
  EXPECT_EQ(out, "～－∥―￠￡￢"_sjis);
}

constexpr std::string_view kLiteral = "住ソ表ｱA髙Ⅰ"_sjis;
static_assert(kLiteral == "\x8F\x5A\x83\x5C\x95\x5C\xB1\x41\xFB\xFC\x87\x54");

}  // namespace
