// Replacing the user's files by the copies of a backup.
#include <vector>

#include "backup/deletion.h"
#include "backup/mail_store.h"
#include "backup/progress.h"
#include "backup/related_files.h"
#include "backup/restore.h"
#include "base/sjis_literal.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {
namespace {

using namespace literals;

constexpr short kRefused = 1;
constexpr short kFailed = -1;

// What the files of a mail client other than the mail store's own need before they are replaced:
// nothing so far.
void clean_up_mail_client(std::string_view) {}

platform::FileTime whole(const tBKUP_FILETIME& halves) {
  return std::uint64_t{halves.high} << 32 | halves.low;
}

// Times first: a file whose attributes are back may be read-only.
Status set_properties(const tBKUP_FILE& file) {
  const std::string_view path = view(file.path);
  Status status = platform::set_attributes(path, platform::kNormal);
  platform::File restored;
  if (status.ok()) status = restored.open(path, platform::OpenMode::kUpdate);
  if (!status.ok()) return {Code::kNotFound, status.text()};
  status = restored.set_times({whole(file.created), whole(file.accessed), whole(file.written)});
  const Status closed = restored.close();
  if (status.ok()) status = closed;
  return status.ok() ? platform::set_attributes(path, file.attributes) : status;
}

}  // namespace

short Restore::marked(bool back_up_first, short no_backup) {
  const Span every{0, groups_.size()};
  const short refused = check(every, false);
  if (refused != 0) return refused;
  if (back_up_first && !back_up(every, false)) return no_backup;
  return mRestore(every, false, false);
}

short Restore::single(std::size_t group) {
  const Span only{group, group + 1};
  const short refused = check(only, true);
  if (refused != 0) return refused;
  if (!back_up(only, true)) return kFailed;
  return mRestore(only, true, true);
}

// `all`: the groups of the span, marked or not. `alone`: the ways of a single group.
short Restore::mRestore(Span groups, bool all, bool alone) {
  std::int64_t total = 0;
  for (std::size_t group = groups.begin; group < groups.end; ++group) {
    if (chosen(group, all)) total += groups_[group].fileCnt;
  }
  if (!mFolderChk(groups)) return kRefused;
  Progress progress("ファイルのリストア中です..."_sjis, false, total);
  for (std::size_t group = groups.begin; group < groups.end; ++group) {
    if (!chosen(group, all)) continue;
    const short result = restore_group(group, alone, progress);
    if (result != 0) return result;
  }
  progress.finish();
  return 0;
}

short Restore::restore_group(std::size_t group, bool alone, Progress& progress) {
  progress.group(groups_[group].type);
  const short cleared = clear_way(group, alone);
  if (cleared != 0) return cleared;
  bool first = true;
  for (const tBKUP_FILE& file : groups_.files(group)) {
    progress.file(file.path);
    const short result = restore_entry(groups_[group], file, first, alone);
    if (result != 0) return result;
    progress.advance();
    first = false;
  }
  return 0;
}

// Removes what the group's files take the place of.
short Restore::clear_way(std::size_t group, bool alone) {
  const tBKUP_FIELGRP& row = groups_[group];
  if (row.type == TQ_BKUP_TYPE_MAIL_STORE) return 0;
  if (row.type == TQ_BKUP_TYPE_WHOLE_FOLDER) {
    std::string folder(view(row.name));
    RemoveBackslash(folder);
    if (empty_folder(folder)) return 0;
    site_.fail(TQ_BKUP_CAUSE_OTHER, folder);
    return kFailed;
  }
  const tBKUP_FILE& first = groups_.files(group).front();
  std::vector<std::string> paths;
  if (!related_files(row.type, first.path, paths)) {
    site_.fail(TQ_BKUP_CAUSE_FILE, view(first.path));
    return alone ? kRefused : kFailed;
  }
  for (const std::string& path : paths) {
    if (site_.is_ours(path)) continue;
    // A file that stays in the way shows when its copy comes.
    static_cast<void>(delete_whatever_attributes(path));
    if (row.type == TQ_BKUP_TYPE_MAIL_CLIENT) clean_up_mail_client(path);
  }
  return 0;
}

short Restore::restore_entry(const tBKUP_FIELGRP& group, const tBKUP_FILE& file, bool first,
                             bool alone) {
  const std::string_view path = view(file.path);
  if (is_folder_entry(file)) {
    if (MakeFolderTree(path) == 0) return 0;
    site_.fail(TQ_BKUP_CAUSE_OTHER, path);
    return kFailed;
  }
  const std::string folder = PathFolder(path);
  if (!alone && MakeFolderTree(folder) != 0) {
    site_.fail(TQ_BKUP_CAUSE_OTHER, folder);
    show_message(kMessageNoFolder, folder.c_str());
    return kFailed;
  }
  if (platform::exists(path)) {
    // The copy shows whether the attributes were in its way.
    static_cast<void>(platform::set_attributes(path, platform::kNormal));
  }
  if (group.type != TQ_BKUP_TYPE_MAIL_STORE) return restore_content(file) ? 0 : kFailed;
  if (!first || mBkupPstTr(site_, path, view(file.backupPath), Transfer::kRestore) == 0) return 0;
  site_.fail(TQ_BKUP_CAUSE_OTHER, path);
  return kFailed;
}

bool Restore::restore_content(const tBKUP_FILE& file) {
  const std::string_view path = view(file.path);
  Status status = platform::copy_file(view(file.backupPath), path);
  if (status.ok()) status = set_properties(file);
  if (!status.ok()) {
    site_.fail(status, path);
    return false;
  }
  std::uint64_t size = 0;
  if (platform::file_size(path, size).ok() && static_cast<std::uint32_t>(size) == file.size) {
    return true;
  }
  site_.fail(TQ_BKUP_CAUSE_OTHER, path);
  return false;
}

bool empty_folder(const std::string& folder) {
  std::vector<platform::FolderEntry> entries;
  const Status listed = platform::list_folder(folder + "\\*.*", entries);
  if (listed.code() == Code::kNotFound) return true;
  if (!listed.ok()) return false;
  for (const platform::FolderEntry& entry : entries) {
    const std::string path = folder + '\\' + entry.name;
    if (!entry.folder) {
      if (!delete_whatever_attributes(path)) return false;
    } else if (!entry.linked) {
      if (!empty_folder(path)) return false;
      const Status removed = platform::remove_folder(path);
      if (!removed.ok() && removed.code() != Code::kNotEmpty) return false;
    }
  }
  return true;
}

}  // namespace tq
