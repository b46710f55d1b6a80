// Rotation: which backups go, and what never goes.
#include "backup/rotation.h"

#include "backup/backup_host.h"
#include "common/text.h"
#include "support/test.h"

namespace {

TEST(Rotation, TheOldestOfTheKindGo) {
  // `rows`: kind and second of each backup in the order of the files, the new one last
  // `dropped`: their places, in the order in which they go
  const std::tuple<const char*, std::string, short, const char*, std::string> cases[] = {
      {"the first of its kind", "01 11", 1, "", ""},
      {"as many as may stay", "11 12 13", 3, "", ""},
      {"the oldest first, the new one never", "14 13 15 11 12", 3, "", "31"},
      {"the new one stays although the clock went back", "15 16 11", 1, "", "01"},
      {"other kinds do not count and stay", "01 12 02 13", 1, "", "1"},
      {"of equals the first", "15 15 15 19", 3, "", "0"},
      {"one that is kept changes nothing about the others", "11 12 13 14", 2, "00000", "1"},
  };
  for (const auto& [why, rows, generations, keep, dropped] : cases) {
    tq::BackupList list;
    for (std::size_t at = 0; at < rows.size(); at += 3) {
      tBKUP_INFO row{};
      tq::copy_text(row.id, sizeof row.id, "0000" + std::to_string(at / 3));
      row.kind = static_cast<short>(rows[at] - '0');
      row.time.second = static_cast<uint16_t>(rows[at + 1] - '0');
      ASSERT_TRUE(list.append(row));
    }
    std::string places;
    for (const std::size_t i : tq::backups_to_drop(list, generations, keep)) {
      places += std::to_string(i);
    }
    EXPECT_EQ(places, dropped) << why;
  }
}

TEST(Rotation, TheCountOfKindZeroHoldsForEveryKindFromConstructionOn) {
  BackupHost host;
  host.write("a", "a");
  host.make_folder("data");
  setBkupGeneration(0, 2);
  setBkupGeneration(1, 9);
  for (const int kind : {0, 1, 1, 1, 1})
    ASSERT_EQ(host.back_up(static_cast<short>(kind), {{1, "", {"a"}}}), 0);
  EXPECT_EQ(BackupHost::listed(-1).size(), 3u);
  EXPECT_EQ(BackupHost::listed(0), Texts{"00000 0 1"});
  CBackUpCtl run;
  setBkupGeneration(0, 1);  // too late for this object
  ASSERT_EQ(host.prepare(run, 1, {{1, "", {"a"}}}), 0);
  ASSERT_EQ(run.StartBackUp(), 0);
  ASSERT_EQ(run.RenewalBackUp(), 0);
  EXPECT_EQ(BackupHost::listed(1).size(), 2u);
  EXPECT_EQ(run.RenewalBackUp(), 1) << "it is recorded already";
  EXPECT_EQ(BackupHost::listed(1).size(), 2u);
}

TEST(Rotation, ACountOfNoneRecordsNothing) {
  BackupHost host;
  host.write("a", "a");
  host.make_folder("data");
  setBkupGeneration(0, 0);
  EXPECT_EQ(host.back_up(0, {{1, "", {"a"}}}), 0);
  EXPECT_TRUE(host.exists("backup\\00000"));
  EXPECT_EQ(BackupHost::listed(-1), Texts{});
}

TEST(Rotation, NeverTakesTheNewBackupOrOneThatReplacedAStaleHistory) {
  BackupHost host;
  host.write("a", "a");
  host.make_folder("data");
  setBkupGeneration(0, 1);
  ASSERT_EQ(host.back_up(0, {{1, "", {"a"}}}), 0);
  host.set_time("00000", "2999,1,0,1,0,0,0");  // the clock was ahead
  ASSERT_EQ(host.back_up(0, {{1, "", {"a"}}}), 0);
  EXPECT_EQ(BackupHost::listed(-1), Texts{"00001 0 1"});
  // Its folder is gone, so the next backup takes its id and its history's place.
  host.set_time("00001", "1999,1,0,1,0,0,0");
  host.remove("backup\\00001");
  host.make_folder("backup\\00000");
  ASSERT_EQ(host.back_up(0, {{1, "", {"a"}}}), 0);
  EXPECT_EQ(BackupHost::listed(-1), Texts{"00001 0 1"});
  EXPECT_EQ(host.restorable()["00001"][host.at("a")], "a");
}

}  // namespace
