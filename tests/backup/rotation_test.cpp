// Rotation: which backups go, beside the rule played step by step, and what never goes.
#include "backup/rotation.h"

#include <cstdio>
#include <random>

#include "backup/backup_host.h"
#include "support/test.h"

namespace {

struct Model {
  int id;
  short kind;
  int second;
};

// The rule one deletion at a time: as often as the count before asks for it, the first oldest of
// the kind goes while there are more than may stay.
std::vector<int> drop_one_by_one(std::vector<Model> rows, short generations) {
  const short kind = rows.back().kind;
  const auto count = [&] {
    return std::count_if(rows.begin(), rows.end(), [&](const Model& m) { return m.kind == kind; });
  };
  const auto found = count() - 1;
  std::vector<int> dropped;
  for (auto left = found >= generations ? found - generations + 1 : 0; left > 0; --left) {
    if (count() <= generations) break;
    auto oldest = rows.end();
    for (auto row = rows.begin(); row != rows.end() - 1; ++row) {
      if (row->kind == kind && (oldest == rows.end() || row->second < oldest->second)) oldest = row;
    }
    dropped.push_back(oldest->id);
    rows.erase(oldest);
  }
  return dropped;
}

tBKUP_INFO row_of(const Model& model) {
  tBKUP_INFO row{};
  std::snprintf(row.id, sizeof row.id, "%05u", static_cast<unsigned>(model.id) % 100'000U);
  row.kind = model.kind;
  row.time.year = 2003;
  row.time.second = static_cast<uint16_t>(model.second);
  return row;
}

TEST(Rotation, DropsWhatTheRuleDrops) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    std::vector<Model> rows;
    tq::BackupList list;
    const int n = 1 + static_cast<int>(random() % 12);
    for (int id = 0; id < n; ++id) {
      rows.push_back({id, static_cast<short>(random() % 2), static_cast<int>(random() % 5)});
      ASSERT_TRUE(list.append(row_of(rows.back())));
    }
    for (short generations = 1; generations <= 4; ++generations) {
      std::vector<int> dropped;
      for (const std::size_t i : tq::backups_to_drop(list, generations, {})) {
        dropped.push_back(rows[i].id);
      }
      ASSERT_EQ(dropped, drop_one_by_one(rows, generations)) << "round " << round;
      // Keeping one back changes nothing about the others.
      std::erase(dropped, 3);
      ASSERT_EQ(tq::backups_to_drop(list, generations, "00003").size(), dropped.size());
    }
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
