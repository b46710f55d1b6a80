// Which backups have to go when a new one has come.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "backup/list.h"

namespace tq {

// The places in `list` of the backups that go, in the order in which they go, when its last row is
// a new backup and `generations` of its kind may stay. They are the oldest of the kind, the first
// in the list among equally old ones. The new backup itself never goes, whatever the clock says,
// nor does the one whose id is `keep` (empty: none): it stays beyond the count until next time.
std::vector<std::size_t> backups_to_drop(const BackupList& list, short generations,
                                         std::string_view keep);

}  // namespace tq
