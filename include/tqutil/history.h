/* The history of one synchronisation run: lines of text in six categories, for the run as a whole
 * and for each of its files, written while the run proceeds and read back for its report.
 *
 * Every category of every level is a temporary file of its own in the work folder; the object
 * deletes them when it is destroyed, so save what must outlive the run. Texts are Shift-JIS with a
 * terminating zero. One calling thread at a time.
 */
#ifndef TQUTIL_HISTORY_H_
#define TQUTIL_HISTORY_H_

#include <tqutil/config.h>
#include <tqutil/records.h>

/* What a buffer for one line must hold, terminator included. */
#define TQ_HISTORY_LINE_SIZE 251

/* Values of CHistoryCtl::LastError and of CHistoryCtl::LastErrorDetail. */
#define TQ_HISTORY_OPEN 21           /* a file could not be opened */
#define TQ_HISTORY_WRITE 22          /* a line could not be written */
#define TQ_HISTORY_DETAIL_OPEN 1     /* opening failed */
#define TQ_HISTORY_DETAIL_TEXT 2     /* writing the text failed */
#define TQ_HISTORY_DETAIL_LINE_END 3 /* writing the line end, or closing behind it, failed */
#define TQ_HISTORY_DETAIL_COPY 4     /* copying a record from the history store failed */

#ifdef __cplusplus
#include <memory>

/* One run's history. A level is chosen by file index (negative: the run as a whole; 0 and up: that
 * file; past the last file: -1, and nothing happens) or by file id (null: the run as a whole;
 * unknown: -1).
 *
 * Operations give 0 for success and -1 for failure. */
class TQ_API CHistoryCtl {
 public:
  CHistoryCtl();
  /* Closes and deletes all temporary files. */
  ~CHistoryCtl();
  CHistoryCtl(const CHistoryCtl&) = delete;
  CHistoryCtl& operator=(const CHistoryCtl&) = delete;

  /* Makes room for `count` files and gives every category of the run and of each file its temporary
   * file. -1 for a negative count or when memory is out. A file that cannot be made is no failure
   * here: its lines fail. Called again it starts over; the earlier files are deleted. */
  short CreateHistory(short count);
  /* Registers the next file under its id (at most 6 bytes count). Of the record only the two
   * application numbers are kept. More files than were made room for are ignored. Always 0. */
  short AddFileInfo(const char* fileId, tSYNC_INFO* info);

  /* Appends one line. Read, Write and Tran lines are in their file when the call returns. ReNew,
   * AddNew and Head lines are gathered; they reach their file before it is read or closed, and a
   * failure to bring them there shows in a later call. Every attempt that found its level counts,
   * also one that fails. While the category is being read, writing fails and ends the reading. */
  short WriteErrInfo4Read(const char* fileId, const char* text);
  short WriteErrInfo4Read2(short i, const char* text);
  short WriteErrInfo4Write(const char* fileId, const char* text);
  short WriteErrInfo4Write2(short i, const char* text);
  short WriteErrInfo4Tran(const char* fileId, const char* text);
  short WriteErrInfo4Tran2(short i, const char* text);
  short WriteReNewInfo(const char* fileId, const char* text);
  short WriteReNewInfo2(short i, const char* text);
  short WriteAddNewInfo(const char* fileId, const char* text);
  short WriteAddNewInfo2(short i, const char* text);
  short WriteHeadInfo(const char* fileId, const char* text);
  short WriteHeadInfo2(short i, const char* text);
  /* Closes every open file. Always 0; lines that could not be brought to their file leave an error.
   */
  short AllFileClose();

  /* Around a phase of the run: the first of a pair empties the history store and tells it under
   * which number and application what follows is filed, the second ends the recording and copies
   * what was recorded into a category. The first refuses an index outside 0 to count - 1; the
   * second does not look at it, so that -1 copies to the run and a line for a file that is not
   * there fails.
   *   Mst          master data read         Tran of the run
   *   App2Xdb      partner file read        Read of file i
   *   Xdb2App      partner file written     Write of file i
   *   WriteXdb     database written         Tran of file i
   *   WriteXdbDmy  rehearsal of WriteXdb    copies nothing */
  short HstyBeforMst();
  short HstyGetMst();
  short HstyBeforApp2Xdb(short i);
  short HstyGetApp2Xdb(short i);
  short HstyBeforXdb2App(short i);
  short HstyGetXdb2App(short i);
  short HstyBeforWriteXdb(short i);
  short HstyGetWriteXdb(short i);
  short HstyBeforWriteXdbDmy(short i);
  short HstyGetWriteXdbDmy(short i);

  /* Reading a category back. Init opens its file, closing it first if it is open in any way. Next
   * gives a line in TQ_HISTORY_LINE_SIZE bytes: lines are taken in pieces of 999 bytes, each cut to
   * 250 bytes at a character; -1 with an empty text at the end, and when nothing is open. End
   * closes. Cnt is the number of lines written, failed attempts included (-1 for no such level). */
  short GetInfo4ReadInit(short i);
  short GetInfo4ReadNext(short i, char* text);
  short GetInfo4ReadEnd(short i);
  int32_t GetInfo4ReadCnt(short i);
  short GetInfo4WriteInit(short i);
  short GetInfo4WriteNext(short i, char* text);
  short GetInfo4WriteEnd(short i);
  int32_t GetInfo4WriteCnt(short i);
  short GetInfo4TranInit(short i);
  short GetInfo4TranNext(short i, char* text);
  short GetInfo4TranEnd(short i);
  int32_t GetInfo4TranCnt(short i);
  short GetInfo4ReNewInit(short i);
  short GetInfo4ReNewNext(short i, char* text);
  short GetInfo4ReNewEnd(short i);
  int32_t GetInfo4ReNewCnt(short i);
  short GetInfo4AddNewInit(short i);
  short GetInfo4AddNewNext(short i, char* text);
  short GetInfo4AddNewEnd(short i);
  int32_t GetInfo4AddNewCnt(short i);
  short GetInfo4HeadInit(short i);
  short GetInfo4HeadNext(short i, char* text);
  short GetInfo4HeadEnd(short i);
  int32_t GetInfo4HeadCnt(short i);

  /* What failed last (TQ_HISTORY_OPEN, TQ_HISTORY_WRITE; 0 nothing yet) and its detail
   * (TQ_HISTORY_DETAIL_*); never cleared by a success. */
  short LastError() const;
  short LastErrorDetail() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};
#endif

TQ_BEGIN_DECLS

/* Over handles: a small positive number, 0 is never valid, 20 objects at once. The handle comes
 * last; the other arguments are the member function's. Handle 0 and every other handle that is not
 * open gives -1. */

/* A new object with room for `count` files: its handle, or 0 when all slots are taken or memory is
 * out. When only the room cannot be made (more than 32767 files), the object goes again but its
 * handle number is still given; that handle is not open. */
int32_t TQ_STDCALL CreateSyncHstyCtl(unsigned short count) TQ_NOEXCEPT;
/* Deletes the object and its temporary files: 0, also for a slot that is empty already; -1 for
 * handle 0. */
short TQ_STDCALL FreeSyncHstyCtl(int32_t handle) TQ_NOEXCEPT;

short TQ_CALL AddHstyFileInfo(const char* fileId, tSYNC_INFO* info, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteErrInfo4Read(const char* fileId, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteErrInfo4Read2(short i, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteErrInfo4Write(const char* fileId, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteErrInfo4Write2(short i, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteErrInfo4Tran(const char* fileId, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteErrInfo4Tran2(short i, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteReNewInfo(const char* fileId, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteReNewInfo2(short i, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteAddNewInfo(const char* fileId, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteAddNewInfo2(short i, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteHeadInfo(const char* fileId, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteHeadInfo2(short i, const char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyAllFileClose(int32_t handle) TQ_NOEXCEPT;

short TQ_CALL HstyBeforMst(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetMst(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyBeforApp2Xdb(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetApp2Xdb(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyBeforXdb2App(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetXdb2App(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyBeforWriteXdb(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetWriteXdb(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyBeforWriteXdbDmy(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetWriteXdbDmy(short i, int32_t handle) TQ_NOEXCEPT;

short TQ_CALL HstyGetInfo4ReadInit(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4ReadNext(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4ReadEnd(short i, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL HstyGetInfo4ReadCnt(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4WriteInit(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4WriteNext(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4WriteEnd(short i, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL HstyGetInfo4WriteCnt(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4TranInit(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4TranNext(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4TranEnd(short i, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL HstyGetInfo4TranCnt(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4ReNewInit(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4ReNewNext(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4ReNewEnd(short i, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL HstyGetInfo4ReNewCnt(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4AddNewInit(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4AddNewNext(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4AddNewEnd(short i, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL HstyGetInfo4AddNewCnt(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4HeadInit(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4HeadNext(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL HstyGetInfo4HeadEnd(short i, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL HstyGetInfo4HeadCnt(short i, int32_t handle) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_HISTORY_H_ */
