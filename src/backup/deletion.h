// Deleting backups.
#pragma once

#include <string_view>

namespace tq {

struct Site;

// Deletes the backup that a history file describes: the copies in its folder, the folder, and in
// every case the history file. Copies that the history claims elsewhere are left alone. 0; 1 when
// the history could not be read whole or something else is left in the folder, which then stays; -1
// when the folder or the history file could not be deleted.
short mDeleteBkupFileGrp(const Site& site, std::string_view history);

// Every backup; 1 at the first that cannot be deleted whole.
short delete_all_backups(Site& site);

// Makes a file deletable and deletes it. A file that is gone already is fine.
bool delete_whatever_attributes(std::string_view path);

}  // namespace tq
