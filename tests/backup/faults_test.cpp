// Every operation of backup, rotation, restore and deletion fails once: what could be restored
// before can be restored afterwards, except what the operation was asked to remove.
#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>

#include "backup/backup_host.h"
#include "platform/fault.h"
#include "support/scoped_variable.h"
#include "support/test.h"

namespace {

namespace fault = tq::platform::fault;

// Puts temporary folders into memory, where the system has a folder for that: a disk takes minutes
// to sync a thousand runs.
struct InMemory {
  static std::string folder() {
    for (const char* name : {"/dev/shm", "Z:\\dev\\shm"}) {
      if (std::filesystem::exists(name)) return name;
    }
    return std::filesystem::temp_directory_path().string();
  }
  ScopedVariable posix{"TMPDIR", folder()}, windows{"TMP", folder()};
};

const Texts kPrepared = {"00000", "00001", "00002", "00003"};

// Three backups of kind 1 with one file and a whole folder each, and one of kind 0; the user's
// files have changed since. Made once for real, then again and again from a copy of its files.
struct Prepared {
  Prepared() {
    for (int i = 0; i < 3; ++i) {
      host.write("u\\a", "a" + std::to_string(i));
      host.write("u\\b", "b" + std::to_string(i));
      host.write("f\\x\\c", "c" + std::to_string(i));
      host.back_up(1, {{3, "", {"u\\a", "u\\b"}}, {64, host.at("f"), {"f\\x\\c"}}});
      host.set_time("0000" + std::to_string(i), "200" + std::to_string(i) + ",1,1,1,1,1,1");
    }
    host.back_up(0, {{3, "", {"u\\a"}}});
    host.write("u\\a", "now");
    refill(host, copy);
  }
  void again() { refill(copy, host); }

  static void refill(const TestFolder& from, const TestFolder& to) {
    for (const char* name : {"u", "f", "data", "backup"}) {
      to.remove(name);
      std::filesystem::copy(from.native(name), to.native(name),
                            std::filesystem::copy_options::recursive);
    }
  }

  InMemory in_memory;
  BackupHost host;
  TestFolder copy;
};

struct Operation {
  const char* why;
  std::function<short(BackupHost&)> run;
  Texts removes;       // ids that it is asked to remove
  bool changes_files;  // the user's, that is
};

const Operation kOperations[] = {
    {"a backup that rotates one away",
     [](BackupHost& host) {
       return host.back_up(1, {{3, "", {"u\\a", "u\\b"}}});
     },
     {"00000"},
     false},
    {"restore of everything", [](BackupHost&) { return tqRestoreGrp("00001"); }, {}, true},
    {"restore without a backup before", [](BackupHost&) { return tqErrRestoreGrp(1); }, {}, true},
    {"restore of one group", [](BackupHost&) { return tqRestoreFile("0000100000"); }, {}, true},
    {"deletion", [](BackupHost&) { return tqDeleteBkupGrp("00001"); }, {"00001"}, false},
    {"deletion by generation",
     [](BackupHost&) { return tqDeleteAutoBkupGrp(1, 3); },
     {"00000"},
     false},
    {"deletion of all", [](BackupHost&) { return tqDeleteBkupAll(); }, kPrepared, false},
    {"restore of a selection",
     [](BackupHost&) {
       const int32_t restore = tqRestoreFileInit("00000");
       const bool marked = tqRestoreFileSet("0000000000", restore) == 0;
       const short result = marked ? tqRestoreFileStart(restore) : short{1};
       tqRestoreFileClose(restore);
       return result;
     },
     {},
     true},
};

// What is restorable afterwards has all of `before` but for what was to go; of these, what is left
// need not be whole. The number of backups lost.
int expect_kept(const BackupHost& host,
                std::map<std::string, std::map<std::string, std::string>> before,
                const Texts& removes) {
  for (const std::string& id : removes) {
    before.erase(id);
    host.remove("data\\" + id + ".BKH");
  }
  auto after = host.restorable();
  int lost = 0;
  for (const auto& [id, files] : before) {
    EXPECT_EQ(after[id], files) << "backup " << id;
    if (after[id] != files) ++lost;
  }
  return lost;
}

TEST(BackupFaults, NothingThatCouldBeRestoredIsLost) {
  Prepared prepared;
  BackupHost& host = prepared.host;
  const auto before = host.restorable();
  ASSERT_EQ(before.size(), kPrepared.size());
  int failed = 0, lost = 0;
  for (const Operation& operation : kOperations) {
    for (const auto kind : {fault::Kind::kFail, fault::Kind::kDiskFull, fault::Kind::kCrash}) {
      for (int nth = 1;; ++nth) {
        SCOPED_TRACE(std::string(operation.why) + ", operation " + std::to_string(nth));
        prepared.again();
        const int open_before = fault::open_handles();
        fault::FailNth failing(nth, kind);
        const short result = operation.run(host);
        const bool hit = failing.hit();
        fault::disarm();
        EXPECT_EQ(fault::open_handles(), open_before);
        lost += expect_kept(host, before, operation.removes);
        if (&operation == kOperations && result == 0) {
          EXPECT_EQ(host.restorable()["00004"].size(), 2u) << "a run that succeeded";
        }
        if (!operation.changes_files) {
          EXPECT_EQ(host.read("u\\a"), "now");
        } else if (result != 0 && std::string(operation.why) == "restore of everything" &&
                   (!host.exists("u\\a") || host.read("u\\a") != "now")) {
          EXPECT_EQ(host.restorable()["00004"][host.at("u\\a")], "now") << "the way back";
        }
        if (!hit) {
          EXPECT_EQ(result, 0);
          break;
        }
        ++failed;
        // Whatever was left behind, the next run works beside it.
        if (kind != fault::Kind::kCrash) continue;
        EXPECT_EQ(host.back_up(2, {{3, "", {"u\\b"}}}), host.exists("u\\b") ? 0 : -1);
      }
    }
  }
  std::printf("operations failed: %d, backups lost: %d\n", failed, lost);
  EXPECT_GT(failed, 500);
}

}  // namespace
