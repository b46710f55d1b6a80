// Copying a file by the fastest way that the file system has.
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <vector>

#include "platform/fault.h"
#include "platform/names.h"
#include "platform/platform.h"
#include "platform/posix/errors.h"
#include "platform/posix/files.h"
#include "platform/posix/node.h"
#include "platform/posix/paths.h"

namespace tq::platform {

using posix::failure;
using posix::NativePath;
using posix::Node;

namespace {

constexpr std::size_t kPiece = 1 << 20;                // bytes per read and write
constexpr std::uint64_t kKernelPiece = 1ull << 30;     // bytes per copy_file_range
constexpr mode_t kUnfinishedMode = S_IRUSR | S_IWUSR;  // nobody else reads a half-made copy
constexpr mode_t kCopiedMode = S_IRWXU | S_IRWXG | S_IRWXO;

// One end of a copy.
struct End {
  End(std::string_view path, const char* operation) : name(path), doing(operation), native(path) {}
  ~End() { close(); }
  End(const End&) = delete;
  End& operator=(const End&) = delete;

  bool open(int flags) {
    const int always = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    const auto call = [&](const char* file) {
      return ::open(file, flags | always, kUnfinishedMode);
    };
    set(native.find(call));
    return fd >= 0;
  }
  // Makes the file, whose name `open` has just not found.
  bool create() {
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    set(::open(native.c_str(), flags, kUnfinishedMode));
    created = fd >= 0;
    return created;
  }
  void set(int descriptor) {
    fd = descriptor;
    if (fd >= 0) fault::count_handle(1);
  }
  int close() {
    if (fd < 0) return 0;
    fault::count_handle(-1);
    const int result = ::close(fd);
    fd = -1;
    return result;
  }
  Status stat(bool writing) {
    if (Node(fd).stat(info) != 0) return failure(doing, name);
    const char* why = posix::refuse_open(info, writing);
    return why == nullptr ? Status() : refusal(Code::kDenied, doing, name, why);
  }
  bool is_same_file(const End& other) const {
    return info.stx_ino == other.info.stx_ino && info.stx_dev_major == other.info.stx_dev_major &&
           info.stx_dev_minor == other.info.stx_dev_minor;
  }

  std::string_view name;
  const char* doing;
  NativePath native;
  int fd = -1;
  bool created = false;
  struct statx info {};
};

// Inside the kernel, from both files' positions on; stops at the end, at `limit` bytes, or where
// the file system cannot do it. The bytes copied.
std::uint64_t copy_in_kernel(int from, int to, std::uint64_t limit) {
  std::uint64_t done = 0;
  while (done < limit) {
    const auto piece = static_cast<std::size_t>(std::min(limit - done, kKernelPiece));
    const ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, piece, 0);
    if (copied < 0 && errno == EINTR) continue;
    if (copied <= 0) break;
    done += static_cast<std::uint64_t>(copied);
  }
  return done;
}

// The rest, from both files' positions on, through memory.
Status copy_through_memory(const End& from, const End& to, std::uint64_t limit,
                           std::uint64_t& done) {
  std::vector<char> piece;
  while (done < limit) {
    piece.resize(static_cast<std::size_t>(std::min<std::uint64_t>(limit - done, kPiece)));
    const ssize_t got = posix::read_some(from.fd, piece.data(), piece.size());
    if (got < 0) return failure(from.doing, from.name, Code::kReadFault);
    if (got == 0) break;
    if (!posix::write_all(to.fd, {piece.data(), static_cast<std::size_t>(got)})) {
      return failure(to.doing, to.name, Code::kWriteFault);
    }
    done += static_cast<std::uint64_t>(got);
  }
  return {};
}

Status copy_bytes(const End& from, const End& to, std::uint64_t limit) {
  std::uint64_t done = copy_in_kernel(from.fd, to.fd, limit);
  if (Status status = copy_through_memory(from, to, limit, done); !status.ok()) return status;
  if (to.info.stx_size <= done || ::ftruncate(to.fd, static_cast<off_t>(done)) == 0) return {};
  return failure(to.doing, to.name, Code::kWriteFault);
}

Status copy_content(const End& from, const End& to) {
  if (Status status = fault::gate("copy content to", to.name, true); !status.ok()) {
    if (!fault::leaves_half()) return status;
    const Status half = copy_bytes(from, to, from.info.stx_size / 2);
    return half.ok() ? status : half;
  }
  if (::ioctl(to.fd, FICLONE, from.fd) == 0) {
    // The clone covers the source's size; a longer old content would stick out behind it.
    if (to.info.stx_size <= from.info.stx_size) return {};
    const int cut = ::ftruncate(to.fd, static_cast<off_t>(from.info.stx_size));
    return cut == 0 ? Status() : failure(to.doing, to.name, Code::kWriteFault);
  }
  return copy_bytes(from, to, UINT64_MAX);
}

Status copy_properties(const End& from, const End& to) {
  if (Status status = fault::gate("copy times to", to.name, false); !status.ok()) return status;
  const Node source(from.fd);
  const Node target(to.fd);
  const FileTimes times{0, 0, source.times(from.info).written};
  const auto mode = static_cast<mode_t>(from.info.stx_mode & kCopiedMode);
  // A file that was there keeps its permissions, but for the read-only bit.
  struct statx info = to.info;
  if (to.created) {
    if (::fchmod(to.fd, mode | S_IWUSR) != 0) return failure(to.doing, to.name);
    info.stx_mode = static_cast<std::uint16_t>((info.stx_mode & ~kCopiedMode) | mode | S_IWUSR);
  }
  const std::uint32_t bits = source.attributes(from.info);
  if (target.set_times(info, times) == 0 && target.set_attributes(info, bits) == 0) return {};
  return failure(to.doing, to.name);
}

Status copy_open(End& from, End& to) {
  if (Status status = to.stat(true); !status.ok()) return status;
  if (to.is_same_file(from)) return refusal(Code::kBusy, to.doing, to.name, "it is its own source");
  if (Status status = copy_content(from, to); !status.ok()) return status;
  if (Status status = copy_properties(from, to); !status.ok()) return status;
  return to.close() == 0 ? Status() : failure(to.doing, to.name, Code::kWriteFault);
}

}  // namespace

Status copy_file(std::string_view from, std::string_view to) {
  if (Status status = fault::gate("copy to", to, true); !status.ok()) return status;
  End source(from, "copy from");
  End target(to, "copy to");
  if (!source.native.status().ok()) return source.native.status();
  if (!target.native.status().ok()) return target.native.status();
  if (!source.open(O_RDONLY)) return failure("copy from", from);
  if (Status status = source.stat(false); !status.ok()) return status;
  if (!target.open(O_WRONLY) && (errno != ENOENT || !target.create()))
    return failure("copy to", to);
  const Status status = copy_open(source, target);
  if (!status.ok() && target.created && !fault::crashed()) ::unlink(target.native.c_str());
  return status;
}

}  // namespace tq::platform
