// Bounded copies, decimal numbers and tokens, as every reader takes them from untrusted files.
#include "common/text.h"

#include "support/test.h"

namespace {

TEST(CopyText, NeverPassesTheBufferAndNeverHalvesACharacter) {
  // `kept`: in a buffer of 5 bytes
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"fits with its terminator", "abcd", "abcd"},
      {"one byte too long", "abcde", "abcd"},
      {"character across the edge", "abc\x88\x9F", "abc"},
      {"character that ends at the edge", "ab\x88\x9F\x63", "ab\x88\x9F"},
      {"lead byte that ends the text", "abc\x88", "abc\x88"},
  };
  for (const auto& [why, text, kept] : cases) {
    SCOPED_TRACE(why);
    char buffer[6] = {'#', '#', '#', '#', '#', '#'};
    tq::copy_text(buffer, 5, text);
    EXPECT_EQ(std::string(buffer), kept);
    EXPECT_EQ(buffer[5], '#');
  }
}

TEST(Decimal, TakesWhatStandsInFront) {
  const std::tuple<const char*, int> cases[] = {
      {"", 0},
      {"12x", 12},
      {"x12", 0},
      {" \t-7", -7},
      {"+3", 3},
      {"- 3", 0},
      {"--3", 0},
      {"007", 7},
      {"2147483647", 2147483647},
      {"99999999999999999999", 2147483647},
      {"-99999999999999999999", -2147483647 - 1},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(tq::decimal(text), value) << text;
  EXPECT_EQ(tq::decimal16("65537"), 1) << "the low 16 bits, as a 16-bit field takes them";
}

TEST(Tokens, RunsOfSeparatorsCountAsOne) {
  tq::Tokens tokens(",,a,b,,:c:,");
  Texts taken;
  std::string_view token;
  while (taken.size() < 2 && tokens.next(',', token)) taken.emplace_back(token);
  while (tokens.next(':', token)) taken.emplace_back(token);
  EXPECT_EQ(taken, (Texts{"a", "b", ",", "c", ","}));
  EXPECT_FALSE(tokens.next(',', token));
}

}  // namespace
