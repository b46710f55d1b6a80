// Backup runs, their history files, and the lists that are read back from these.
#include <sstream>

#include "backup/backup_host.h"
#include "backup/history_file.h"
#include "platform/platform.h"
#include "support/test.h"
#include "support/zeros.h"

namespace {

namespace platform = tq::platform;

Texts lines_of(const std::string& text) {
  Texts lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
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
  const std::string history = host.read("data\\00000.BKH");
  EXPECT_TRUE(history.ends_with("\n"));
  Texts lines = lines_of(history);
  ASSERT_EQ(lines.size(), 27u);
  EXPECT_TRUE(lines[9].starts_with(host.at("backup\\00000\\~tq"))) << lines[9];
  EXPECT_NE(std::stoi(lines[21]) & 1, 0) << "read-only";
  for (const std::size_t i : {2, 9, 11, 13, 17, 18, 19, 20, 21}) lines[i] = "any";
  std::string told;
  for (const std::string& line : lines) told += line + "|";
  EXPECT_EQ(told, "00000|1|any|説明|2|0000000000|3|2,名前,x|"_sjis + one + "|any|" +
                      halves(times.created) + "|any|" + halves(times.written) + "|any|5|7|" + two +
                      "|any|any|any|any|any|10|7|0000000001|5|0|");
  EXPECT_EQ(host.restorable()["00000"][two], "second one");
  const std::string heading = "ファイルのバックアップ中です..."_sjis;
  EXPECT_EQ(host.log, (Texts{"open caption/" + heading + "/1", "group type 3", "file @\\a\\one.dat",
                             "file @\\a\\二.dat"_sjis, "group type 5", "file ", "close"}));
  EXPECT_EQ(host.percent, 100);
}

TEST(BackupRun, AFailedRunLeavesNothing) {
  struct Failing {
    const char* why;
    short cause, result;
    void (*spoil)(const BackupHost& host, CBackUpCtl& run);
  };
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
    ASSERT_EQ(host.prepare(run, 0, {{1, "", {"a.dat", "b.dat"}}}), 0);
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
  const std::tuple<const char*, short, short, const char*, short> cases[] = {
      {"classified", 0, 12, "a.csv", 12},
      {"the sibling cannot tell", 0, -1, "a.csv", 0},
      {"another type of group", 1, 12, "a.csv", 0},
      {"no text", 0, 12, nullptr, 0},
  };
  for (const auto& [why, type, classified, given, kind] : cases) {
    SCOPED_TRACE(why);
    BackupHost host;
    host.write("a", "a");
    host.classified = classified;
    CBackUpCtl run;
    host.prepare(run, 0, {{type, "", {}}});
    const auto* text = reinterpret_cast<const unsigned char*>(given);
    EXPECT_EQ(run.AddBackUpFileGrp(bytes(host.at("a")), text), 0);
    ASSERT_EQ(run.StartBackUp(), 0);
    ASSERT_EQ(run.RenewalBackUp(), 0);
    EXPECT_EQ(BackupHost::files().front().kind, kind);
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
  Texts entries;
  for (const BackupHost::Listed& file : BackupHost::files()) {
    entries.push_back(host.relative(file.path) + (file.copy == "dummy" ? "|dummy" : "|copy"));
  }
  EXPECT_EQ(entries, (Texts{"@\\f\\empty|dummy", "@\\f\\x\\deep|dummy", "@\\f\\top|copy",
                            "@\\f\\x\\deep\\file|copy"}));
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
  host.prepare(with_list, 1, {{1, "", {"a"}}});
  CBackUpCtl without;
  host.prepare(without, 1, {{1, "", {"a"}}});
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
  host.prepare(first, 0, {{1, "", {"a"}}});
  host.prepare(second, 0, {{1, "", {"b"}}});
  ASSERT_EQ(first.StartBackUp(), 0);
  ASSERT_EQ(second.StartBackUp(), 0);
  ASSERT_EQ(second.RenewalBackUp(), 0);
  ASSERT_EQ(first.RenewalBackUp(), 0);
  auto both = host.restorable();
  EXPECT_EQ(both["00000"][host.at("a")], "a");
  EXPECT_EQ(both["00001"][host.at("b")], "bb");
  EXPECT_EQ(tqRestoreFile("0000100000"), 0) << "its groups moved with it";
}

// One file with its eight lines.
const std::string kFile = "Z:\\o\nZ:\\c\n1,2\n3,4\n-1,29000000\n32\n-2\n6\n";

TEST(BackupHistory, ReadsWhatIsThere) {
  const std::string head = "00000\n1\n2003,7,6,5,9,4,0\ninfo\n";
  // `wanted`: id, type, files, name of each
  const std::tuple<const char*, std::string, std::string, bool> cases[] = {
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
  for (const auto& [why, given, wanted, whole] : cases) {
    SCOPED_TRACE(why);
    BackupHost host;
    host.write("x.BKH", given);
    tq::FileGroups groups;
    EXPECT_EQ(tq::mGetFileGrpListS(host.at("x.BKH"), groups).ok(), whole);
    std::string found;
    for (std::size_t i = 0; i < groups.size(); ++i) {
      found += std::string(groups[i].id) + " " + std::to_string(groups[i].type) + " " +
               std::to_string(groups[i].fileCnt) + " " + groups[i].name + ";";
    }
    EXPECT_EQ(found, wanted);
  }
}

TEST(BackupHistory, ValuesOfTheirFullRangeComeBack) {
  BackupHost host;
  const std::string text =
      "00012\n-3\n2003,7,6,5,9,4,59\n \n1\n0001200000\n64\n1,Z:\\f\nZ:\\f\\a\nZ:\\c\n"
      "-1,-2147483648\n0,0\n3,4\n-1\n-1294967296\n-1\n";
  host.write("h.BKH", text);
  tBKUP_INFO info{};
  tq::FileGroups groups;
  ASSERT_TRUE(tq::mGetListInfo(host.at("h.BKH"), info).ok());
  ASSERT_TRUE(tq::mGetFileGrpListS(host.at("h.BKH"), groups).ok());
  EXPECT_EQ(groups.files(0).front().size, 3'000'000'000);
  EXPECT_EQ(groups.files(0).front().attributes, 0xFFFFFFFF);
  host.remove("h.BKH");
  *info.info = '\0';
  ASSERT_TRUE(tq::mSaveNowHistory(info, groups).ok());
  EXPECT_EQ(host.read("h.BKH"), text) << "an empty description is a blank";
}

TEST(BackupHistory, ADescriptionCannotBreakIt) {
  BackupHost host;
  host.write("a", "a");
  ASSERT_EQ(host.back_up(0, {{1, "", {"a"}}}, ";not\na comment"), 0);
  ASSERT_EQ(host.back_up(1, {{1, "", {"a"}}}, "説"_sjis + std::string(200, 'x') + "\n"), 0);
  int32_t count = 0;
  const int32_t list = tqOpenBackUpFileList(-1, &count);
  for (const std::string& kept :
       {std::string(" ;not a comment"), "説"_sjis + std::string(126, 'x')}) {
    char info[TQ_BKUP_INFO_SIZE];
    EXPECT_EQ(tqGetBackUpFileListNext(list, nullptr, nullptr, nullptr, info, nullptr), 0);
    EXPECT_EQ(info, kept);
  }
  tqCloseBackUpFileList(list);
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
            (Texts{"00004 -2 0", "00001 0 0", "00003 1 0", "00002 1 0", "00000 1 0", "00005 1 0"}));
  host.remove("data\\00001.BKH");
  host.remove("data\\00003.BKH");
  host.remove("data\\00004.BKH");
  EXPECT_EQ(BackupHost::listed(-1), (Texts{"00000 1 0", "00002 1 0", "00005 1 0"}))
      << "otherwise they stay as the folder lists them";
  host.write("data\\00001.BKH", "00001\n0\n2003,7,1,5,9,4,1\ninfo\n0\n");
  EXPECT_EQ(BackupHost::listed(0), Texts{"00001 0 0"});
  int32_t count = 0;
  const int32_t list = tqOpenBackUpFileList(0, &count);
  EXPECT_EQ(count, 1);
  for (int twice = 0; twice < 2; ++twice) {
    char date[TQ_BKUP_DATE_SIZE];
    EXPECT_EQ(tqGetBackUpFileListInit(list), 0);
    EXPECT_EQ(tqGetBackUpFileListNext(list, nullptr, nullptr, date, nullptr, nullptr), 0);
    EXPECT_STREQ(date, "2003/7/5 09:04");
    EXPECT_EQ(tqGetBackUpFileListNext(list, nullptr, nullptr, date, nullptr, nullptr), 1);
  }
  EXPECT_EQ(tqGetBackUpFileGrpInit(list, "00000"), -1) << "of another kind, so not listed";
  tqCloseBackUpFileList(list);
}

TEST(BackupFlat, HandlesAndTheirValues) {
  BackupHost host;
  host.write("a.dat", "abc");
  for (const int32_t dead : {0, 1, 21, -1}) {
    expect_answers(dead, short{1}, tqStartBackUp, tqRenewalBackUp, tqRestoreFileSet,
                   tqRestoreFileStart);
    EXPECT_EQ(tqSetBackUpInfo(dead, "x"), 1);
    EXPECT_EQ(tqGetBackUpFileGrpInit(dead, "00000"), 1);
  }
  EXPECT_EQ(tqFreeBackUp(0) + tqRestoreFileClose(0), 2);
  const int32_t run = tqCreateBackUp(0);
  ASSERT_EQ(run, 1);
  EXPECT_EQ(tqSetBackUpInfo(run, "note"), 0);
  EXPECT_EQ(tqStartBackUpFileGrp(run, 1, nullptr), 0);
  EXPECT_EQ(tqAddBackUpFileGrp(run, host.at("a.dat").c_str(), 4), 0);
  EXPECT_EQ(tqStartBackUp(run), 0);
  EXPECT_EQ(tqRenewalBackUp(run), 0);
  EXPECT_EQ(tqFreeBackUp(run), 0);
  EXPECT_EQ(tqFreeBackUp(run), 0) << "closing a closed slot";
  const auto files = BackupHost::files();
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(host.relative(files[0].path) + std::to_string(files[0].kind), "@\\a.dat4");

  EXPECT_EQ(tqRestoreFileInit("00001"), 0);
  const int32_t restore = tqRestoreFileInit("00000");
  ASSERT_NE(restore, 0);
  EXPECT_EQ(tqGetBackUpFileInit(restore, "0000000001"), -1);
  EXPECT_EQ(tqRestoreFileSet("0000000009", restore), 1);
  EXPECT_EQ(tqRestoreFileSet("0000000000", restore), 0);
  host.write("a.dat", "damaged");
  EXPECT_EQ(tqRestoreFileStart(restore), 0);
  EXPECT_EQ(host.read("a.dat"), "abc");
  EXPECT_EQ(tqRestoreFileClose(restore), 0);

  for (int32_t handle = 1; handle <= 20; ++handle) EXPECT_EQ(tqCreateBackUp(0), handle);
  EXPECT_EQ(tqCreateBackUp(0), 0);
  EXPECT_EQ(tqIsNeedOutlook(0), -1) << "no slot is left";
  for (int32_t handle = 1; handle <= 20; ++handle) EXPECT_EQ(tqFreeBackUp(handle), 0);
}

}  // namespace
