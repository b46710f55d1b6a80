// What the layer between library paths and Linux costs, beside the bare system calls: both run over
// the same 1,000 files of some 300 bytes, about the size of a group file. `_ByHand` is the measure.
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace tq::platform {
namespace {

constexpr int kFiles = 1000;

// 1,000 files in a folder of their own.
struct Files {
  Files() {
    native = (std::filesystem::temp_directory_path() / "tq-bench-XXXXXX").native();
    if (::mkdtemp(native.data()) == nullptr) std::abort();
    if (!path_from_native(native, path).ok()) std::abort();
    for (int i = 0; i < kFiles; ++i) {
      std::ofstream(std::filesystem::path(native) / name(i)) << std::string(300, 'x');
    }
  }
  ~Files() { std::filesystem::remove_all(native); }
  static std::string name(int number) { return "g" + std::to_string(10'000 + number) + ".SYG"; }

  std::string native, path;
};

void ListAndRead_ByHand(benchmark::State& state) {
  const Files files;
  char buffer[4096];
  for (auto _ : state) {
    DIR* folder = ::opendir(files.native.c_str());
    while (const dirent* entry = ::readdir(folder)) {
      if (entry->d_name[0] == '.') continue;
      const int fd = ::open((files.native + "/" + entry->d_name).c_str(), O_RDONLY | O_CLOEXEC);
      benchmark::DoNotOptimize(::read(fd, buffer, sizeof buffer));
      ::close(fd);
    }
    ::closedir(folder);
  }
}

void read_file(const std::string& path, char* buffer, std::size_t size) {
  File file;
  std::size_t got = 0;
  if (!file.open(path, OpenMode::kRead).ok() || !file.read(buffer, size, got).ok()) std::abort();
}

void ListAndRead(benchmark::State& state) {
  const Files files;
  char buffer[4096];
  for (auto _ : state) {
    std::vector<FolderEntry> entries;
    if (!list_folder(files.path + "\\*.SYG", entries).ok()) std::abort();
    for (const FolderEntry& entry : entries) {
      read_file(files.path + "\\" + entry.name, buffer, sizeof buffer);
    }
  }
}

void Open_ByHand(benchmark::State& state) {
  const Files files;
  const std::string name = files.native + "/" + files.name(0);
  for (auto _ : state) {
    const int fd = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
    ::close(fd);
  }
}

// The argument is the name's case: as it is on disk, or another.
void Open(benchmark::State& state) {
  const Files files;
  const std::string name = state.range(0) == 0 ? files.name(0) : "G10000.syg";
  for (auto _ : state) {
    File file;
    if (!file.open(files.path + "\\" + name, OpenMode::kRead).ok()) std::abort();
  }
}

void CreateAndRemove_ByHand(benchmark::State& state) {
  const Files files;
  const std::string name = files.native + "/new.tmp";
  for (auto _ : state) {
    ::close(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    ::unlink(name.c_str());
  }
}

// Looks through the folder's 1,000 names for one in another case.
void CreateAndRemove(benchmark::State& state) {
  const Files files;
  const std::string name = files.path + "\\new.tmp";
  for (auto _ : state) {
    File file;
    if (!file.open(name, OpenMode::kCreate).ok() || !file.close().ok()) std::abort();
    if (!delete_file(name).ok()) std::abort();
  }
}

void UniqueFileAndRemove(benchmark::State& state) {
  const Files files;
  std::string name;
  for (auto _ : state) {
    if (!unique_file(files.path, "~tq", name).ok() || !delete_file(name).ok()) std::abort();
  }
}

BENCHMARK(ListAndRead_ByHand)->Unit(benchmark::kMicrosecond);
BENCHMARK(ListAndRead)->Unit(benchmark::kMicrosecond);
BENCHMARK(Open_ByHand);
BENCHMARK(Open)->ArgName("other_case")->Arg(0)->Arg(1);
BENCHMARK(CreateAndRemove_ByHand);
BENCHMARK(CreateAndRemove);
BENCHMARK(UniqueFileAndRemove);

}  // namespace
}  // namespace tq::platform
