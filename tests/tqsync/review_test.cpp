// Deciding who is who: records of different files side by side, answers, decisions in files, and
// the address file that comes of them.
#include <map>
#include <utility>

#include "engine/common_fields.h"
#include "engine/review.h"
#include "failure.h"
#include "files/address_writer.h"
#include "files/decision_file.h"
#include "support/test.h"

namespace {

using namespace tqsync;

std::vector<AddressFile> files_of(const Texts& csv) {
  std::vector<AddressFile> files;
  for (const std::string& text : csv) {
    files.push_back(parse_address_file("a.csv", text, Encoding::kUtf8));
  }
  return files;
}

// What the columns of the tests hold.
FileColumns columns_of(const AddressFile& file) {
  static const std::map<std::string, FileColumn> known = {
      {"氏名", {5, ValueKind::kName}},        {"名前", {593, ValueKind::kName}},
      {"表示名", {13, ValueKind::kName}},     {"姓", {3, ValueKind::kFamilyName}},
      {"名", {1, ValueKind::kGivenName}},     {"せい", {2, ValueKind::kFamilyReading}},
      {"電話", {42, ValueKind::kPhone}},      {"自宅電話", {42, ValueKind::kPhone}},
      {"携帯電話", {512, ValueKind::kPhone}}, {"電話1", {513, ValueKind::kPhone}},
      {"電話2", {514, ValueKind::kPhone}},    {"mail1", {246, ValueKind::kMail}},
      {"mail2", {247, ValueKind::kMail}},     {"メール", {242, ValueKind::kMail}},
      {"会社名", {87, ValueKind::kCompany}},  {"Company", {88, ValueKind::kCompany}},
      {"備考", {197, ValueKind::kOther}},     {"Notes", {197, ValueKind::kOther}}};
  FileColumns columns;
  for (const std::string& heading : file.headings) {
    const auto found = known.find(heading);
    columns.push_back(found == known.end() ? FileColumn() : found->second);
  }
  return columns;
}

std::string joined(const Texts& texts) {
  std::string all;
  for (const std::string& text : texts) all += text + "|";
  return all;
}

TEST(CommonFieldsOfFiles, ValuesOfOneKindStandInOneField) {
  const std::string master =
      "氏名,自宅電話,携帯電話,メール,会社名,備考\n山田 太郎,03-0123-4567,,a@b.jp,,\n";
  const std::string same = "氏名|自宅電話|携帯電話|メール|会社名|備考|";
  // `of_master`, `partner`: headings and one record each
  // `fields`, `partner_values`: of the partner's record
  const std::tuple<const char*, std::string, std::string, std::string, std::string> rows[] = {
      {"parts join, headings of one meaning meet", master,
       "姓,名,Notes,Company\n山田,太郎,memo,社\n", same, "山田 太郎||||社|memo|"},
      {"a whole name wins", master, "姓,名,表示名\n山,太,山田さん\n", same, "山田さん||||||"},
      {"a whole name comes apart", "姓,名\n山田,太郎\n", "名前\n山田　太郎\n", "姓|名|",
       "山田|太郎|"},
      {"telephones by number and kind", master, "氏名,電話1,電話2\n,09001234567,0301234567\n", same,
       "|0301234567|09001234567||||"},
      {"another fixed number finds no room", master, "氏名,電話1,電話2\n,0301234567,0609876543\n",
       same + "電話2|", "|0301234567|||||0609876543|"},
      {"the same number twice is one", master, "氏名,電話1,電話2\n,0301234567,03-0123-4567\n", same,
       "|0301234567|||||"},
      {"more mail", master, "氏名,mail1,mail2\n,x@y.jp,A@B.JP\n", same + "mail1|",
       "|||A@B.JP|||x@y.jp|"},
      {"the partner's own", master, "氏名,趣味\nx,釣り\n", same + "趣味|", "x||||||釣り|"},
      {"no name twice", "氏名,趣味\nx,\n", "氏名,趣味,趣味\nx,a,b\n", "氏名|趣味|趣味 (2)|",
       "x|a|b|"},
      {"nothing of the master's kind", "電話\n1\n", "名前,せい\nx,y\n", "電話|名前|せい|", "|x|y|"},
  };
  const RecordRef records[] = {{0, 0}, {1, 0}};
  for (const auto& [why, of_master, partner, fields, partner_values] : rows) {
    SCOPED_TRACE(why);
    const std::vector<AddressFile> files = files_of({of_master, partner});
    const std::vector<FileColumns> columns = {columns_of(files[0]), columns_of(files[1])};
    CommonFields common(files, columns);
    const std::vector<Values> values = common.place(records);
    Texts names;
    for (const Field& field : common.fields()) names.push_back(field.name);
    EXPECT_EQ(joined(names), fields);
    EXPECT_EQ(joined(values[1]), partner_values);
    EXPECT_EQ(values[0].size(), values[1].size());
  }
}

TEST(CommonFieldsOfFiles, DifferencesAreThoseThatCount) {
  const std::vector<Values> values = {{"髙橋 一", "03-0123-4567", "", "x"},
                                      {"髙橋　一", "0301234567", "", ""},
                                      {"高橋 一", "0301234567", "", ""}};
  EXPECT_EQ(difference(ValueKind::kName, std::span(values).first(2), 0), Difference::kNone);
  EXPECT_EQ(difference(ValueKind::kName, values, 0), Difference::kDiffers);
  EXPECT_EQ(difference(ValueKind::kPhone, values, 1), Difference::kNone);
  EXPECT_EQ(difference(ValueKind::kOther, values, 1), Difference::kDiffers);
  EXPECT_EQ(difference(ValueKind::kOther, values, 2), Difference::kNone);
  EXPECT_EQ(difference(ValueKind::kOther, values, 3), Difference::kSomeEmpty);
}

TEST(Answers, OnlyClearOnesCount) {
  using Kind = Answer::Kind;
  using Places = std::vector<std::size_t>;
  const std::tuple<std::string, Kind, Places, bool, bool> rows[] = {
      {"", Kind::kSkip, {}, false, false},           {"a", Kind::kAll, {}, false, false},
      {" f\r", Kind::kAll, {}, true, false},         {"n*", Kind::kLinked, {}, false, true},
      {"a *", Kind::kAll, {}, false, true},          {"q", Kind::kQuit, {}, false, false},
      {"3,1 3", Kind::kThese, {0, 2}, false, false}, {"1 2 f", Kind::kThese, {0, 1}, true, false},
  };
  for (const auto& [text, kind, places, by_field, rest] : rows) {
    SCOPED_TRACE(text);
    const Answer answer = parse_answer(text, 3);
    EXPECT_EQ(answer.kind, kind);
    EXPECT_EQ(answer.places, places);
    EXPECT_EQ(answer.by_field, by_field);
    EXPECT_EQ(answer.rest, rest);
  }
  for (const char* unclear :
       {"4", "0", "-1", "99999999999999999999", "1 a", "a 1", "1*", "*", "yes"}) {
    EXPECT_EQ(parse_answer(unclear, 3).kind, Kind::kUnclear) << unclear;
  }
  EXPECT_EQ(parse_place("", 3, 2), 2u);
  EXPECT_EQ(parse_place(" 1 ", 3, 2), 0u);
  for (const char* wrong : {"0", "4", "1 2", "x"}) EXPECT_EQ(parse_place(wrong, 3, 2), 3u) << wrong;
}

TEST(Decisions, MakeOneAddressFileOfSeveral) {
  const AddressFile master =
      parse_address_file("a.csv", "氏名,電話\n一,1\n二,2\n三,3\n", Encoding::kUtf8);
  const std::vector<Field> fields = {{"氏名", {}}, {"電話", {}}, {"空", {}}, {"趣味", {}}};
  const std::vector<Values> records = {{"一", "", "", ""}, {"壱", "9", "", "釣り"}};
  const std::vector<DecidedPerson> persons = {
      {1, {{0, 0}, {0, 1}, {1, 0}}, merge_values(records, {}), {}},
      {2, {{1, 1}}, merge_values(records, {{0, 1}, {1, 0}}), {}},
  };
  const MergedBook book = merge_book(master, fields, persons);
  EXPECT_EQ(joined(book.headings), "氏名|電話|趣味|");
  std::string rows;
  for (const Values& row : book.rows) rows += joined(row) + "\n";
  EXPECT_EQ(rows, "一|9|釣り|\n三|3||\n壱||釣り|\n") << "a chosen value may be the empty one";
}

TEST(Decisions, FilesThatSayTooLittleAreRefused) {
  const auto rows = parse_decisions("d",
                                    "\xEF\xBB\xBF# by hand\n\nlinks\tx\n"
                                    "#decisions\tid\tperson\tfield\r\n"
                                    "decisions\t1\ta\ndecisions\t2\ta\t氏名\r\n");
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].line, 5u);
  EXPECT_EQ(rows[1].person + rows[1].id + rows[1].field, "a2氏名");
  for (const char* wrong :
       {"decisions\t1\ta\n", "#decisions\tid\n", "#decisions\tid\tperson\ndecisions\t1\n",
        "#decisions\tid\tperson\ndecisions\t\ta\n", "#decisions\tid\tperson\n\x80\n"}) {
    EXPECT_THROW(parse_decisions("d", wrong), Failure) << wrong;
  }
}

TEST(AddressFiles, AreReadAsTheyWereWritten) {
  TestFolder folder;
  const std::u8string native = (folder.native() / "out.csv").u8string();
  const std::string path(native.begin(), native.end());
  const std::vector<Texts> rows = {{"\"a\", b", "x\r\ny"}, {"", "山田"}, {"c\nd", "e\"f"}};
  const auto read = [&] {
    const AddressFile file = read_address_file(path, Encoding::kDetect);
    std::vector<Texts> cells;
    for (const CsvRow& row : file.rows) cells.push_back(row.cells);
    return std::pair(file.encoding, cells);
  };
  EXPECT_EQ(write_address_file(path, {"h,1", "h2"}, rows, Encoding::kShiftJis),
            Encoding::kShiftJis);
  EXPECT_EQ(read(), std::pair(Encoding::kShiftJis, rows));
  const std::vector<Texts> rare = {{"𠮷田", "x"}};
  EXPECT_EQ(write_address_file(path, {"h1", "h2"}, rare, Encoding::kShiftJis), Encoding::kUtf8);
  EXPECT_EQ(read(), std::pair(Encoding::kUtf8, rare));
  EXPECT_THROW(write_address_file(path + "/no/folder", {"h"}, {}, Encoding::kUtf8), Failure);
  EXPECT_EQ(folder.contents().size(), 1u) << "nothing is left beside the file";
}

}  // namespace
