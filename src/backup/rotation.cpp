#include "backup/rotation.h"

#include <algorithm>
#include <string>

#include "backup/deletion.h"
#include "backup/history_file.h"
#include "backup/run.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {

std::vector<std::size_t> backups_to_drop(const BackupList& list, short generations,
                                         std::string_view keep) {
  if (list.size() == 0) return {};
  const std::size_t newest = list.size() - 1;
  std::vector<std::size_t> old;
  for (std::size_t i = 0; i < newest; ++i) {
    if (list[i].kind == list[newest].kind) old.push_back(i);
  }
  std::stable_sort(old.begin(), old.end(), [&](std::size_t a, std::size_t b) {
    return mCompareBkupTime(list[a].time, list[b].time) == 2;
  });
  const std::size_t stay = generations < 1 ? 0 : static_cast<std::size_t>(generations) - 1;
  old.resize(old.size() > stay ? old.size() - stay : 0);
  std::erase_if(old, [&](std::size_t i) { return !keep.empty() && view(list[i].id) == keep; });
  return old;
}

short BackupRun::record(BackupList& list, std::string_view keep) {
  if (kind_ < 0 || site_.generations < 1) return 0;
  if (!copied_) return 1;
  // Which backups are old cannot be told from a part of them: then none goes.
  const bool all_known = list.load(site_, -1);
  // A history without a folder does not keep its id from being taken: this one replaces it.
  const std::string folder = site_.folder_of(view(info_.id));
  for (std::size_t i = list.size(); i-- > 0;) {
    if (site_.folder_of_history(view(list[i].historyPath)) == folder) list.erase(i);
  }
  if (!sync_copies()) return 1;
  const std::string history = site_.history_of(view(info_.id));
  copy_text(info_.historyPath, history);
  if (Status saved = mSaveNowHistory(info_, groups_); !saved.ok()) {
    site_.fail(saved, history);
    return 1;
  }
  copied_ = false;
  if (!list.append(info_)) {
    site_.fail(TQ_BKUP_CAUSE_MEMORY, history);
    return 1;
  }
  if (!all_known) return 0;
  std::vector<std::size_t> drop = backups_to_drop(list, site_.generations, keep);
  for (const std::size_t i : drop) mDeleteBkupFileGrp(site_, view(list[i].historyPath));
  std::sort(drop.rbegin(), drop.rend());
  for (const std::size_t i : drop) list.erase(i);
  return 0;
}

// The copies come to the medium before the history that tells of them.
bool BackupRun::sync_copies() {
  std::vector<std::string> paths;
  for (std::size_t group = 0; group < groups_.size(); ++group) {
    const bool ours = groups_[group].type != TQ_BKUP_TYPE_MAIL_STORE;
    for (const tBKUP_FILE& file : groups_.files(group)) {
      const std::string_view copy = view(file.backupPath);
      // Under which names the mail store's copy is kept is the transfer's business.
      if (!is_folder_entry(file) && (ours || platform::exists(copy))) paths.emplace_back(copy);
    }
  }
  Status synced = platform::sync_files(paths);
  if (synced.ok()) synced = platform::sync_folder(site_.backup_folder);
  if (!synced.ok()) site_.fail(synced, site_.backup_folder);
  return synced.ok();
}

}  // namespace tq
