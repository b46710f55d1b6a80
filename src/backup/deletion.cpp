#include "backup/deletion.h"

#include <string>
#include <vector>

#include "backup/history_file.h"
#include "backup/list.h"
#include "backup/mail_store.h"
#include "backup/site.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {
namespace {

void delete_copies(const Site& site, const FileGroups& groups, std::string_view folder) {
  for (std::size_t group = 0; group < groups.size(); ++group) {
    const auto files = groups.files(group);
    if (files.empty()) continue;  // the history ended here
    for (const tBKUP_FILE& file : files) {
      // What stays shows in the folder afterwards.
      if (lies_in(view(file.backupPath), folder)) {
        static_cast<void>(delete_whatever_attributes(view(file.backupPath)));
      }
    }
    const std::string_view first = view(files.front().backupPath);
    if (groups[group].type == TQ_BKUP_TYPE_MAIL_STORE && lies_in(first, folder)) {
      mBkupPstTr(site, {}, first, Transfer::kDelete);
    }
  }
}

// 0, 1 when something is left in it, -1.
short remove_backup_folder(const std::string& folder) {
  std::vector<platform::FolderEntry> entries;
  const Status listed = platform::list_folder(folder + "\\*.*", entries);
  if (listed.code() == Code::kNotFound) return 0;
  if (!listed.ok()) return -1;
  for (const platform::FolderEntry& entry : entries) {
    if (entry.name.front() != '.') return 1;
  }
  const Status removed = platform::remove_folder(folder);
  if (removed.code() == Code::kNotEmpty) return 1;
  return removed.ok() ? 0 : -1;
}

}  // namespace

short mDeleteBkupFileGrp(const Site& site, std::string_view history) {
  FileGroups groups;
  short result = mGetFileGrpListS(history, groups).ok() ? 0 : 1;
  // The folder goes by the name of the history file, which also serves a backup without copies.
  const std::string folder = site.folder_of_history(history);
  if (folder.empty()) {
    result = 1;
  } else {
    delete_copies(site, groups, folder);
    const short removed = remove_backup_folder(folder);
    if (removed != 0) result = removed;
  }
  return delete_whatever_attributes(history) ? result : -1;
}

short delete_all_backups(Site& site) {
  BackupList list;
  if (!list.load(site, -1)) return 1;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (mDeleteBkupFileGrp(site, view(list[i].historyPath)) != 0) return 1;
  }
  return 0;
}

bool delete_whatever_attributes(std::string_view path) {
  // The deletion itself shows whether the attributes were in its way.
  static_cast<void>(platform::set_attributes(path, platform::kNormal));
  const Status deleted = platform::delete_file(path);
  return deleted.ok() || deleted.code() == Code::kNotFound;
}

}  // namespace tq
