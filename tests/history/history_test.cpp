// Lines of six categories and two levels: where they go, how they come back, what is left when the
// disk fails.
#include "tqutil/history.h"

#include "history/categories.h"
#include "support/faults.h"
#include "support/own_siblings.h"
#include "support/test.h"
#include "support/zeros.h"

namespace {

constexpr short kRun = -1;

std::size_t files_with(const TestHome& home, const std::string& prefix) {
  std::size_t count = 0;
  for (const auto& [name, bytes] : home.contents()) count += name.rfind("work\\" + prefix, 0) == 0;
  return count;
}

TEST(History, EveryCategoryKeepsItsLinesApart) {
  TestHome home;
  for (const CategoryOperations& category : kCategories) {
    SCOPED_TRACE(category.name);
    CHistoryCtl history;
    ASSERT_EQ(history.CreateHistory(2), 0);
    EXPECT_EQ(files_with(home, category.run_prefix), 1u);
    EXPECT_EQ(files_with(home, category.file_prefix), 2u);
    EXPECT_EQ(home.contents().size(), 1u + 3 * 6) << "the folder, and three levels of six files";
    history.AddFileInfo("001001", nullptr);
    history.AddFileInfo("001001", nullptr);
    history.AddFileInfo("001003", nullptr);  // no room for it

    const int handles = fault::open_handles();
    EXPECT_EQ((history.*category.write)("001001", "first"), 0);
    EXPECT_EQ((history.*category.write2)(0, "住所"_sjis), 0);
    EXPECT_EQ((history.*category.write2)(1, "by index"), 0);
    EXPECT_EQ((history.*category.write)(nullptr, "run"), 0);
    EXPECT_EQ((history.*category.write2)(-32768, "any negative index"), 0);
    EXPECT_EQ(fault::open_handles() - handles, category.kept_open ? 3 : 0);
    EXPECT_EQ((history.*category.write)("001003", "x"), -1);
    EXPECT_EQ((history.*category.write)("00100", "x"), -1) << "ids are compared whole";
    EXPECT_EQ((history.*category.write2)(2, "x"), -1);
    EXPECT_EQ((history.*category.write2)(0, nullptr), -1);
    EXPECT_EQ(history.LastError(), 0) << "a level that is not there is no file error";

    for (const CategoryOperations& other : kCategories) {
      const bool same = &other == &category;
      EXPECT_EQ(lines_of(history, other, 0), same ? Texts({"first", "住所"_sjis}) : Texts());
      EXPECT_EQ(lines_of(history, other, 1), same ? Texts({"by index"}) : Texts());
      EXPECT_EQ(lines_of(history, other, kRun),
                same ? Texts({"run", "any negative index"}) : Texts());
      EXPECT_EQ((history.*other.cnt)(0), same ? 2 : 0);
      EXPECT_EQ((history.*other.cnt)(kRun), same ? 2 : 0);
      EXPECT_EQ((history.*other.cnt)(2), -1);
      EXPECT_EQ((history.*other.init)(2), -1);
      EXPECT_EQ((history.*other.end)(2), -1);
    }
    EXPECT_EQ(fault::open_handles(), handles);
  }
  EXPECT_EQ(home.contents().size(), 1u) << "temporary files are gone";
}

TEST(History, LinesComeBackInPieces) {
  const std::string kanji = "表"_sjis;
  std::string pairs;
  for (int i = 0; i < 200; ++i) pairs += kanji;
  const std::string x999(999, 'x');
  const std::string x250(250, 'x');
  const std::tuple<const char*, std::string, Texts> cases[] = {
      {"an empty line is a line", "", {""}},
      {"250 bytes fit", x250, {x250}},
      {"300 bytes are cut to 250", std::string(300, 'x'), {x250}},
      {"250 bytes of two-byte characters fit", pairs.substr(0, 250), {pairs.substr(0, 250)}},
      {"a character is not split", "a" + pairs, {"a" + pairs.substr(0, 248)}},
      {"998 bytes are one piece", std::string(998, 'x'), {x250}},
      {"999 bytes leave the line end to a second piece", x999, {x250, ""}},
      {"1000 bytes are two pieces", x999 + "tail", {x250, "tail"}},
      {"three pieces", x999 + x999 + "tail", {x250, x250, "tail"}},
      {"a carriage return goes with the line end", "end\r", {"end"}},
      {"a line break inside makes two lines", "a\nb", {"a", "b"}},
  };
  TestHome home;
  CHistoryCtl history;
  for (const CategoryOperations& category : kCategories) {
    for (const auto& [why, line, pieces] : cases) {
      SCOPED_TRACE(why);
      ASSERT_EQ(history.CreateHistory(0), 0);
      ASSERT_EQ((history.*category.write2)(kRun, line.c_str()), 0);
      EXPECT_EQ(lines_of(history, category, kRun), pieces);
    }
  }
}

TEST(History, AFileIsOpenForOneThing) {
  TestHome home;
  for (const CategoryOperations& category : kCategories) {
    SCOPED_TRACE(category.name);
    CHistoryCtl history;
    ASSERT_EQ(history.CreateHistory(0), 0);
    char text[TQ_HISTORY_LINE_SIZE] = "before";
    EXPECT_EQ((history.*category.next)(kRun, text), -1) << "nothing is open";
    EXPECT_STREQ(text, "");
    (history.*category.write2)(kRun, "one");
    (history.*category.write2)(kRun, "two");
    ASSERT_EQ((history.*category.init)(kRun), 0);
    ASSERT_EQ((history.*category.next)(kRun, text), 0);
    ASSERT_EQ((history.*category.init)(kRun), 0) << "starts over";
    EXPECT_EQ((history.*category.next)(kRun, nullptr), -1);
    ASSERT_EQ((history.*category.next)(kRun, text), 0);
    EXPECT_STREQ(text, "one");
    EXPECT_EQ((history.*category.write2)(kRun, "lost"), -1) << "it is being read";
    EXPECT_EQ(history.LastError(), TQ_HISTORY_WRITE);
    EXPECT_EQ(history.LastErrorDetail(), TQ_HISTORY_DETAIL_TEXT);
    EXPECT_EQ((history.*category.next)(kRun, text), -1) << "and was closed";
    EXPECT_EQ((history.*category.write2)(kRun, "three"), 0);
    EXPECT_EQ(history.AllFileClose(), 0);
    EXPECT_EQ((history.*category.write2)(kRun, "four"), 0);
    EXPECT_EQ(lines_of(history, category, kRun), Texts({"one", "two", "three", "four"}));
    EXPECT_EQ((history.*category.cnt)(kRun), 5) << "the lost line counts";
  }
}

TEST(History, ManyLinesOutgrowWhatIsGathered) {
  TestHome home;
  CHistoryCtl history;
  history.CreateHistory(0);
  Texts written;
  for (std::size_t i = 0; i < 20000; ++i) {
    written.push_back(std::to_string(i) + std::string(i % 97, '.'));
    ASSERT_EQ(history.WriteHeadInfo(nullptr, written.back().c_str()), 0);
  }
  EXPECT_EQ(lines_of(history, kCategories[5], kRun), written);
}

// The last step of a chain of fallbacks: the folder is gone, names are counted beside it.
TEST(History, WithoutAWorkFolderNamesAreCounted) {
  TestHome home;
  std::string gone = home.at("gone");
  OwnSiblings siblings(gone.data());
  siblings.fldcom.FldComGetWorkFolder = [](void* context, char* folder) {
    std::snprintf(folder, TQ_PATH_SIZE, "%s", static_cast<const char*>(context));
  };
  siblings.install();
  home.write("gone~HR00000.tmp", "somebody's");
  {
    CHistoryCtl history;
    ASSERT_EQ(history.CreateHistory(2), 0);
    EXPECT_EQ(history.GetInfo4ReadInit(0), -1) << "the file is not there before the first line";
    EXPECT_EQ(history.LastError(), TQ_HISTORY_OPEN);
    EXPECT_EQ(history.LastErrorDetail(), TQ_HISTORY_DETAIL_OPEN);
    EXPECT_EQ(history.WriteErrInfo4Read2(0, "a"), 0);
    EXPECT_EQ(history.WriteErrInfo4Read2(1, "b"), 0);
    EXPECT_EQ(home.read("gone~HR00001.tmp"), "a\n");
    EXPECT_EQ(home.read("gone~HR00002.tmp"), "b\n") << "no name is given out twice";
  }
  EXPECT_EQ(home.contents(),
            (std::map<std::string, std::string>{{"gone~HR00000.tmp", "somebody's"}}));
  gone.clear();
  CHistoryCtl nowhere;
  ASSERT_EQ(nowhere.CreateHistory(1), 0);
  EXPECT_EQ(nowhere.WriteHeadInfo2(0, "x"), -1);
  EXPECT_EQ(nowhere.GetInfo4HeadCnt(0), 1) << "a failed line counts";
}

// Two lines into every category, then reading them; one operation fails on the way. Lines of which
// no error tells are there.
TEST(History, EveryFailureHasItsCodeAndLeavesNothingBehind) {
  each_fault({fault::Kind::kFail, fault::Kind::kDiskFull}, [](int nth, fault::Kind kind) {
    TestHome home;
    bool hit = false;
    {
      CHistoryCtl history;
      EXPECT_EQ(history.CreateHistory(0), 0);
      const fault::FailNth failing(nth, kind);
      for (const CategoryOperations& category : kCategories) {
        const bool a = (history.*category.write2)(kRun, "a") == 0;
        const bool b = (history.*category.write2)(kRun, "b") == 0;
        EXPECT_EQ((history.*category.cnt)(kRun), 2);
        Texts lines = lines_of(history, category, kRun);
        const bool opened = lines != Texts({"not open"});
        EXPECT_TRUE((a && b && opened) || history.LastError() != 0);
        if (failing.hit()) lines = lines_of(history, category, kRun);  // nothing fails any more
        EXPECT_TRUE(lines == Texts({"a", "b"}) || history.LastError() != 0);
      }
      const bool open = history.LastErrorDetail() == TQ_HISTORY_DETAIL_OPEN;
      const bool failed = history.LastErrorDetail() != 0;
      EXPECT_EQ(history.LastError(), open ? TQ_HISTORY_OPEN : failed ? TQ_HISTORY_WRITE : 0);
      hit = failing.hit();
      EXPECT_TRUE(hit || !failed);
    }
    EXPECT_EQ(home.contents().size(), 1u) << "only the work folder";
    return hit;
  });
}

TEST(HistoryHandles, AnswersOfDeadHandles) {
  TestHome home;
  EXPECT_EQ(FreeSyncHstyCtl(0), -1);
  for (const int32_t dead : {0, 1, 21, -1}) {
    expect_answers(dead, -1, WriteHeadInfo2, HstyAllFileClose, HstyGetInfo4ReadNext,
                   HstyGetInfo4TranCnt);
  }
  std::vector<int32_t> handles;
  while (const int32_t handle = CreateSyncHstyCtl(0)) handles.push_back(handle);
  ASSERT_EQ(handles.size(), 20u);
  EXPECT_EQ(FreeSyncHstyCtl(7), 0);
  EXPECT_EQ(CreateSyncHstyCtl(40000), 7) << "no room for so many, but the number is given";
  EXPECT_EQ(HstyGetInfo4HeadCnt(kRun, 7), -1) << "and nothing is behind it";
  EXPECT_EQ(CreateSyncHstyCtl(1), 7);
  EXPECT_EQ(AddHstyFileInfo("001002", nullptr, 7), 0);
  EXPECT_EQ(WriteAddNewInfo("001002", "added", 7), 0);
  EXPECT_EQ(HstyGetInfo4AddNewInit(0, 7), 0);
  char text[TQ_HISTORY_LINE_SIZE];
  EXPECT_EQ(HstyGetInfo4AddNewNext(0, text, 7), 0);
  EXPECT_STREQ(text, "added");
  EXPECT_EQ(HstyGetInfo4AddNewEnd(0, 7), 0);
  for (const int32_t handle : handles) EXPECT_EQ(FreeSyncHstyCtl(handle), 0);
  EXPECT_EQ(FreeSyncHstyCtl(7), 0) << "closed already";
  EXPECT_EQ(home.contents().size(), 1u);
}

}  // namespace
