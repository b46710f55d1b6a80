// The sibling tables and what the host helpers make of texts, paths and folders.
#include "siblings/siblings.h"

#include <cstddef>
#include <cstring>

#include "support/own_siblings.h"
#include "support/test.h"
#include "tqutil/host.h"
#include "tqutil/syncfile.h"

namespace {

std::string folder(short which) {
  char buffer[TQ_PATH_SIZE] = "before";
  return tqGetFolder(which, buffer) == 0 ? buffer : "none:" + std::string(buffer);
}

TEST(Folders, DefaultsLieInTheHomeFolderAndAreMade) {
  TestHome home;
  EXPECT_EQ(folder(TQ_FOLDER_WORK), home.at("work\\"));
  EXPECT_TRUE(home.exists("work"));
  EXPECT_EQ(folder(TQ_FOLDER_GROUP), home.at("group\\"));
  EXPECT_EQ(folder(TQ_FOLDER_HOME), home.at(""));
  EXPECT_EQ(folder(8), "none:");
  EXPECT_EQ(folder(-1), "none:");
}

TEST(Folders, SettingsNameOthers) {
  TestHome home;
  home.write("tqutil.ini", "[folders]\r\nwork=deep\\er\r\nGroup=" + home.at("elsewhere\\") +
                               "\r\nbackup=\r\ndata=" + std::string(300, 'x') +
                               "\r\nmember=blocked\r\n");
  home.write("blocked", "a file");
  EXPECT_EQ(folder(TQ_FOLDER_WORK), home.at("deep\\er\\"));
  EXPECT_EQ(folder(TQ_FOLDER_GROUP), home.at("elsewhere\\"));
  EXPECT_EQ(folder(TQ_FOLDER_BACKUP), home.at("backup\\")) << "an empty value is none";
  EXPECT_EQ(folder(TQ_FOLDER_DATA), "none:") << "too long for a path";
  EXPECT_EQ(folder(TQ_FOLDER_MEMBER), "none:") << "a file is in the way";
  CSyncFileCtl group;
  EXPECT_EQ(group.Create(), 0);
  EXPECT_EQ(group.Write(0), 1) << "nowhere to write to";
}

void TQ_CALL my_work_folder(void* context, char* out) {
  std::strcpy(out, static_cast<const char*>(context));
}

TEST(Siblings, AnApplicationsEntriesReplaceTheDefaults) {
  TestHome home;
  std::string mine = home.at("mine");
  OwnSiblings own(mine.data());
  tFLDCOM_API& fldcom = own.fldcom;
  fldcom.FldComGetWorkFolder = my_work_folder;
  // One entry of a set that only works as a whole: the default set stays.
  fldcom.FldComFldFileClose = [](void*, void*) { ADD_FAILURE(); };
  own.install();
  EXPECT_EQ(folder(TQ_FOLDER_WORK), mine + "\\") << "a missing backslash is added";
  EXPECT_EQ(folder(TQ_FOLDER_GROUP), home.at("group\\")) << "null keeps the default";
  tTQ_SIBLINGS now{};
  now.size = sizeof now;
  ASSERT_EQ(tqGetSiblings(&now), 0);
  EXPECT_EQ(now.fldcom->FldComGetWorkFolder, &my_work_folder);
  EXPECT_NE(now.fldcom->FldComFldFileClose, fldcom.FldComFldFileClose);

  // An application compiled before FldComGetWorkFolder existed.
  fldcom.size = offsetof(tFLDCOM_API, FldComGetWorkFolder);
  own.install();
  EXPECT_EQ(folder(TQ_FOLDER_WORK), home.at("work\\"));

  now.size = 4;
  EXPECT_EQ(tqSetSiblings(&now), 1);
}

TEST(HostTexts, BothWaysWithMeasuresAndFaults) {
  const std::string utf8 = "髙橋 ｱ";
  const std::string sjis = "髙橋 ｱ"_sjis;
  char out[32];
  EXPECT_EQ(tqUtf8ToSjis(utf8.data(), static_cast<int32_t>(utf8.size()), out, sizeof out), 6);
  EXPECT_EQ(out, sjis);
  EXPECT_EQ(tqSjisToUtf8(sjis.data(), 6, out, sizeof out), static_cast<int32_t>(utf8.size()));
  EXPECT_EQ(out, utf8);
  EXPECT_EQ(tqSjisToUtf8(sjis.data(), 6, nullptr, 0), static_cast<int32_t>(utf8.size()))
      << "measures";
  EXPECT_EQ(tqSjisToUtf8(sjis.data(), 6, out, 6), static_cast<int32_t>(utf8.size()));
  EXPECT_STREQ(out, "髙") << "cut at a character";
  const std::string bad = "a😀b";
  EXPECT_EQ(tqUtf8ToSjis(bad.data(), static_cast<int32_t>(bad.size()), out, sizeof out), -2);
  EXPECT_STREQ(out, "a") << "what stands before the fault";
  EXPECT_EQ(tqUtf8ToSjis(nullptr, 3, out, sizeof out), -1);
}

TEST(HostPaths, BothWays) {
  TestHome home;
  home.write("Sub\\住所録.csv"_sjis, "");
  const std::u8string wanted = home.native("Sub\\住所録.csv"_sjis).u8string();
  char native[1024], back[TQ_PATH_SIZE];
  ASSERT_EQ(tqPathToNative(home.at("sub\\住所録.CSV"_sjis).c_str(), native, sizeof native), 0);
  EXPECT_STREQ(native, reinterpret_cast<const char*>(wanted.c_str()));
  ASSERT_EQ(tqPathFromNative(native, back), 0);
  EXPECT_EQ(back, home.at("Sub\\住所録.csv"_sjis));
  EXPECT_EQ(tqPathFromNative(".", back), 0);
  for (const std::string& bad : {std::string(300, 'a'), std::string(), std::string("/tmp/nul"),
                                 std::string("/tmp/\xff"), std::string("/tmp/\uB2D8.csv")}) {
    EXPECT_EQ(tqPathFromNative(bad.c_str(), back), 1) << bad;
    EXPECT_STREQ(back, "");
  }
  for (const std::string& bad : {home.at("a"), std::string("Z:\\a\\..\\..")}) {
    EXPECT_EQ(tqPathToNative(bad.c_str(), native, 5), 1) << "no room, or above the root";
    EXPECT_STREQ(native, "");
  }
}

}  // namespace
