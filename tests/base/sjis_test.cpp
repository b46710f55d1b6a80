// Walking Shift-JIS text: where the second byte of a character looks like a separator, where a text
// breaks off inside a character, and where both happen at a cut.
#include "base/sjis.h"

#include <string_view>

#include "support/test.h"

namespace {

using tq::sjis::char_size;
using tq::sjis::cut;
using tq::sjis::ends_with;
using tq::sjis::find_last;
using tq::sjis::is_lead;
using tq::sjis::is_pair;
using tq::sjis::is_trail;
constexpr auto kNone = std::string_view::npos;

TEST(SjisBytes, LeadAndTrailRangesEndWhereTheCodePageSays) {
  const std::tuple<unsigned, unsigned, bool, bool, const char*> ranges[] = {
      {0x00, 0x3F, false, false, "controls, digits and punctuation stand alone"},
      {0x40, 0x7E, false, true, "ASCII letters may be second bytes"},
      {0x7F, 0x7F, false, false, "delete is in no character"},
      {0x80, 0x80, false, true, "second byte only"},
      {0x81, 0x9F, true, true, "first lead range"},
      {0xA0, 0xDF, false, true, "half-width kana"},
      {0xE0, 0xFC, true, true, "second lead range, user-defined characters included"},
      {0xFD, 0xFF, false, false, "unused"},
  };
  for (const auto& [first, last, lead, trail, why] : ranges) {
    for (unsigned byte = first; byte <= last; ++byte) {
      EXPECT_EQ(is_lead(static_cast<char>(byte)), lead) << why << ", byte " << byte;
      EXPECT_EQ(is_trail(static_cast<char>(byte)), trail) << why << ", byte " << byte;
    }
  }
}

TEST(SjisWalk, AStepTakesAnySecondByteButAPairOnlyATrailByte) {
  EXPECT_EQ(char_size("\x95\x5C", 0), 2u);
  EXPECT_TRUE(is_pair("\x95\x5C", 0));
  EXPECT_EQ(char_size("\x95\x20", 0), 2u) << "a cut must not leave the lead byte behind";
  EXPECT_FALSE(is_pair("\x95\x20", 0));
  EXPECT_EQ(char_size("\x95", 0), 1u) << "a lead byte at the end has nothing to own";
  EXPECT_FALSE(is_pair("\x95", 0));
  EXPECT_EQ(char_size("\xB1\x41", 0), 1u) << "half-width kana are single bytes";
}

TEST(SjisCut, NeverLeavesHalfACharacter) {
  const std::tuple<std::string_view, std::size_t, std::string_view, const char*> cases[] = {
      {"abc", 3, "abc", "fits"},
      {"abc", 2, "ab", "single bytes cut anywhere"},
      {"a\x83\x5C", 2, "a", "the second byte does not fit"},
      {"a\x83\x5C\x62", 3, "a\x83\x5C", "ends with the whole character"},
      {"\x83\x5C", 0, "", "no room"},
      {"\xB1\xB2\xB3", 2, "\xB1\xB2", "half-width kana"},
      {"ab\x83", 3, "ab\x83", "a text that is broken already is not touched when it fits"},
  };
  for (const auto& [text, max, want, why] : cases) EXPECT_EQ(cut(text, max), want) << why;
}

TEST(SjisSearch, ASecondByteIsNeverASeparator) {
  const std::tuple<std::string_view, std::size_t, bool, const char*> cases[] = {
      {"C:\\a\\b", 4, false, "plain path"},
      {"C:\\a\\", 4, true, "ends with the separator"},
      {"C:\\\x95\x5C", 2, false, "the second byte of the last character"},
      {"\x95\x5C\\", 2, true, "a real separator behind it"},
      {"\x95\x5C\x5C\x95\x5C", 2, false, "between two such characters"},
      {"", kNone, false, "empty"},
      {"\x83", kNone, false, "half a character"},
  };
  for (const auto& [text, last, at_end, why] : cases) {
    EXPECT_EQ(find_last(text, "\\"), last) << why;
    EXPECT_EQ(ends_with(text, '\\'), at_end) << why;
  }
}

}  // namespace
