// The phases of a run: what the store is told, what it recorded and where the lines go. The store
// is the built-in one unless a case says otherwise.
#include <cstring>

#include "history/categories.h"
#include "siblings/siblings.h"
#include "support/faults.h"
#include "support/own_siblings.h"
#include "support/test.h"
#include "tqutil/history.h"

namespace {

constexpr short kRun = -1;

// As the application's record layer does while a phase runs.
short record(int32_t number, const std::string& name, const std::string& detail = "d") {
  tHSTYTMP_REC record{};
  record.recordNo = number;
  name.copy(record.name, sizeof record.name);
  detail.copy(record.detail, sizeof record.detail);
  return tq::hstytmp().HstyTmpWrite(tq::hstytmp().context, &record);
}

// By value: the field is not aligned.
int32_t number_of(const tHSTYTMP_REC& record) { return record.recordNo; }

struct Phase {
  const char* name;
  short (CHistoryCtl::*befor)(short);
  short (CHistoryCtl::*get)(short);
  int category;  // in kCategories; -1: copies nothing
};
const Phase kPhases[] = {
    {"App2Xdb", &CHistoryCtl::HstyBeforApp2Xdb, &CHistoryCtl::HstyGetApp2Xdb, 0},
    {"Xdb2App", &CHistoryCtl::HstyBeforXdb2App, &CHistoryCtl::HstyGetXdb2App, 1},
    {"WriteXdb", &CHistoryCtl::HstyBeforWriteXdb, &CHistoryCtl::HstyGetWriteXdb, 2},
    {"WriteXdbDmy", &CHistoryCtl::HstyBeforWriteXdbDmy, &CHistoryCtl::HstyGetWriteXdbDmy, -1},
};

TEST(Phases, RecordsBecomeLinesOfTheirCategory) {
  TestHome home;
  const std::string line = "-5 レコード - 山田 [ 氏名 ]"_sjis;
  for (const Phase& phase : kPhases) {
    SCOPED_TRACE(phase.name);
    CHistoryCtl history;
    ASSERT_EQ(history.CreateHistory(2), 0);
    EXPECT_EQ((history.*phase.befor)(-1), -1);
    EXPECT_EQ((history.*phase.befor)(2), -1);
    ASSERT_EQ((history.*phase.befor)(1), 0);
    EXPECT_EQ(record(-5, "山田"_sjis, "氏名"_sjis), 0);
    EXPECT_EQ(record(2147483647, "x", ""), 0);
    EXPECT_EQ((history.*phase.get)(1), 0);
    for (int i = 0; i < 6; ++i) {
      const bool here = i == phase.category;
      EXPECT_EQ(lines_of(history, kCategories[i], 1),
                here ? Texts({line, "2147483647 レコード - x [  ]"_sjis}) : Texts());
      EXPECT_EQ((history.*kCategories[i].cnt)(0) + (history.*kCategories[i].cnt)(kRun), 0);
    }
    ASSERT_EQ((history.*phase.befor)(1), 0);
    EXPECT_EQ((history.*phase.get)(1), 0) << "an empty store";
    EXPECT_EQ(history.GetInfo4ReadCnt(1) + history.GetInfo4WriteCnt(1) + history.GetInfo4TranCnt(1),
              phase.category < 0 ? 0 : 2)
        << "the earlier records are gone";
  }
  CHistoryCtl history;
  ASSERT_EQ(history.CreateHistory(0), 0);
  EXPECT_EQ(history.HstyBeforMst(), 0);
  record(1, "master");
  EXPECT_EQ(history.HstyGetMst(), 0);
  EXPECT_EQ(lines_of(history, kCategories[2], kRun), Texts({"1 レコード - master [ d ]"_sjis}));
}

// A store of the application's that has so many records and tells what it is asked.
struct Asked {
  std::string calls;
  int records = 0;
};

short TQ_CALL note(void* context, const char* what, int value) {
  static_cast<Asked*>(context)->calls += what + std::to_string(value) + " ";
  return 0;
}

TEST(Phases, WhatTheStoreIsTold) {
  TestHome home;
  Asked asked;
  OwnSiblings own(&asked);
  own.fldcom.FldComSetHistoryNo = [](void* context, uint16_t n) { note(context, "no ", n); };
  own.fldcom.FldComSetHistoryAppId = [](void* context, uint16_t n) { note(context, "app ", n); };
  tHSTYTMP_API& store = own.hstytmp;
  store.HstyTmpDelete = [](void* context) { note(context, "delete", 0); };
  store.HstyTmpTerm = [](void* context) { note(context, "term", 0); };
  store.HstyTmpExists = [](void* context) {
    return static_cast<short>(static_cast<Asked*>(context)->records);
  };
  store.HstyTmpRead = [](void* context, tHSTYTMP_REC* record, short number) {
    note(context, "read ", number);
    std::memset(record->name, 'n', sizeof record->name);  // no terminator
    return static_cast<short>(static_cast<Asked*>(context)->records-- > 0 ? 0 : 1);
  };
  store.HstyTmpWrite = [](void*, const tHSTYTMP_REC*) { return short{0}; };
  own.install();
  CHistoryCtl history;
  history.CreateHistory(3);
  tSYNC_INFO info{};
  info.appType = 20;
  info.appType2 = 30;
  history.AddFileInfo("001001", &info);
  info.appType = 0;
  history.AddFileInfo("001002", &info);
  using Call = short (CHistoryCtl::*)(short);
  const Call befor = &CHistoryCtl::HstyBeforWriteXdb, get = &CHistoryCtl::HstyGetApp2Xdb;
  const std::tuple<const char*, Call, short, int, short, std::string> cases[] = {
      {"first number", befor, 0, 0, 0, "delete0 no 0 app 20 "},
      {"second number when the first is 0", befor, 1, 0, 0, "delete0 no 1 app 30 "},
      {"a file that was never registered", befor, 2, 0, 0, "delete0 no 2 app 0 "},
      {"past the end", befor, 3, 0, -1, ""},
      {"the run is no file", befor, -1, 0, -1, ""},
      {"nothing recorded: nothing read", get, 2, 0, 0, "term0 "},
      {"until there is no more", get, 2, 1, 0, "term0 read 2 read 2 "},
      {"-1 copies to the run", get, -1, 1, 0, "term0 read -1 read -1 "},
      {"the index is not looked at before the line is written", get, 3, 1, -1, "term0 read 3 "},
  };
  for (const auto& [why, call, index, records, result, calls] : cases) {
    SCOPED_TRACE(why);
    asked = {"", records};
    EXPECT_EQ((history.*call)(index), result);
    EXPECT_EQ(asked.calls, calls);
  }
  EXPECT_EQ(history.LastErrorDetail(), TQ_HISTORY_DETAIL_COPY);
  EXPECT_EQ(history.LastError(), TQ_HISTORY_WRITE);
  EXPECT_EQ(history.GetInfo4ReadCnt(kRun), 1);
  asked = {"", 1};
  history.HstyBeforMst();
  EXPECT_EQ(history.HstyGetMst(), 0);
  EXPECT_EQ(asked.calls, "delete0 no 0 app 1000 term0 read 0 read 0 ");
}

TEST(BuiltInStore, KeepsRecordsByNumberInOrder) {
  TestHome home;
  const tHSTYTMP_API& store = tq::hstytmp();
  store.HstyTmpDelete(store.context);
  EXPECT_EQ(store.HstyTmpExists(store.context), 0);
  for (int i = 0; i < 1000; ++i) {
    tq::fldcom().FldComSetHistoryNo(tq::fldcom().context, static_cast<uint16_t>(i % 3));
    ASSERT_EQ(record(i, std::string(300, 'a')), 0);
  }
  store.HstyTmpTerm(store.context);
  EXPECT_NE(store.HstyTmpExists(store.context), 0);
  tHSTYTMP_REC got{};
  ASSERT_EQ(store.HstyTmpRead(store.context, &got, 0), 0);
  EXPECT_EQ(std::string(got.name, sizeof got.name), std::string(256, 'a'));
  for (int i = 2; i < 1000; i += 3) {
    ASSERT_EQ(store.HstyTmpRead(store.context, &got, 2), 0);
    ASSERT_EQ(number_of(got), i);
  }
  EXPECT_NE(store.HstyTmpRead(store.context, &got, 2), 0);
  EXPECT_NE(store.HstyTmpRead(store.context, &got, 7), 0) << "nothing under that number";
  EXPECT_EQ(store.HstyTmpRead(store.context, &got, 0), 0) << "a change of number starts over";
  EXPECT_EQ(number_of(got), 0);
  store.HstyTmpDelete(store.context);
  EXPECT_NE(store.HstyTmpRead(store.context, &got, 0), 0);
  EXPECT_EQ(home.contents().size(), 1u);
}

// 100 records recorded and read with one operation failing: what comes back is whole and in order,
// and everything is there unless the store said that it failed or the reading did.
TEST(BuiltInStore, EveryFailureLeavesWholeRecords) {
  each_fault({fault::Kind::kFail}, [](int nth, fault::Kind) {
    TestHome home;
    const tHSTYTMP_API& store = tq::hstytmp();
    const fault::FailNth failing(nth);
    store.HstyTmpDelete(store.context);
    bool kept = true;
    for (int i = 0; i < 100; ++i) kept &= record(i, "n" + std::to_string(i)) == 0;
    store.HstyTmpTerm(store.context);
    tHSTYTMP_REC got{};
    int count = 0;
    for (int last = -1; store.HstyTmpRead(store.context, &got, 0) == 0; last = number_of(got)) {
      EXPECT_LT(last, number_of(got));
      EXPECT_EQ(got.name, "n" + std::to_string(number_of(got)));
      ++count;
    }
    EXPECT_TRUE(count == 100 || failing.hit());
    EXPECT_TRUE(kept || count < 100);
    store.HstyTmpDelete(store.context);
    EXPECT_TRUE(failing.hit() || home.contents().size() == 1);
    return failing.hit();
  });
}

}  // namespace
