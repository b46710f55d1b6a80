// Data ids by field id over the shipped formats, beside a table that is indexed by field id and
// beside the linear search through a file's list; and building the lists.
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "side_by_side.h"
#include "tqutil/appinfo.h"
#include "tqutil/csvinfo.h"
#include "tqutil/records.h"
#include "tqutil/siblings.h"
#include "tqutil/syncfld.h"

namespace {

constexpr short kFieldIds = 632;

using Next = short (*)(short* number, char* path, int32_t list);

void add_list(std::vector<std::pair<short, std::string>>& files, int32_t list, Next next) {
  short number = 0;
  char path[TQ_PATH_SIZE];
  while (next(&number, path, list) == 0) files.emplace_back(number, path);
  GetCsvFldInfoEnd(list);
}

// Application number and path of every shipped format; the master's is the last.
std::vector<std::pair<short, std::string>> shipped_formats() {
  std::vector<std::pair<short, std::string>> files;
  add_list(files, GetCsvFldInfoInit1(), [](short* number, char* path, int32_t list) {
    return GetCsvFldInfoNext1(number, nullptr, nullptr, path, list);
  });
  add_list(files, GetCsvFldInfoInit2(), [](short* number, char* path, int32_t list) {
    return GetCsvFldInfoNext2(number, nullptr, path, list);
  });
  add_list(files, GetCsvFldInfoInit3(), [](short* number, char* path, int32_t list) {
    return GetCsvFldInfoNext3(number, nullptr, path, list);
  });
  return files;
}

// An object of the library with a master and member files.
class Fields {
 public:
  Fields(const std::string& master, const std::vector<std::pair<short, std::string>>& members)
      : handle(CreateSyflCtl()) {
    SyflCreateFileTbl(static_cast<short>(members.size()), handle);
    SyflSetMstFileInfo(reinterpret_cast<const unsigned char*>(master.c_str()), handle);
    for (auto [number, path] : members) {
      tSYNC_INFO info{};
      info.fldFile = path.data();
      info.appType = number;
      SyflAddFileInfo(&info, handle);
    }
  }
  ~Fields() { FreeSyflCtl(handle); }
  Fields(const Fields&) = delete;
  Fields& operator=(const Fields&) = delete;

  const int32_t handle;
};

// What a program that knew all answers would do.
class IndexedTable {
 public:
  IndexedTable(const Fields& fields, std::size_t files) : ids_(files) {
    for (std::size_t file = 0; file < files; ++file) {
      for (short id = 0; id < kFieldIds; ++id) {
        ids_[file].push_back(SyflGetDataId(static_cast<int32_t>(file), id, fields.handle));
      }
    }
  }
  [[gnu::noinline]] short data_id(int32_t file, short id) const {
    if (file < 0 || static_cast<std::size_t>(file) >= ids_.size()) return -1;
    const std::vector<short>& of_file = ids_[static_cast<std::size_t>(file)];
    return id >= 0 && static_cast<std::size_t>(id) < of_file.size()
               ? of_file[static_cast<std::size_t>(id)]
               : short{-1};
  }

 private:
  std::vector<std::vector<short>> ids_;
};

// The search that the answers are told by: through the list, then through the keys for a field that
// stands in. What stands in is worked out before, which favours it.
class LinearSearch {
 public:
  LinearSearch(const Fields& fields, std::size_t files) : lists_(files) {
    for (std::size_t file = 0; file < files; ++file) {
      for (short id = 0; id < kFieldIds; ++id) {
        const short data_id = SyflGetDataId(static_cast<int32_t>(file), id, fields.handle);
        if (data_id >= 0) lists_[file].emplace_back(id, data_id);
      }
    }
  }
  [[gnu::noinline]] short data_id(int32_t file, short id) const {
    for (const auto& [listed, data_id] : lists_[static_cast<std::size_t>(file)]) {
      if (listed == id) return data_id;
    }
    return -1;
  }

 private:
  std::vector<std::vector<std::pair<short, short>>> lists_;
};

struct Question {
  short file, field;
};

// Any field of any file, in no order.
std::vector<Question> questions(std::size_t files) {
  std::vector<Question> all(4096);
  std::mt19937 engine(1);
  for (Question& question : all) {
    question = {static_cast<short>(engine() % files), static_cast<short>(engine() % kFieldIds)};
  }
  return all;
}

template <class Ask>
std::int64_t ask_all(const std::vector<Question>& all, std::int64_t calls, Ask ask) {
  std::int64_t sum = 0;
  for (std::int64_t i = 0; i < calls; ++i) {
    const Question& question = all[static_cast<std::size_t>(i) % 4096];
    sum += ask(question.file, question.field);
  }
  return sum;
}

template <class Peer>
void ask_beside(benchmark::State& state) {
  auto files = shipped_formats();
  if (files.size() < 2) return state.SkipWithError("the shipped formats are not found");
  const Fields fields(files.back().second, files);
  const Peer peer(fields, files.size());
  const std::vector<Question> all = questions(files.size());
  const std::int64_t calls = state.range(0);
  std::int64_t first = -1;
  tq::bench::side_by_side(
      state,
      [&] {
        return ask_all(all, calls, [&](short file, short field) {
          return SyflGetDataId(file, field, fields.handle);
        });
      },
      [&] {
        return ask_all(all, calls,
                       [&](short file, short field) { return peer.data_id(file, field); });
      },
      [&](std::int64_t sum) {
        if (first >= 0 && sum != first) state.SkipWithError("the sides disagree");
        first = sum;
      });
  using benchmark::Counter;
  state.counters["call"] =
      Counter(static_cast<double>(calls), Counter::kIsIterationInvariantRate | Counter::kInvert);
  state.counters["peer_call_ns"] = state.counters["peer_ms"].value * 1e6 / double(calls);
}

void DataIdBesideIndexedTable(benchmark::State& state) { ask_beside<IndexedTable>(state); }
void DataIdBesideLinearSearch(benchmark::State& state) { ask_beside<LinearSearch>(state); }

// Twenty files with every field of the master.
void BuildTwentyFiles(benchmark::State& state) {
  const auto formats = shipped_formats();
  if (formats.empty()) return state.SkipWithError("the shipped formats are not found");
  const std::string& master = formats.back().second;
  const std::vector<std::pair<short, std::string>> members(20, {short{1}, master});
  for (auto _ : state) {
    const Fields fields(master, members);
    state.counters["fields"] = SyflGetFldCnt(0, fields.handle);
  }
}

BENCHMARK(DataIdBesideIndexedTable)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Arg(100'000'000)
    ->Iterations(3);
BENCHMARK(DataIdBesideLinearSearch)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Arg(5'000'000)
    ->Iterations(3);
BENCHMARK(BuildTwentyFiles)->Unit(benchmark::kMillisecond);

}  // namespace
