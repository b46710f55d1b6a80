// Candidate records of the size of a large address book's: formatting every value, and the
// candidate file beside the same lines written and read with the C++ library.
#include <benchmark/benchmark.h>

#include <fstream>
#include <string>
#include <vector>

#include "ctd/record_table.h"
#include "support/home.h"
#include "tqutil/ctd.h"

namespace {

constexpr int32_t kRecords = 10'000;
constexpr int32_t kFields = 60;

// Fields 0 to 59: names, home address and telephones among them.
struct Table : tq::test::RecordTable {
  Table() : RecordTable(names()) {
    std::vector<std::string> values;
    for (int field = 0; field < kFields; ++field)
      values.push_back("value " + std::to_string(field));
    for (int record = 0; record < kRecords; ++record) {
      add("001002" + std::string(9, '0'), "record", values);
    }
  }
  static std::vector<std::pair<int, std::string>> names() {
    std::vector<std::pair<int, std::string>> names;
    for (int field = 0; field < kFields; ++field) names.emplace_back(field, "field");
    return names;
  }
};

void FormatEveryValue(benchmark::State& state) {
  const tq::test::TestHome home;
  Table table;
  CCtdCtl ctd;
  table.give_to(ctd);
  std::string text(TQ_CTD_TEXT_SIZE, 'x');
  for (auto _ : state) {
    short failed = 0;
    for (int32_t record = 0; record < kRecords; ++record) {
      for (int32_t field = 0; field < kFields; ++field) {
        failed |= ctd.GetCtdFldStrS(record, field, text.data());
      }
    }
    if (failed != 0) state.SkipWithError("no text");
  }
  state.SetItemsProcessed(state.iterations() * kRecords * kFields);
}

void WriteCandidates(benchmark::State& state) {
  const tq::test::TestHome home;
  Table table;
  CCtdCtl ctd;
  table.give_to(ctd);
  for (auto _ : state) {
    if (ctd.WriteCtdFile() != 0) state.SkipWithError("write failed");
  }
  state.SetItemsProcessed(state.iterations() * kRecords * kFields);
}

void ReadCandidates(benchmark::State& state) {
  const tq::test::TestHome home;
  Table table;
  CCtdCtl ctd;
  table.give_to(ctd);
  ctd.WriteCtdFile();
  for (auto _ : state) {
    if (ctd.ReadCtdFile() != 0) state.SkipWithError("read failed");
  }
  state.SetItemsProcessed(state.iterations() * kRecords * kFields);
}

// The same lines into strings.
void ReadCandidatesByHand(benchmark::State& state) {
  const tq::test::TestHome home;
  Table table;
  CCtdCtl ctd;
  table.give_to(ctd);
  ctd.WriteCtdFile();
  for (auto _ : state) {
    std::ifstream file(home.native("work\\~CTDINFO.TMP"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    benchmark::DoNotOptimize(lines.data());
  }
  state.SetItemsProcessed(state.iterations() * kRecords * kFields);
}

BENCHMARK(FormatEveryValue)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteCandidates)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadCandidates)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadCandidatesByHand)->Unit(benchmark::kMillisecond);

}  // namespace
