// Flat functions of the user interface.
#include "tqutil/ui.h"

#include "common/guarded.h"
#include "ui/setup_notice.h"

short TQ_CALL tqOutlookSpInfoDlg(short mode) noexcept {
  constexpr short kNobodyWarned = 1;
  return tq::guarded(kNobodyWarned, [&] { return tq::show_setup_notice(mode); });
}
