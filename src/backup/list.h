// The list of backups, read from the history files of the data folder.
#pragma once

#include <cstddef>
#include <string_view>

#include "backup/records.h"

namespace tq {

struct Site;

// 2 when the first moment is earlier, 1 when it is later, 0 when they are equal. Days of the week
// and milliseconds do not count.
short mCompareBkupTime(const tBKUP_TIME& first, const tBKUP_TIME& second);

class BackupList {
 public:
  // Starts over with the backups of a kind (negative: all) in the order of their files' names.
  // False when a history cannot be read or memory is out; what was listed until then stays.
  bool load(Site& site, short kind);
  // By kind, within a kind newest first, and numbered so (`generation`, 1 = newest). Equal times
  // are ordered as the documented selection sorts order them. False: no memory, order unchanged.
  bool mSortBackUpFileList();
  bool load_sorted(Site& site, short kind) { return load(site, kind) && mSortBackUpFileList(); }

  std::size_t size() const { return rows_.size(); }
  const tBKUP_INFO& operator[](std::size_t index) const { return rows_[index]; }
  // The first backup with that id, or of that kind and generation; size() when there is none.
  std::size_t find(std::string_view id) const;
  std::size_t find(short kind, short generation) const;
  bool has(std::string_view id) const { return find(id) != size(); }

  bool append(const tBKUP_INFO& row) { return append_row(rows_, row); }
  void erase(std::size_t index) { rows_.erase(index); }

 private:
  RecordTable<tBKUP_INFO> rows_;
};

}  // namespace tq
