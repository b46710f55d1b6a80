// Group files and listings beside the least that could be done by hand: the same files opened, read
// and parsed with the C library, one read of the same bytes, one safe replacement of the same
// bytes.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "support/home.h"
#include "tqutil/syncfile.h"

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

constexpr int kGroups = 1000;
constexpr int kMembers = 1000;

void add_members(CSyncFileCtl& group, int count) {
  tSYNC_INFO info{};
  CSyncFileCtl::SyncInfoAlloc(&info);
  for (int i = 0; i < count; ++i) {
    std::snprintf(info.memberText, TQ_PATH_SIZE, "Z:\\data\\partner%04d.csv", i);
    std::snprintf(info.fldFile, TQ_PATH_SIZE, "Z:\\member\\000\\fld%04x.tmp", i);
    std::snprintf(info.tmpFileO, TQ_PATH_SIZE, "Z:\\member\\000\\old%04x.tmp", i);
    group.AddSyncFileInfo(-1, &info);
  }
  CSyncFileCtl::SyncInfoFree(&info);
}

// A home with 1,000 groups of three members each, made once.
struct Listed : tq::test::TestHome {
  Listed() {
    for (int i = 0; i < kGroups; ++i) {
      CSyncFileCtl group;
      group.Create();
      group.SetTitle(("title " + std::to_string(i * 7919 % kGroups)).c_str());
      add_members(group, 3);
      if (group.Write(0) != 0) std::abort();
    }
  }
};

void ListGroups(benchmark::State& state) {
  static const Listed home;
  for (auto _ : state) {
    CSyncFileCtl listing;
    if (listing.GetSyncGrpInit() != kGroups) state.SkipWithError("listing failed");
  }
}

void ListGroupsByHand(benchmark::State& state) {
  static const Listed home;
  for (auto _ : state) {
    std::vector<tSYNC_GRP2> groups;
    for (const auto& entry : std::filesystem::directory_iterator(home.native("group"))) {
      std::FILE* file = std::fopen(entry.path().c_str(), "r");
      char line[4000];
      tSYNC_GRP2 group{};
      for (int number = 0; number < 6 && std::fgets(line, sizeof line, file) != nullptr; ++number) {
        line[std::strcspn(line, "\r\n")] = '\0';
        if (number == 0) group.syncType = static_cast<short>(std::atoi(line));
        if (number == 1) std::snprintf(group.id, sizeof group.id, "%.3s", line);
        if (number == 2) std::snprintf(group.title, sizeof group.title, "%.128s", line);
        if (number == 3) std::snprintf(group.memo, sizeof group.memo, "%.128s", line);
        if (number == 4) {
          int flag = 0;
          for (char* token = std::strtok(line, ","); token != nullptr && flag < TQ_FLG_COUNT;
               token = std::strtok(nullptr, ",")) {
            group.syncFlg[flag++] = static_cast<short>(std::atoi(token));
          }
        }
        if (number == 5) group.fileCnt = static_cast<short>(std::atoi(line));
      }
      std::fclose(file);
      groups.push_back(group);
    }
    std::sort(groups.begin(), groups.end(), [](const tSYNC_GRP2& a, const tSYNC_GRP2& b) {
      return std::strcmp(a.title, b.title) < 0;
    });
    benchmark::DoNotOptimize(groups.data());
  }
}

// One group of 1,000 members on disk.
struct Large : tq::test::TestHome {
  Large() {
    CSyncFileCtl group;
    group.Create();
    add_members(group, kMembers);
    if (group.Write(0) != 0) std::abort();
    bytes = read("group\\000.SYG");
  }
  std::string bytes;
};

void ReadGroup(benchmark::State& state) {
  static const Large home;
  const std::string path = home.at("group\\000.SYG");
  for (auto _ : state) {
    CSyncFileCtl group;
    group.Open(path.c_str(), "r");
    if (group.Read() != kMembers) state.SkipWithError("read failed");
  }
}

// The bytes alone, into memory that is there already.
void ReadGroupBytes(benchmark::State& state) {
  static const Large home;
  const std::string native = home.native("group\\000.SYG").string();
  std::string bytes(home.bytes.size(), '\0');
  for (auto _ : state) {
    std::FILE* file = std::fopen(native.c_str(), "rb");
    std::setvbuf(file, nullptr, _IONBF, 0);
    if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size())
      state.SkipWithError("read failed");
    std::fclose(file);
  }
}

// Line by line into strings, nothing parsed.
void ReadGroupByHand(benchmark::State& state) {
  static const Large home;
  const std::string native = home.native("group\\000.SYG").string();
  for (auto _ : state) {
    std::FILE* file = std::fopen(native.c_str(), "r");
    char line[4000];
    std::vector<std::string> lines;
    while (std::fgets(line, sizeof line, file) != nullptr) lines.emplace_back(line);
    std::fclose(file);
    benchmark::DoNotOptimize(lines.data());
  }
}

void WriteGroup(benchmark::State& state) {
  static const Large home;
  CSyncFileCtl group;
  group.Open(home.at("group\\000.SYG").c_str(), "");
  group.Read();
  for (auto _ : state) {
    if (group.Write(0) != 0) state.SkipWithError("write failed");
  }
}

#ifndef _WIN32
void WriteGroupByHand(benchmark::State& state) {
  static const Large home;
  const std::string target = home.native("group\\000.SYG").string();
  const std::string temporary = target + ".new";
  for (auto _ : state) {
    const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const auto written = write(file, home.bytes.data(), home.bytes.size());
    const bool safe = written == static_cast<ssize_t>(home.bytes.size()) && fsync(file) == 0 &&
                      close(file) == 0 && rename(temporary.c_str(), target.c_str()) == 0;
    if (!safe) state.SkipWithError("write failed");
  }
}
#endif

// Pairs stand side by side, so that both see the machine in the same state.
BENCHMARK(ListGroups)->Unit(benchmark::kMicrosecond);
BENCHMARK(ListGroupsByHand)->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadGroup)->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadGroupBytes)->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadGroupByHand)->Unit(benchmark::kMicrosecond);
BENCHMARK(WriteGroup)->Unit(benchmark::kMicrosecond);
#ifndef _WIN32
BENCHMARK(WriteGroupByHand)->Unit(benchmark::kMicrosecond);
#endif

}  // namespace
