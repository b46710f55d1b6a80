// What a backup is to hold: description, groups, files.
#include "backup/run.h"

#include <cstdio>
#include <vector>

#include "backup/history_file.h"
#include "base/sjis.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {
namespace {

// Whether a history can hold the text on a line of its own and give it back whole.
bool fits_line(std::string_view text) {
  return text.size() <= kPathMax && text.find_first_of("\r\n") == std::string_view::npos;
}

tBKUP_FILETIME halves(platform::FileTime moment) {
  return {static_cast<std::uint32_t>(moment), static_cast<std::uint32_t>(moment >> 32)};
}

void set_times(tBKUP_FILE& file, const platform::FileTimes& times) {
  file.created = halves(times.created);
  file.accessed = halves(times.accessed);
  file.written = halves(times.written);
}

// Times, size and attributes of the original. False when it is there and they cannot be had.
bool describe(std::string_view path, tBKUP_FILE& file) {
  platform::File original;
  platform::FileTimes times;
  if (!original.open(path, platform::OpenMode::kRead).ok()) {
    const platform::FileTime now = platform::utc_now();
    set_times(file, {now, now, now});
    file.size = 1;  // not 0, so that an empty file that appears later is not taken for it
    file.attributes = platform::attributes(path);
    return true;
  }
  std::uint64_t size = 0;
  if (!original.size(size).ok() || !original.times(times).ok()) return false;
  set_times(file, times);
  file.size = static_cast<std::uint32_t>(size);
  file.attributes = platform::attributes(path);
  return file.attributes != platform::kNoAttributes;
}

}  // namespace

void BackupRun::clear() {
  groups_.clear();
  info_ = {};
  kind_ = -1;
  copied_ = false;
}

void BackupRun::create(short kind, const BackupList& known) {
  clear();
  kind_ = kind;
  info_.kind = kind;
  copy_text(info_.id, site_.new_id(known));
}

void BackupRun::set_info(std::string_view text) {
  std::string line(text.starts_with(';') ? " " : "");
  line += text;
  for (char& c : line) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  copy_text(info_.info, sjis::cut(line, kInfoMax));
}

bool BackupRun::start_group(short type, std::string_view name) {
  const bool whole = type == TQ_BKUP_TYPE_WHOLE_FOLDER;
  if (!fits_line(name) || (whole && (site_.is_ours(name) || site_.is_around_us(name)))) {
    site_.fail(TQ_BKUP_CAUSE_OTHER, name);
    return false;
  }
  tBKUP_FIELGRP group{};
  group.type = type;
  copy_text(group.name, name);
  if (!groups_.add_group(group)) {
    site_.fail(TQ_BKUP_CAUSE_MEMORY, name);
    return false;
  }
  name_groups();
  if (!whole) return true;
  std::string folder(name);
  RemoveBackslash(folder);
  return add_folders(folder, 0);
}

// Records the folders below that have no sub-folder; making these again makes all of them. Links to
// folders are not followed: what they lead to is no part of this folder.
bool BackupRun::add_folders(const std::string& folder, int depth) {
  constexpr int kMaxDepth = TQ_PATH_SIZE / 2;  // each level takes a separator and a character
  std::vector<platform::FolderEntry> entries;
  bool leaf = true;
  // A folder that cannot be listed is recorded like one without sub-folders.
  if (platform::list_folder(folder + "\\*.*", entries).ok() && depth < kMaxDepth) {
    for (const platform::FolderEntry& entry : entries) {
      if (!entry.folder || entry.linked) continue;
      leaf = false;
      if (!add_folders(folder + '\\' + entry.name, depth + 1)) return false;
    }
  }
  if (!leaf) return true;
  if (!fits_line(folder)) {
    site_.fail(TQ_BKUP_CAUSE_OTHER, folder);
    return false;
  }
  tBKUP_FILE entry{};
  copy_text(entry.path, folder);
  entry.attributes = platform::attributes(folder);
  return add_entry(entry);
}

bool BackupRun::add_file(std::string_view path, short file_kind) {
  tBKUP_FILE file{};
  if (groups_.empty()) return false;
  // What no restore would touch is no part of a backup.
  if (!fits_line(path) || site_.is_ours(path) || !describe(path, file)) {
    site_.fail(TQ_BKUP_CAUSE_FILE, path);
    return false;
  }
  copy_text(file.path, path);
  file.fileKind = file_kind;
  return add_entry(file);
}

bool BackupRun::add_entry(const tBKUP_FILE& entry) {
  tBKUP_FILE added = entry;
  added.type = last_type();
  if (groups_.add_file(added)) return true;
  site_.fail(TQ_BKUP_CAUSE_MEMORY, view(entry.path));
  return false;
}

void BackupRun::name_groups() {
  for (std::size_t group = 0; group < groups_.size(); ++group) {
    char position[16];
    std::snprintf(position, sizeof position, "%05u", static_cast<unsigned>(group));
    copy_text(groups_[group].id, std::string(view(info_.id)) + position);
  }
}

}  // namespace tq
