// Backup runs, their history files, and the lists that are read back from these.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "backup/backup_host.h"
#include "backup/history_file.h"
#include "base/sjis_literal.h"
#include "platform/platform.h"

namespace {

namespace platform = tq::platform;
using namespace tq::literals;
using tq::test::BackupHost;
using tq::test::bytes;
using Log = std::vector<std::string>;
using Rows = std::vector<std::string>;

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1) {
    lines.push_back(text.substr(begin, end - begin));
  }
  EXPECT_EQ(begin, text.size()) << "the last line has no end";
  return lines;
}

std::string halves(platform::FileTime time) {
  return std::to_string(static_cast<int32_t>(time)) + "," +
         std::to_string(static_cast<int32_t>(time >> 32));
}

TEST(BackupRun, WritesCopiesAndHistory) {
  BackupHost host;
  host.write("a\\one.dat", "first");
  host.write("a\\二.dat"_sjis, "second one");
  const std::string one = host.at("a\\one.dat"), two = host.at("a\\二.dat"_sjis);
  ASSERT_TRUE(platform::set_attributes(two, platform::kReadOnly).ok());
  platform::FileTimes times;
  ASSERT_TRUE(platform::file_times(one, times).ok());
  ASSERT_EQ(host.back_up(1, {{3, "名前,x"_sjis, {"a\\one.dat", "a\\二.dat"_sjis}}, {5, "", {}}},
                         "説明"_sjis),
            0);
  const auto lines = lines_of(host.read("data\\00000.BKH"));
  ASSERT_EQ(lines.size(), 27u);
  EXPECT_EQ(lines[0] + "|" + lines[1] + "|" + lines[3] + "|" + lines[4],
            "00000|1|" + std::string("説明"_sjis) + "|2");
  EXPECT_EQ(lines[5] + "|" + lines[6] + "|" + lines[7],
            "0000000000|3|2," + std::string("名前,x"_sjis));
  EXPECT_EQ(lines[8], one);
  EXPECT_EQ(lines[9].substr(0, host.at("backup\\00000\\~tq").size()),
            host.at("backup\\00000\\~tq"));
  EXPECT_EQ(lines[10] + "|" + lines[12], halves(times.created) + "|" + halves(times.written));
  EXPECT_EQ(lines[14] + "|" + lines[15], "5|7") << "size and kind";
  EXPECT_EQ(lines[16], two);
  EXPECT_NE(std::stoi(lines[21]) & 1, 0) << "read-only";
  EXPECT_EQ(lines[24] + "|" + lines[25] + "|" + lines[26], "0000000001|5|0");
  EXPECT_EQ(host.restorable()["00000"][two], "second one");
  const std::string heading = "ファイルのバックアップ中です..."_sjis;
  EXPECT_EQ(host.log, (Log{"open caption/" + heading + "/1", "group type 3", "file " + one,
                           "file " + two, "group type 5", "file ", "close"}));
  EXPECT_EQ(host.percent, 100);
}

struct Failing {
  const char* why;
  short cause;
  short result;
  void (*spoil)(const BackupHost& host, CBackUpCtl& run);
};

TEST(BackupRun, AFailedRunLeavesNothing) {
  const Failing cases[] = {
      {"a source that was never there, though its attribute bits say folder", TQ_BKUP_CAUSE_FILE,
       -1,
       [](const BackupHost& host, CBackUpCtl& run) {
         EXPECT_EQ(run.AddBackUpFileGrp(bytes(host.at("none.dat")), short{0}), 0);
       }},
      {"a folder that was never there", TQ_BKUP_CAUSE_FILE, -1,
       [](const BackupHost& host, CBackUpCtl& run) {
         EXPECT_EQ(run.StartBackUpFileGrp(64, bytes(host.at("none"))), 0);
       }},
      {"a source that grew since", TQ_BKUP_CAUSE_OTHER, -1,
       [](const BackupHost& host, CBackUpCtl&) { host.write("b.dat", "longer than before"); }},
      {"no folder for the copies", TQ_BKUP_CAUSE_FOLDER, 1,
       [](const BackupHost& host, CBackUpCtl&) {
         host.remove("backup");
         host.write("backup", "a file");
       }},
  };
  for (const Failing& c : cases) {
    SCOPED_TRACE(c.why);
    BackupHost host;
    host.write("a.dat", "a");
    host.write("b.dat", "b");
    CBackUpCtl run;
    EXPECT_EQ(run.ErrorCause(), TQ_BKUP_CAUSE_NONE);
    run.CreateBackUp(0);
    run.StartBackUpFileGrp(1, nullptr);
    run.AddBackUpFileGrp(bytes(host.at("a.dat")), short{0});
    run.AddBackUpFileGrp(bytes(host.at("b.dat")), short{0});
    c.spoil(host, run);
    const auto before = host.contents();
    EXPECT_EQ(run.StartBackUp(), c.result);
    EXPECT_EQ(run.ErrorCause(), c.cause);
    EXPECT_EQ(run.RenewalBackUp(), 1) << "there is nothing to record";
    EXPECT_EQ(host.contents(), before);
  }
}

TEST(BackupRun, CancelIsAskedAboutAndCanBeTakenBack) {
  for (const bool stop : {false, true}) {
    BackupHost host;
    for (const char* name : {"a", "b", "c"}) host.write(name, name);
    host.cancel_after = 2;
    host.really_stop = stop;
    EXPECT_EQ(host.back_up(0, {{1, "", {"a", "b", "c"}}}), stop ? 1 : 0);
    EXPECT_EQ(std::count(host.log.begin(), host.log.end(), "message 2.5 "), 1);
    EXPECT_EQ(host.percent, stop ? 66 : 100);
    EXPECT_EQ(host.exists("backup\\00000"), !stop);
  }
}

TEST(BackupRun, WhatCannotBeRecordedIsRefused) {
  BackupHost host;
  host.write("a.dat", "a");
  CBackUpCtl run;
  run.CreateBackUp(0);
  EXPECT_EQ(run.AddBackUpFileGrp(bytes(host.at("a.dat")), short{0}), 1) << "no group yet";
  ASSERT_EQ(run.StartBackUpFileGrp(0, nullptr), 0);
  const std::string bad[] = {
      host.at(std::string(300, 'x')), host.at("a\nb"),           "a.dat", ";a", "",
      host.at("backup\\00000\\x"),    host.at("data\\00000.bkh")};
  for (const std::string& path : bad) {
    EXPECT_EQ(run.AddBackUpFileGrp(bytes(path), short{0}), 1) << path;
    EXPECT_EQ(run.StartBackUpFileGrp(64, bytes(path)), 1) << path;
  }
  EXPECT_EQ(run.StartBackUpFileGrp(64, bytes(host.path())), 1) << "the backups are in it";
}

TEST(BackupRun, FileKindsOfFieldFiles) {
  struct Case {
    const char* why;
    short type, classified;
    const char* text;
    short kind;
  };
  const Case cases[] = {
      {"classified", 0, 12, "a.csv", 12},
      {"the sibling cannot tell", 0, -1, "a.csv", 0},
      {"another type of group", 1, 12, "a.csv", 0},
      {"no text", 0, 12, nullptr, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.why);
    BackupHost host;
    host.write("a", "a");
    host.classified = c.classified;
    CBackUpCtl run;
    run.CreateBackUp(0);
    run.StartBackUpFileGrp(c.type, nullptr);
    const auto* text = reinterpret_cast<const unsigned char*>(c.text);
    EXPECT_EQ(run.AddBackUpFileGrp(bytes(host.at("a")), text), 0);
    ASSERT_EQ(run.StartBackUp(), 0);
    ASSERT_EQ(run.RenewalBackUp(), 0);
    EXPECT_EQ(lines_of(host.read("data\\00000.BKH")).back(), std::to_string(c.kind));
  }
}

TEST(BackupRun, WholeFoldersRecordTheirLeaves) {
  BackupHost host;
  host.write("f\\x\\deep\\file", "1");
  host.make_folder("f\\empty");
  host.write("f\\top", "2");
  host.write("elsewhere\\sub\\file", "3");
  std::error_code no_links;
  std::filesystem::create_directory_symlink(host.native("elsewhere"), host.native("f\\link"),
                                            no_links);
  ASSERT_EQ(host.back_up(4, {{64, host.at("f\\"), {"f\\top", "f\\x\\deep\\file"}}}), 0);
  tq::FileGroups groups;
  ASSERT_TRUE(tq::mGetFileGrpListS(host.at("data\\00000.BKH"), groups).ok());
  ASSERT_EQ(groups.size(), 1u);
  std::vector<std::string> entries;
  for (const tBKUP_FILE& file : groups.files(0)) {
    entries.push_back(file.path + std::string(tq::is_folder_entry(file) ? "|folder|" : "|file|") +
                      (std::string(file.backupPath) == "dummy" ? "dummy" : "copy"));
  }
  EXPECT_EQ(entries, (Rows{host.at("f\\empty|folder|dummy"), host.at("f\\x\\deep|folder|dummy"),
                           host.at("f\\top|file|copy"), host.at("f\\x\\deep\\file|file|copy")}));
}

TEST(BackupIds, WhatProtectsAnId) {
  BackupHost host;
  host.write("a", "a");
  ASSERT_EQ(host.back_up(0, {{1, "", {"a"}}}), 0);
  host.remove("backup\\00000");
  host.write("data\\00001", "a bare name counts in the data folder");
  host.write("data\\00002.BKH", "a history alone does not");
  host.make_folder("backup\\00003");
  CBackUpCtl with_list;
  ASSERT_EQ(with_list.ReadBackUpFileList(0), 2);
  with_list.CreateBackUp(1);
  with_list.StartBackUpFileGrp(1, nullptr);
  with_list.AddBackUpFileGrp(bytes(host.at("a")), short{0});
  CBackUpCtl without;
  without.CreateBackUp(1);
  without.StartBackUpFileGrp(1, nullptr);
  without.AddBackUpFileGrp(bytes(host.at("a")), short{0});
  ASSERT_EQ(with_list.StartBackUp(), 0);
  EXPECT_TRUE(host.exists("backup\\00002")) << "00000 is listed, 00001 is there";
  ASSERT_EQ(without.StartBackUp(), 0);
  EXPECT_TRUE(host.exists("backup\\00000")) << "nothing was loaded into this object";
}

TEST(BackupIds, RunsSideBySideDoNotShareAFolder) {
  BackupHost host;
  host.write("a", "a");
  host.write("b", "bb");
  CBackUpCtl first, second;
  for (CBackUpCtl* run : {&first, &second}) {
    run->CreateBackUp(0);
    run->StartBackUpFileGrp(1, nullptr);
    run->AddBackUpFileGrp(bytes(host.at(run == &first ? "a" : "b")), short{0});
  }
  ASSERT_EQ(first.StartBackUp(), 0);
  ASSERT_EQ(second.StartBackUp(), 0);
  ASSERT_EQ(second.RenewalBackUp(), 0);
  ASSERT_EQ(first.RenewalBackUp(), 0);
  auto both = host.restorable();
  EXPECT_EQ(both["00000"][host.at("a")], "a");
  EXPECT_EQ(both["00001"][host.at("b")], "bb");
  CBackUpCtl list;
  list.ReadBackUpFileList(-1);
  EXPECT_EQ(list.GetBackUpFileGrpInit(bytes("00001")), 1);
  EXPECT_EQ(list.GetBackUpFileInit(bytes("0000100000")), 1) << "its groups moved with it";
}

// One file with its eight lines.
const std::string kFile = "Z:\\o\nZ:\\c\n1,2\n3,4\n-1,29000000\n32\n-2\n6\n";

TEST(BackupHistory, ReadsWhatIsThere) {
  struct Case {
    const char* why;
    std::string text;
    std::string groups;  // id, type, files, name of each
    bool whole;
  };
  const std::string head = "00000\n1\n2003,7,6,5,9,4,0\ninfo\n";
  const Case cases[] = {
      {"comments count nowhere, the description included",
       ";\n00000\n;x\n1\n2003,7,6,5,9,4,0\n;info\ninfo\n1\ng\n2\n;\n1\n" + kFile, "g 2 1 ;", true},
      {"an empty group vanishes and the next keeps its id",
       head + "3\ng0\n2\n0\ng1\n3\n1\n" + kFile + "g2\n4\n\n", "g1 3 1 ;", true},
      {"a name is cut at its comma", head + "1\ng\n64\n1,Z:\\a,b\n" + kFile, "g 64 1 Z:\\a;", true},
      {"a forged file count", head + "1\ng\n2\n2000000000\n" + kFile, "g 2 1 ;", false},
      {"a negative one", head + "1\ng\n2\n-5\n", "", true},
      {"a group that is missing", head + "2\ng\n2\n1\n" + kFile, "g 2 1 ;", false},
      {"a header that is cut", "00000\n1\n", "", false},
      {"nothing", "", "", false},
      {"a path that would be cut",
       head + "1\ng\n2\n1\nZ:\\" + std::string(300, 'p') + "\n" + kFile.substr(5), "g 2 1 ;",
       false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.why);
    BackupHost host;
    host.write("x.BKH", c.text);
    tq::FileGroups groups;
    EXPECT_EQ(tq::mGetFileGrpListS(host.at("x.BKH"), groups).ok(), c.whole);
    std::string found;
    for (std::size_t i = 0; i < groups.size(); ++i) {
      found += std::string(groups[i].id) + " " + std::to_string(groups[i].type) + " " +
               std::to_string(groups[i].fileCnt) + " " + groups[i].name + ";";
    }
    EXPECT_EQ(found, c.groups);
  }
}

TEST(BackupHistory, ComesBackAsItWasWritten) {
  BackupHost host;
  tBKUP_INFO info{};
  std::snprintf(info.id, sizeof info.id, "00012");
  std::snprintf(info.historyPath, sizeof info.historyPath, "%s", host.at("h.BKH").c_str());
  info.kind = -3;
  info.time = {2003, 7, 6, 5, 9, 4, 59, 0};
  tq::FileGroups groups;
  tBKUP_FIELGRP group{};
  group.type = 64;
  std::snprintf(group.name, sizeof group.name, "Z:\\f");
  tBKUP_FILE file{};
  std::snprintf(file.path, sizeof file.path, "Z:\\f\\a");
  file.created = {0xFFFFFFFF, 0x80000000};
  file.size = 3'000'000'000;
  file.attributes = 0xFFFFFFFF;
  file.fileKind = -1;
  ASSERT_TRUE(groups.add_group(group) && groups.add_file(file));
  ASSERT_TRUE(tq::mSaveNowHistory(info, groups).ok());
  tBKUP_INFO read{};
  ASSERT_TRUE(tq::mGetListInfo(host.at("h.BKH"), read).ok());
  EXPECT_STREQ(read.info, " ") << "an empty description is a blank";
  EXPECT_EQ(read.kind, -3);
  EXPECT_EQ(read.time.second, 59);
  EXPECT_EQ(read.groupCnt, 1);
  tq::FileGroups again;
  ASSERT_TRUE(tq::mGetFileGrpListS(host.at("h.BKH"), again).ok());
  const tBKUP_FILE& back = again.files(0).front();
  EXPECT_EQ(back.created.low, 0xFFFFFFFF);
  EXPECT_EQ(back.created.high, 0x80000000);
  EXPECT_EQ(back.size, 3'000'000'000);
  EXPECT_EQ(back.attributes, 0xFFFFFFFF);
  EXPECT_EQ(back.fileKind, -1);
  EXPECT_EQ(back.type, 64);
}

TEST(BackupHistory, ADescriptionCannotBreakIt) {
  BackupHost host;
  host.write("a", "a");
  ASSERT_EQ(host.back_up(0, {{1, "", {"a"}}}, ";not\na comment"), 0);
  ASSERT_EQ(host.back_up(0, {{1, "", {"a"}}}, "説"_sjis + std::string(200, 'x') + "\n"), 0);
  CBackUpCtl list;
  ASSERT_EQ(list.ReadBackUpFileList(0), 2);
  unsigned char info[TQ_BKUP_INFO_SIZE];
  ASSERT_EQ(list.GetBackUpFileListNext(nullptr, nullptr, nullptr, info, nullptr), 0);
  EXPECT_STREQ(reinterpret_cast<char*>(info), " ;not a comment");
  ASSERT_EQ(list.GetBackUpFileListNext(nullptr, nullptr, nullptr, info, nullptr), 0);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(info)), "説"_sjis + std::string(126, 'x'));
}

TEST(BackupList, SortsByKindThenNewestFirst) {
  BackupHost host;
  const struct {
    const char *id, *kind, *time;
  } rows[] = {{"00000", "1", "2003,7,6,5,9,4,0"},  {"00001", "0", "2003,7,1,5,9,4,1"},
              {"00002", "1", "2003,7,0,5,9,4,0"},  {"00003", "1", "2003,8,0,5,9,4,0"},
              {"00004", "-2", "2001,1,0,1,0,0,0"}, {"00005", "1", "2002,12,0,31,23,59,59"}};
  for (const auto& row : rows) {
    host.write("data\\" + std::string(row.id) + ".BKH",
               row.id + std::string("\n") + row.kind + "\n" + row.time + "\ninfo\n0\n");
  }
  host.make_folder("data\\00006.BKH");
  // Days of the week do not count, so 00000 and 00002 are equal; sorting by kind, whose steps swap
  // rows, has put them into this order.
  EXPECT_EQ(BackupHost::listed(-1),
            (Rows{"00004 -2 0", "00001 0 0", "00003 1 0", "00002 1 0", "00000 1 0", "00005 1 0"}));
  host.remove("data\\00001.BKH");
  host.remove("data\\00003.BKH");
  host.remove("data\\00004.BKH");
  EXPECT_EQ(BackupHost::listed(-1), (Rows{"00000 1 0", "00002 1 0", "00005 1 0"}))
      << "otherwise they stay as the folder lists them";
  host.write("data\\00001.BKH", "00001\n0\n2003,7,1,5,9,4,1\ninfo\n0\n");
  EXPECT_EQ(BackupHost::listed(0), Rows{"00001 0 0"});
  CBackUpCtl list;
  ASSERT_EQ(list.ReadBackUpFileList(0), 1);
  unsigned char date[TQ_BKUP_DATE_SIZE];
  ASSERT_EQ(list.GetBackUpFileListNext(nullptr, nullptr, date, nullptr, nullptr), 0);
  EXPECT_STREQ(reinterpret_cast<char*>(date), "2003/7/5 09:04");
  EXPECT_EQ(list.GetBackUpFileListNext(nullptr, nullptr, date, nullptr, nullptr), 1);
  EXPECT_EQ(list.GetBackUpFileListInit(), 0);
  EXPECT_EQ(list.GetBackUpFileListNext(nullptr, nullptr, date, nullptr, nullptr), 0);
  EXPECT_EQ(list.GetBackUpFileGrpInit(bytes("00000")), -1) << "of another kind, so not listed";
}

TEST(BackupFlat, HandlesAndTheirValues) {
  BackupHost host;
  host.write("a.dat", "abc");
  EXPECT_EQ(tqSetBackUpInfo(0, "x"), 1);
  EXPECT_EQ(tqFreeBackUp(0), 1);
  EXPECT_EQ(tqGetBackUpFileGrpInit(0, "00000"), 1);
  EXPECT_EQ(tqRestoreFileClose(0), 1);
  const int32_t run = tqCreateBackUp(0);
  ASSERT_EQ(run, 1);
  EXPECT_EQ(tqSetBackUpInfo(run, "note"), 0);
  EXPECT_EQ(tqStartBackUpFileGrp(run, 1, nullptr), 0);
  EXPECT_EQ(tqAddBackUpFileGrp(run, host.at("a.dat").c_str(), 4), 0);
  EXPECT_EQ(tqStartBackUp(run), 0);
  EXPECT_EQ(tqRenewalBackUp(run), 0);
  EXPECT_EQ(tqFreeBackUp(run), 0);
  EXPECT_EQ(tqFreeBackUp(run), 0) << "closing a closed slot";
  EXPECT_EQ(tqStartBackUp(run), 1);

  int32_t count = -1;
  const int32_t list = tqOpenBackUpFileList(-1, &count);
  ASSERT_NE(list, 0);
  EXPECT_EQ(count, 1);
  char id[TQ_BKUP_ID_SIZE], group[TQ_BKUP_GRP_ID_SIZE], path[TQ_PATH_SIZE], date[32], info[130];
  short kind = 9, type = 9;
  int32_t groups = 0, files = 0;
  uint32_t size = 0;
  EXPECT_EQ(tqGetBackUpFileListNext(list, id, &kind, date, info, &groups), 0);
  EXPECT_EQ(std::string(id) + info + std::to_string(groups), "00000note1");
  EXPECT_EQ(tqGetBackUpFileGrpInit(list, id), 1);
  EXPECT_EQ(tqGetBackUpFileGrpNext(list, group, &type, &files), 0);
  EXPECT_EQ(tqGetBackUpFileGrpNext(list, group, &type, &files), 1);
  EXPECT_EQ(tqGetBackUpFileInit(list, "0000000001"), -1);
  EXPECT_EQ(tqGetBackUpFileInit(list, group), 1);
  EXPECT_EQ(tqGetBackUpFileNext(list, path, nullptr, date, &size, &kind), 0);
  EXPECT_EQ(path + std::to_string(size) + std::to_string(kind), host.at("a.dat34"));
  EXPECT_EQ(tqGetBackUpFileNext(list, path, nullptr, date, &size, &kind), 1);
  EXPECT_EQ(tqCloseBackUpFileList(list), 0);

  EXPECT_EQ(tqRestoreFileInit("00001"), 0);
  const int32_t restore = tqRestoreFileInit("00000");
  ASSERT_NE(restore, 0);
  EXPECT_EQ(tqRestoreFileSet("0000000009", restore), 1);
  EXPECT_EQ(tqRestoreFileSet("0000000000", restore), 0);
  host.write("a.dat", "damaged");
  EXPECT_EQ(tqRestoreFileStart(restore), 0);
  EXPECT_EQ(host.read("a.dat"), "abc");
  EXPECT_EQ(tqRestoreFileClose(restore), 0);

  std::vector<int32_t> all;
  for (int i = 0; i < 20; ++i) all.push_back(tqCreateBackUp(0));
  EXPECT_EQ(all.back(), 20);
  EXPECT_EQ(tqCreateBackUp(0), 0);
  EXPECT_EQ(tqIsNeedOutlook(0), -1) << "no slot is left";
  for (const int32_t handle : all) EXPECT_EQ(tqFreeBackUp(handle), 0);
  EXPECT_EQ(tqIsNeedOutlook(0), 0);
  EXPECT_EQ(tqDeleteBkupAll(), 0);
  EXPECT_EQ(BackupHost::listed(-1), Rows{});
}

}  // namespace
