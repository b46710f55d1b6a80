// Deleting backups: what goes, what stays, and how far a history is followed.
#include "backup/backup_host.h"
#include "platform/platform.h"
#include "support/test.h"

namespace {

TEST(DeleteBackup, ByIdByGenerationAndAll) {
  BackupHost host;
  host.write("a", "a");
  ASSERT_TRUE(tq::platform::set_attributes(host.at("a"), tq::platform::kReadOnly).ok());
  for (const int kind : {0, 1, 1, 1})
    ASSERT_EQ(host.back_up(static_cast<short>(kind), {{1, "", {"a"}}}), 0);
  for (const char* id : {"00001", "00003"}) host.set_time(id, "2003,1,1,1,1,1,1");
  host.set_time("00002", "2001,1,1,1,1,1,1");
  EXPECT_EQ(tqDeleteBkupGrp("00009"), 1);
  EXPECT_EQ(tqDeleteAutoBkupGrp(1, 4), 1);
  EXPECT_EQ(tqDeleteAutoBkupGrp(1, 3), 0);
  EXPECT_EQ(BackupHost::listed(-1), (Texts{"00000 0 1", "00001 1 1", "00003 1 1"}));
  EXPECT_EQ(tqDeleteBkupGrp("00000"), 0);
  EXPECT_FALSE(host.exists("backup\\00000"));
  EXPECT_EQ(tqDeleteBkupAll(), 0);
  EXPECT_EQ(BackupHost::listed(-1), Texts{});
  EXPECT_TRUE(host.exists("backup"));
}

TEST(DeleteBackup, AFileOfSomebodyElseKeepsTheFolder) {
  BackupHost host;
  host.write("a", "a");
  for (const char* id : {"00000", "00001", "00002"}) {
    ASSERT_EQ(host.back_up(0, {{1, "", {"a"}}}), 0);
    host.set_time(id, "2003,1,1,1,1,1,1");
  }
  host.write("backup\\00001\\extra", "mine");
  EXPECT_EQ(tqDeleteBkupAll(), 1) << "stops there";
  EXPECT_EQ(BackupHost::listed(-1), Texts{"00002 0 1"});
  EXPECT_EQ(host.contents().count("backup\\00001\\extra"), 1u);
  EXPECT_EQ(host.contents().size(), 8u) << "no copy is left";
}

TEST(DeleteBackup, WithoutAUsableCopyTheFolderIsFoundByTheId) {
  BackupHost host;
  host.make_folder("f");
  ASSERT_EQ(host.back_up(0, {{64, host.at("f"), {}}}), 0);
  ASSERT_EQ(host.back_up(0, {}), 0);
  for (const char* id : {"00000", "00001"}) {
    EXPECT_TRUE(host.exists("backup\\" + std::string(id)));
    EXPECT_EQ(tqDeleteBkupGrp(id), 0);
    EXPECT_FALSE(host.exists("backup\\" + std::string(id)));
  }
  EXPECT_TRUE(host.exists("f"));
}

TEST(DeleteBackup, AHistoryLeadsNowhereElse) {
  // `history`: name of the file
  // `copy`: what it says its copy is; `@` stands for the home
  const std::tuple<const char*, std::string, std::string, short> cases[] = {
      {"a user's file", "00001", "@\\u\\file", 0},
      {"another backup's copy", "00001", "@\\backup\\00000\\copy", 0},
      {"a climbing path", "00001", "@\\backup\\00001\\..\\00000\\copy", 0},
      {"a folder", "00001", "@\\backup\\00000", 0},
      {"a name that is no id", "save", "@\\backup\\00000\\copy", 1},
      {"a name that climbs", "..00", "@\\u\\file", 1},
  };
  for (const auto& [why, history, copy, result] : cases) {
    SCOPED_TRACE(why);
    BackupHost host;
    host.write("u\\file", "1");
    host.write("backup\\00000\\copy", "2");
    host.make_folder("data");
    const auto before = host.contents();
    host.write("data\\" + history + ".BKH",
               host.filled("00001\n0\n2003,7,6,5,9,4,0\ninfo\n1\n0000100000\n10\n1\n@\\u\\file\n" +
                           copy + "\n0,0\n0,0\n0,0\n32\n1\n0\n"));
    host.has_mail_store = true;
    EXPECT_EQ(tqDeleteBkupGrp("00001"), result);
    EXPECT_EQ(host.contents(), before) << "the history alone is gone";
    EXPECT_TRUE(host.log.empty()) << "and no mail-store copy was asked for";
  }
}

}  // namespace
