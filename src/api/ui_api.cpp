// Flat functions of the user interface.
#include "tqutil/ui.h"

#include "ui/setup_notice.h"

short TQ_CALL tqOutlookSpInfoDlg(short mode) noexcept {
  try {
    return tq::show_setup_notice(mode);
  } catch (...) {  // out of memory: nobody was warned
    return 1;
  }
}
