// The tables of the backup family: backups, file groups, files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "common/record_table.h"
#include "platform/platform.h"
#include "tqutil/backup.h"

namespace tq {

static_assert(sizeof(tBKUP_INFO) == 432);
static_assert(sizeof(tBKUP_FILE) == 564);
static_assert(offsetof(tBKUP_FILE, created) == 528 && offsetof(tBKUP_FILE, cap) == 560);
static_assert(offsetof(tBKUP_FIELGRP, files) == 280);
static_assert(sizeof(tBKUP_FIELGRP) == (sizeof(void*) == 4 ? 292 : 296));

// Rows of a new table and of a growth step.
inline constexpr std::size_t kBackupRows = 10;

template <>
struct RecordTraits<tBKUP_INFO> {
  static constexpr std::size_t kBlock = kBackupRows;
  static std::int32_t& capacity(tBKUP_INFO& first) { return first.cap; }
};

template <>
struct RecordTraits<tBKUP_FILE> {
  static constexpr std::size_t kBlock = kBackupRows;
  static std::int32_t& capacity(tBKUP_FILE& first) { return first.cap; }
};

template <>
struct RecordTraits<tBKUP_FIELGRP> {
  static constexpr std::size_t kBlock = kBackupRows;
  static std::int32_t& capacity(tBKUP_FIELGRP& first) { return first.cap; }
};

// Appends to a table whose first block has kBackupRows rows. False: no memory, table unchanged.
template <TableRecord T>
bool append_row(RecordTable<T>& table, const T& row) {
  return (table.capacity() != 0 || table.allocate(kBackupRows)) && table.append(row);
}

// File groups with their files. The rows' `fileCnt` and `files` follow the file tables.
class FileGroups {
 public:
  std::size_t size() const { return groups_.size(); }
  bool empty() const { return groups_.empty(); }
  tBKUP_FIELGRP& operator[](std::size_t group) { return groups_[group]; }
  const tBKUP_FIELGRP& operator[](std::size_t group) const { return groups_[group]; }
  std::span<tBKUP_FILE> files(std::size_t group) { return files_[group].records(); }
  std::span<const tBKUP_FILE> files(std::size_t group) const { return files_[group].records(); }
  // The place of the group with that id, size() when there is none.
  std::size_t find(std::string_view id) const;

  // The row's files are ignored: a new group has none. False: no memory, nothing changed.
  bool add_group(const tBKUP_FIELGRP& row);
  // To the last group, which must be there.
  bool add_file(const tBKUP_FILE& row);
  void clear();

 private:
  RecordTable<tBKUP_FIELGRP> groups_;
  std::vector<RecordTable<tBKUP_FILE>> files_;
};

// Whether an entry stands for a folder. What was not there when it was added (all bits set) is a
// file, so that its copy fails.
inline bool is_folder_entry(const tBKUP_FILE& file) {
  return file.attributes != platform::kNoAttributes && (file.attributes & platform::kFolder) != 0;
}

// What stands in place of a folder's copy.
inline constexpr std::string_view kNoCopy = "dummy";

}  // namespace tq
