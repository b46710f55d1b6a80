// The backup settings: who writes and reads which key, and what the file goes through.
#include "backup/settings.h"

#include "backup/backup_host.h"
#include "support/faults.h"
#include "support/test.h"

namespace {

constexpr char kFile[] = "data\\TQ_BKINF.DAT";

TEST(BackupSettings, KindsAndTheirKeys) {
  const std::tuple<short, const char*, const char*, const char*> cases[] = {
      {0, "convGeneration", "convGeneration", "conv1"},
      {1, "syncGeneration", "syncGeneration", "sync1"},
      {2, "bkupGeneration", "restGeneration", "bkup1"},  // the restore kind is not the same
      {3, "restGeneration", "bkupGeneration", "bkup1"},
      {4, "bkupGeneration", "bkupGeneration", "bkup1"},
      {-1, "bkupGeneration", "bkupGeneration", "bkup1"},
  };
  for (const auto& [kind, written, read, path_key] : cases) {
    SCOPED_TRACE(kind);
    BackupHost host;
    host.make_folder("data");
    EXPECT_EQ(getBkupGeneration(kind), 3) << "nothing set";
    EXPECT_NE(setBkupGeneration(kind, 5), 0);
    EXPECT_EQ(host.read(kFile), "[TARQO_BACKUP]\r\n" + std::string(written) + "=5\r\n");
    host.write(kFile, "[TARQO_BACKUP]\r\n" + std::string(read) + "= -9 or so\r\n");
    EXPECT_EQ(getBkupGeneration(kind), -9);
    EXPECT_NE(setBkupFilePath(kind, 1, "Z:\\a"), 0);
    EXPECT_NE(host.read(kFile).find("\r\n" + std::string(path_key) + "=Z:\\a\r\n"),
              std::string::npos);
    char path[TQ_BKUP_TEXT_SIZE];
    EXPECT_EQ(getBkupFilePath(kind, 1, path), 4);
    EXPECT_STREQ(path, "Z:\\a");
    EXPECT_EQ(getBkupFilePath(kind, 2, path), 0);
    EXPECT_STREQ(path, "");
  }
}

TEST(BackupSettings, MailStoreValues) {
  BackupHost host;
  EXPECT_EQ(tqGetPstTrFlg(), 0);
  EXPECT_EQ(tqGetPstStsFlg(), 1);
  char text[TQ_BKUP_TEXT_SIZE + 1];
  std::fill(std::begin(text), std::end(text), '#');
  EXPECT_EQ(tqGetPstFolderName(text), 0);
  host.make_folder("data");
  EXPECT_NE(tqSetPstTrFlg(2), 0);
  EXPECT_NE(tqSetPstStsFlg(-9), 0);
  EXPECT_NE(tqSetPstFolderName(std::string(300, 'n').c_str()), 0);
  EXPECT_EQ(tqGetPstTrFlg(), 2);
  EXPECT_EQ(tqGetPstStsFlg(), -9);
  EXPECT_EQ(tqGetPstFolderName(text), TQ_BKUP_TEXT_SIZE - 1);
  EXPECT_EQ(text[TQ_BKUP_TEXT_SIZE - 1], '\0');
  EXPECT_EQ(text[TQ_BKUP_TEXT_SIZE], '#');
}

TEST(BackupSettings, WhatIsNotOursStays) {
  BackupHost host;
  const std::string before =
      "; by "
      "hand\r\n[other]\r\nconvGeneration=8\r\n[tarqo_backup]\r\nmine=1\r\nCONVgeneration=4\r\n";
  host.write(kFile, before);
  EXPECT_EQ(tqGetBkupGeneration(), 4);
  CBackUpCtl object;
  EXPECT_EQ(object.SetGenerationCnt(7), 0);
  std::string after = before;
  EXPECT_EQ(host.read(kFile), after.replace(after.find("CONV"), 16, "convGeneration=7"));
  EXPECT_NE(tqSetGenerationCnt(2), 0);
  EXPECT_EQ(object.GetGenerationCnt(), 2);
  EXPECT_EQ(setBkupFilePath(0, 1, "a\nconvGeneration=1"), 0) << "it would become a line of its own";
  EXPECT_EQ(tqGetBkupGeneration(), 2);
}

TEST(BackupSettings, AFailedWriteIsToldAndLeavesTheOldFile) {
  each_fault({fault::Kind::kFail, fault::Kind::kDiskFull}, [](int nth, fault::Kind kind) {
    BackupHost host;
    host.write(kFile, "[TARQO_BACKUP]\r\nconvGeneration=1\r\n");
    const fault::FailNth failing(nth, kind);
    const short reached = setBkupGeneration(0, 2);
    const bool hit = failing.hit();
    fault::disarm();
    EXPECT_EQ(reached == 0, hit);
    const short now = getBkupGeneration(0);
    EXPECT_TRUE(now == 2 || (hit && now == 1)) << now;
    EXPECT_EQ(host.contents().size(), 2u) << "nothing is left behind";
    return hit;
  });
}

}  // namespace
