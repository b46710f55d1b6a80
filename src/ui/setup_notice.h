// The notice before an operation that drives the mail client.
#pragma once

namespace tq {

// See tqOutlookSpInfoDlg in tqutil/ui.h.
short show_setup_notice(short mode);

}  // namespace tq
