// Flat functions of the database bridge.
#include "dbbridge/del_sync.h"
#include "tqutil/dbbridge.h"

short TQ_STDCALL CreateDelSyncFile(const char* key, char* outPath) noexcept {
  try {
    return tq::create_del_sync_file(key, outPath);
  } catch (...) {  // out of memory
    return -1;
  }
}
