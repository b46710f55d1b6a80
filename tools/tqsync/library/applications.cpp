#include "library/applications.h"

#include <cstdint>
#include <span>

#include "failure.h"
#include "text/library_text.h"
#include "tqutil/appinfo.h"
#include "tqutil/host.h"
#include "tqutil/records.h"
#include "tqutil/siblings.h"
#include "tqutil/syncfld.h"

namespace tqsync {
namespace {

[[noreturn]] void fail() {
  char folder[TQ_PATH_SIZE] = "";
  tqGetFolder(TQ_FOLDER_PROGRAM, folder);
  throw Failure(to_native_path(std::string(folder) + "APPINFO.DAT") +
                ": this file cannot be read, or one of its lines is not \"label:number,type\". " +
                "Mend it, or name another folder under \"program\" in tqutil.ini.");
}

std::vector<short> keys_of(short type) {
  std::vector<short> keys;
  for (short key = 0; key < kKeys; ++key) {
    if (CSyncFldCtl::SykyGetKey(type, key) >= 0) keys.push_back(key);
  }
  return keys;
}

}  // namespace

std::vector<Application> registered_applications() {
  CAppInfoCtl::FreeAppInfo();  // as the file is now
  if (CAppInfoCtl::ReadAppInfo() != 0) fail();
  tTQ_SIBLINGS siblings{};
  siblings.size = sizeof siblings;
  tqGetSiblings(&siblings);
  const tFLDCOM_API& api = *siblings.fldcom;
  std::int32_t count = 0;
  const tFLDCOM_APPREC* table = api.FldComGetAppInfoTable(api.context, &count);
  std::vector<Application> applications;
  for (const tFLDCOM_APPREC& row : std::span(table, static_cast<std::size_t>(count))) {
    const short type = CAppInfoCtl::GetAppType(row.appNo);
    applications.push_back({row.appNo, type, from_sjis(row.name), keys_of(type)});
  }
  return applications;
}

}  // namespace tqsync
