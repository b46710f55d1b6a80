// The two work files: their bytes, what readers make of anything, what a failing disk leaves, and
// what a choice does to the groups.
#include "ctd/record_table.h"
#include "support/faults.h"
#include "support/test.h"
#include "tqutil/ctd.h"

namespace {

const char* const kCtdFile = "work\\~CTDINFO.TMP";
const char* const kMrgFile = "work\\~MRGINFO.TMP";

std::string raw(CCtdCtl& ctd, int32_t record, int32_t field) {
  const short size = ctd.GetCtdFldStrSize(record, field);
  std::string text(static_cast<std::size_t>(size < 0 ? 0 : size) + 1, 'x');
  return ctd.GetCtdFldStr(record, field, text.data()) == 0 ? text.c_str() : "failed";
}

std::string title(CCtdCtl& ctd, int32_t record) {
  char title[TQ_CTD_TITLE_SIZE] = "";
  char description[TQ_CTD_DESCRIPTION_SIZE];
  short kind = 0;
  if (ctd.GetCtdRecInfo(record, title, description, &kind) != 0) return "failed";
  return std::string(title) + "|" + std::to_string(kind) + "|" + description;
}

RecordTable two_records() {
  RecordTable table({{3, "姓"_sjis}, {1, ""}, {87, "会社"_sjis}});
  table.add("001001000000001", "first", {"Yamada", "Taro", "A\r\nB"});
  table.add("001002000000002", "second", {"", "", "C"});
  table.record(0).kind = -3;
  std::string("line one\nline two").copy(table.record(0).description, 100);
  return table;
}

TEST(CandidateFile, BytesAndBack) {
  TestHome home;
  RecordTable table = two_records();
  CCtdCtl writer;
  writer.SetCtdTitle("候補"_sjis);
  table.give_to(writer);
  EXPECT_EQ(writer.SetCtdFilePath(1, "Z:\\elsewhere", nullptr), 0);
  ASSERT_EQ(writer.WriteCtdFile(), 0);
  EXPECT_EQ(home.read(kCtdFile), "候補"_sjis + std::string("\n3\n") + "姓"_sjis + "\n\n" +
                                     "会社"_sjis +
                                     "\n2\nfirst\n-3\nline one line two\nYamada Taro\nYamada "
                                     "Taro\nA  B\nsecond\n0\n\n\n\nC\n");
  CCtdCtl reader;
  ASSERT_EQ(reader.ReadCtdFile(), 0);
  char text[TQ_CTD_TITLE_SIZE];
  reader.GetCtdTitle(text);
  EXPECT_STREQ(text, "候補"_sjis);
  EXPECT_EQ(reader.GetCtdRecCnt(), 2);
  EXPECT_EQ(reader.GetCtdFldCnt(), 3);
  EXPECT_EQ(title(reader, 0), "first|-3|line one line two");
  EXPECT_EQ(title(reader, 2), "failed");
  EXPECT_EQ(raw(reader, 0, 1), "Yamada Taro");
  EXPECT_EQ(raw(reader, 1, 2), "C");
  EXPECT_EQ(raw(reader, 1, 3), "failed");
  short width = -1;
  EXPECT_EQ(reader.GetCtdFldInfo(1, text, &width), 0);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(width, 11);
  EXPECT_EQ(reader.GetCtdFldNameSizeMax(), 4);
  EXPECT_EQ(reader.GetCtdFldNameSize(3), -1);
  EXPECT_EQ(reader.GetCtdFldStrSizeMax(), 11);
  EXPECT_EQ(reader.GetCtdRecTitleSizeMax(), 6);
  std::string formatted(TQ_CTD_TEXT_SIZE, 'x');
  EXPECT_EQ(reader.GetCtdFldStrS(0, 0, formatted.data()), 0);
  EXPECT_STREQ(formatted.c_str(), "") << "records from a file have nothing to join";
  EXPECT_EQ(reader.GetMargInfo(2), 0) << "choices are there now";
}

TEST(CandidateFile, ReadsAnyContentWithoutHarm) {
  const std::string record = "title\n1\ndescription\nvalue\n";
  // `first`, `last`: first value of the first and of the last record
  const std::tuple<const char*, std::string, int32_t, short, std::string, std::string> cases[] = {
      {"empty file", "", 0, 0, "failed", "failed"},
      {"no fields: a line is a name yet", "t\n0\nname\n1\nx\n2\ny\n", 1, 0, "failed", "failed"},
      {"a record cut short", "t\n1\na\n2\n" + record + "second\n", 2, 1, "value", ""},
      {"less than no field", "t\n-5\nname\n1\nx\n", 1, 0, "failed", "failed"},
      {"less than no record", "t\n1\na\n-1\n" + record, 0, 1, "failed", "failed"},
      {"no number", "t\n1\na\nmany\n" + record, 0, 1, "failed", "failed"},
      {"a small lie is believed", "t\n1\na\n9\n" + record, 9, 1, "value", ""},
      {"CR LF", "t\r\n1\r\na\r\n1\r\nx\r\n0\r\ny\r\nvalue\r\n", 1, 1, "value", "value"},
      {"a long line comes in pieces", "t\n1\na\n1\nx\n1\ny\n" + std::string(20000, 'v') + "\n", 1,
       1, std::string(19999, 'v'), std::string(19999, 'v')},
  };
  for (const auto& [why, bytes, records, fields, first, last] : cases) {
    SCOPED_TRACE(why);
    TestHome home;
    CCtdCtl ctd;
    home.write(kCtdFile, bytes);
    ASSERT_EQ(ctd.ReadCtdFile(), 0);
    EXPECT_EQ(ctd.GetCtdRecCnt(), records);
    EXPECT_EQ(ctd.GetCtdFldCnt(), fields);
    EXPECT_EQ(raw(ctd, 0, 0), first);
    EXPECT_EQ(raw(ctd, records - 1, 0), last);
  }
  TestHome home;
  CCtdCtl ctd;
  home.write(kCtdFile, "t\n32767\na\n2147483647\n");
  EXPECT_EQ(ctd.ReadCtdFile(), 0);
  home.write(kCtdFile, "t\n1\na\n2147483647\n" + record);
  EXPECT_EQ(ctd.ReadCtdFile(), 0);
  EXPECT_LT(ctd.GetCtdRecCnt(), 10000) << "no more than the file bears out";
}

TEST(RecordTables, WhoOwnsWhat) {
  TestHome home;
  RecordTable table = two_records();
  CCtdCtl ctd;
  table.give_to(ctd);
  EXPECT_EQ(ctd.ReadCtdFile(), 1) << "there is no file";
  EXPECT_EQ(ctd.GetCtdRecCnt(), 2) << "the caller's table stays";
  std::string(TQ_CTD_TITLE_SIZE, 't').copy(table.record(1).title, TQ_CTD_TITLE_SIZE);
  table.record(1).cap = 0x74747474;
  EXPECT_EQ(ctd.GetCtdRecTitleSize(1), TQ_CTD_TITLE_SIZE) << "no terminator: the array's end";
  std::string("second\0", 7).copy(table.record(1).title, TQ_CTD_TITLE_SIZE);
  ASSERT_EQ(ctd.WriteCtdFile(), 0);
  ASSERT_EQ(ctd.ReadCtdFile(), 0);
  int32_t records = 0;
  short fields = 0;
  tSYNC_CTDRECINFO* first = nullptr;
  tSYNC_FLDTBL* names = nullptr;
  ctd.GetCtdInfo(&records, &first, &fields, &names);
  EXPECT_EQ(short{first->fldCnt}, 0);  // packed: no reference to it
  ctd.ClrCtdInfo();
  EXPECT_EQ(ctd.GetCtdRecCnt(), 0);
  EXPECT_STREQ(first->title, "first") << "cleared, not released";
  ctd.SetCtdInfo(0, records, first, fields, names);
  EXPECT_EQ(title(ctd, 1), "second|0|");
  CCtdCtl shared(ctd);
  ctd.FreeData();
  EXPECT_EQ(title(shared, 1), "second|0|") << "shared until the last one gives it up";
  EXPECT_EQ(ctd.GetCtdRecCnt(), 0);
  EXPECT_EQ(ctd.WriteCtdFile(), 1);
  EXPECT_EQ(ctd.ReadCtdFile(), 2);
  EXPECT_EQ(ctd.WriteMargFile(), 1);
  EXPECT_EQ(ctd.ReadMargFile(), 1);
  ctd.SetCtdInfo(0, 5, nullptr, -2, names);
  EXPECT_EQ(ctd.GetCtdRecCnt() + ctd.GetCtdFldCnt(), 0);
}

TEST(MergeFile, BytesAndBack) {
  TestHome home;
  RecordTable table = two_records();
  CCtdCtl ctd;
  table.give_to(ctd);
  EXPECT_EQ(ctd.WriteMargFile(), 1) << "no choices yet";
  ctd.WriteCtdFile();
  ctd.ReadCtdFile();
  ctd.SetMargSts(3, -1);
  EXPECT_EQ(ctd.GetMargSts1(), 0) << "3 is kept as 0";
  ctd.SetMargInfo(0, 1);
  ctd.SetMargInfo(2, -2);
  ctd.SetMargInfo(3, 9);
  ctd.SetMargInfo(-1, 9);
  EXPECT_EQ(ctd.GetMargInfo(3), -1);
  const auto written = [&] {
    EXPECT_EQ(ctd.WriteMargFile(), 0);
    return home.read(kMrgFile);
  };
  EXPECT_EQ(written(), "0\n65535\n1\n0\n65534\n");
  ctd.SetMargSts(4, 7);
  for (const auto record : {short{1}, short{2}, short{-1}}) ctd.SetMargPer(record);
  EXPECT_EQ(written(), "4\n7\n1\n");
  ctd.SetMargSts(4, 7);
  EXPECT_EQ(written(), "4\n7\n") << "the state takes the marks off";
  ctd.SetMargSts(2, 1);
  EXPECT_EQ(written(), "2\n1\n");

  CCtdCtl other;
  table.give_to(other);
  ASSERT_EQ(other.ReadMargFile(), 0);
  EXPECT_EQ(other.GetMargSts1(), 2);
  EXPECT_EQ(other.GetMargSts2(), 1);
  home.write(kMrgFile, "3\r\n5\r\n1\r\n2\r\n3\r\n4\r\n5\r\n");
  ASSERT_EQ(other.ReadMargFile(), 0);
  EXPECT_EQ(other.GetMargSts1(), 0);
  EXPECT_EQ(other.GetMargInfo(2), 3);
  EXPECT_EQ(other.GetMargInfo(3), -1);
  for (const char* bytes : {"", "4\n"}) {
    home.write(kMrgFile, bytes);
    EXPECT_EQ(other.ReadMargFile(), 1);
    EXPECT_EQ(other.GetMargInfo(2), 3) << "nothing changes";
  }
}

// Two groups; the first, with four origins, is the one being merged.
std::string origins_after(const std::string& merge_file, TestHome& home) {
  CCtdCtl ctd;
  RecordTable table({{87, "company"}});
  for (int i = 1; i <= 4; ++i) {
    const std::string id = "00100200000000" + std::to_string(i);
    ctd.AddCtdData(id.c_str(), 10 * i, "001001000000001", nullptr);
    table.add(i == 4 ? "001009000000009" : id, "", {});  // the last one is a stranger
  }
  ctd.AddCtdData("001002000000007", 1, "001001000000002", nullptr);
  table.give_to(ctd);
  home.write(kMrgFile, merge_file);
  if (ctd.ReadMargFile() != 0) return "failed";
  std::string groups;
  const auto count = static_cast<short>(ctd.GetCtdCnt());
  for (short group = 0; group < count; ++group) {
    tSYNC_SCHINFO cursor{};
    char id[TQ_SYNC_ID_SIZE];
    while (ctd.FindCtdOrgSyncID2(group, id, &cursor) == 0) groups += id[14];
    groups += ctd.GetCtdMstCnt(group) > 0 ? "m " : "- ";
  }
  return groups;
}

TEST(MergeFile, RecordsThatWereNotChosenLeaveTheGroup) {
  // Origins come by falling score; "m" where the group has a master.
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"none chosen: the group stays", "", "4321m 7m "},
      {"two chosen", "0\n2\n", "431m 29- 7m "},
      {"all chosen: an empty group follows", "0\n1\n2\n3\n", "4321m - 7m "},
      {"indexes that there are not", "-1\n4\n99999999999\n1\n", "42m 319- 7m "},
      {"only the stranger leaves", "0\n1\n2\n", "4321m 9- 7m "},
  };
  for (const auto& [why, lines, groups] : cases) {
    SCOPED_TRACE(why);
    TestHome home;
    EXPECT_EQ(origins_after("4\n0\n" + lines, home), groups);
  }
}

// Both files written and read with one operation failing: old content or new, codes as told.
TEST(WorkFiles, EveryFailureLeavesTheOldFileOrTheNew) {
  each_fault({fault::Kind::kFail}, [](int nth, fault::Kind) {
    TestHome home;
    RecordTable table = two_records();
    CCtdCtl ctd;
    table.give_to(ctd);
    EXPECT_EQ(ctd.WriteCtdFile(), 0);
    home.write(kMrgFile, "2\n9\n");
    const std::string old = home.read(kCtdFile);
    ctd.SetCtdTitle("new");
    ctd.SetMargSts(5, 6);
    const fault::FailNth failing(nth);
    const short wrote = ctd.WriteCtdFile();
    EXPECT_EQ(home.read(kCtdFile), (wrote == 0 ? "new" : "") + old);
    const short wrote_choice = ctd.WriteMargFile();
    EXPECT_EQ(home.read(kMrgFile), wrote_choice == 0 ? "5\n6\n" : "2\n9\n");
    const short read = ctd.ReadCtdFile(), read_choice = ctd.ReadMargFile();
    const int failures = (wrote != 0) + (wrote_choice != 0) + (read != 0) + (read_choice != 0);
    EXPECT_EQ(failures, failing.hit() ? 1 : 0);
    EXPECT_TRUE(ctd.GetCtdRecCnt() == 2 || read == 2) << "without memory less may be there";
    EXPECT_EQ(home.contents().size(), 3u) << "the folder and the two files";
    return failing.hit();
  });
}

}  // namespace
