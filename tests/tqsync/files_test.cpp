// Reading address files: CSV, encodings, and what is said about files that are no address files.

#include "failure.h"
#include "files/address_file.h"
#include "files/csv.h"
#include "files/encoding.h"
#include "support/test.h"

namespace tqsync {
namespace {

using namespace std::string_literals;
using enum Encoding;

TEST(Csv, RowsAndCells) {
  // `rows`: the line of each and its cells
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"the three line ends", "a,b\nc\r\nd\re", "1 [a][b] 2 [c] 3 [d] 4 [e] "},
      {"empty cells, one after the last comma", ",a,\n,", "1 [][a][] 2 [][] "},
      {"quotes and commas", "\"a,b\",\"\"\"x\"\"\",\"\"", "1 [a,b][\"x\"][] "},
      {"line breaks in quotes belong to the cell and count as lines", "\"a\r\nb\",c\n\"d\n\n\"\ne",
       "1 [a\r\nb][c] 3 [d\n\n] 6 [e] "},
      {"empty lines, blanks", "a\n\n\r\n \nb\n", "1 [a] 4 [ ] 5 [b] "},
      {"a quote inside a plain cell stands for itself", "5\" disk,b", "1 [5\" disk][b] "},
      {"nothing at all", "", ""},
  };
  for (const auto& [why, text, rows] : cases) {
    std::string found;
    for (const CsvRow& row : parse_csv("x.csv", text)) {
      found += std::to_string(row.line) + " ";
      for (const std::string& cell : row.cells) found += "[" + cell + "]";
      found += " ";
    }
    EXPECT_EQ(found, rows) << why;
  }
}

TEST(Encodings, AreToldApart) {
  const std::string mark = "\xEF\xBB\xBF";
  const std::tuple<const char*, std::string, Encoding, Encoding, std::string> rows[] = {
      {"ASCII is both", "name", kDetect, kUtf8, "name"},
      {"UTF-8 without mark", "氏名,﨑", kDetect, kUtf8, "氏名,﨑"},
      {"the mark goes", mark + "氏名", kDetect, kUtf8, "氏名"},
      {"it goes when UTF-8 is asked for", mark + "x", kUtf8, kUtf8, "x"},
      {"vendor characters", "髙﨑①ｱ"_sjis, kDetect, kShiftJis, "髙﨑①ｱ"},
      {"it could be UTF-8: the flag decides", "ﾃｱ"_sjis, kShiftJis, kShiftJis, "ﾃｱ"},
      {"the same, undecided", "ﾃｱ"_sjis, kDetect, kUtf8, "\u00F1"},
  };
  for (const auto& [why, bytes, asked, found, utf8] : rows) {
    SCOPED_TRACE(why);
    const DecodedText text = decode("x.csv", bytes, asked);
    EXPECT_EQ(text.encoding, found);
    EXPECT_EQ(text.utf8, utf8);
  }
  EXPECT_EQ(encoding_from_name("Shift_JIS"), kShiftJis);
  EXPECT_EQ(encoding_from_name("UTF-8"), kUtf8);
  EXPECT_EQ(encoding_from_name("euc-jp"), std::nullopt);
}

TEST(AddressFiles, FaultsNameFileLineAndCure) {
  // `place`: how the message begins
  // `says`: what it holds
  const std::tuple<const char*, std::string, Encoding, std::string, std::string> rows[] = {
      {"no byte", "", kDetect, "x.csv: ", "is empty"},
      {"only line ends", "\r\n\n", kDetect, "x.csv: ", "must hold the headings"},
      {"UTF-16", "\xFF\xFEn\0a\0"s, kDetect, "x.csv: ", "UTF-16"},
      {"a zero byte", "a\nb\0"s, kDetect, "x.csv, line 2: ", "Export"},
      {"bytes of neither encoding", "a\n\"b\r\nc\"\r\x80\xFF\x81", kDetect,
       "x.csv, line 4: ", "no Shift-JIS"},
      {"Shift-JIS taken for UTF-8", "a\n"s + "表"_sjis, kUtf8, "x.csv, line 2: ", "--encoding"},
      {"a quote that stays open", "a\n\"b\nc\nd", kDetect, "x.csv, line 2: ", "never closed"},
      {"text behind a quote", "a\n\"b\nc\" d\n", kDetect, "x.csv, line 3: ", "closing quote"},
      {"more cells than headings", "a,b\n1,2\n1,2,3\n", kDetect,
       "x.csv, line 3: ", "3 cells under 2 headings"},
  };
  for (const auto& [why, bytes, encoding, place, says] : rows) {
    SCOPED_TRACE(why);
    std::string said;
    try {
      parse_address_file("x.csv", bytes, encoding);
    } catch (const Failure& failure) {
      said = failure.what();
    }
    EXPECT_TRUE(said.starts_with(place)) << said;
    EXPECT_NE(said.find(says), std::string::npos) << said;
  }
}

TEST(AddressFiles, RowsAreMadeAsLongAsTheHeadings) {
  const AddressFile file = parse_address_file("x.csv", "a,b,c\n1\n,,\n1,2,3,,\n", kDetect);
  ASSERT_EQ(file.rows.size(), 2u) << "a row of nothing but commas is none";
  EXPECT_EQ(file.rows[0].cells, (Texts{"1", "", ""}));
  EXPECT_EQ(file.rows[1].cells, (Texts{"1", "2", "3"}));
  EXPECT_EQ(file.warnings, Texts{"x.csv, line 2: only 1 cell under 3 headings, the rest is empty"});
}

}  // namespace
}  // namespace tqsync
