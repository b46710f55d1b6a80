// Ids as text, and the two forms of group and member records.
#include <cstring>

#include "common/table_memory.h"
#include "support/records.h"
#include "support/test.h"
#include "tqutil/records.h"

namespace {

TEST(SyncIds, TextAndBack) {
  const std::tuple<const char*, tSYNC_ID, const char*, const char*, const char*> cases[] = {
      {"padded", {1, 2, 345, 0}, "001", "001002", "001002000000345"},
      {"zero", {0, 0, 0, 7}, "000", "000000", "000000000000000"},
      {"full places", {999, 999, 999999999, 0}, "999", "999999", "999999999999999"},
      {"too wide", {65535, 1000, 4294967295U, 0}, "65535", "655351000", "6553510004294967295"},
  };
  for (const auto& [why, id, grp_text, file_text, sync_text] : cases) {
    SCOPED_TRACE(why);
    char grp[6], file[11], sync[TQ_SYNC_ID_SIZE];
    tqSyncIdVal2Str(&id, grp, file, sync);
    EXPECT_STREQ(grp, grp_text);
    EXPECT_STREQ(file, file_text);
    EXPECT_STREQ(sync, sync_text);
    char only[TQ_SYNC_ID_SIZE] = "before";
    tqSyncIdVal2Str(&id, nullptr, nullptr, only);
    EXPECT_STREQ(only, sync_text) << "a null output is passed over, the others are filled";
    tqRecIdVal2Str(&id, nullptr, only);
    EXPECT_STREQ(only, file_text);
  }
}

TEST(SyncIds, ReadAtFixedPlacesWithoutValidation) {
  const std::tuple<const char*, const char*, unsigned, unsigned, unsigned> cases[] = {
      {"nominal", "001002000000345", 1, 2, 345},
      {"what follows does not count", "0010020000003459", 1, 2, 345},
      {"short texts", "00100", 1, 0, 0},
      {"empty", "", 0, 0, 0},
      {"letters end a number", "0a1x02000012b45", 0, 0, 12},
      {"blanks and signs", " 12+34 -5000000", 12, 34, 4294967291U - 4999995},
      {"negative group wraps to 16 bits", "-01002", 65535, 2, 0},
  };
  for (const auto& [why, text, grp, file, rec] : cases) {
    SCOPED_TRACE(why);
    tSYNC_ID id = {9, 9, 9, 42};
    tqSyncIdStr2Val(text, &id);
    EXPECT_EQ(id.grp, grp);
    EXPECT_EQ(id.file, file);
    EXPECT_EQ(id.rec, rec);
    EXPECT_EQ(id.cap, 42U) << "no part of the identity";
    tqRecIdStr2Val(text, &id);
    EXPECT_EQ(id.grp, grp);
    EXPECT_EQ(id.file, file);
    EXPECT_EQ(id.rec, 0U);
  }
}

TEST(SyncInfo, FlatFormAndBack) {
  const std::int32_t before = tq::live_tables();
  {
    Info from, to;
    const auto texts = {&tSYNC_INFO::fldFile, &tSYNC_INFO::memberText, &tSYNC_INFO::tmpFileO,
                        &tSYNC_INFO::tmpFileN, &tSYNC_INFO::srchFile};
    char letter = 'a';
    for (const auto text : texts) std::strcpy(from.*text, std::string(261, letter++).c_str());
    from.sts[9] = -70000;
    from.trFlg[19] = -2;
    from.appType = 1000;
    from.appType2 = -1;
    tSYNC_INFO2 flat{};
    EXPECT_EQ(SyncInfoCopy(&from, &flat), 0);
    EXPECT_EQ(SyncInfoCopy2(&flat, &to), 0);
    for (const auto text : texts) EXPECT_STREQ(to.*text, from.*text);
    EXPECT_EQ(to.sts[9], -70000);
    EXPECT_EQ(to.trFlg[19], -2);
    EXPECT_EQ(to.appType, 1000);
    EXPECT_EQ(to.appType2, -1);
    EXPECT_EQ(SyncInfoFree(&to), 0);
    EXPECT_EQ(SyncInfoFree(&to), 0) << "harmless when repeated";
  }
  EXPECT_EQ(tq::live_tables(), before);
}

TEST(SyncGrp, FlatFormAndBack) {
  Group from, to;
  std::strcpy(from.id, "012");
  std::strcpy(from.title, std::string(129, 't').c_str());
  std::strcpy(from.filePath, "Z:\\m\\012");
  from.syncType = 5;
  from.fileCnt = 3;
  from.syncFlg[19] = 1;
  tSYNC_GRP2 flat{};
  flat.pos = 7;
  flat.cap = 8;
  SyncGrpCopy(&from, &flat);
  EXPECT_EQ(flat.pos + flat.cap, 15) << "these two stay";
  SyncGrpCopy2(&flat, &to);
  EXPECT_STREQ(to.id, "012");
  EXPECT_STREQ(to.title, from.title);
  EXPECT_STREQ(to.filePath, from.filePath);
  EXPECT_EQ(to.syncType + to.fileCnt + to.syncFlg[19], 9);
}

}  // namespace
