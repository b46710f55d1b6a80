// Bringing the files of a backup back.
//
// Everything that can be refused is refused before anything is changed: a history that names a
// place that is not the user's, a copy that is missing, a folder that the user does not want. Then
// a backup of what is there now is made, and only then are files replaced.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "backup/list.h"
#include "backup/records.h"
#include "backup/site.h"

namespace tq {

class BackupRun;
class Progress;

class Restore {
 public:
  // `list` are the backups that are there, for the id of the one that is made before; `id` is the
  // backup that `groups` belong to, which no rotation removes meanwhile. Files that go elsewhere
  // get their new path in `groups`.
  Restore(Site& site, const BackupList& list, std::string_view id, FileGroups& groups)
      : site_(site), list_(list), id_(id), groups_(groups) {}

  // The marked groups. 0; 1 refused by us or the user; -1 a copy is missing or a file could not be
  // restored. When the backup before fails, `no_backup` is the result.
  short marked(bool back_up_first, short no_backup);
  // One group, marked or not: 0; 1 refused, or its data set cannot be told; -1 the backup before or
  // a file failed. Other than above only this group's files are looked at beforehand, and folders
  // of files are not made.
  short single(std::size_t group);

 private:
  struct Span {  // of groups
    std::size_t begin, end;
  };

  // restore_checks.cpp
  bool may_restore(std::size_t group);
  bool copies_are_there(std::size_t group);
  short check(Span groups, bool all);
  bool mFolderChk(Span groups);
  bool place(tBKUP_FILE& file);
  bool is_taken(const tBKUP_FILE& file, std::string_view path) const;

  // restore_backup.cpp
  bool back_up(Span groups, bool all);
  bool add_group(BackupRun& run, std::size_t group, bool& added);

  // restore_run.cpp
  short mRestore(Span groups, bool all, bool alone);
  short restore_group(std::size_t group, bool alone, Progress& progress);
  short clear_way(std::size_t group, bool alone);
  short restore_entry(const tBKUP_FIELGRP& group, const tBKUP_FILE& file, bool first, bool alone);
  bool restore_content(const tBKUP_FILE& file);

  bool chosen(std::size_t group, bool all) const { return all || groups_[group].restore != 0; }

  Site& site_;
  const BackupList& list_;
  std::string id_;
  FileGroups& groups_;
};

// Deletes all that is in a folder, at any depth; the folder stays. What the library cannot name
// and links to other folders stay, and with them the folders around them. False when something
// could not be deleted.
bool empty_folder(const std::string& folder);

}  // namespace tq
