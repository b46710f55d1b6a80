// Making sure that what was written survives a power cut.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <set>
#include <utility>

#include "platform/fault.h"
#include "platform/names.h"
#include "platform/platform.h"
#include "platform/posix/errors.h"
#include "platform/posix/node.h"
#include "platform/posix/paths.h"

namespace tq::platform {

using posix::failure;
using posix::NativePath;

namespace {

constexpr char kDoing[] = "sync";
// From this many files on the file systems are synced as a whole: that waits for what other
// programs have written, but once instead of once per file.
constexpr std::size_t kManyFiles = 16;

// Opens what the path names and calls `sync(descriptor)`, a system call or a function like one.
template <class Sync>
Status sync_path(std::string_view path, int flags, Sync sync) {
  NativePath native(path);
  if (!native.status().ok()) return native.status();
  const int always = O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  const int fd = native.find([&](const char* name) { return ::open(name, flags | always); });
  if (fd < 0) return failure(kDoing, path);
  // EINVAL: a file system that has nothing to sync here.
  const bool synced = sync(fd) == 0 || errno == EINVAL;
  const Status status = synced ? Status() : failure(kDoing, path, Code::kWriteFault);
  ::close(fd);
  return status;
}

Status sync_folder_now(std::string_view folder) { return sync_path(folder, O_DIRECTORY, ::fsync); }

Status sync_each(const std::vector<std::string>& paths) {
  std::set<std::string_view> folders;
  for (const std::string& path : paths) {
    if (Status status = sync_path(path, 0, ::fsync); !status.ok()) return status;
    folders.insert(split_pattern(path).folder);
  }
  for (const std::string_view folder : folders) {
    if (Status status = sync_folder_now(folder.empty() ? "." : folder); !status.ok()) return status;
  }
  return {};
}

Status sync_file_systems(const std::vector<std::string>& paths) {
  std::set<std::pair<unsigned, unsigned>> done;
  const auto sync_once = [&](int fd) {
    struct statx info;
    if (posix::Node(fd).stat(info) != 0) return -1;
    return done.insert({info.stx_dev_major, info.stx_dev_minor}).second ? ::syncfs(fd) : 0;
  };
  for (const std::string& path : paths) {
    if (Status status = sync_path(path, 0, sync_once); !status.ok()) return status;
  }
  return {};
}

}  // namespace

Status sync_folder(std::string_view folder) {
  if (Status status = fault::gate("sync folder", folder, true); !status.ok()) return status;
  return sync_folder_now(folder);
}

Status sync_files(const std::vector<std::string>& paths) {
  if (paths.empty()) return {};
  if (Status status = fault::gate("sync files", paths.front(), true); !status.ok()) return status;
  return paths.size() < kManyFiles ? sync_each(paths) : sync_file_systems(paths);
}

}  // namespace tq::platform
