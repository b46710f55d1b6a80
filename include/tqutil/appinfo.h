/* The application registry: which partner applications there are, by number, and of which type each
 * is. Applications of one type have the same keys (see syncfld.h).
 *
 * One table for the whole process, read from "APPINFO.DAT" in the program folder when it is asked
 * for; docs/formats.md describes the file. One calling thread at a time.
 */
#ifndef TQUTIL_APPINFO_H_
#define TQUTIL_APPINFO_H_

#include <stdint.h>
#include <tqutil/config.h>

/* One application. */
typedef struct tTQAPP_INFO {
  short appNo;    /* application number */
  short appType;  /* application type */
  short spare[3]; /* zero */
  short cap;      /* capacity of the table, in its first row */
} tTQAPP_INFO;

#ifdef __cplusplus
/* The registry as the library read it. Objects hold nothing: all members are static. */
class TQ_API CAppInfoCtl {
 public:
  CAppInfoCtl();
  ~CAppInfoCtl(); /* NOLINT(performance-trivially-destructible): an exported name */
  CAppInfoCtl& operator=(const CAppInfoCtl& other);

  /* Reads the file unless the table is there already. 0, or 1 with an empty registry: the file
   * cannot be read, a line lacks its label, number or type, or memory is out. */
  static short ReadAppInfo();
  /* Releases the table; harmless when there is none. */
  static void FreeAppInfo();
  /* The type of the first row with that number, -1 when there is none. */
  static short GetAppType(short appNo);

  /* Rows in the table, and the table (null while it is not read). The library's: read them only. */
  static short s_appCnt;
  static tTQAPP_INFO* s_appTbl;
};
#endif

TQ_BEGIN_DECLS

/* The type of an application in the table that the `fldcom` sibling has; 0 when there is none. It
 * does not look at the table above. */
short TQ_CALL GetAppType(short appNo) TQ_NOEXCEPT;
/* There is nothing to open or close: both always give 0. */
int32_t TQ_CALL GetAppInfoCtl(void) TQ_NOEXCEPT;
short TQ_CALL FreeAppInfoCtl(int32_t handle) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_APPINFO_H_ */
