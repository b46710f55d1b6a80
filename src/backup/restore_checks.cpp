// What has to hold before a restore changes anything.
#include <algorithm>

#include "backup/progress.h"
#include "backup/restore.h"
#include "base/sjis_literal.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"
#include "siblings/siblings.h"

namespace tq {
namespace {

using namespace literals;

constexpr short kRefused = 1;
constexpr short kFailed = -1;

// Whether the library itself copies an entry; the mail store's are others' business.
bool has_copy(const tBKUP_FIELGRP& group, const tBKUP_FILE& file) {
  return group.type != TQ_BKUP_TYPE_MAIL_STORE && !is_folder_entry(file);
}

}  // namespace

// A group may be restored when its files lie outside the backups and its copies inside. A whole
// folder is emptied, so all that was recorded must lie in it (a name that was cut at its "," names
// another folder), and the backups must not.
bool Restore::may_restore(std::size_t group) {
  const tBKUP_FIELGRP& row = groups_[group];
  const bool whole = row.type == TQ_BKUP_TYPE_WHOLE_FOLDER;
  const std::string_view folder = view(row.name);
  const auto files = groups_.files(group);
  const auto bad = std::find_if(files.begin(), files.end(), [&](const tBKUP_FILE& file) {
    const std::string_view copy = view(file.backupPath);
    return site_.is_ours(view(file.path)) || (!is_folder_entry(file) && !site_.is_copy(copy)) ||
           (whole && !is_within(view(file.path), folder));
  });
  if (bad == files.end() && !(whole && site_.is_around_us(folder))) return true;
  const char* path = bad == files.end() ? row.name : bad->path;
  site_.fail(TQ_BKUP_CAUSE_OTHER, path);
  show_message(kMessageNotRestored, path);
  return false;
}

bool Restore::copies_are_there(std::size_t group) {
  for (const tBKUP_FILE& file : groups_.files(group)) {
    if (!has_copy(groups_[group], file)) continue;
    std::uint64_t size = 0;
    const Status found = platform::file_size(view(file.backupPath), size);
    const bool same = found.ok() && static_cast<std::uint32_t>(size) == file.size;
    if (same) continue;
    site_.fail(found.ok() ? TQ_BKUP_CAUSE_OTHER : TQ_BKUP_CAUSE_FILE, view(file.backupPath));
    return false;
  }
  return true;
}

short Restore::check(Span groups, bool all) {
  for (std::size_t group = groups.begin; group < groups.end; ++group) {
    if (chosen(group, all) && !may_restore(group)) return kRefused;
  }
  for (std::size_t group = groups.begin; group < groups.end; ++group) {
    if (chosen(group, all) && !copies_are_there(group)) return kFailed;
  }
  return 0;
}

// Finds each file of the groups, marked or not, a folder to go to. False when the user cancels;
// folders that were made until then stay.
bool Restore::mFolderChk(Span groups) {
  for (std::size_t group = groups.begin; group < groups.end; ++group) {
    for (tBKUP_FILE& file : groups_.files(group)) {
      if (!is_folder_entry(file) && !place(file)) return false;
    }
  }
  return true;
}

// Whether another file of the backup is to go there: the second one would replace the first.
bool Restore::is_taken(const tBKUP_FILE& file, std::string_view path) const {
  for (std::size_t group = 0; group < groups_.size(); ++group) {
    const auto files = groups_.files(group);
    const auto same = [&](const tBKUP_FILE& other) {
      return &other != &file && !is_folder_entry(other) && is_within(view(other.path), path);
    };
    if (std::any_of(files.begin(), files.end(), same)) return true;
  }
  return false;
}

bool Restore::place(tBKUP_FILE& file) {
  const std::string folder = PathFolder(view(file.path));
  const std::string name(PathFileName(view(file.path)));
  if (platform::is_folder(folder)) return true;
  char caption[TQ_PATH_SIZE] = {};
  fldcom().FldComGetCaption(fldcom().context, caption);
  const std::string message = std::string("以下のファイルは元フォルダが存在しないため"_sjis) +
                              "\n" + "リストアできません.どうしますか？"_sjis;
  for (;;) {
    char other[TQ_PATH_SIZE] = {};
    const short answer = dialog().DlgMissingFolder(dialog().context, caption, message.c_str(),
                                                   folder.c_str(), name.c_str(), other);
    if (answer != TQ_FOLDER_RECREATE && answer != TQ_FOLDER_OTHER) return false;
    std::string target(answer == TQ_FOLDER_OTHER ? view(other) : std::string_view(folder));
    RemoveBackslash(target);
    std::string path = target;
    AddBackslash(path);
    path += name;
    if (path.size() > kPathMax || site_.is_ours(path) || MakeFolderTree(target) != 0) {
      show_message(kMessageNoFolder, target.c_str());
    } else if (platform::exists(path) || (answer == TQ_FOLDER_OTHER && is_taken(file, path))) {
      show_message(kMessageNameTaken, path.c_str());
    } else {
      copy_text(file.path, path);
      return true;
    }
  }
}

}  // namespace tq
