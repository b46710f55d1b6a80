// An application registry of any content: it is taken whole or not at all, and both readers of the
// file agree on what is whole.
#include "support/home.h"
#include "target.h"
#include "tqutil/appinfo.h"

void try_input(std::string_view input) {
  static const tq::test::TestHome home;
  home.write("program\\APPINFO.DAT", input);

  CAppInfoCtl::FreeAppInfo();
  if (CAppInfoCtl::ReadAppInfo() != 0) require(CAppInfoCtl::s_appCnt == 0);
  require((CAppInfoCtl::s_appTbl == nullptr) == (CAppInfoCtl::s_appCnt == 0));
  for (short i = 0; i < CAppInfoCtl::s_appCnt; ++i) {
    const tTQAPP_INFO& row = CAppInfoCtl::s_appTbl[i];
    const short type = CAppInfoCtl::GetAppType(row.appNo);
    if (i == 0) require(type == row.appType && row.cap > CAppInfoCtl::s_appCnt);
    if (i < 8) require(GetAppType(row.appNo) == type);  // reads the file again each time
  }
}
