/* The records that carry sync groups, their members and sync ids across the interface, and the flat
 * functions that allocate, copy and print them.
 *
 * All texts are Shift-JIS (code page 932) bytes with a terminating zero. Buffer sizes count that
 * zero. Copies into fixed buffers are cut at a character boundary, so nothing is ever written past
 * them. One calling thread at a time.
 */
#ifndef TQUTIL_RECORDS_H_
#define TQUTIL_RECORDS_H_

#include <stdint.h>
#include <tqutil/config.h>

/* Buffer sizes in bytes, terminator included. */
#define TQ_PATH_SIZE 262  /* every path and member text */
#define TQ_TITLE_SIZE 130 /* title and memo of a group */
#define TQ_GRP_ID_SIZE 5  /* group id: three digits, a terminator and a spare byte */
#define TQ_FILE_ID_SIZE 7 /* file id: group id and three digits */
#define TQ_SYNC_ID_SIZE \
  21 /* sync id; 16 in its nominal form, 21 when every number is at its widest */

#define TQ_STS_COUNT 10    /* status words of a member */
#define TQ_FLG_COUNT 20    /* transfer flags of a member, sync flags of a group */
#define TQ_APP_MASTER 1000 /* application type of the master, the address book itself */

TQ_BEGIN_DECLS

/* The identity of a synchronised record. Two ids are the same when the first three fields are. */
typedef struct tSYNC_ID {
  uint16_t grp;  /* group number */
  uint16_t file; /* file number within the group */
  uint32_t rec;  /* record number within the file */
  uint32_t cap;  /* no part of the identity: capacity of the array, in its first element */
} tSYNC_ID;

/* A score or weight that stands beside a sync id. */
typedef struct tVAL_INFO {
  int32_t value;
  uint32_t cap; /* capacity of the array, in its first element */
} tVAL_INFO;

/* One member file of a group. The strings are buffers of TQ_PATH_SIZE bytes that `SyncInfoAlloc`
 * makes and `SyncInfoFree` releases. */
typedef struct tSYNC_INFO {
  char* fldFile;             /* the member's private copy of its field file */
  char* memberText;          /* the caller's; never interpreted */
  char* tmpFileO;            /* old temporary file */
  char* tmpFileN;            /* new temporary file; not saved */
  char* srchFile;            /* search file; not saved */
  int32_t sts[TQ_STS_COUNT]; /* status words; not saved */
  short trFlg[TQ_FLG_COUNT]; /* transfer flags */
  short appType;             /* application number; TQ_APP_MASTER for the master */
  short appType2;            /* second member number; stored, never interpreted */
} tSYNC_INFO;

/* The same member as one flat block. */
typedef struct tSYNC_INFO2 {
  char fldFile[TQ_PATH_SIZE];
  char memberText[TQ_PATH_SIZE];
  char tmpFileO[TQ_PATH_SIZE];
  char tmpFileN[TQ_PATH_SIZE];
  char srchFile[TQ_PATH_SIZE];
  int32_t sts[TQ_STS_COUNT];
  short trFlg[TQ_FLG_COUNT];
  short appType;
  short appType2;
} tSYNC_INFO2;

/* One sync group. The strings are buffers that `SyncGrpAlloc` makes and `SyncGrpFree` releases. */
typedef struct tSYNC_GRP {
  short syncType;
  short fileCnt;  /* member count */
  char* id;       /* TQ_GRP_ID_SIZE bytes: three digits */
  char* title;    /* TQ_TITLE_SIZE bytes */
  char* memo;     /* TQ_TITLE_SIZE bytes */
  char* grpPath;  /* TQ_PATH_SIZE bytes: the group's .SYG file */
  char* filePath; /* TQ_PATH_SIZE bytes: the folder of the member files, no trailing separator */
  short syncFlg[TQ_FLG_COUNT]; /* sync flags; flag 19 marks the working group "999" */
} tSYNC_GRP;

/* The same group as one flat block. */
typedef struct tSYNC_GRP2 {
  short syncType;
  short fileCnt;
  char id[4];
  char title[TQ_TITLE_SIZE];
  char memo[TQ_TITLE_SIZE];
  char grpPath[TQ_PATH_SIZE];
  char filePath[TQ_PATH_SIZE];
  short syncFlg[TQ_FLG_COUNT];
  short
      pos; /* place in the order in which a listing found it; names the group while it is listed */
  short cap; /* capacity of a listing, in its first record */
} tSYNC_GRP2;

/* All eight always give 0; an allocation that fails shows as a null pointer in the record. A null
 * record is left alone. */

/* Makes the five strings, each TQ_PATH_SIZE zero bytes. Numbers and flags stay as they are: callers
 * clear them. */
short TQ_STDCALL SyncInfoAlloc(tSYNC_INFO* info) TQ_NOEXCEPT;
/* Releases the strings that are there and sets their pointers to null; harmless when repeated. */
short TQ_STDCALL SyncInfoFree(tSYNC_INFO* info) TQ_NOEXCEPT;
/* Makes the five strings of a group (5, 130, 130, 262 and 262 zero bytes). */
short TQ_STDCALL SyncGrpAlloc(tSYNC_GRP* grp) TQ_NOEXCEPT;
/* Releases the strings but leaves the pointers as they are: a caller must not call it twice on one
 * record. */
short TQ_STDCALL SyncGrpFree(tSYNC_GRP* grp) TQ_NOEXCEPT;
/* Everything from the pointer form into the flat form. Strings that are null count as empty. */
short TQ_STDCALL SyncInfoCopy(tSYNC_INFO* from, tSYNC_INFO2* to) TQ_NOEXCEPT;
/* The reverse; the target's strings must have been allocated, those that are null are skipped. */
short TQ_STDCALL SyncInfoCopy2(tSYNC_INFO2* from, tSYNC_INFO* to) TQ_NOEXCEPT;
/* Strings, sync flags, sync type and member count; `pos` and `cap` of the flat form stay untouched.
 */
short TQ_STDCALL SyncGrpCopy(tSYNC_GRP* from, tSYNC_GRP2* to) TQ_NOEXCEPT;
/* The reverse; the target's strings must have been allocated, those that are null are skipped. */
short TQ_STDCALL SyncGrpCopy2(tSYNC_GRP2* from, tSYNC_GRP* to) TQ_NOEXCEPT;

/* Ids as text. Group ids are three digits, file ids six (group, file), sync ids fifteen (group,
 * file, nine digits of record), all padded with zeros. A number wider than its place is printed in
 * full, so the outputs hold 6, 11 and 21 bytes at most, terminators included. */

/* Prints an id; each output may be null. */
void TQ_CALL tqSyncIdVal2Str(const tSYNC_ID* id, char* grp, char* file, char* sync) TQ_NOEXCEPT;
/* Reads characters 1-3, 4-6 and 7-15 as decimal numbers into an id (`cap` is left alone).
 * Non-digits end a number early; a short text gives zeros for what is missing. */
void TQ_CALL tqSyncIdStr2Val(const char* text, tSYNC_ID* id) TQ_NOEXCEPT;
/* `tqSyncIdVal2Str` without the sync id. */
void TQ_CALL tqRecIdVal2Str(const tSYNC_ID* id, char* grp, char* file) TQ_NOEXCEPT;
/* Reads characters 1-3 and 4-6; the record number becomes 0. */
void TQ_CALL tqRecIdStr2Val(const char* text, tSYNC_ID* id) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_RECORDS_H_ */
