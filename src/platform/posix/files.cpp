// Single files: what is known about them, deleting and replacing, and File, the open one.
#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <limits>
#include <utility>

#include "platform/fault.h"
#include "platform/names.h"
#include "platform/platform.h"
#include "platform/posix/clock.h"
#include "platform/posix/errors.h"
#include "platform/posix/files.h"
#include "platform/posix/node.h"
#include "platform/posix/paths.h"

namespace tq::platform {

using posix::failure;
using posix::NativePath;
using posix::Node;

namespace {

// Gate, path and what the system knows, which the operations on a named thing begin with.
struct Named {
  Named(const char* doing, std::string_view path, bool writes) : native(path) {
    status = fault::gate(doing, path, writes);
    if (status.ok()) status = native.status();
    if (!status.ok()) return;
    const auto stat = [&](const char* name) { return Node(name).stat(info); };
    if (native.find(stat) != 0) status = failure(doing, path);
  }
  Node node() const { return Node(native.c_str()); }

  NativePath native;
  struct statx info {};
  Status status;
};

}  // namespace

std::uint32_t attributes(std::string_view path) {
  const Named named("look at", path, false);
  return named.status.ok() ? named.node().attributes(named.info) : kNoAttributes;
}

Status set_attributes(std::string_view path, std::uint32_t bits) {
  const Named named("set attributes of", path, false);
  if (!named.status.ok()) return named.status;
  if (named.node().set_attributes(named.info, bits) == 0) return {};
  return failure("set attributes of", path);
}

Status delete_file(std::string_view path) {
  const Named named("delete", path, false);
  if (!named.status.ok()) return named.status;
  if (posix::is_folder(named.info)) return refusal(Code::kDenied, "delete", path, "it is a folder");
  if (posix::is_read_only(named.info))
    return refusal(Code::kDenied, "delete", path, "it is read-only");
  return ::unlink(named.native.c_str()) == 0 ? Status() : failure("delete", path);
}

Status replace_file(std::string_view from, std::string_view to) {
  if (Status status = fault::gate("replace", to, true); !status.ok()) return status;
  NativePath source(from);
  NativePath target(to);
  if (!source.status().ok()) return source.status();
  if (!target.status().ok()) return target.status();
  struct statx info;
  const auto stat = [&](const char* name) { return Node(name).stat(info); };
  if (target.find(stat) == 0) {
    if (posix::is_folder(info)) return refusal(Code::kDenied, "replace", to, "it is a folder");
    if (posix::is_read_only(info)) return refusal(Code::kDenied, "replace", to, "it is read-only");
  }
  const auto rename = [&](const char* name) { return ::rename(name, target.c_str()); };
  return source.find(rename) == 0 ? Status() : failure("replace", to);
}

Status file_times(std::string_view path, FileTimes& times) {
  const Named named("get the times of", path, false);
  if (named.status.ok()) times = named.node().times(named.info);
  return named.status;
}

Status set_file_times(std::string_view path, const FileTimes& times) {
  const Named named("set the times of", path, false);
  if (!named.status.ok()) return named.status;
  if (named.node().set_times(named.info, times) == 0) return {};
  return failure("set the times of", path);
}

Status file_size(std::string_view path, std::uint64_t& size) {
  const Named named("get the size of", path, false);
  if (!named.status.ok()) return named.status;
  if (posix::is_folder(named.info))
    return refusal(Code::kDenied, "get the size of", path, "it is a folder");
  size = named.info.stx_size;
  return {};
}

// --- Open files ----------------------------------------------------------------------------------

namespace posix {
namespace {

constexpr int kAlways = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;  // a pipe must not make us wait
constexpr mode_t kNewFileMode = 0666;                       // less what the umask takes away

int open_existing(NativePath& native, int flags) {
  return native.find([&](const char* name) { return ::open(name, flags | kAlways); });
}

// The folder and names in other case are known by now: an existing file is never doubled.
int create_new(NativePath& native, int flags) {
  if (native.match_case()) {
    errno = EEXIST;
    return -1;
  }
  return ::open(native.c_str(), flags | kAlways | O_CREAT | O_EXCL, kNewFileMode);
}

// Opens an existing file, else makes it.
int open_or_create(NativePath& native, int flags) {
  const int fd = open_existing(native, flags);
  if (fd >= 0 || errno != ENOENT) return fd;
  const int created = create_new(native, flags);
  // Somebody else may just have made it.
  return created < 0 && errno == EEXIST ? open_existing(native, flags) : created;
}

int open_mode(NativePath& native, OpenMode mode) {
  switch (mode) {
    case OpenMode::kRead:
    case OpenMode::kReadShared:
      return open_existing(native, O_RDONLY);
    case OpenMode::kUpdate:
      return open_existing(native, O_RDWR);
    case OpenMode::kCreateNew:
      return create_new(native, O_RDWR);
    case OpenMode::kAppend:
      return open_or_create(native, O_RDWR | O_APPEND);
    case OpenMode::kCreate:
      return open_or_create(native, O_RDWR);
  }
  errno = EINVAL;
  return -1;
}

}  // namespace

// Null, or why the open file cannot be used as a file of the library.
const char* refuse_open(const struct statx& info, bool writing) {
  if (is_folder(info)) return "it is a folder";
  if (!is_file(info)) return "it is no ordinary file";
  return writing && is_read_only(info) ? "it is read-only" : nullptr;
}

ssize_t read_some(int fd, void* data, std::size_t size) {
  ssize_t got;
  do {
    got = ::read(fd, data, size);
  } while (got < 0 && errno == EINTR);
  return got;
}

bool write_all(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace posix

File::~File() {
  if (!is_open()) return;
  ::close(static_cast<int>(handle_));
  fault::count_handle(-1);
}

Status File::open(std::string_view path, OpenMode mode) {
  if (is_open()) return refusal(Code::kBusy, "open", path, "another file is open here");
  const bool writing = mode != OpenMode::kRead && mode != OpenMode::kReadShared;
  const bool creates = writing && mode != OpenMode::kUpdate;
  if (Status status = fault::gate("open", path, creates); !status.ok()) return status;
  NativePath native(path);
  if (!native.status().ok()) return native.status();
  const int fd = posix::open_mode(native, mode);
  if (fd < 0) return failure("open", path);
  File opened;  // closes again on the ways out below
  opened.handle_ = fd;
  fault::count_handle(1);
  struct statx info;
  if (Node(fd).stat_without_times(info) != 0) return failure("open", path);
  if (const char* why = posix::refuse_open(info, writing && mode != OpenMode::kCreateNew)) {
    return refusal(Code::kDenied, "open", path, why);
  }
  if (mode == OpenMode::kCreate && info.stx_size != 0 && ::ftruncate(fd, 0) != 0) {
    return failure("empty", path);
  }
  opened.path_ = path;
  opened.native_ = native.text();
  *this = std::move(opened);
  return {};
}

Status File::append_again() {
  if (is_open()) return refusal(Code::kBusy, "open", path_, "another file is open here");
  if (Status status = fault::gate("open", path_, true); !status.ok()) return status;
  const int fd = ::open(native_.c_str(), O_RDWR | O_APPEND | posix::kAlways);
  if (fd < 0) return open(std::string(path_), OpenMode::kAppend);  // gone, or given other rights
  handle_ = fd;
  fault::count_handle(1);
  return {};
}

Status File::read(void* data, std::size_t size, std::size_t& got) {
  got = 0;
  if (Status status = fault::gate("read", path_, false); !status.ok()) return status;
  const ssize_t more = posix::read_some(static_cast<int>(handle_), data, size);
  if (more < 0) return failure("read", path_, Code::kReadFault);
  got = static_cast<std::size_t>(more);
  return {};
}

Status File::write(std::string_view bytes) {
  if (Status status = fault::gate("write", path_, true); !status.ok()) {
    if (fault::leaves_half())
      posix::write_all(static_cast<int>(handle_), bytes.substr(0, bytes.size() / 2));
    return status;
  }
  if (posix::write_all(static_cast<int>(handle_), bytes)) return {};
  return failure("write", path_, Code::kWriteFault);
}

Status File::seek(std::uint64_t position) {
  if (Status status = fault::gate("seek in", path_, false); !status.ok()) return status;
  if (position > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) {
    return refusal(Code::kInvalid, "seek in", path_, "too far");
  }
  const off_t at = ::lseek(static_cast<int>(handle_), static_cast<off_t>(position), SEEK_SET);
  return at >= 0 ? Status() : failure("seek in", path_);
}

Status File::size(std::uint64_t& bytes) {
  if (Status status = fault::gate("get the size of", path_, false); !status.ok()) return status;
  struct statx info;
  if (Node(static_cast<int>(handle_)).stat(info) != 0) return failure("get the size of", path_);
  bytes = info.stx_size;
  return {};
}

Status File::sync() {
  if (Status status = fault::gate("sync", path_, true); !status.ok()) return status;
  if (::fsync(static_cast<int>(handle_)) == 0) return {};
  return failure("sync", path_, Code::kWriteFault);
}

Status File::times(FileTimes& times) {
  if (Status status = fault::gate("get the times of", path_, false); !status.ok()) return status;
  const Node node(static_cast<int>(handle_));
  struct statx info;
  if (node.stat(info) != 0) return failure("get the times of", path_);
  times = node.times(info);
  return {};
}

Status File::set_times(const FileTimes& times) {
  if (Status status = fault::gate("set the times of", path_, false); !status.ok()) return status;
  const Node node(static_cast<int>(handle_));
  struct statx info;
  if (node.stat(info) == 0 && node.set_times(info, times) == 0) return {};
  return failure("set the times of", path_);
}

Status File::close() {
  if (!is_open()) return {};
  const Status refused = fault::gate("close", path_, false);
  const int result = ::close(static_cast<int>(std::exchange(handle_, kClosed)));
  fault::count_handle(-1);
  if (!refused.ok()) return refused;
  return result == 0 ? Status() : failure("close", path_, Code::kWriteFault);
}

}  // namespace tq::platform
