#include "library/backups.h"

#include <algorithm>
#include <iostream>
#include <optional>

#include "failure.h"
#include "library/home_file.h"
#include "text/library_text.h"
#include "text/native_path.h"
#include "text/numbers.h"
#include "tqutil/host.h"
#include "tqutil/siblings.h"

namespace tqsync {
namespace {

constexpr short kAllKinds = -1;

const unsigned char* in(const std::string& sjis) {
  return reinterpret_cast<const unsigned char*>(sjis.c_str());
}

// A buffer that the library fills.
template <std::size_t kSize>
struct Buffer {
  char text[kSize] = {};
  operator unsigned char*() { return reinterpret_cast<unsigned char*>(text); }
  std::string utf8() const { return from_sjis(text); }
  std::string native() const { return to_native_path(text); }
};

const char* why(short cause) {
  switch (cause) {
    case TQ_BKUP_CAUSE_MEMORY:
      return "there is not enough memory";
    case TQ_BKUP_CAUSE_FOLDER:
      return "the folder cannot be made";
    case TQ_BKUP_CAUSE_FILE:
      return "the file cannot be opened or read, or is not there";
    case TQ_BKUP_CAUSE_WRITE_PROTECTED:
      return "the disk is write-protected";
    case TQ_BKUP_CAUSE_NOT_READY:
      return "the drive is not ready";
    case TQ_BKUP_CAUSE_BAD_DISK:
      return "the disk cannot be used";
    case TQ_BKUP_CAUSE_WRITE_FAULT:
      return "the disk failed while writing";
    case TQ_BKUP_CAUSE_READ_FAULT:
      return "the disk failed while reading";
    case TQ_BKUP_CAUSE_DISK_FULL:
      return "the disk is full";
    default:
      return "it could not be done, or the file has not the size that was recorded";
  }
}

// "what was not done: path: why".
[[noreturn]] void fail(const std::string& what, const CBackUpCtl& object) {
  Buffer<TQ_PATH_SIZE> path;
  object.ErrorPath(path.text);
  if (object.ErrorCause() == TQ_BKUP_CAUSE_NONE) throw Failure(what);
  throw Failure(what + ": " + (path.text[0] == '\0' ? "" : path.native() + ": ") +
                why(object.ErrorCause()));
}

void read_list(CBackUpCtl& object) {
  if (object.ReadBackUpFileList(kAllKinds) < 0) fail("the backups cannot be listed", object);
}

bool next(CBackUpCtl& object, BackupSummary& backup) {
  Buffer<TQ_BKUP_ID_SIZE> id;
  Buffer<TQ_BKUP_DATE_SIZE> date;
  Buffer<TQ_BKUP_INFO_SIZE> note;
  std::int32_t groups = 0;
  const short kind_before = backup.kind;
  const int generation_before = backup.generation;
  if (object.GetBackUpFileListNext(id, &backup.kind, date, note, &groups) != 0) return false;
  backup.id = id.utf8();
  backup.generation = backup.kind == kind_before ? generation_before + 1 : 1;
  backup.time = date.utf8();
  backup.note = note.utf8() == " " ? "" : note.utf8();
  backup.groups = groups;
  return true;
}

std::vector<BackupFile> files_of(CBackUpCtl& object, const std::string& id) {
  std::vector<BackupFile> files;
  if (object.GetBackUpFileGrpInit(in(id)) < 0) fail("backup " + id + " cannot be read", object);
  Buffer<TQ_BKUP_GRP_ID_SIZE> group;
  short type = 0;
  while (object.GetBackUpFileGrpNext(group, &type, nullptr) == 0) {
    object.GetBackUpFileInit(group);
    Buffer<TQ_PATH_SIZE> path, copy;
    Buffer<TQ_BKUP_DATE_SIZE> changed;
    BackupFile file;
    while (object.GetBackUpFileNext(path, copy, changed, &file.size, nullptr) == 0) {
      const bool folder = copy.utf8() == "dummy";
      files.push_back({group.utf8(), path.native(), folder ? "" : copy.native(), changed.utf8(),
                       file.size, type == TQ_BKUP_TYPE_MAIL_STORE});
    }
  }
  return files;
}

// The histories are read by lines, and the first byte of a line can make it a comment.
std::string note_text(const std::string& utf8) {
  const std::string sjis = to_sjis("note", utf8);
  constexpr std::size_t kMost = 128;
  if (sjis.size() > kMost || sjis.find_first_of("\r\n") != std::string::npos) {
    throw Failure("note: the text must be one line of at most 64 kanji or 128 letters.");
  }
  return sjis;
}

void add_set(CBackUpCtl& run, const BackupSet& set) {
  constexpr short kAddressFiles = 1;  // the group type of plain files
  const bool whole = !set.folder.empty();
  const std::string name = whole ? to_library_path(set.folder) : "";
  const short type = whole ? short{TQ_BKUP_TYPE_WHOLE_FOLDER} : kAddressFiles;
  if (run.StartBackUpFileGrp(type, in(name)) != 0) {
    fail("this folder cannot be backed up", run);
  }
  for (const std::string& file : set.files) {
    if (run.AddBackUpFileGrp(in(to_library_path(file)), short{0}) != 0) {
      fail("a file cannot be backed up", run);
    }
  }
}

// For its lifetime nobody is waited for: folders that are gone are made again without a question,
// and messages go to standard error instead of a window.
class Unattended {
 public:
  explicit Unattended(bool unattended) : unattended_(unattended) {
    if (!unattended_) return;
    tDIALOG_API dialogs{};
    dialogs.size = sizeof dialogs;
    dialogs.context = this;
    dialogs.DlgMissingFolder = [](void* self, const char*, const char*, const char* folder,
                                  const char* file, char*) -> short {
      return static_cast<Unattended*>(self)->answer(std::string(folder) + '\\' + file);
    };
    tERRBOX_API messages{};
    messages.size = sizeof messages;
    messages.context = this;
    messages.ErrBoxSetMessage = [](void* self, short, short number, const char* detail) {
      static_cast<Unattended*>(self)->message_ =
          message(number) + to_native_path(detail == nullptr ? "" : detail);
    };
    messages.ErrBoxShow = [](void* self) -> short {
      std::cerr << "tqsync: " << static_cast<Unattended*>(self)->message_ << '\n';
      return TQ_ANSWER_OK;
    };
    tTQ_SIBLINGS siblings{};
    siblings.size = sizeof siblings;
    siblings.errbox = &messages;
    siblings.dialog = &dialogs;
    tqSetSiblings(&siblings);
  }
  ~Unattended() {
    if (unattended_) tqSetSiblings(nullptr);
  }
  Unattended(const Unattended&) = delete;
  Unattended& operator=(const Unattended&) = delete;

  // The file whose folder could not be made, in the library's form; empty: none.
  const std::string& stuck() const { return stuck_; }

 private:
  // The library's messages about backups, see ErrBoxSetMessage.
  static std::string message(short number) {
    switch (number) {
      case 4:
        return "a folder cannot be made: ";
      case 6:
        return "there is a file of this name already: ";
      case 7:
        return "the history names a place where nothing is restored: ";
      default:
        return "message " + std::to_string(number) + " of the library: ";
    }
  }

  // Being asked about a file again means that its folder could not be made.
  short answer(const std::string& path) {
    if (path == asked_) stuck_ = path;
    asked_ = path;
    return stuck_.empty() ? TQ_FOLDER_RECREATE : TQ_FOLDER_CANCEL;
  }

  bool unattended_;
  std::string asked_, stuck_, message_;
};

}  // namespace

std::vector<BackupSummary> list_backups() {
  CBackUpCtl object;
  read_list(object);
  std::vector<BackupSummary> backups;
  for (BackupSummary backup; next(object, backup);) backups.push_back(backup);
  return backups;
}

Backup open_backup(const std::string& name) {
  CBackUpCtl object;
  read_list(object);
  const std::optional<std::string> id = with_zeros(name, 5);
  for (BackupSummary summary; next(object, summary);) {
    if (summary.id != id) continue;
    return {summary, files_of(object, *id), object.RestoreFileInit(in(*id)) == 0};
  }
  throw Failure("there is no backup \"" + name + "\". \"tqsync backup list\" shows the backups.");
}

std::string make_backup(short kind, const std::string& note, const std::vector<BackupSet>& sets) {
  if (kept_backups() < 1) {
    throw Failure("no backup is kept. \"tqsync backup keep 3\" keeps three of each kind.");
  }
  CBackUpCtl run;
  read_list(run);
  run.CreateBackUp(kind);
  run.SetBackUpInfo(in(note_text(note)));
  for (const BackupSet& set : sets) add_set(run, set);
  const short copied = run.StartBackUp();
  if (copied == 1 && run.ErrorCause() == TQ_BKUP_CAUSE_NONE)
    throw Failure("stopped; no backup made");
  if (copied != 0) fail("no backup made", run);
  if (run.RenewalBackUp() != 0) fail("the backup cannot be recorded", run);
  // The new backup is the last of the list.
  BackupSummary made;
  run.GetBackUpFileListInit();
  while (next(run, made)) {
  }
  return made.id;
}

bool restore_backup(const std::string& id, const std::vector<std::string>& groups,
                    bool unattended) {
  const Unattended alone(unattended);
  CBackUpCtl object;
  short result = 0;
  if (groups.empty()) {
    result = object.RestoreGrp(in(id));
  } else {
    if (object.RestoreFileInit(in(id)) != 0) fail("backup " + id + " cannot be read", object);
    for (const std::string& group : groups) {
      if (object.RestoreFileSet(in(group)) == 0) continue;
      throw Failure("backup " + id + " has no group \"" + group + "\". \"tqsync backup show " + id +
                    "\" shows them.");
    }
    result = object.RestoreFileStart();
  }
  if (!alone.stuck().empty()) {
    throw Failure("backup " + id + " is not restored: the folder of " +
                  to_native_path(alone.stuck()) + " cannot be made");
  }
  if (result == 1 && object.ErrorCause() == TQ_BKUP_CAUSE_NONE) return false;
  if (result != 0) fail("backup " + id + " is not restored", object);
  return true;
}

void delete_backup(const std::string& id) {
  CBackUpCtl object;
  const short result = object.DeleteBkupGrp(in(id));
  if (result == 0) return;
  if (result == 1) {
    throw Failure("backup " + id +
                  " is deleted, but a file that it does not know, or could not "
                  "delete, stays in its folder. Look into " +
                  backup_folder() + ".");
  }
  fail("backup " + id + " cannot be deleted whole", object);
}

int kept_backups() { return tqGetBkupGeneration(); }

void keep_backups(int count) {
  if (tqSetGenerationCnt(static_cast<std::uint16_t>(count)) == 0) {
    throw Failure(
        "the backup settings cannot be written. Check that the disk is not full and that "
        "you may write to the data folder.");
  }
}

std::string backup_folder() { return from_path(home_file(TQ_FOLDER_BACKUP, "")); }

}  // namespace tqsync
