// Backups as values: what the library's handles and buffers hold, in UTF-8 and native paths. What
// cannot be done throws Failure.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tqutil/backup.h"

namespace tqsync {

// Kinds of backups: what a person asks for, and what the library makes before it restores.
inline constexpr short kManualBackup = 5;
inline constexpr short kBeforeRestore = TQ_BKUP_BEFORE_RESTORE;

struct BackupSummary {
  std::string id;  // five digits
  short kind = 0;
  int generation = 0;  // among the backups of its kind, 1 = newest
  std::string time;    // local, "2003/7/5 09:04"
  std::string note;
  int groups = 0;
};

struct BackupFile {
  std::string group;    // ten digits
  std::string path;     // native
  std::string copy;     // native; empty for a folder that is only made again
  std::string changed;  // local time of the original's last change
  std::uint32_t size = 0;
  bool mail_store = false;  // somebody else keeps the copy
};

struct Backup {
  BackupSummary summary;
  std::vector<BackupFile> files;
  bool restorable = false;  // its history is whole
};

// All backups, by kind and then newest first.
std::vector<BackupSummary> list_backups();
// The one that a person calls by its id ("3" is "00003"). Throws Failure when there is none.
Backup open_backup(const std::string& name);

// What goes together into one file group: files, or a folder with all that is in it.
struct BackupSet {
  std::string folder;              // native; empty for plain files
  std::vector<std::string> files;  // native
};
// The new backup's id.
std::string make_backup(short kind, const std::string& note, const std::vector<BackupSet>& sets);

// Brings a backup back to where its files were, or the groups that are named (ten digits each).
// False when the user cancelled. `unattended`: folders that are gone are made again without asking,
// and messages go to standard error.
bool restore_backup(const std::string& id, const std::vector<std::string>& groups, bool unattended);
void delete_backup(const std::string& id);

// How many backups of each kind stay.
int kept_backups();
void keep_backups(int count);

// Native path of the folder that holds the backups.
std::string backup_folder();

}  // namespace tqsync
