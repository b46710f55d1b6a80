/* Sync groups: one group in memory with its member files, its `.SYG` file, the listing of all
 * groups, and the working group "999" of read mode. First the class, then the same operations over
 * handles.
 *
 * A handle is a small positive number; 0 is never valid. Ten groups or listings can be open at
 * once. Handles of closed or unknown slots answer like 0. One calling thread at a time.
 */
#ifndef TQUTIL_SYNCFILE_H_
#define TQUTIL_SYNCFILE_H_

#include <tqutil/config.h>
#include <tqutil/records.h>

#ifdef __cplusplus
#include <memory>

/* One group and, independently of it, one listing of the group folder. The object owns its tables
 * and releases them when it is destroyed. A group file is saved by replacing it whole: a reader
 * sees the old file or the new one.
 *
 * Unless told otherwise operations give 0 for success and 1 for failure; `LastError` tells why:
 * 0 nothing failed yet, -1 bad open arguments, -2 no group opened or its file cannot be read, -3
 * the group file cannot be written, -9 out of memory. Member indexes count from 0. */
class TQ_API CSyncFileCtl {
 public:
  CSyncFileCtl();
  ~CSyncFileCtl();
  CSyncFileCtl(const CSyncFileCtl&) = delete;
  CSyncFileCtl& operator=(const CSyncFileCtl&) = delete;

  /* A new, empty group in memory with the lowest id whose member folder does not exist yet. Always
   * 0; with all 1000 ids taken the id is empty. */
  short Create();
  /* A new, empty working group: id "999", sync flag 19 set, never renumbered. Always 0. */
  short Create2();
  /* Names the group file to work on; reads nothing yet. A mode that begins with 'R' or 'r' is
   * read-only, 'W' or 'w' write, anything else (null too) normal. */
  short Open(const char* path, const char* mode);
  /* Loads the group file. The member count, or -1. What an incomplete file holds is kept. */
  short Read();
  /* Saves the group and makes its member folder. With `renumber` 1 a group whose file or folder
   * exists gets a new id, and its members new file ids (never the working group). */
  short Write(short renumber);

  short GetSyncFileCnt();
  void SetSyncType(short type);
  short GetSyncType();
  /* The setters ignore null and keep at most 129 bytes. The getters need 130 bytes and
   * give the length of what the buffer held before the copy, so hand over a terminated buffer; null
   * gives 0. */
  void SetTitle(const char* title);
  short GetTitle(char* title);
  void SetMemo(const char* memo);
  short GetMemo(char* memo);
  /* Sync flag n, 0-19. Outside: 1 and -1. */
  short SetSyncFlg(short n, short value);
  short GetSyncFlg(short n);

  /* Copies numbers, strings and transfer flags (not the status words) into member i. A null record
   * gives 0 and changes nothing. */
  short SetSyncFileInfo(short i, tSYNC_INFO* info);
  /* Adds a member: before member i when 0 <= i < count - 1, else at the end. A null record adds an
   * empty member without file id; otherwise it gets a fresh one. */
  short AddSyncFileInfo(short i, tSYNC_INFO* info);
  /* Copies member i out, status words included; the record's strings must be allocated. */
  short GetSyncFileInfo(short i, tSYNC_INFO* info);
  /* The file id of member i (7 bytes); 0 without copying for a null buffer. */
  short GetSyncFileID(short i, char* id);
  /* Removes member i and deletes its temporary files, if they lie in the group's member folder or
   * in the work folder. */
  short DeleteSyncFileInfo(short i);

  /* Transfer flag n (0-19) and status word n (0-9) of member i. Bad indexes: 1 and -1. A status
   * word is stored with 32 bits and read back as its low 16. */
  short SetSyncTrFlg(short i, short n, short value);
  short GetSyncTrFlg(short i, short n);
  short SetSyncFileSts(short i, short n, short value);
  short GetSyncFileSts(short i, short n);
  /* Status word n of the first member with that file id, -1 if none. */
  short GetSyncFileSts2(const char* fileId, short n);
  /* Index of the first member with that file id, -1 if none. */
  short GetSyncFilePos(const char* fileId);

  /* Copies a field file into the member folder under a unique name and makes it member i's. 0 even
   * when the copy fails; the member keeps its field file then. */
  short AddSyncFileFldFile(short i, const char* source);
  /* Copy one string of member i in or out (TQ_PATH_SIZE bytes); nothing for a bad index or null.
   * All eight give -1, success included. */
  short SetSyncFileFldFile(short i, char* text);
  short GetSyncFileFldFile(short i, char* text);
  short SetSyncFileTmpFileN(short i, char* text);
  short GetSyncFileTmpFileN(short i, char* text);
  short SetSyncFileTmpFileO(short i, char* text);
  short GetSyncFileTmpFileO(short i, char* text);
  short SetSyncFileSrchFile(short i, char* text);
  short GetSyncFileSrchFile(short i, char* text);

  /* Group id (4 bytes), group file path and member folder path (TQ_PATH_SIZE bytes). Null is
   * ignored. */
  void GetSyncGrpID(char* id);
  void GetSyncGrpPath(char* path);
  void GetSyncFilePath(char* path);
  /* A private temporary file name of member i in the work folder (TQ_PATH_SIZE bytes), made at the
   * first call and the same afterwards. -1 for a bad index or when no name can be had. */
  short GetSyncCsvHeadPath(short i, char* path);

  /* Lists the group folder, sorted by title. The number of groups, or -1 when a group file cannot
   * be read or memory runs out; what was listed until then stays. */
  short GetSyncGrpInit();
  /* The next listed group and its position; 1 at the end. The record's strings must be allocated.
   */
  short GetSyncGrpNext(short* pos, tSYNC_GRP* grp);
  /* The listed group that answers to position `pos`. */
  short GetSyncGrpInfo(short pos, tSYNC_GRP* grp);
  /* Deletes that group's files ("*.tmp", "*.adw" and "*.ldb" of its member folder, the group file,
   * and the folder when nothing else is in it) and takes it off the listing. */
  short DeleteSyncGrp(short pos);

  /* Turns the object into the working group "999" with one master member whose data file the caller
   * fills. Both outputs are TQ_PATH_SIZE bytes: the group file, and that data file's name. Always
   * 0. */
  short SetReadMode(char* groupPath, char* adjustPath);
  /* Turns a working group into an ordinary one with a new id and saves it. `dataPath` becomes the
   * member text of the data file's member. Temporary files are copied along. */
  short ReSaveRead2Normal(const char* title, const char* memo, const char* dataPath);

  /* Why the last failing operation failed; never cleared by a success. */
  short LastError() const;

  static short SyncInfoAlloc(tSYNC_INFO* info);
  static short SyncInfoFree(tSYNC_INFO* info);
  static short SyncInfoCopy(tSYNC_INFO* from, tSYNC_INFO2* to);
  static short SyncInfoCopy2(tSYNC_INFO2* from, tSYNC_INFO* to);
  static short SyncGrpAlloc(tSYNC_GRP* grp);
  static short SyncGrpFree(tSYNC_GRP* grp);
  static short SyncGrpCopy(tSYNC_GRP* from, tSYNC_GRP2* to);
  static short SyncGrpCopy2(tSYNC_GRP2* from, tSYNC_GRP* to);

 private:
  struct State;
  std::unique_ptr<State> state_;
};
#endif

TQ_BEGIN_DECLS

/* The handle comes last; the other arguments are the member function's. Each line names the value
 * for handle 0 where it is not 1. */

/* Open: a handle, or 0 when all ten slots are taken, memory is out or the operation failed. */
int32_t TQ_CALL CreateSyncFile(void) TQ_NOEXCEPT;
int32_t TQ_STDCALL CreateSyncFile2(void) TQ_NOEXCEPT;
int32_t TQ_CALL OpenSyncFile(const char* path, const char* mode) TQ_NOEXCEPT;
/* 1 for handle 0, otherwise 0, also for a slot that is already empty. */
short TQ_CALL CloseSyncFile(int32_t handle) TQ_NOEXCEPT;

short TQ_CALL ReadSyncFile(int32_t handle) TQ_NOEXCEPT; /* -1 */
short TQ_CALL WriteSyncFile(short renumber, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetSyncReadMode(char* groupPath, char* adjustPath, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL ReSaveSyncRead2Normal(const char* title, const char* memo, const char* dataPath,
                                    int32_t handle) TQ_NOEXCEPT;

short TQ_CALL GetSyncFileCnt(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetSyncType(short type, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncType(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetSyncTitle(const char* title, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncTitle(char* title, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetSyncMemo(const char* memo, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncMemo(char* memo, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetSyncFlg(short n, short value, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncFlg(short n, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncGrpID(char* id, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncGrpPath(char* path, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncFilePath(char* path, int32_t handle) TQ_NOEXCEPT;

short TQ_CALL SetSyncFileInfo(short i, tSYNC_INFO* info, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL AddSyncFileInfo(short i, tSYNC_INFO* info, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncFileInfo(short i, tSYNC_INFO* info, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncFileID(short i, char* id, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL DeleteSyncFileInfo(short i, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetSyncTrFlg(short i, short n, short value, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncTrFlg(short i, short n, int32_t handle) TQ_NOEXCEPT; /* -1 */
short TQ_CALL SetSyncFileSts(short i, short n, short value, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncFileSts(short i, short n, int32_t handle) TQ_NOEXCEPT;             /* -1 */
short TQ_CALL GetSyncFileSts2(const char* fileId, short n, int32_t handle) TQ_NOEXCEPT; /* -1 */
short TQ_CALL GetSyncFilePos(const char* fileId, int32_t handle) TQ_NOEXCEPT;           /* -1 */

short TQ_CALL AddSyncFileFldFile(short i, const char* source, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetSyncFileFldFile(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncFileFldFile(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetSyncFileTmpFileN(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncFileTmpFileN(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetSyncFileTmpFileO(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncFileTmpFileO(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_STDCALL SetSyncFileSrchFile(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_STDCALL GetSyncFileSrchFile(short i, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_STDCALL GetSyncCsvHeadPath(short i, char* path, int32_t handle) TQ_NOEXCEPT;

/* Opens a listing: a handle, and the number of groups in *count (0 on failure). */
int32_t TQ_CALL GetSyncGrpInit(short* count) TQ_NOEXCEPT;
short TQ_CALL GetSyncGrpNext(short* pos, tSYNC_GRP* grp, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetSyncGrpInfo(short pos, tSYNC_GRP* grp, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL DeleteSyncGrpInfo(short pos, int32_t handle) TQ_NOEXCEPT;
/* As CloseSyncFile, for listings. */
short TQ_CALL GetSyncGrpClose(int32_t handle) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_SYNCFILE_H_ */
