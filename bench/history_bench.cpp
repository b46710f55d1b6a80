// Histories beside the least that could be done by hand with the same lines: one open file and
// fprintf, an open, one write and a close for every line, and reading line by line.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/home.h"
#include "tqutil/history.h"

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

constexpr int kManyLines = 1'000'000;
constexpr int kClosedLines = 100'000;
const char* const kLine = "000123456 record - Yamada Taro [ name, address and telephone ]";

void WriteKeptOpen(benchmark::State& state) {
  const tq::test::TestHome home;
  for (auto _ : state) {
    CHistoryCtl history;
    history.CreateHistory(1);
    short failed = 0;
    for (int i = 0; i < kManyLines; ++i) failed |= history.WriteAddNewInfo2(0, kLine);
    history.AllFileClose();
    if (failed != 0 || history.LastError() != 0) state.SkipWithError("write failed");
  }
  state.SetItemsProcessed(state.iterations() * kManyLines);
}

void WriteKeptOpenByHand(benchmark::State& state) {
  const tq::test::TestFolder folder;
  const std::string path = folder.native("lines").string();
  for (auto _ : state) {
    std::FILE* file = std::fopen(path.c_str(), "w");
    for (int i = 0; i < kManyLines; ++i) std::fprintf(file, "%s\n", kLine);
    if (std::fclose(file) != 0) state.SkipWithError("write failed");
    std::filesystem::remove(path);
  }
  state.SetItemsProcessed(state.iterations() * kManyLines);
}

void WriteAndClose(benchmark::State& state) {
  const tq::test::TestHome home;
  for (auto _ : state) {
    CHistoryCtl history;
    history.CreateHistory(1);
    short failed = 0;
    for (int i = 0; i < kClosedLines; ++i) failed |= history.WriteErrInfo4Read2(0, kLine);
    if (failed != 0) state.SkipWithError("write failed");
  }
  state.SetItemsProcessed(state.iterations() * kClosedLines);
}

#ifndef _WIN32
void WriteAndCloseByHand(benchmark::State& state) {
  const tq::test::TestFolder folder;
  folder.make_folder("work");  // as deep as the other one
  const std::string path = folder.native("work\\lines").string();
  const std::string line = std::string(kLine) + "\n";
  for (auto _ : state) {
    for (int i = 0; i < kClosedLines; ++i) {
      const int file = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
      const bool written =
          write(file, line.data(), line.size()) == static_cast<ssize_t>(line.size());
      if (!written || close(file) != 0) state.SkipWithError("write failed");
    }
    std::filesystem::remove(path);
  }
  state.SetItemsProcessed(state.iterations() * kClosedLines);
}
#endif

void ReadBack(benchmark::State& state) {
  const tq::test::TestHome home;
  CHistoryCtl history;
  history.CreateHistory(1);
  for (int i = 0; i < kManyLines; ++i) history.WriteAddNewInfo2(0, kLine);
  for (auto _ : state) {
    char text[TQ_HISTORY_LINE_SIZE];
    int lines = 0;
    history.GetInfo4AddNewInit(0);
    while (history.GetInfo4AddNewNext(0, text) == 0) ++lines;
    history.GetInfo4AddNewEnd(0);
    if (lines != kManyLines) state.SkipWithError("read failed");
  }
  state.SetItemsProcessed(state.iterations() * kManyLines);
}

void ReadBackByHand(benchmark::State& state) {
  const tq::test::TestFolder folder;
  std::string bytes;
  for (int i = 0; i < kManyLines; ++i) bytes.append(kLine) += '\n';
  folder.write("lines", bytes);
  for (auto _ : state) {
    std::ifstream file(folder.native("lines"));
    std::string line;
    int lines = 0;
    while (std::getline(file, line)) ++lines;
    if (lines != kManyLines) state.SkipWithError("read failed");
  }
  state.SetItemsProcessed(state.iterations() * kManyLines);
}

// Pairs stand side by side, so that both see the machine in the same state.
BENCHMARK(WriteKeptOpen)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteKeptOpenByHand)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteAndClose)->Unit(benchmark::kMillisecond);
#ifndef _WIN32
BENCHMARK(WriteAndCloseByHand)->Unit(benchmark::kMillisecond);
#endif
BENCHMARK(ReadBack)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadBackByHand)->Unit(benchmark::kMillisecond);

}  // namespace
