// Flat functions of the application registry.
#include <cstddef>
#include <span>

#include "siblings/siblings.h"
#include "tqutil/appinfo.h"

short TQ_CALL GetAppType(short appNo) noexcept {
  const tFLDCOM_API& api = tq::fldcom();
  int32_t count = 0;
  const tFLDCOM_APPREC* table = api.FldComGetAppInfoTable(api.context, &count);
  if (table == nullptr || count <= 0) return 0;
  for (const tFLDCOM_APPREC& row : std::span(table, static_cast<std::size_t>(count))) {
    if (row.appNo == appNo) return row.appType;
  }
  return 0;
}

int32_t TQ_CALL GetAppInfoCtl() noexcept { return 0; }

short TQ_CALL FreeAppInfoCtl(int32_t /*handle*/) noexcept { return 0; }
