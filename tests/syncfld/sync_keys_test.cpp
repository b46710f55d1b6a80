// "SYNCKEY.DAT": what a reader makes of it, and which field serves which key.
#include <cstring>

#include "common/table_memory.h"
#include "support/definitions.h"
#include "support/own_siblings.h"
#include "support/test.h"
#include "tqutil/syncfld.h"

namespace {

using Ids = std::vector<short>;

// The result of reading a key file of these bytes.
short read_keys(const DefinitionHome& home, const std::string& bytes) {
  home.write("definition\\SYNCKEY.DAT", bytes);
  CSyncFldCtl::FreeSyncKeyFile();
  return CSyncFldCtl::ReadSyncKeyFile();
}

// The table as text: `type:number(ids)` for each entry; every item's other numbers must be 0.
std::string loaded() {
  if (CSyncFldCtl::s_appTbl == nullptr) return "none";
  std::string text;
  for (short i = 0; i < CSyncFldCtl::s_appCnt; ++i) {
    const tSYKY_APP_TBL& app = CSyncFldCtl::s_appTbl[i];
    text += std::to_string(app.appType) + ':' + std::to_string(app.appNo) + '(';
    for (short item = 0; item < app.itemCnt; ++item) {
      const tSYKY_KEY_ITEM& key = app.items[item];
      text += (item == 0 ? "" : " ") + std::to_string(key.fldId);
      EXPECT_TRUE(key.grpSeq == 0 && key.keyNo == 0 && key.subNo == 0);
    }
    text += ')';
  }
  return text;
}

const std::tuple<const char*, std::string, short, short, std::string> kFiles[] = {
    {"fields stand in the file's order", "H:1,x\nA:5:1,42:x,31:y\n", 0, 1, "5:1(42 31)"},
    {"CR LF, and no line end at the end", "H:2\r\nA:5:1,42:x\r\nB:6:2,1:", 0, 2, "5:1(42)6:2(1)"},
    {"a last field without its colon is taken", "H:1\nA:5:1,42:x,31\n", 0, 1, "5:1(42 31)"},
    {"a last field with a comma behind", "H:1\nA:5:1,42:x,\n", 0, 1, "5:1(42)"},
    {"a run of the separator counts as one", "H::1\n::A::5:1,42:x,,,\n", 0, 1, "5:1(42 0)"},
    {"another separator belongs to the token", "H:1\nA:5:1,,42:x\n", 0, 1, "5:1(0)"},
    {"so an empty comment takes the next field", "H:1\nA:5:1,42:,31:y,1:z\n", 0, 1, "5:1(42 1)"},
    {"no fields", "H:1\nA:5:1\n", 0, 1, "5:1()"},
    {"an empty line ends the list and counts", "H:9\nA:5:1\n\nB:6:1\n", 0, 2, "5:1()0:0()"},
    {"also behind the announced room", "H:1\nA:5:1\n\n", 0, 2, "5:1()0:0()"},
    {"numbers end where digits do", "H:1x\nA: -5x:+7,4294967298:c\n", 0, 1, "-5:7(-1)"},
    {"comments are not passed over", "H:1\n;A:5:1\n", 0, 1, "5:1()"},
    {"fewer lines than announced", "H:7\nA:5:1\n", 0, 1, "5:1()"},
    {"more lines than announced", "H:1\nA:5:1\nB:6:1\nC:7:1\n", 0, 3, "5:1()6:1()7:1()"},
    {"announced none", "H:0\nA:5:1\n", 0, 1, "5:1()"},
    {"announced none and has none", "H:0\n", 0, 0, ""},
    {"no number in the header", "H\nA:5:1\n", 0, 1, "5:1()"},
    {"empty file", "", 0, 0, ""},
    {"announced 30000", "H:30000\nA:5:1,1:x\n", 0, 1, "5:1(1)"},
    {"announced -1: no room", "H:-1\nA:5:1\n", 1, -1, "none"},
    {"the count has 16 bits", "H:65537\nA:5:1\n", 0, 1, "5:1()"},
    {"no application number: the rest stays", "H:3\nA:5:1\nB:6\n", 1, 3, "5:1()0:0()0:0()"},
    {"no type", "H:1\nA\n", 1, 1, "0:0()"},
    {"binary", std::string("\xff\xfe\0\x01\x82:\n\x81", 8), 1, 0, ""},
};

TEST(SyncKeyFile, Files) {
  DefinitionHome home;
  for (const auto& [why, bytes, result, count, entries] : kFiles) {
    SCOPED_TRACE(why);
    EXPECT_EQ(read_keys(home, bytes), result);
    EXPECT_EQ(CSyncFldCtl::s_appCnt, count);
    EXPECT_EQ(loaded(), entries);
    EXPECT_EQ(CSyncFldCtl::ReadSyncKeyFile(), entries == "none" ? 1 : 0)
        << "what is there is not read again";
  }
}

TEST(SyncKeyFile, RoomOfTheArrays) {
  DefinitionHome home;
  std::string file = "H:3\nA:5:1";
  for (int pairs = 0; pairs <= 25; ++pairs, file += ",1:x") {
    EXPECT_EQ(read_keys(home, file), 0);
    EXPECT_EQ(CSyncFldCtl::s_appTbl[0].itemCnt, pairs);
    EXPECT_EQ(CSyncFldCtl::s_appTbl[0].items[0].cap, pairs < 20 ? 20 : 40);
  }
  EXPECT_EQ(CSyncFldCtl::s_appTbl[0].cap, 3) << "as announced";
  EXPECT_EQ(CSyncFldCtl::s_appTbl[0].items[1].cap, 0);
}

TEST(SyncKeyFile, LongFilesAndLongLines) {
  DefinitionHome home;
  std::string lines = "H:2\n";
  for (int i = 0; i < 40000; ++i) lines += "A:1:2,3:x\n";
  EXPECT_EQ(read_keys(home, lines), 1) << "more than a count can tell";
  EXPECT_EQ(CSyncFldCtl::s_appCnt, 2);
  EXPECT_EQ(loaded(), "1:2(3)1:2(3)");
  // A line comes in pieces of 3999 bytes; what follows the first is a line of its own.
  const std::string longer = "A:1:2,7:" + std::string(3991, 'c');
  EXPECT_EQ(read_keys(home, "H:2\n" + longer + "B:3:4,8:x\n"), 0);
  EXPECT_EQ(loaded(), "1:2(7)3:4(8)");
}

TEST(SyncKeyFile, ReleasedWholeAndReadAgainWithTheFolder) {
  DefinitionHome home;
  CSyncFldCtl::FreeSyncKeyFile();
  const std::int32_t before = tq::live_tables();
  EXPECT_EQ(read_keys(home, "H:2\nA:5:1,42:x\nB:6:1,42:x\n"), 0);
  EXPECT_GT(tq::live_tables(), before);
  CSyncFldCtl::FreeSyncKeyFile();
  EXPECT_EQ(tq::live_tables(), before);
  EXPECT_EQ(CSyncFldCtl::s_appTbl, nullptr);
  EXPECT_EQ(CSyncFldCtl::s_appCnt, 2) << "the count stays";
  EXPECT_EQ(CSyncFldCtl::SykyGetKey(5, 1), -1);

  home.write("mine\\SYNCKEY.DAT", "H:1\nA:5:1,1:x\n");
  std::string folder = home.at("mine");
  OwnSiblings own(folder.data());
  own.fldcom.FldComGetDefFolder = [](void* context, char* out) {
    std::strcpy(out, static_cast<const char*>(context));
  };
  own.install();
  EXPECT_EQ(loaded(), "5:1(1)");
  home.remove("mine");
  own.install();
  EXPECT_EQ(loaded(), "none");
  EXPECT_EQ(CSyncFldCtl::ReadSyncKeyFile(), 1);
  EXPECT_FALSE(home.exists("mine"));
}

TEST(SyncKeys, TheKeyTablesOrderDecides) {
  DefinitionHome home;
  ASSERT_EQ(read_keys(home,
                      "H:9\nA:5:1,42:x,35:y,31:y,244:z\nB:6:1,22:x\nB:6:2,42:x\nB:6:3,78:x\n"
                      "C:7:1,5:x\nD:8:1,-1:x,999:x,244:x\n"),
            0);
  struct Case {
    const char* why;
    short appType, keyNo, fldId;
  };
  for (const Case& c :
       {Case{"31 stands before 35 in the key table", 5, 2, 31}, Case{"its only field", 5, 1, 42},
        Case{"no field of the key", 5, 0, -1}, Case{"no such key", 5, 20, -1},
        Case{"no such key", 5, -1, -1}, Case{"no such type", 99, 1, -1},
        Case{"the first entry of the type", 6, 3, 22},
        Case{"the second, where the first has none", 6, 1, 42}, Case{"never the third", 6, 9, -1},
        Case{"what stands in for the key", 7, 0, 5}, Case{"one field serves two keys", 8, 5, 244},
        Case{"one field serves two keys", 8, 14, 244}}) {
    EXPECT_EQ(CSyncFldCtl::SykyGetKey(c.appType, c.keyNo), c.fldId) << c.why;
    EXPECT_EQ(SykyGetKey(c.appType, c.keyNo, 1), c.fldId) << "no object is needed";
    EXPECT_EQ(SykyGetKey(c.appType, c.keyNo, 0), -1);
  }
  EXPECT_EQ(CSyncFldCtl::SykyGetKeyS(3, 0, 9), 78) << "the type does not matter here";
  for (const short index : Ids{-1, 6, 8, 9, 32767}) {
    EXPECT_EQ(CSyncFldCtl::SykyGetKeyS(index, 5, 1), -1) << index;
  }
}

}  // namespace
