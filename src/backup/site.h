// Where backups live, and which places belong to them.
//
// A backup has an id of five digits, a folder of that name in the backup folder, and a history file
// `<id>.BKH` in the data folder. What a history file claims is held against this: copies are
// deleted in the backup's own folder only, read from backup folders only, and no restore touches
// the backups themselves.
#pragma once

#include <string>
#include <string_view>

#include "base/status.h"

namespace tq {

class BackupList;

inline constexpr std::string_view kHistoryExtension = ".BKH";

struct Site {
  // Asks `fldcom` for both folders and makes them; reads the generation count.
  Site();

  // Without a trailing backslash.
  std::string folder_of(std::string_view id) const { return backup_folder + std::string(id); }
  std::string history_of(std::string_view id) const;
  // The folder of the backup that a history file belongs to, told by the file's name; empty when
  // that is no id.
  std::string folder_of_history(std::string_view history) const;

  // The lowest id that no listed backup has and whose name is free in both folders; empty when
  // there is none.
  std::string new_id(const BackupList& known) const;

  // Whether a file lies directly in some backup's folder.
  bool is_copy(std::string_view path) const;
  // Whether a restore must leave the place alone: the backup folder with all that is in it, the
  // history files and the settings. Also what names no absolute path.
  bool is_ours(std::string_view path) const;
  // Whether a folder holds the backup folder or the data folder, or is one of them.
  bool is_around_us(std::string_view folder) const;

  // Remembers a failure for ErrorCause and ErrorPath.
  void fail(short because, std::string_view path);
  void fail(const Status& status, std::string_view path);

  std::string data_folder;  // both with a trailing backslash; empty when `fldcom` names none
  std::string backup_folder;
  short generations;
  short cause;
  std::string cause_path;
};

// Whether `path` is the folder or lies anywhere below it, whatever its spelling; false when either
// names no absolute path.
bool is_within(std::string_view path, std::string_view folder);

}  // namespace tq
