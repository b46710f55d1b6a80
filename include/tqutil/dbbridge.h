/* The working group for a deletion sync. */
#ifndef TQUTIL_DBBRIDGE_H_
#define TQUTIL_DBBRIDGE_H_

#include <tqutil/config.h>

TQ_BEGIN_DECLS

/* Builds the working group "999" from the members of every group in which the master file with the
 * member text `key` takes part; each member text comes in once. An earlier working group is deleted
 * first. 0: made, and its group file's path is in `outPath` (262 bytes). 1: made but empty, no
 * group has that master; `outPath` is untouched. -1: a step failed; `outPath` is untouched, and
 * what was built until then goes with the next call. */
short TQ_STDCALL CreateDelSyncFile(const char* key, char* outPath) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_DBBRIDGE_H_ */
