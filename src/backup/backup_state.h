// What a CBackUpCtl object holds: a backup that is being made, a list that is being served, and a
// selective restore. Shared by the files that implement the class; nothing else includes it.
#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "backup/list.h"
#include "backup/records.h"
#include "backup/run.h"
#include "backup/site.h"
#include "common/text.h"
#include "tqutil/backup.h"

namespace tq {

// A text of the class interface; null reads as empty.
inline std::string_view text_of(const unsigned char* text) {
  return view(reinterpret_cast<const char*>(text));
}

}  // namespace tq

struct CBackUpCtl::State {
  // Restoring (backup_restore.cpp).
  short restore_all(std::size_t index, bool back_up_first);
  bool load_for_restore(std::size_t index);

  // Runs an operation that may allocate; memory that runs out becomes its failure value.
  template <class Value, class Body>
  Value guarded(Value failure, Body&& body) noexcept {
    try {
      return std::forward<Body>(body)();
    } catch (...) {
      site.cause = TQ_BKUP_CAUSE_MEMORY;
      site.cause_path.clear();
      return failure;
    }
  }

  tq::Site site;
  tq::BackupRun run{site};

  // Served: the backups, the groups of one, the files of one of those, each with its next place.
  tq::BackupList list;
  std::size_t next_backup = 0;
  tq::FileGroups groups;
  std::size_t next_group = 0;
  std::size_t selected = 0;  // group whose files are given out
  std::size_t next_file = 0;

  // Restore and deletion have tables of their own, so that they do not disturb the above.
  tq::BackupList other_list;
  tq::FileGroups restored;
  std::string restored_id;
};
