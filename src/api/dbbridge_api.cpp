// Flat functions of the database bridge.
#include "common/guarded.h"
#include "dbbridge/del_sync.h"
#include "tqutil/dbbridge.h"

short TQ_STDCALL CreateDelSyncFile(const char* key, char* outPath) noexcept {
  return tq::guarded<short>(-1, [&] { return tq::create_del_sync_file(key, outPath); });
}
