// Copying the files of a backup into its folder.
#include <string>
#include <vector>

#include "backup/deletion.h"
#include "backup/mail_store.h"
#include "backup/progress.h"
#include "backup/run.h"
#include "base/sjis_literal.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {
namespace {

using namespace literals;

constexpr std::string_view kCopyPrefix = "~tq";
constexpr short kFailed = -1;
constexpr short kStopped = 1;

tBKUP_TIME local_time() {
  const platform::DateTime now = platform::local_now();
  return {now.year, now.month,  now.day_of_week, now.day,
          now.hour, now.minute, now.second,      now.milliseconds};
}

}  // namespace

short BackupRun::copy(const BackupList& known) {
  if (copied_) remove_copies();  // of an earlier attempt that was never recorded
  copied_ = false;
  info_.groupCnt = static_cast<std::int32_t>(groups_.size());
  info_.time = local_time();
  if (!claim_folder(known)) {
    site_.fail(TQ_BKUP_CAUSE_FOLDER, site_.folder_of(view(info_.id)));
    return kStopped;
  }
  std::int64_t total = 0;
  for (std::size_t group = 0; group < groups_.size(); ++group) {
    for (tBKUP_FILE& file : groups_.files(group)) {
      file.backupPath[0] = '\0';
      if (!is_folder_entry(file)) ++total;
    }
  }
  Progress progress("ファイルのバックアップ中です..."_sjis, true, total);
  const short result = copy_all(progress);
  if (result != 0) remove_copies();
  copied_ = result == 0;
  return result;
}

// The backup's folder must be made by this run: the copies of another backup are none of its
// business. What took the id since it was chosen (another run) makes it take the next one.
bool BackupRun::claim_folder(const BackupList& known) {
  if (MakeFolderTree(site_.backup_folder) != 0) return false;
  while (info_.id[0] != '\0') {
    const Status made = platform::create_folder(site_.folder_of(view(info_.id)));
    if (made.ok()) return true;
    const std::string other = site_.new_id(known);
    if (made.code() != Code::kExists || other == view(info_.id)) return false;
    copy_text(info_.id, other);
    name_groups();
  }
  return false;
}

short BackupRun::copy_all(Progress& progress) {
  for (std::size_t group = 0; group < groups_.size(); ++group) {
    progress.group(groups_[group].type);
    bool first = true;
    for (tBKUP_FILE& file : groups_.files(group)) {
      if (!is_folder_entry(file)) progress.file(file.path);
      const short result = copy_entry(groups_[group], file, first);
      if (result != 0) return result;
      if (!is_folder_entry(file)) progress.advance();
      if (progress.stopped()) return kStopped;
      first = false;
    }
  }
  progress.finish();
  return 0;
}

short BackupRun::copy_entry(const tBKUP_FIELGRP& group, tBKUP_FILE& file, bool first) {
  if (is_folder_entry(file)) {
    copy_text(file.backupPath, kNoCopy);
    return 0;
  }
  std::string copy;
  if (!new_copy_name(copy)) {
    site_.fail(TQ_BKUP_CAUSE_OTHER, site_.folder_of(view(info_.id)));
    return kFailed;
  }
  copy_text(file.backupPath, copy);
  return copy_file(group, file, first);
}

short BackupRun::copy_file(const tBKUP_FIELGRP& group, tBKUP_FILE& file, bool first) {
  const std::string_view path = view(file.path);
  const std::string_view copy = view(file.backupPath);
  if (group.type == TQ_BKUP_TYPE_MAIL_STORE) {
    // The other files of a mail store are recorded, but it is one file that is transferred.
    if (!first || mBkupPstTr(site_, copy, path, Transfer::kBackUp) == 0) return 0;
    site_.fail(TQ_BKUP_CAUSE_OTHER, path);
    return kFailed;
  }
  if (Status copied = platform::copy_file(path, copy); !copied.ok()) {
    site_.fail(copied, path);
    return kFailed;
  }
  std::uint64_t size = 0;
  if (platform::file_size(copy, size).ok() && static_cast<std::uint32_t>(size) == file.size) {
    return 0;
  }
  site_.fail(TQ_BKUP_CAUSE_OTHER, path);
  return kFailed;
}

bool BackupRun::new_copy_name(std::string& path) const {
  const std::string folder = site_.folder_of(view(info_.id));
  if (make_unique_file(folder, kCopyPrefix, path).ok()) return path.size() <= kPathMax;
  if (!count_unique_name(folder, kCopyPrefix, path) || path.size() > kPathMax) return false;
  // The name is taken at once, like the other kind: not every copy is made by us, and none is to
  // get a name for the second time.
  platform::File placeholder;
  return placeholder.open(path, platform::OpenMode::kCreate).ok() && placeholder.close().ok();
}

void BackupRun::remove_copies() {
  for (std::size_t group = 0; group < groups_.size(); ++group) {
    bool first = true;
    for (tBKUP_FILE& file : groups_.files(group)) {
      const std::string copy(view(file.backupPath));
      if (!is_folder_entry(file) && !copy.empty()) {
        // What cannot be deleted stays in a folder that no history tells of.
        static_cast<void>(delete_whatever_attributes(copy));
        if (first && groups_[group].type == TQ_BKUP_TYPE_MAIL_STORE) {
          mBkupPstTr(site_, {}, copy, Transfer::kDelete);
        }
      }
      file.backupPath[0] = '\0';
      first = false;
    }
  }
  static_cast<void>(platform::remove_folder(site_.folder_of(view(info_.id))));
}

}  // namespace tq
