// One backup while it is being made: the files it is to hold, the copying, the history, the
// rotation. The object's own backup and the one before a restore both go this way.
#pragma once

#include <string>
#include <string_view>

#include "backup/list.h"
#include "backup/records.h"
#include "backup/site.h"

namespace tq {

class Progress;

class BackupRun {
 public:
  explicit BackupRun(Site& site) : site_(site) { clear(); }

  // Starts over. The id is one that no backup of `known` has.
  void create(short kind, const BackupList& known);
  void set_info(std::string_view text);
  // Failures of the next two are told to the site; nothing was added then.
  bool start_group(short type, std::string_view name);
  bool add_file(std::string_view path, short file_kind);
  // The type of the last group, -1 when there is none.
  short last_type() const { return groups_.empty() ? short{-1} : groups_[groups_.size() - 1].type; }
  // Copies all files. 0; 1 when the user stopped it or the folder could not be made, -1 when a copy
  // failed; the copies are gone then.
  short copy(const BackupList& known);
  // Writes the history and lets the oldest backups of this kind go, but never the one whose id is
  // `keep`. `list` is loaded anew and ends with this backup. 0 or 1.
  short record(BackupList& list, std::string_view keep);
  void clear();

 private:
  bool add_folders(const std::string& folder, int depth);
  bool add_entry(const tBKUP_FILE& entry);
  void name_groups();
  bool claim_folder(const BackupList& known);
  short copy_all(Progress& progress);
  short copy_entry(const tBKUP_FIELGRP& group, tBKUP_FILE& file, bool first);
  short copy_file(const tBKUP_FIELGRP& group, tBKUP_FILE& file, bool first);
  bool new_copy_name(std::string& path) const;
  void remove_copies();
  bool sync_copies();

  Site& site_;
  tBKUP_INFO info_{};
  short kind_ = -1;  // -1: nothing is being prepared
  FileGroups groups_;
  bool copied_ = false;  // all copies are there and no history tells of them yet
};

}  // namespace tq
