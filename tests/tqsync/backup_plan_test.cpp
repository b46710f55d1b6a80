// Decisions about backups.
#include "engine/backup_plan.h"

#include <algorithm>

#include "support/test.h"

namespace tqsync {
namespace {

TEST(BackupPlan, WhatIsWrongAndWhatARestoreDoes) {
  const std::tuple<const char*, CopyFacts, const char*, const char*> cases[] = {
      {"nothing changed", {5, 5, 5, true}, "", "same"},
      {"written again", {5, 5, 5, false}, "", "replace"},
      {"grown", {5, 5, 6, true}, "", "replace"},
      {"deleted", {5, 5, std::nullopt, false}, "", "bring back"},
      {"copy gone", {5, std::nullopt, 5, true}, "the copy is missing", "same"},
      {"copy cut", {5, 4, 5, true}, "the copy has 4 bytes instead of 5", "same"},
      {"sizes are kept with 32 bits", {1, (1ULL << 32) + 1, (1ULL << 32) + 1, true}, "", "same"},
  };
  for (const auto& [why, facts, fault, effect] : cases) {
    SCOPED_TRACE(why);
    EXPECT_EQ(copy_fault(facts), fault);
    EXPECT_STREQ(effect_name(effect_of(facts)), effect);
  }
}

TEST(BackupPlan, CopiesLieInTheFolderOfABackup) {
  for (const char* folder : {"/h/backup", "/h/backup/"}) {
    EXPECT_TRUE(is_copy_in(folder, "/h/backup/00000/copy"));
    for (const char* other : {"/h/backup/copy", "/h/u/copy", "/h/backup/00000/../../u/copy",
                              "/h/backup/../u", "copy", "/h/backup/0/1/copy"}) {
      EXPECT_FALSE(is_copy_in(folder, other)) << other;
    }
  }
}

TEST(BackupPlan, PlacesBelowAFolderNeverMeet) {
  const std::tuple<const char*, Texts, Texts> cases[] = {
      {"one file", {"/a/b/c.csv"}, {"/to/c.csv"}},
      {"one folder", {"/a/b/c.csv", "/a/b/d.csv"}, {"/to/c.csv", "/to/d.csv"}},
      {"the same name twice", {"/a/b/x", "/a/c/x"}, {"/to/b/x", "/to/c/x"}},
      {"one above the other", {"/a/x", "/a/b/c/x"}, {"/to/x", "/to/b/c/x"}},
      {"names that begin alike", {"/ab/x", "/a/x"}, {"/to/ab/x", "/to/a/x"}},
      {"climbing out", {"/a/../../x", "/b/../../../y", "../z"}, {"/to/x", "/to/y", "/to/z"}},
      {"nothing", {}, {}},
  };
  for (const auto& [why, paths, wanted] : cases) {
    SCOPED_TRACE(why);
    Texts places = places_below("/to", paths);
    for (std::string& place : places) std::ranges::replace(place, '\\', '/');
    EXPECT_EQ(places, wanted);
  }
}

}  // namespace
}  // namespace tqsync
