// The exchanged records with their strings, for the length of a test.
#pragma once

#include "tqutil/records.h"

namespace tq::test {

struct Info : tSYNC_INFO {
  Info() : tSYNC_INFO{} { SyncInfoAlloc(this); }
  ~Info() { SyncInfoFree(this); }
  Info(const Info&) = delete;
  Info& operator=(const Info&) = delete;
};

struct Group : tSYNC_GRP {
  Group() : tSYNC_GRP{} { SyncGrpAlloc(this); }
  ~Group() { SyncGrpFree(this); }
  Group(const Group&) = delete;
  Group& operator=(const Group&) = delete;
};

}  // namespace tq::test
