// The group file: its bytes, what a reader makes of files that no writer of ours would make, and
// what is left when writing fails.
#include <cstring>

#include "support/faults.h"
#include "support/records.h"
#include "support/test.h"
#include "tqutil/syncfile.h"

namespace {

const std::string kNoFlags = "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,";

// A group of two members in memory.
void make_group(CSyncFileCtl& group, const std::string& title) {
  group.Create();
  group.SetSyncType(2);
  group.SetTitle(title.c_str());
  group.SetSyncFlg(3, -1);
  Info info;
  info.appType = 1000;
  info.appType2 = 7;
  info.trFlg[19] = 2;
  std::strcpy(info.memberText, "住所録.adr"_sjis);
  std::strcpy(info.fldFile, "Z:\\f.fld");
  std::strcpy(info.tmpFileN, "not saved");
  ASSERT_EQ(group.AddSyncFileInfo(-1, &info), 0);
  std::strcpy(info.memberText, "two\nlines");
  std::strcpy(info.fldFile, "");
  ASSERT_EQ(group.AddSyncFileInfo(-1, &info), 0);
}

std::string group_bytes(const std::string& title) {
  return "2\n000\n" + title + "\n \n0,0,0,-1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,\n2\n" +
         "1000,7,000000\n0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,2,\n" + "住所録.adr"_sjis +
         "\nZ:\\f.fld\n\n" +
         "1000,7,000001\n0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,2,\ntwo lines\n\n\n";
}

TEST(GroupFile, Bytes) {
  TestHome home;
  CSyncFileCtl group;
  make_group(group, "名簿"_sjis);
  ASSERT_EQ(group.Write(0), 0);
  EXPECT_EQ(home.read("group\\000.SYG"), group_bytes("名簿"_sjis));
  EXPECT_TRUE(home.exists("member\\000"));
  CSyncFileCtl empty;
  empty.Create2();
  ASSERT_EQ(empty.Write(1), 0);
  EXPECT_EQ(home.read("group\\999.SYG"),
            "0\n999\n \n \n0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1,\n0\n");
  ASSERT_EQ(empty.Write(1), 0) << "the working group keeps its id";
  EXPECT_FALSE(home.exists("group\\001.SYG"));
}

TEST(GroupFile, ReadsWhatItWroteAndWithCrLf) {
  TestHome home;
  const std::string bytes = group_bytes("t");
  home.write("x.syg", bytes);
  std::string with_cr;
  for (const char byte : bytes) with_cr += byte == '\n' ? "\r\n" : std::string(1, byte);
  home.write("y.syg", with_cr);
  for (const char* name : {"x.syg", "y.syg"}) {
    CSyncFileCtl group;
    ASSERT_EQ(group.Open(home.at(name).c_str(), ""), 0);
    ASSERT_EQ(group.Read(), 2);
    ASSERT_EQ(group.Write(0), 0);
    EXPECT_EQ(home.read("group\\000.SYG"), bytes) << "the path follows the id that the file claims";
    Info info;
    ASSERT_EQ(group.GetSyncFileInfo(0, &info), 0);
    EXPECT_STREQ(info.memberText, "住所録.adr"_sjis);
    EXPECT_EQ(info.appType2 + info.trFlg[19], 9);
  }
}

TEST(GroupFile, ReadsAnyContentWithoutHarm) {
  const std::string head = "1\n012\nt\nm\n" + kNoFlags + "\n9\n";
  const std::string member = "5,6,012003\n" + kNoFlags + "\ntext\nfld\nold\n";
  const std::tuple<const char*, std::string, int, std::string, std::string> cases[] = {
      {"empty file", "", 0, "", ""},
      {"ends after the title", "1\n012\nt\n", 0, "012", "t"},
      {"no flags: reading stops", "1\n012\nt\nm\n\n1\n" + member, 0, "012", "t"},
      {"comments are passed over everywhere",
       ";\n1\n;\n012\n;x\nt\nm\n" + kNoFlags + "\n1\n5,6,012003\n;\n" + kNoFlags +
           "\n;text\ntext\nfld\nold\n",
       1, "012", "t"},
      {"the count does not matter", head + member + member, 2, "012", "t"},
      {"a cut block", head + member + "5\n" + kNoFlags + "\ntext\nfld\n", 1, "012", "t"},
      {"an empty first line ends the members", head + member + "\n" + member, 1, "012", "t"},
      {"an id is cut to three characters", "1\n0123456\nt\n", 0, "012", "t"},
      {"a long title", "1\n012\n" + std::string(200, 'x') + "\n", 0, "012", std::string(128, 'x')},
      {"a character at its end", "1\n012\n" + std::string(127, 'x') + "\x88\x9F\n", 0, "012",
       std::string(127, 'x')},
  };
  for (const auto& [why, bytes, members, id, title] : cases) {
    SCOPED_TRACE(why);
    TestHome home;
    home.write("f.syg", bytes);
    CSyncFileCtl group;
    group.Open(home.at("f.syg").c_str(), "");
    EXPECT_EQ(group.Read(), members);
    EXPECT_EQ(group.GetSyncFileCnt(), members);
    char text[TQ_TITLE_SIZE] = "";
    group.GetSyncGrpID(text);
    EXPECT_EQ(text, id);
    group.GetTitle(text);
    EXPECT_EQ(text, title);
  }
}

TEST(GroupFile, MembersWithoutAnIdGetOne) {
  TestHome home;
  const std::string tail = kNoFlags + "\nt\nf\no\n";
  home.write("f.syg", "1\n007\nt\nm\n" + kNoFlags + "\n3\n5\n" + tail + "5,6\n" + tail +
                          "5,6,007000\n" + tail);
  CSyncFileCtl group;
  group.Open(home.at("f.syg").c_str(), "");
  ASSERT_EQ(group.Read(), 3);
  for (const char* id : {"007000", "007001", "007002"})
    EXPECT_NE(group.GetSyncFilePos(id), -1) << id;
}

TEST(GroupFile, AHostileFileLeadsNowhere) {
  for (const std::string id : {"..", ".", " ", "", "a\\b", "NUL", "c:x", "*", "\x83\x5C"}) {
    SCOPED_TRACE(id);
    TestHome home;
    home.write("group\\x.SYG", "1\n" + id + "\nt\nm\n" + kNoFlags + "\n1\n1,1,x\n" + kNoFlags +
                                   "\nt\nf\n" + home.at("data\\*.*") + "\n");
    home.write("data\\precious", "1");
    home.write("member\\precious.tmp", "2");
    home.write("precious.tmp", "3");
    home.make_folder("work");
    const auto before = home.contents();
    CSyncFileCtl group;
    group.Open(home.at("group\\x.SYG").c_str(), "");
    ASSERT_EQ(group.Read(), 1);
    EXPECT_EQ(group.Write(0), 1);
    EXPECT_EQ(group.LastError(), -3);
    EXPECT_EQ(group.DeleteSyncFileInfo(0), 0);
    EXPECT_EQ(group.GetSyncGrpInit(), 1);
    EXPECT_EQ(group.DeleteSyncGrp(0), 1);
    EXPECT_EQ(home.contents(), before);
  }
}

TEST(GroupFile, RenumberingGivesANewIdOnlyWhenTheOldOneIsTaken) {
  TestHome home;
  CSyncFileCtl group;
  make_group(group, "t");
  ASSERT_EQ(group.Write(1), 0);
  EXPECT_TRUE(home.exists("group\\000.SYG"));
  ASSERT_EQ(group.Write(1), 0);
  EXPECT_TRUE(home.exists("group\\001.SYG"));
  EXPECT_EQ(group.GetSyncFilePos("001001"), 1) << "members follow";
  ASSERT_EQ(group.Write(0), 0);
  EXPECT_FALSE(home.exists("group\\002.SYG"));
}

TEST(GroupFile, ErrorsAreTold) {
  TestHome home;
  CSyncFileCtl group;
  EXPECT_EQ(group.Open(nullptr, "r"), 1);
  EXPECT_EQ(group.LastError(), -1);
  EXPECT_EQ(group.Read(), -1) << "nothing opened";
  EXPECT_EQ(group.LastError(), -2);
  home.write("group\\000.SYG", "old");
  EXPECT_EQ(group.Open(home.at("group\\000.SYG").c_str(), "rx"), 0);
  EXPECT_EQ(group.Write(0), 1);
  EXPECT_EQ(group.LastError(), -3);
  EXPECT_EQ(home.read("group\\000.SYG"), "old");
}

TEST(GroupFile, EveryFailureOfAWriteLeavesTheOldFileOrTheNew) {
  using Kind = fault::Kind;
  each_fault({Kind::kFail, Kind::kDiskFull, Kind::kCrash}, [](int nth, Kind kind) {
    TestHome home;
    CSyncFileCtl group;
    make_group(group, "old");
    EXPECT_EQ(group.Write(0), 0);
    group.SetTitle("new");
    const fault::FailNth failing(nth, kind);
    const short result = group.Write(0);
    EXPECT_EQ(home.read("group\\000.SYG"), group_bytes(result == 0 ? "new" : "old"));
    return failing.hit();
  });
}

}  // namespace
