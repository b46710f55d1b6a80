// The working group for a deletion sync, built over the flat group functions.
#pragma once

namespace tq {

// See CreateDelSyncFile in tqutil/dbbridge.h.
short create_del_sync_file(const char* key, char* out_path);

}  // namespace tq
