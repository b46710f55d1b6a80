// The backup of what is there now, made before a restore so that the restore can be undone.
#include <vector>

#include "backup/related_files.h"
#include "backup/restore.h"
#include "backup/run.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {
namespace {

// Every file in the folder and below. A folder that cannot be listed has none; links to folders are
// not followed.
bool add_files_below(BackupRun& run, const std::string& folder) {
  std::vector<platform::FolderEntry> entries;
  if (!platform::list_folder(folder + "\\*.*", entries).ok()) return true;
  for (const platform::FolderEntry& entry : entries) {
    if (entry.linked) continue;
    const std::string path = folder + '\\' + entry.name;
    const bool added = entry.folder ? add_files_below(run, path) : run.add_file(path, 0);
    if (!added) return false;
  }
  return true;
}

}  // namespace

// The files that make up the data sets are saved, not those that the backup holds: a restore
// deletes the former. Whole folders alone are no reason for a backup.
bool Restore::back_up(Span groups, bool all) {
  BackupRun run(site_);
  run.create(TQ_BKUP_BEFORE_RESTORE, list_);
  bool needed = false;
  for (std::size_t group = groups.begin; group < groups.end; ++group) {
    if (chosen(group, all) && !add_group(run, group, needed)) return false;
  }
  if (!needed) return true;
  BackupList now;
  return run.copy(list_) == 0 && run.record(now, id_) == 0;
}

bool Restore::add_group(BackupRun& run, std::size_t group, bool& added) {
  const tBKUP_FIELGRP& row = groups_[group];
  if (row.type == TQ_BKUP_TYPE_WHOLE_FOLDER) {
    std::string folder(view(row.name));
    RemoveBackslash(folder);
    if (!platform::is_folder(folder)) return true;  // nothing of it is there now
    return run.start_group(row.type, folder) && add_files_below(run, folder);
  }
  const tBKUP_FILE& first = groups_.files(group).front();
  std::vector<std::string> paths;
  if (!related_files(row.type, first.path, paths)) {
    site_.fail(TQ_BKUP_CAUSE_FILE, view(first.path));
    return false;
  }
  // A part of the set that is gone is no part of what is there now.
  std::erase_if(paths, [](const std::string& path) { return !platform::exists(path); });
  if (paths.empty()) return true;
  added = true;
  if (!run.start_group(row.type, {})) return false;
  for (const std::string& path : paths) {
    if (!run.add_file(path, first.fileKind)) return false;
  }
  return true;
}

}  // namespace tq
