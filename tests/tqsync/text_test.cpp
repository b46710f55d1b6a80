// UTF-8 inside tqsync, and tables on the terminal.
#include <sstream>

#include "support/test.h"
#include "terminal/table.h"
#include "text/unicode.h"

namespace tqsync {
namespace {

using namespace std::string_literals;

TEST(Unicode, MalformedBytesAreFound) {
  const std::tuple<const char*, std::string, std::size_t> rows[] = {
      {"all four sizes", "aé漢𠮷", std::string::npos},
      {"the last character there is", "\xF4\x8F\xBF\xBF", std::string::npos},
      {"past the last character", "a\xF4\x90\x80\x80", 1},
      {"overlong slash", "ab\xC0\xAF", 2},
      {"overlong in three bytes", "\xE0\x9F\xBF", 0},
      {"overlong in four bytes", "\xF0\x8F\xBF\xBF", 0},
      {"surrogate", "漢\xED\xA0\x80", 3},
      {"cut short at the end", "漢\xE6\xBC", 3},
      {"a lead byte in place of a second byte", "\xE6\xE6\xBC\xA2", 0},
      {"a second byte alone", "\x80", 0},
      {"Shift-JIS", "\x8E\x52\x93\x63", 0},
  };
  for (const auto& [why, text, fault] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(find_malformed(text), fault);
    EXPECT_EQ(to_utf8(to_code_points(text)) == text, fault == std::string::npos);
  }
  EXPECT_EQ(to_code_points("a\xE6\xBC"), U"a\uFFFD\uFFFD");
}

TEST(Table, WithoutRowsIsASentenceForPeople) {
  const Table table("people", {{"name"}});
  std::ostringstream people, headings, script;
  table.print(people, {.output = Output::kPeople, .when_empty = "Nobody."});
  EXPECT_EQ(people.str(), "Nobody.\n");
  table.print(headings, {Output::kPeople});
  EXPECT_EQ(headings.str(), "  name\n");
  table.print(script, {.output = Output::kScript, .when_empty = "Nobody."});
  EXPECT_EQ(script.str(), "#people\tname\n");
}

TEST(Table, MarksTakeNoCellAndNothingSteersTheTerminal) {
  Table table("people", {{"name"}, {"n", Table::Kind::kNumber}});
  table.add({"山﨑ｶ", "7"});
  table.add({"か\u3099𠮷\u202Eb\x1B[2J\n", "12"});
  std::ostringstream people, script;
  table.print(people, {Output::kPeople});
  EXPECT_EQ(people.str(), "  name          n\n  山﨑ｶ         7\n  か\u3099𠮷 b [2J   12\n");
  table.print(script, {Output::kScript});
  EXPECT_EQ(script.str(), "#people\tname\tn\npeople\t山﨑ｶ\t7\npeople\tか\u3099𠮷 b [2J \t12\n");
}

}  // namespace
}  // namespace tqsync
