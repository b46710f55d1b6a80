// The application registry: one table for the whole process.
#include <string>

#include "common/guarded.h"
#include "common/record_table.h"
#include "siblings/app_list.h"
#include "siblings/siblings.h"
#include "tqutil/appinfo.h"

namespace tq {

template <>
struct RecordTraits<tTQAPP_INFO> {
  static constexpr std::size_t kBlock = 20;
  static short& capacity(tTQAPP_INFO& first) { return first.cap; }
};

namespace {

constinit RecordTable<tTQAPP_INFO> table;

// Reads all rows; false when any of them is bad.
bool read_rows() {
  LineReader lines;
  const std::string folder = sibling_folder(&tFLDCOM_API::FldComGetProgramFolder);
  if (!lines.open(folder + std::string(kAppListFile)).ok()) return false;
  AppLine line;
  AppRead result = read_app_line(lines, line);
  for (; result == AppRead::kRow; result = read_app_line(lines, line)) {
    tTQAPP_INFO row{};
    row.appNo = line.number;
    row.appType = line.type;
    if (!table.append(row)) return false;
  }
  return result == AppRead::kEnd;
}

}  // namespace
}  // namespace tq

short CAppInfoCtl::s_appCnt = 0;
tTQAPP_INFO* CAppInfoCtl::s_appTbl = nullptr;

CAppInfoCtl::CAppInfoCtl() = default;
CAppInfoCtl::~CAppInfoCtl() = default;
CAppInfoCtl& CAppInfoCtl::operator=(const CAppInfoCtl& other) = default;

short CAppInfoCtl::ReadAppInfo() {
  if (s_appTbl != nullptr) return 0;
  const bool read = tq::guarded(false, tq::read_rows);
  if (!read) tq::table.clear();
  s_appTbl = tq::table.data();
  s_appCnt = static_cast<short>(tq::table.size());
  return read ? 0 : 1;
}

void CAppInfoCtl::FreeAppInfo() {
  tq::table.clear();
  s_appTbl = nullptr;
  s_appCnt = 0;
}

short CAppInfoCtl::GetAppType(short appNo) {
  for (const tTQAPP_INFO& row : tq::table.records()) {
    if (row.appNo == appNo) return row.appType;
  }
  return -1;
}
