#include "platform/posix/node.h"

#include <fcntl.h>
#include <sys/xattr.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "platform/posix/clock.h"

namespace tq::platform::posix {
namespace {

constexpr char kBitsName[] = "user.DOSATTRIB";
constexpr char kCreatedName[] = "user.tqutil.created";
constexpr std::uint32_t kStoredBits = kHidden | kSystem | kArchive;
constexpr unsigned kPermissions = 07777;
constexpr unsigned kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

// Whether the system says that it keeps no such attributes here.
bool cannot_store(int error) { return error == ENOTSUP || error == ENOSYS || error == EPERM; }

FileTime created(const struct statx& info) {
  if ((info.stx_mask & STATX_BTIME) != 0) return from_system(info.stx_btime);
  return std::min(from_system(info.stx_mtime), from_system(info.stx_ctime));
}

}  // namespace

int Node::stat(struct statx& info) const { return stat(info, STATX_BASIC_STATS | STATX_BTIME); }

int Node::stat_without_times(struct statx& info) const {
  return stat(info, STATX_TYPE | STATX_MODE | STATX_SIZE);
}

int Node::stat(struct statx& info, unsigned wanted) const {
  return path_ == nullptr ? ::statx(fd_, "", AT_EMPTY_PATH, wanted, &info)
                          : ::statx(AT_FDCWD, path_, 0, wanted, &info);
}

std::uint32_t Node::attributes(const struct statx& info) const {
  const bool folder = is_folder(info);
  std::uint32_t bits = stored_bits(folder);
  if (folder) return bits | kFolder;
  if (is_read_only(info)) bits |= kReadOnly;
  return bits == 0 ? kNormal : bits;
}

int Node::set_attributes(const struct statx& info, std::uint32_t bits) const {
  const bool folder = is_folder(info);
  const std::uint32_t wanted = bits & (folder ? kStoredBits | kReadOnly : kStoredBits);
  if (wanted != stored_bits(folder)) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned>(wanted));
    if (put(info, kBitsName, text) != 0) return -1;
  }
  const bool read_only = (bits & kReadOnly) != 0;
  if (folder || read_only == is_read_only(info)) return 0;
  // Who may read may write again is more than was taken away, so only the owner gets it back.
  return change_mode(read_only ? info.stx_mode & ~kAnyWrite : info.stx_mode | S_IWUSR);
}

FileTimes Node::times(const struct statx& info) const {
  FileTimes times{created(info), from_system(info.stx_atime), from_system(info.stx_mtime)};
  char text[24] = {};
  if (get(kCreatedName, text, sizeof text - 1) > 0)
    times.created = std::strtoull(text, nullptr, 10);
  return times;
}

int Node::set_times(const struct statx& info, const FileTimes& times) const {
  if (times.created != 0 && times.created != this->times(info).created) {
    char text[24];
    std::snprintf(text, sizeof text, "%llu", static_cast<unsigned long long>(times.created));
    if (put(info, kCreatedName, text) != 0) return -1;
  }
  const timespec system[2] = {to_system(times.accessed), to_system(times.written)};
  return path_ == nullptr ? ::futimens(fd_, system) : ::utimensat(AT_FDCWD, path_, system, 0);
}

long Node::get(const char* name, char* value, std::size_t size) const {
  return path_ == nullptr ? ::fgetxattr(fd_, name, value, size)
                          : ::getxattr(path_, name, value, size);
}

// The owner of a read-only file must make it writable for as long as it takes.
int Node::put(const struct statx& info, const char* name, const char* value) const {
  const auto set = [&] {
    const std::size_t size = std::char_traits<char>::length(value);
    return path_ == nullptr ? ::fsetxattr(fd_, name, value, size, 0)
                            : ::setxattr(path_, name, value, size, 0);
  };
  int result = set();
  if (result != 0 && errno == EACCES && is_read_only(info) &&
      change_mode(info.stx_mode | S_IWUSR) == 0) {
    result = set();
    const int error = errno;
    if (change_mode(info.stx_mode) != 0) return -1;
    errno = error;
  }
  return result != 0 && cannot_store(errno) ? 0 : result;
}

int Node::change_mode(unsigned mode) const {
  return path_ == nullptr ? ::fchmod(fd_, mode & kPermissions)
                          : ::chmod(path_, mode & kPermissions);
}

std::uint32_t Node::stored_bits(bool folder) const {
  // Some programs keep more after the number.
  char text[256] = {};
  if (get(kBitsName, text, sizeof text - 1) <= 0) return folder ? 0 : kArchive;
  const auto bits = static_cast<std::uint32_t>(std::strtoul(text, nullptr, 16));
  return bits & (folder ? kStoredBits | kReadOnly : kStoredBits);
}

}  // namespace tq::platform::posix
