// The history of a run outlives the run.
#include <gtest/gtest.h>

#include <string>

#include "failure.h"
#include "library/run_history.h"
#include "support/home.h"

namespace {

using tq::test::TestHome;
using namespace tqsync;

std::string saved() {
  std::string all;
  for (const HistoryLine& line : last_history().lines) {
    all += line.level + "|" + line.category + "|" + line.text + "\n";
  }
  return all;
}

TEST(RunHistories, AreThereWhenTheRunIsOver) {
  TestHome home;
  EXPECT_THROW(last_history(), Failure);
  {
    RunHistory history({"master.csv", "partner.csv"});
    history.add(1, HistoryCategory::kAddNew, "山田 😀 太郎");
    history.add(1, HistoryCategory::kReNew, "two\tcells\nand lines");
    history.add(-1, HistoryCategory::kHead, "group 000");
    history.add(0, HistoryCategory::kRead, "line 7");
    EXPECT_THROW(history.add(2, HistoryCategory::kRead, "no such file"), Failure);
    history.save();
    history.add(-1, HistoryCategory::kHead, "more");
    history.save();
  }
  EXPECT_EQ(saved(),
            "|head|group 000\n|head|more\nmaster.csv|read|line 7\n"
            "partner.csv|renewed|two cells\npartner.csv|renewed|and lines\n"
            "partner.csv|added|山田 ? 太郎\n");
  const auto contents = home.contents();
  EXPECT_EQ(contents.count("data\\history.txt"), 1u);
  EXPECT_EQ(contents.size(), 3u) << "two folders and the history, no temporary files";
  RunHistory({"next.csv"}).save();
  EXPECT_EQ(saved(), "") << "the next run has its own";
}

}  // namespace
