// Line reading with a byte limit, over files that no writer of ours would make.
#include "common/lines.h"

#include "support/test.h"

namespace {

Texts lines_of(const TestFolder& folder, std::size_t buffer, bool data) {
  tq::LineReader reader(buffer);
  EXPECT_TRUE(reader.open(folder.at("f")).ok());
  Texts lines;
  std::string_view line;
  while (data ? reader.next_data(line) : reader.next(line)) lines.emplace_back(line);
  return lines;
}

TEST(LineReader, LineEndsLimitsAndComments) {
  // `lines`: read with a buffer of 5 bytes
  const std::tuple<const char*, std::string, Texts> cases[] = {
      {"nothing", "", {}},
      {"LF, CR LF and an end without either", "a\nb\r\nc", {"a", "b", "c"}},
      {"empty lines count", "\n\r\nx\n", {"", "", "x"}},
      {"a lone CR is text", "a\rb\n", {"a\rb"}},
      {"one byte below the limit", "abc\nd", {"abc", "d"}},
      {"exactly the limit: the line end comes by itself", "abcd\ne\n", {"abcd", "", "e"}},
      {"exactly the limit before CR LF", "abcd\r\ne\n", {"abcd", "", "e"}},
      {"longer lines come in pieces", "abcdefghij\nk", {"abcd", "efgh", "ij", "k"}},
      {"a zero byte ends its line's text", std::string("a\0b\nc", 5), {"a", "c"}},
  };
  for (const auto& [why, bytes, lines] : cases) {
    SCOPED_TRACE(why);
    TestFolder folder;
    folder.write("f", bytes);
    EXPECT_EQ(lines_of(folder, 5, false), lines);
  }
}

TEST(LineReader, CommentsArePassedOver) {
  TestFolder folder;
  folder.write("f", ";x\na\n ;b\n;\n\nc;");
  EXPECT_EQ(lines_of(folder, 100, true), (Texts{"a", " ;b", "", "c;"}));
}

TEST(LineReader, LongFilesComeWholeWhateverTheReadSizes) {
  TestFolder folder;
  std::string bytes;
  Texts expected;
  for (int i = 0; i < 3000; ++i) {
    expected.emplace_back(static_cast<std::size_t>(i % 97), static_cast<char>('a' + i % 26));
    bytes += expected.back() + (i % 3 == 0 ? "\r\n" : "\n");
  }
  folder.write("f", bytes);
  EXPECT_EQ(lines_of(folder, 4000, false), expected);
}

}  // namespace
