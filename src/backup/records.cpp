#include "backup/records.h"

#include "common/text.h"

namespace tq {

std::size_t FileGroups::find(std::string_view id) const {
  std::size_t group = 0;
  while (group < size() && view(groups_[group].id) != id) ++group;
  return group;
}

bool FileGroups::add_group(const tBKUP_FIELGRP& row) {
  tBKUP_FIELGRP added = row;
  added.fileCnt = 0;
  added.files = nullptr;
  files_.emplace_back();
  if (append_row(groups_, added)) return true;
  files_.pop_back();
  return false;
}

bool FileGroups::add_file(const tBKUP_FILE& row) {
  RecordTable<tBKUP_FILE>& table = files_.back();
  if (!append_row(table, row)) return false;
  tBKUP_FIELGRP& group = groups_[size() - 1];
  group.fileCnt = static_cast<std::int32_t>(table.size());
  group.files = table.data();
  return true;
}

void FileGroups::clear() {
  groups_.clear();
  files_.clear();
}

}  // namespace tq
