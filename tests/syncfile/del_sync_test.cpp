// The working group for a deletion sync.
#include <cstring>

#include "support/faults.h"
#include "support/records.h"
#include "support/test.h"
#include "tqutil/dbbridge.h"
#include "tqutil/syncfile.h"

namespace {

// A saved group: the first text is a master's unless it is empty, the others are partners'.
void save_group(const char* master, const std::vector<const char*>& partners) {
  CSyncFileCtl group;
  group.Create();
  Info info;
  info.appType = TQ_APP_MASTER;
  std::strcpy(info.memberText, master);
  if (*master != '\0') group.AddSyncFileInfo(-1, &info);
  info.appType = 3;
  for (const char* partner : partners) {
    std::strcpy(info.memberText, partner);
    group.AddSyncFileInfo(-1, &info);
  }
  ASSERT_EQ(group.Write(0), 0);
}

// Member texts of the working group, with its type and title in front.
Texts working_group(const TestHome& home) {
  CSyncFileCtl group;
  group.Open(home.at("group\\999.SYG").c_str(), "r");
  if (group.Read() < 0) return {"missing"};
  char title[TQ_TITLE_SIZE] = "";
  group.GetTitle(title);
  Texts texts = {std::to_string(group.GetSyncType()) + title};
  for (short i = 0; i < group.GetSyncFileCnt(); ++i) {
    Info info;
    group.GetSyncFileInfo(i, &info);
    texts.push_back(std::to_string(info.appType) + info.memberText);
  }
  return texts;
}

const std::string kHead = std::string("5").append("削除シンクロ作業用ファイル"_sjis);

TEST(DelSync, CollectsEveryPartnerOfTheMasterOnce) {
  TestHome home;
  save_group("master", {"p1", "p2"});
  save_group("other", {"p3"});
  save_group("master", {"p2", "p4"});
  save_group("", {"master"});  // a partner of that name is no master
  for (int twice = 0; twice < 2; ++twice) {
    char path[TQ_PATH_SIZE] = "untouched";
    ASSERT_EQ(CreateDelSyncFile("master", path), 0);
    EXPECT_EQ(path, home.at("group\\999.SYG"));
    EXPECT_EQ(working_group(home), (Texts{kHead, "1000master", "3p1", "3p2", "3p4"}));
  }
  char path[TQ_PATH_SIZE] = "untouched";
  EXPECT_EQ(CreateDelSyncFile("nobody", path), 1);
  EXPECT_STREQ(path, "untouched");
  EXPECT_EQ(working_group(home), (Texts{kHead})) << "the earlier one is replaced";
}

TEST(DelSync, EveryFailureIsToldAndTheNextCallRecovers) {
  TestHome home;
  save_group("master", {"p1"});
  const std::string group = home.read("group\\000.SYG");
  each_fault({fault::Kind::kFail}, [&](int nth, fault::Kind) {
    char path[TQ_PATH_SIZE] = "untouched";
    const fault::FailNth failing(nth);
    const short result = CreateDelSyncFile("master", path);
    const bool hit = failing.hit();
    fault::disarm();
    EXPECT_TRUE(result == 0 || std::string(path) == "untouched");
    EXPECT_EQ(home.read("group\\000.SYG"), group);
    EXPECT_EQ(CreateDelSyncFile("master", path), 0);
    EXPECT_EQ(working_group(home), (Texts{kHead, "1000master", "3p1"}));
    return hit;
  });
}

}  // namespace
