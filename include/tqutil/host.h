/* What a host application needs around the library: paths and texts in its own form turned into the
 * library's and back. */
#ifndef TQUTIL_HOST_H_
#define TQUTIL_HOST_H_

#include <stdint.h>
#include <tqutil/config.h>

TQ_BEGIN_DECLS

/* The library's own version, "1.2.3". Static storage. */
const char* TQ_CALL tqVersion(void) TQ_NOEXCEPT;

/* A native path (UTF-8; relative ones are completed from the current folder) as the library's
 * Windows-form Shift-JIS path, 262 bytes. 0, or 1 when it has no such form or is too long; the
 * buffer is empty then. On Linux `/home/x` becomes `Z:\home\x`. */
short TQ_CALL tqPathFromNative(const char* native, char* path) TQ_NOEXCEPT;
/* The reverse, into a buffer of `size` bytes. 0, or 1 when it does not fit or has no native form;
 * the buffer is empty then. */
short TQ_CALL tqPathToNative(const char* path, char* native, int32_t size) TQ_NOEXCEPT;

/* Text conversion between UTF-8 and Shift-JIS (code page 932). `length` counts the input's bytes,
 * which need no terminator; the output gets one. The result is the number of bytes that the whole
 * result needs without it; when that is `size` or more the buffer holds what fits, cut at a
 * character, so a call with size 0 measures. To Shift-JIS, -1 - p when the character at byte p is
 * malformed or has no code: the buffer then holds what stands before it. To UTF-8, what is
 * malformed becomes U+FFFD. -1 for null or when memory is out. */
int32_t TQ_CALL tqUtf8ToSjis(const char* utf8, int32_t length, char* sjis,
                             int32_t size) TQ_NOEXCEPT;
int32_t TQ_CALL tqSjisToUtf8(const char* sjis, int32_t length, char* utf8,
                             int32_t size) TQ_NOEXCEPT;

/* Folders the way the library sees them now (through the `fldcom` sibling): 262 bytes, with a
 * trailing backslash. `which` is one of TQ_FOLDER_*. 0, or 1 for an unknown folder. */
#define TQ_FOLDER_PROGRAM 0
#define TQ_FOLDER_DEFINITION 1
#define TQ_FOLDER_DATA 2
#define TQ_FOLDER_WORK 3
#define TQ_FOLDER_BACKUP 4
#define TQ_FOLDER_GROUP 5
#define TQ_FOLDER_MEMBER 6
#define TQ_FOLDER_HOME 7 /* where the built-in siblings look for tqutil.ini; it need not exist */
short TQ_CALL tqGetFolder(short which, char* folder) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_HOST_H_ */
