/* The notice before an operation that drives the mail client. */
#ifndef TQUTIL_UI_H_
#define TQUTIL_UI_H_

#include <tqutil/config.h>

TQ_BEGIN_DECLS

/* Operations that the notice can be shown for. */
#define TQ_NOTICE_CONVERT 0
#define TQ_NOTICE_IMPORT 1
#define TQ_NOTICE_EXPORT 2
#define TQ_NOTICE_SYNC 3
#define TQ_NOTICE_CREATE 4

/* Shows the notice for an operation (TQ_NOTICE_*) and waits for the user: 0 to go on, 1 to stop.
 * Modes import and create show one note, the others two. 1 without asking for any other mode, or
 * when there is nobody to ask. */
short TQ_CALL tqOutlookSpInfoDlg(short mode) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_UI_H_ */
