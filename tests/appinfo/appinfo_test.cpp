// The application registry in both forms: the library's own table and the sibling's.
#include "tqutil/appinfo.h"

#include "siblings/siblings.h"
#include "support/definitions.h"
#include "support/test.h"

namespace {

struct Registry : DefinitionHome {
  ~Registry() { CAppInfoCtl::FreeAppInfo(); }
  short read(const std::string& bytes) const {
    write("program\\APPINFO.DAT", bytes);
    CAppInfoCtl::FreeAppInfo();
    return CAppInfoCtl::ReadAppInfo();
  }
};

TEST(AppInfo, Files) {
  Registry home;
  // `type_of_3`: of the library's table; the sibling's gives 0 where this gives -1
  const std::tuple<const char*, std::string, short, short, short> cases[] = {
      {"comments and empty lines are passed over", ";c\n\nBook:3,1\n", 0, 1, 1},
      {"the first row of a number counts", "A:3,7\r\nB:3,8\r\n", 0, 2, 7},
      {"what follows the type is ignored", "A:3,7,9\nB:4,8", 0, 2, 7},
      {"no type", "A:3,7\nBook:3\n", 1, 0, -1},
      {"no number", "Book:\n", 1, 0, -1},
      {"no label", ":3,7\n", 1, 0, -1},
      {"no colon", "Book\n", 1, 0, -1},
      {"numbers end where digits do", "A: 3x,-2y\n", 0, 1, -2},
      {"empty file", "", 0, 0, -1},
      {"binary", std::string("\0\x81\n\xff", 4), 1, 0, -1},
      {"a row longer than a line", std::string(4000, 'x') + ":3,7\n", 1, 0, -1},
  };
  for (const auto& [why, bytes, result, count, type_of_3] : cases) {
    SCOPED_TRACE(why);
    EXPECT_EQ(home.read(bytes), result);
    EXPECT_EQ(CAppInfoCtl::s_appCnt, count);
    EXPECT_EQ(CAppInfoCtl::s_appTbl == nullptr, count == 0);
    EXPECT_EQ(CAppInfoCtl::GetAppType(3), type_of_3);
    EXPECT_EQ(CAppInfoCtl::GetAppType(99), -1);
    EXPECT_EQ(GetAppType(99), 0);
    if (result != 0) continue;
    EXPECT_EQ(GetAppType(3), type_of_3 == -1 ? 0 : type_of_3);
  }
}

TEST(AppInfo, ReadOnceUntilReleased) {
  Registry home;
  home.remove("program");
  std::string rows;
  for (int i = 1; i <= 40; ++i) {
    rows += "A:" + std::to_string(i) + "," + std::to_string(i + 100) + "\n";
    if (i == 1 || i == 39) {
      EXPECT_EQ(home.read(rows), 0);
      EXPECT_EQ(CAppInfoCtl::s_appTbl[0].cap, 40);
    }
  }
  EXPECT_EQ(home.read(rows), 0);
  EXPECT_EQ(CAppInfoCtl::s_appTbl[0].cap, 60);
  EXPECT_EQ(CAppInfoCtl::s_appTbl[39].appType, 140);
  home.write("program\\APPINFO.DAT", "B:1,5\n");
  EXPECT_EQ(CAppInfoCtl::ReadAppInfo(), 0);
  EXPECT_EQ(CAppInfoCtl::GetAppType(1), 101) << "it is there already";
  EXPECT_EQ(GetAppType(1), 5) << "the sibling reads its own";
  CAppInfoCtl::FreeAppInfo();
  EXPECT_EQ(CAppInfoCtl::GetAppType(1), -1);
  EXPECT_EQ(GetAppInfoCtl(), 0);
  EXPECT_EQ(FreeAppInfoCtl(3), 0);
}

TEST(AppInfo, TheSiblingsTableCarriesNames) {
  Registry home;
  home.read("住所録:1000,1000\nB:2,3\n"_sjis);
  int32_t count = -1;
  const tFLDCOM_APPREC* table = tq::fldcom().FldComGetAppInfoTable(nullptr, &count);
  ASSERT_EQ(count, 2);
  EXPECT_STREQ(table[0].name, "住所録"_sjis);
  EXPECT_EQ(table[0].appNo, 1000);
  home.write("tqutil.ini", "[folders]\nprogram=nowhere\n");
  EXPECT_EQ(tq::fldcom().FldComGetAppInfoTable(nullptr, &count), nullptr);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(GetAppType(1000), 0);
  EXPECT_FALSE(home.exists("nowhere")) << "asking makes no folder";
}

}  // namespace
