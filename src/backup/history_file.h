// The history file `<id>.BKH` of one backup: what was copied, from where, and what it was like.
//
// One value a line; a line that begins with ';' is a comment and counts nowhere. The format is
// described in docs/backup.md. What a file claims is not trusted: texts are cut to their fields,
// counts are only hints, and `Site` decides which of its paths are followed.
#pragma once

#include <string_view>

#include "backup/records.h"
#include "base/status.h"

namespace tq {

// A description keeps this many bytes in a history.
inline constexpr std::size_t kInfoMax = 128;

// The header: id, kind, time, description, group count. kCorrupt when lines are missing; what is
// there is in `info` all the same. Other codes: the file cannot be opened or read.
Status mGetListInfo(std::string_view path, tBKUP_INFO& info);

// The groups with their files; groups without files are left out. kCorrupt when the file ends too
// early or holds a path that is none, other codes when it cannot be opened or read; `groups` holds
// what was read until then.
Status mGetFileGrpListS(std::string_view path, FileGroups& groups);

// Replaces the history at info.historyPath; when it is there it survives a power cut.
Status mSaveNowHistory(const tBKUP_INFO& info, const FileGroups& groups);

}  // namespace tq
