// The group folder: order and positions of a listing, deletion, ids, and read mode.
#include <cstring>

#include "support/records.h"
#include "support/test.h"
#include "tqutil/syncfile.h"

namespace {

// A saved group; its id.
std::string save_group(const char* title) {
  CSyncFileCtl group;
  group.Create();
  group.SetTitle(title);
  EXPECT_EQ(group.Write(0), 0);
  char id[4];
  group.GetSyncGrpID(id);
  return id;
}

Texts walk(CSyncFileCtl& listing) {
  Texts found;
  Group grp;
  short pos = 0;
  while (listing.GetSyncGrpNext(&pos, &grp) == 0) {
    found.push_back(std::string(grp.title) + ":" + std::to_string(pos));
  }
  return found;
}

TEST(GroupListing, SortsByTitleAndKeepsPositions) {
  TestHome home;
  CSyncFileCtl listing;
  EXPECT_EQ(listing.GetSyncGrpInit(), 0);
  EXPECT_EQ(walk(listing), Texts{});
  for (const char* title : {"b", "A", "a", "ソ"_sjis, "ぁ"_sjis}) save_group(title);
  home.write("group\\note.txt", "");
  home.make_folder("group\\folder.SYG");
  ASSERT_EQ(listing.GetSyncGrpInit(), 5);
  EXPECT_EQ(walk(listing), (Texts{"A:1", "a:2", "b:0", "ぁ:4"_sjis, "ソ:3"_sjis}));
}

TEST(GroupListing, UnstableOrderOfEqualTitlesIsKept) {
  TestHome home;
  for (const char* title : {"b", "B", "a"}) save_group(title);
  CSyncFileCtl listing;
  ASSERT_EQ(listing.GetSyncGrpInit(), 3);
  EXPECT_EQ(walk(listing), (Texts{"a:2", "B:1", "b:0"}))
      << "the first was swapped behind its equal";
}

TEST(GroupListing, DeletedGroupsGoAndOthersKeepTheirPosition) {
  TestHome home;
  for (const char* title : {"d", "c", "b", "a"}) save_group(title);
  for (const char* name : {"x.tmp", "x.ADW", "x.ldb"})
    home.write("member\\002\\" + std::string(name), "");
  home.write("member\\001\\keep.csv", "");
  CSyncFileCtl listing;
  ASSERT_EQ(listing.GetSyncGrpInit(), 4);
  Group grp;
  short pos = -1;
  ASSERT_EQ(listing.GetSyncGrpNext(&pos, &grp), 0);  // a
  EXPECT_EQ(listing.DeleteSyncGrp(2), 0);
  EXPECT_FALSE(home.exists("group\\002.SYG"));
  EXPECT_FALSE(home.exists("member\\002"));
  EXPECT_EQ(listing.DeleteSyncGrp(2), 1);
  EXPECT_EQ(listing.DeleteSyncGrp(-1), 1);
  EXPECT_EQ(listing.GetSyncGrpInfo(3, &grp), 0) << "past the count, yet listed";
  EXPECT_STREQ(grp.title, "a");
  EXPECT_EQ(walk(listing), (Texts{"c:1", "d:0"}));
  EXPECT_EQ(listing.DeleteSyncGrp(1), 0);
  EXPECT_FALSE(home.exists("group\\001.SYG"));
  EXPECT_TRUE(home.exists("member\\001\\keep.csv")) << "a folder that holds more stays";
}

TEST(GroupIds, FollowTheMemberFolders) {
  TestHome home;
  home.make_folder("member\\000");
  home.make_folder("member\\001");
  EXPECT_EQ(save_group("t"), "002");
  for (int n = 3; n < 1000; ++n) {
    char name[24];
    std::snprintf(name, sizeof name, "member\\%03d", n);
    home.make_folder(name);
  }
  CSyncFileCtl group;
  EXPECT_EQ(group.Create(), 0);
  char id[4] = "xyz";
  group.GetSyncGrpID(id);
  EXPECT_STREQ(id, "") << "all taken";
  EXPECT_EQ(group.Write(0), 1);
  EXPECT_EQ(group.Write(1), 1);
  EXPECT_EQ(group.LastError(), -3);
}

TEST(ReadMode, WorkingGroupAndItsWayToAnOrdinaryOne) {
  TestHome home;
  home.write("member\\999\\left.tmp", "");
  home.write("group\\999.SYG", "old");
  CSyncFileCtl group;
  char path[TQ_PATH_SIZE], adjust[TQ_PATH_SIZE];
  ASSERT_EQ(group.SetReadMode(path, adjust), 0);
  EXPECT_EQ(path, home.at("group\\999.SYG"));
  EXPECT_EQ(std::string(adjust).substr(0, home.path().size() + 15), home.at("member\\999\\Ads"));
  EXPECT_FALSE(home.exists("group\\999.SYG"));
  EXPECT_TRUE(std::filesystem::is_empty(home.native("member\\999")))
      << "the name is free, the folder stays";
  Info info;
  ASSERT_EQ(group.GetSyncFileInfo(0, &info), 0);
  EXPECT_STREQ(info.memberText, adjust);
  EXPECT_EQ(info.appType, TQ_APP_MASTER);
  EXPECT_EQ(info.trFlg[0], 1);
  EXPECT_EQ(info.trFlg[19], 1);

  home.write("member\\999\\one.tmp", "copied");
  const std::string tmp[] = {home.at("member\\999\\one.tmp"), home.at("member\\999\\missing.tmp"),
                             "no-folder"};
  for (const std::string& file : tmp) {
    Info member;
    std::strcpy(member.tmpFileO, file.c_str());
    ASSERT_EQ(group.AddSyncFileInfo(-1, &member), 0);
  }
  ASSERT_EQ(group.Write(0), 0);
  ASSERT_EQ(group.ReSaveRead2Normal("title", "memo", "Z:\\data.csv"), 0);
  EXPECT_EQ(home.read("member\\000\\one.tmp"), "copied");
  CSyncFileCtl saved;
  saved.Open(home.at("group\\000.SYG").c_str(), "r");
  ASSERT_EQ(saved.Read(), 4);
  EXPECT_EQ(saved.GetSyncFlg(19), 0);
  ASSERT_EQ(saved.GetSyncFileInfo(0, &info), 0);
  EXPECT_STREQ(info.memberText, "Z:\\data.csv");
  EXPECT_EQ(info.trFlg[19], 0);
  const std::string expected[] = {home.at("member\\000\\one.tmp"), "", "no-folder"};
  for (short i = 0; i < 3; ++i) {
    char text[TQ_PATH_SIZE];
    saved.GetSyncFileTmpFileO(static_cast<short>(i + 1), text);
    EXPECT_EQ(text, expected[i]);
  }
  EXPECT_EQ(saved.GetSyncFilePos("000003"), 3);
}

TEST(ReadMode, DeletingTheWorkingGroupKeepsItsFolder) {
  TestHome home;
  CSyncFileCtl group;
  group.Create2();
  ASSERT_EQ(group.Write(0), 0);
  CSyncFileCtl listing;
  ASSERT_EQ(listing.GetSyncGrpInit(), 1);
  EXPECT_EQ(listing.DeleteSyncGrp(0), 0);
  EXPECT_FALSE(home.exists("group\\999.SYG"));
  EXPECT_TRUE(home.exists("member\\999"));
}

}  // namespace
