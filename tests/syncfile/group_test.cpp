// One group in memory, through handles.
#include <cstring>

#include "support/records.h"
#include "support/test.h"
#include "support/zeros.h"
#include "tqutil/syncfile.h"

namespace {

struct SyncGroup : testing::Test {
  ~SyncGroup() override { CloseSyncFile(group); }
  void add(int place, const std::string& text) {
    Info info;
    std::strcpy(info.memberText, text.c_str());
    ASSERT_EQ(AddSyncFileInfo(static_cast<short>(place), &info, group), 0);
  }
  Texts texts() {
    Texts all;
    Info info;
    for (short i = 0; GetSyncFileInfo(i, &info, group) == 0; ++i) all.emplace_back(info.memberText);
    return all;
  }

  TestHome home;
  const int32_t group = CreateSyncFile();
};

TEST_F(SyncGroup, HeaderFields) {
  char buffer[TQ_TITLE_SIZE] = "previous";
  SetSyncTitle("title", group);
  SetSyncTitle(nullptr, group);
  EXPECT_EQ(GetSyncTitle(buffer, group), 8) << "the length of what the buffer held before";
  EXPECT_STREQ(buffer, "title");
  EXPECT_EQ(GetSyncTitle(buffer, group), 5);
  EXPECT_EQ(GetSyncTitle(nullptr, group), 0);
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(GetSyncMemo(buffer, group), 130) << "no terminator in the buffer: its whole size";
  EXPECT_STREQ(buffer, "");
  SetSyncMemo((std::string(128, 'x') + "\x88\x9F").c_str(), group);
  GetSyncMemo(buffer, group);
  EXPECT_EQ(std::string(buffer), std::string(128, 'x')) << "no half character at the end";
  EXPECT_EQ(SetSyncFlg(20, 1, group), 1);
  EXPECT_EQ(SetSyncFlg(-1, 1, group), 1);
  EXPECT_EQ(GetSyncFlg(20, group), -1);
  EXPECT_EQ(SetSyncFlg(0, -5, group), 0);
  EXPECT_EQ(GetSyncFlg(0, group), -5);
}

// Below the last place a member goes before the one that is there, else to the end.
TEST_F(SyncGroup, PlacesAndIds) {
  for (const int place : {-1, 0, 1, 0, 9}) add(place, std::to_string(place));
  EXPECT_EQ(texts(), (Texts{"0", "-1", "0", "1", "9"}));
  EXPECT_EQ(GetSyncFilePos("000003", group), 0) << "ids in the order of adding";
  EXPECT_EQ(AddSyncFileInfo(-1, nullptr, group), 0) << "an empty member";
  char id[TQ_FILE_ID_SIZE];
  EXPECT_EQ(GetSyncFileID(5, id, group), 0);
  EXPECT_STREQ(id, "");
  for (const short place : {short{-1}, short{6}}) EXPECT_EQ(DeleteSyncFileInfo(place, group), 1);
  EXPECT_EQ(DeleteSyncFileInfo(0, group), 0);
  EXPECT_EQ(DeleteSyncFileInfo(2, group), 0);
  EXPECT_EQ(texts(), (Texts{"-1", "0", "9", ""}));
  EXPECT_EQ(GetSyncFileCnt(group), 4);
  add(-1, "f");
  EXPECT_EQ(GetSyncFilePos("000002", group), 4) << "the lowest free id is given out again";
}

TEST_F(SyncGroup, MemberFieldsAndTheirLimits) {
  add(-1, "m");
  Info info;
  info.appType = 1000;
  info.trFlg[7] = 3;
  info.sts[2] = 9;
  EXPECT_EQ(SetSyncFileInfo(1, &info, group), 1);
  EXPECT_EQ(SetSyncFileInfo(0, nullptr, group), 0);
  EXPECT_EQ(SetSyncFileInfo(0, &info, group), 0);
  EXPECT_EQ(GetSyncTrFlg(0, 7, group), 3);
  EXPECT_EQ(GetSyncFileSts(0, 2, group), 0) << "status words are not taken from a record";
  EXPECT_EQ(SetSyncFileSts(0, 2, -2, group), 0);
  EXPECT_EQ(GetSyncFileInfo(0, &info, group), 0);
  EXPECT_EQ(info.sts[2], -2) << "but given out";
  EXPECT_EQ(GetSyncFileSts2("000000", 2, group), -2);
  EXPECT_EQ(GetSyncFileSts2("none", 2, group), -1);
  EXPECT_EQ(GetSyncFileSts2(nullptr, 2, group), -1);
  for (const short n : {short{-1}, short{20}, short{30000}}) {
    EXPECT_EQ(SetSyncTrFlg(0, n, 1, group), 1);
    EXPECT_EQ(GetSyncTrFlg(0, n, group), -1);
    EXPECT_EQ(SetSyncFileSts(0, n, 1, group), 1);
    EXPECT_EQ(GetSyncFileSts(0, n, group), -1);
  }
  char text[TQ_PATH_SIZE] = "value";
  EXPECT_EQ(SetSyncFileSrchFile(0, text, group), -1) << "always -1, success included";
  EXPECT_EQ(GetSyncFileSrchFile(0, text, group), -1);
  EXPECT_STREQ(text, "value");
  EXPECT_EQ(SetSyncFileFldFile(5, text, group), -1);
  EXPECT_EQ(SetSyncFileFldFile(0, nullptr, group), -1);
}

TEST_F(SyncGroup, DeletingAMemberDeletesItsTemporaryFiles) {
  for (const char* name : {"keep", "ab1", "ab2", "new"}) {
    home.write("work\\" + std::string(name) + ".tmp", "");
  }
  home.make_folder("work\\ab3.tmp");
  add(-1, "m");
  Info info;
  std::strcpy(info.tmpFileO, home.at("work\\ab*.tmp").c_str());
  std::strcpy(info.tmpFileN, home.at("work\\new.tmp").c_str());
  SetSyncFileInfo(0, &info, group);
  EXPECT_EQ(DeleteSyncFileInfo(0, group), 0);
  EXPECT_EQ(home.contents().size(), 5U) << "folders, and keep.tmp";
  EXPECT_TRUE(home.exists("work\\ab3.tmp")) << "folders stay";
  EXPECT_TRUE(home.exists("work\\keep.tmp"));
}

TEST_F(SyncGroup, FieldFileCopiesAndPrivateNames) {
  home.write("source.fld", "fields");
  add(-1, "a");
  add(-1, "b");
  ASSERT_EQ(WriteSyncFile(0, group), 0);
  EXPECT_EQ(AddSyncFileFldFile(9, "x", group), 1);
  EXPECT_EQ(AddSyncFileFldFile(0, home.at("source.fld").c_str(), group), 0);
  EXPECT_EQ(AddSyncFileFldFile(1, home.at("missing.fld").c_str(), group), 0);
  char name[TQ_PATH_SIZE] = "";
  GetSyncFileFldFile(0, name, group);
  const std::string prefix = home.at("member\\000\\");
  ASSERT_EQ(std::string(name).substr(0, prefix.size() + 3), prefix + "fld");
  EXPECT_EQ(home.read(std::string(name).substr(home.path().size() + 1)), "fields");
  GetSyncFileFldFile(1, name, group);
  EXPECT_STREQ(name, "") << "a copy that fails changes nothing";
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home.native("member\\000")), {}), 1)
      << "and leaves nothing behind";

  char first[TQ_PATH_SIZE], again[TQ_PATH_SIZE], other[TQ_PATH_SIZE];
  EXPECT_EQ(GetSyncCsvHeadPath(0, first, group), 0);
  EXPECT_EQ(GetSyncCsvHeadPath(1, other, group), 0);
  EXPECT_STRNE(first, other);
  add(0, "c");
  EXPECT_EQ(DeleteSyncFileInfo(1, group), 0);
  EXPECT_EQ(GetSyncCsvHeadPath(1, again, group), 0);
  EXPECT_STREQ(again, other) << "the name goes with its member";
  EXPECT_EQ(GetSyncCsvHeadPath(2, again, group), -1);
}

TEST(SyncHandles, SlotsAndDeadHandles) {
  TestHome home;
  std::vector<int32_t> open;
  for (int i = 0; i < 10; ++i) open.push_back(CreateSyncFile());
  EXPECT_EQ(open, (std::vector<int32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(CreateSyncFile(), 0);
  EXPECT_EQ(CloseSyncFile(4), 0);
  EXPECT_EQ(CloseSyncFile(4), 0) << "an empty slot";
  EXPECT_EQ(OpenSyncFile("", "R"), 0) << "a failing open leaves the slot empty";
  EXPECT_EQ(CreateSyncFile2(), 4);
  for (const int32_t handle : open) EXPECT_EQ(CloseSyncFile(handle), 0);
  EXPECT_EQ(CloseSyncFile(0), 1);

  for (const int32_t dead : {0, 1, 11, -1, 2000000000}) {
    expect_answers(dead, -1, ReadSyncFile, GetSyncTrFlg, GetSyncFileSts, GetSyncFileSts2,
                   GetSyncFilePos);
    expect_answers(dead, 1, WriteSyncFile, SetSyncReadMode, ReSaveSyncRead2Normal, GetSyncFileCnt,
                   SetSyncType, GetSyncType, SetSyncTitle, GetSyncTitle, SetSyncMemo, GetSyncMemo,
                   SetSyncFlg, GetSyncFlg, GetSyncGrpID, GetSyncGrpPath, GetSyncFilePath,
                   SetSyncFileInfo, AddSyncFileInfo, GetSyncFileInfo, GetSyncFileID,
                   DeleteSyncFileInfo, SetSyncTrFlg, SetSyncFileSts, AddSyncFileFldFile,
                   SetSyncFileFldFile, GetSyncFileFldFile, SetSyncFileTmpFileN, GetSyncFileTmpFileN,
                   SetSyncFileTmpFileO, GetSyncFileTmpFileO, GetSyncGrpNext, GetSyncGrpInfo,
                   DeleteSyncGrpInfo);
    EXPECT_EQ(SetSyncFileSrchFile(0, nullptr, dead), 1);
    EXPECT_EQ(GetSyncFileSrchFile(0, nullptr, dead), 1);
    EXPECT_EQ(GetSyncCsvHeadPath(0, nullptr, dead), 1);
  }
}

TEST_F(SyncGroup, IsReadAndListedThroughHandles) {
  char text[TQ_PATH_SIZE] = "";
  EXPECT_EQ(SetSyncType(5, group), 0);
  add(-1, "m");
  EXPECT_EQ(SetSyncFileTmpFileO(0, text, group), -1);
  EXPECT_EQ(WriteSyncFile(0, group), 0);
  EXPECT_EQ(GetSyncFilePath(text, group), 0);
  EXPECT_EQ(text, home.at("member\\000"));
  EXPECT_EQ(GetSyncGrpPath(text, group), 0);

  const int32_t reading = OpenSyncFile(text, "rb");
  EXPECT_EQ(ReadSyncFile(reading), 1);
  EXPECT_EQ(GetSyncType(reading), 5);
  EXPECT_EQ(WriteSyncFile(0, reading), 1) << "read-only";
  EXPECT_EQ(CloseSyncFile(reading), 0);

  short count = -1, pos = -1;
  const int32_t listing = GetSyncGrpInit(&count);
  Group grp;
  EXPECT_EQ(GetSyncGrpNext(&pos, &grp, listing), 0);
  EXPECT_EQ(grp.fileCnt, 1);
  EXPECT_EQ(DeleteSyncGrpInfo(pos, listing), 0);
  EXPECT_EQ(GetSyncGrpInfo(pos, &grp, listing), 1);
  EXPECT_EQ(GetSyncGrpClose(listing), 0);
}

}  // namespace
