// A backup and a restore beside the programs that people copy trees with: cp -r followed by sync
// (what makes the copy safe), rsync -a, and restic and borg where they are installed.
//
// 100 files of 30 MB in all; with TQ_BENCH_FULL=1 in the environment 2,000 files of 600 MB. What is
// not to be measured (clearing away, bringing earlier writes to the disk) is outside the times.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "siblings/siblings.h"
#include "support/home.h"
#include "tqutil/backup.h"

namespace {

namespace fs = std::filesystem;

struct Size {
  int files;
  int bytes;  // of each
};

Size size() {
  return std::getenv("TQ_BENCH_FULL") != nullptr ? Size{2000, 300'000} : Size{100, 300'000};
}

void run(const std::string& command) {
  if (std::system((command + " >/dev/null 2>&1").c_str()) != 0) std::abort();
}

bool installed(const std::string& program) {
  return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
}

// A home with the tree "src" of address data, and no dialogs.
struct Tree : tq::test::TestHome {
  Tree() {
    static const tDIALOG_API silent = {
        sizeof silent,
        nullptr,
        [](void*, const char*, const char*, short) -> void* { return nullptr; },
        [](void*, void*, const char*) {},
        [](void*, void*, const char*) {},
        [](void*, void*, short) {},
        [](void*, void*) -> short { return 0; },
        [](void*, void*) {},
        [](void*, void*) {},
        nullptr,
        nullptr};
    const tTQ_SIBLINGS all = {sizeof all, nullptr, nullptr, nullptr, nullptr, nullptr, &silent};
    tqSetSiblings(&all);
    std::mt19937 random(1);
    std::string content(static_cast<std::size_t>(size().bytes), '\0');
    for (int i = 0; i < size().files; ++i) {
      for (std::size_t at = 0; at < content.size(); at += 7) {
        content[at] = static_cast<char>(random());
      }
      names.push_back("src\\" + std::to_string(i / 100) + "\\" + std::to_string(i) + ".dat");
      write(names.back(), content);
    }
    tqSetGenerationCnt(1000);
    settle();
  }
  static void settle() { run("sync"); }
  std::string shell(const std::string& name) const { return "'" + native(name).string() + "'"; }

  void back_up() const {
    CBackUpCtl object;
    object.CreateBackUp(1);
    object.StartBackUpFileGrp(1, nullptr);
    for (const std::string& name : names) {
      const std::string path = at(name);
      object.AddBackUpFileGrp(reinterpret_cast<const unsigned char*>(path.c_str()), short{0});
    }
    if (object.StartBackUp() != 0 || object.RenewalBackUp() != 0) std::abort();
  }

  std::vector<std::string> names;
};

const Tree& tree() {
  static const Tree shared;
  return shared;
}

template <class Before, class Work, class After>
void measure(benchmark::State& state, Before before, Work work, After after) {
  for (auto _ : state) {
    before();
    Tree::settle();
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(took.count());
    after();
  }
  state.SetBytesProcessed(state.iterations() * size().files * std::int64_t{size().bytes});
}

void nothing() {}
void remove_target() { tree().remove("target"); }

// --- A backup of the tree ------------------------------------------------------------------------

void BackUp(benchmark::State& state) {
  measure(
      state, nothing, [] { tree().back_up(); }, [] { tqDeleteBkupAll(); });
}

void BackUpByCpAndSync(benchmark::State& state) {
  const std::string copy = "cp -r " + tree().shell("src") + " " + tree().shell("target");
  measure(
      state, remove_target, [&] { run(copy + " && sync"); }, remove_target);
}

void BackUpByRsyncAndSync(benchmark::State& state) {
  if (!installed("rsync")) return state.SkipWithError("rsync is not installed");
  const std::string copy = "rsync -a " + tree().shell("src") + "/ " + tree().shell("target");
  measure(
      state, remove_target, [&] { run(copy + " && sync"); }, remove_target);
}

void BackUpByRestic(benchmark::State& state) {
  if (!installed("restic")) return state.SkipWithError("restic is not installed");
  const std::string restic = "RESTIC_PASSWORD=x restic --no-cache -r " + tree().shell("target");
  measure(
      state,
      [&] {
        remove_target();
        run(restic + " init");
      },
      [&] { run(restic + " backup " + tree().shell("src") + " && sync"); }, remove_target);
}

void BackUpByBorg(benchmark::State& state) {
  if (!installed("borg")) return state.SkipWithError("borg is not installed");
  const std::string target = tree().shell("target");
  measure(
      state,
      [&] {
        remove_target();
        run("borg init -e none " + target);
      },
      [&] { run("borg create " + target + "::a " + tree().shell("src") + " && sync"); },
      remove_target);
}

// --- The tree brought back over the files that are there -----------------------------------------

void restore(benchmark::State& state, short (*how)()) {
  tree().back_up();
  measure(
      state, nothing,
      [&] {
        if (how() != 0) std::abort();
      },
      nothing);
  tqDeleteBkupAll();
}

void RestoreOver(benchmark::State& state) {
  restore(state, [] { return tqErrRestoreGrp(1); });
}

// With the backup of what is there now that comes before.
void RestoreOverSafely(benchmark::State& state) {
  restore(state, [] { return tqAutoRestoreGrp(1, 1); });
}

void restore_by(benchmark::State& state, const std::string& command) {
  const std::string copy = "cp -r " + tree().shell("src") + " " + tree().shell("target");
  remove_target();
  run(copy);
  measure(
      state, nothing, [&] { run(command); }, nothing);
  remove_target();
}

void RestoreOverByCp(benchmark::State& state) {
  restore_by(state, "cp -r " + tree().shell("target") + "/. " + tree().shell("src"));
}

void RestoreOverByRsync(benchmark::State& state) {
  if (!installed("rsync")) return state.SkipWithError("rsync is not installed");
  restore_by(state,
             "rsync -a --ignore-times " + tree().shell("target") + "/ " + tree().shell("src"));
}

// Pairs stand side by side, so that both see the machine in the same state.
#define TQ_MEASURED UseManualTime()->Unit(benchmark::kMillisecond)
BENCHMARK(BackUp)->TQ_MEASURED;
BENCHMARK(BackUpByCpAndSync)->TQ_MEASURED;
BENCHMARK(BackUpByRsyncAndSync)->TQ_MEASURED;
BENCHMARK(BackUpByRestic)->TQ_MEASURED;
BENCHMARK(BackUpByBorg)->TQ_MEASURED;
BENCHMARK(RestoreOver)->TQ_MEASURED;
BENCHMARK(RestoreOverByCp)->TQ_MEASURED;
BENCHMARK(RestoreOverSafely)->TQ_MEASURED;
BENCHMARK(RestoreOverByRsync)->TQ_MEASURED;

}  // namespace
