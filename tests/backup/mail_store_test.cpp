// The mail-store transfer: what is asked for in the settings, and what comes of its answers.
#include "backup/backup_host.h"

#include "support/test.h"

namespace {

// The settings as the transfer finds them.
std::string asked() {
  char name[TQ_BKUP_TEXT_SIZE];
  tqGetPstFolderName(name);
  return std::to_string(tqGetPstTrFlg()) + " " + std::to_string(tqGetPstStsFlg()) + " " + name;
}

TEST(MailStore, IsTransferredAndNotCopied) {
  BackupHost host;
  host.write("m\\a.pst", "store");
  host.write("m\\b.pst", "more");
  host.has_mail_store = true;
  host.busy = 1;
  Texts seen;
  host.transfer = [&] {
    seen.push_back(asked());
    tqSetPstStsFlg(0);
  };
  ASSERT_EQ(host.back_up(0, {{10, "", {"m\\a.pst", "m\\b.pst"}}}), 0);
  ASSERT_EQ(seen.size(), 1u) << "the first file only";
  const std::string name = seen[0].substr(5);
  EXPECT_EQ(seen[0].substr(0, 8), "0 -9 ~tq");
  EXPECT_EQ(host.read("backup\\00000\\" + name + ".tmp"), "") << "somebody else keeps the copy";

  host.transfer = [&] {
    seen.push_back(asked());
    tqSetPstStsFlg(static_cast<short>(tqGetPstTrFlg() == 1 ? 0 : 5));
  };
  EXPECT_EQ(tqErrRestoreGrp(0), 0);
  EXPECT_EQ(host.read("m\\a.pst"), "store") << "nothing is removed beforehand";
  EXPECT_EQ(tqDeleteBkupGrp("00000"), 0) << "how the deletion ended does not matter";
  EXPECT_EQ(seen, (Texts{"0 -9 " + name, "1 -9 " + name, "2 -9 " + name}));
}

TEST(MailStore, ATransferThatDoesNotReportFailed) {
  BackupHost host;
  host.write("a.pst", "store");
  host.has_mail_store = true;
  EXPECT_EQ(host.back_up(0, {{10, "", {"a.pst"}}}), -1);
  EXPECT_EQ(host.log.back(), "close");
  EXPECT_EQ(std::count(host.log.begin(), host.log.end(), "transfer 2"), 2) << "copy, then removal";
  EXPECT_EQ(tqGetPstStsFlg(), -9);
  EXPECT_FALSE(host.exists("backup\\00000"));
}

TEST(MailStore, IsNotTouchedWhereThereIsNone) {
  BackupHost host;
  host.write("a.pst", "store");
  EXPECT_EQ(host.back_up(0, {{10, "", {"a.pst"}}}), 0);
  EXPECT_EQ(tqRestoreGrp("00000"), 0);
  EXPECT_EQ(tqDeleteBkupGrp("00000"), 0);
  EXPECT_FALSE(host.exists("data\\TQ_BKINF.DAT"));
}

TEST(MailStore, IsNeededWhenTheNextBackupRotatesOneAway) {
  // `of_store`: place of the mail store among four backups, newest first
  const std::tuple<const char*, short, int, short> cases[] = {
      {"the newest two stay", 3, 1, 0}, {"the third is the last one to stay", 3, 2, 1},
      {"older ones too", 3, 3, 1},      {"none stays", 1, 0, 1},
      {"a count of none", 0, 0, 1},
  };
  for (const auto& [why, generations, of_store, needed] : cases) {
    SCOPED_TRACE(why);
    BackupHost host;
    for (int place = 0; place < 4; ++place) {
      host.write("data\\0000" + std::to_string(place) + ".BKH",
                 "0000" + std::to_string(place) + "\n1\n" + std::to_string(2010 - place) +
                     ",1,1,1,1,1,1\n \n1\ng\n" + (place == of_store ? "10" : "3") +
                     "\n1\np\nb\n0,0\n0,0\n0,0\n0\n0\n0\n");
    }
    tqSetGenerationCnt(static_cast<uint16_t>(generations));
    EXPECT_EQ(tqIsNeedOutlook(1), needed);
    EXPECT_EQ(tqIsNeedOutlook(0), 0) << "no backup of that kind";
  }
}

}  // namespace
