// A key file of any content: every entry and every item can be looked at, and a key is always a
// field of one of the first two entries of its type.
#include <string>

#include "support/home.h"
#include "target.h"
#include "tqutil/syncfld.h"

namespace {

bool has(const tSYKY_APP_TBL& app, short fldId) {
  for (short i = 0; i < app.itemCnt; ++i) {
    if (app.items[i].fldId == fldId) return true;
  }
  return false;
}

// Whether one of the entries that are asked for a type has the field.
bool stands_in_an_entry(short appType, short fldId) {
  int asked = 0;
  for (short i = 0; i < CSyncFldCtl::s_appCnt && asked < 2; ++i) {
    const tSYKY_APP_TBL& app = CSyncFldCtl::s_appTbl[i];
    if (app.appType != appType) continue;
    if (has(app, fldId)) return true;
    ++asked;
  }
  return false;
}

}  // namespace

void try_input(std::string_view input) {
  static const tq::test::TestHome home;
  home.write("definition\\SYNCKEY.DAT", input);

  CSyncFldCtl::FreeSyncKeyFile();
  const short result = CSyncFldCtl::ReadSyncKeyFile();
  for (short key = -1; key <= 20; ++key) {
    static_cast<void>(CSyncFldCtl::SykyGetKey(0, key));
    static_cast<void>(CSyncFldCtl::SykyGetKeyS(-1, 0, key));
    static_cast<void>(CSyncFldCtl::SykyGetKeyS(CSyncFldCtl::s_appCnt, 0, key));
  }
  if (result != 0) return;
  require(CSyncFldCtl::s_appTbl != nullptr && CSyncFldCtl::s_appCnt >= 0);
  for (short i = 0; i < CSyncFldCtl::s_appCnt; ++i) {
    const tSYKY_APP_TBL& app = CSyncFldCtl::s_appTbl[i];
    for (short item = 0; item < app.itemCnt; ++item) {
      const tSYKY_KEY_ITEM& row = app.items[item];
      require(row.keyNo == 0 && row.subNo == 0 && row.grpSeq == 0);
    }
    if (i >= 32) continue;
    for (short key = 0; key < 20; ++key) {
      const short fldId = CSyncFldCtl::SykyGetKey(app.appType, key);
      require(fldId == -1 || stands_in_an_entry(app.appType, fldId));
    }
  }
  require(CSyncFldCtl::ReadSyncKeyFile() == 0);
}
