// What the system keeps about a file or folder beside its content: permission bits, times, and in
// extended attributes what Windows knows and Linux does not.
//
//   user.DOSATTRIB        hidden, system and archive bit (a folder's read-only bit too) as "0x22",
//   the
//                         text that other programs which serve Windows files keep there
//   user.tqutil.created   creation time as a decimal count of 100 ns since 1601, when it differs
//   from
//                         the one that the file system keeps itself
//
// A file without DOSATTRIB has the archive bit, a folder none. On a file system without extended
// attributes these bits and the creation time are silently not kept. A file is read-only when
// nobody may write it.
#pragma once

#include <sys/stat.h>

#include <cstdint>

#include "platform/platform.h"

namespace tq::platform::posix {

// An open file or a native path; all results are the system's, -1 with errno for a failure.
class Node {
 public:
  explicit Node(int descriptor) : fd_(descriptor) {}
  explicit Node(const char* path) : path_(path) {}  // which must outlive the node

  int stat(struct statx& info) const;
  // Kind, permissions and size only. Whoever asks for the times of a file makes the system store
  // new ones at the next write, which costs more than the write itself.
  int stat_without_times(struct statx& info) const;
  // Attribute bits as platform.h has them.
  std::uint32_t attributes(const struct statx& info) const;
  int set_attributes(const struct statx& info, std::uint32_t bits) const;
  FileTimes times(const struct statx& info) const;
  int set_times(const struct statx& info, const FileTimes& times) const;

 private:
  int stat(struct statx& info, unsigned wanted) const;
  long get(const char* name, char* value, std::size_t size) const;
  int put(const struct statx& info, const char* name, const char* value) const;
  int change_mode(unsigned mode) const;
  std::uint32_t stored_bits(bool folder) const;

  int fd_ = -1;
  const char* path_ = nullptr;
};

inline bool is_folder(const struct statx& info) { return S_ISDIR(info.stx_mode); }
inline bool is_file(const struct statx& info) { return S_ISREG(info.stx_mode); }
inline bool is_read_only(const struct statx& info) {
  return (info.stx_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

}  // namespace tq::platform::posix
