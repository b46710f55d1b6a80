/* Backups: copies of the files that an operation is about to change, kept for a number of
 * generations, listed, restored and deleted. First the records and the class, then the same
 * operations over handles and the flat functions of the settings.
 *
 * A run goes CreateBackUp, SetBackUpInfo, StartBackUpFileGrp and AddBackUpFileGrp for each group of
 * files, StartBackUp (copies), RenewalBackUp (records the backup and lets the oldest go),
 * FreeBackUp. When RenewalBackUp has given 0 with a generation count of 1 or more, the backup
 * survives a power cut. The backup folder holds one sub-folder a backup with the copies, the data
 * folder one history file `<id>.BKH` a backup and the settings "TQ_BKINF.DAT".
 *
 * All texts are Shift-JIS with a terminating zero. Outputs may be null. One calling thread at a
 * time.
 */
#ifndef TQUTIL_BACKUP_H_
#define TQUTIL_BACKUP_H_

#include <stdint.h>
#include <tqutil/config.h>
#include <tqutil/records.h>

/* Kinds of backup that the settings know by name; a caller may use any other number too. */
#define TQ_BKUP_CONVERSION 0
#define TQ_BKUP_SYNC 1
#define TQ_BKUP_BEFORE_RESTORE 4 /* what the library takes before it restores */

/* Types of file groups that the library knows; every other one is the application's. */
#define TQ_BKUP_TYPE_MAIL_STORE 10   /* copied by the address-conversion library */
#define TQ_BKUP_TYPE_MAIL_CLIENT 13  /* with a clean-up step of its own before a restore */
#define TQ_BKUP_TYPE_WHOLE_FOLDER 64 /* a folder with all that is in it */

/* Buffer sizes in bytes, terminator included. */
#define TQ_BKUP_ID_SIZE 6      /* backup id: five digits */
#define TQ_BKUP_GRP_ID_SIZE 11 /* file-group id: backup id and five digits */
#define TQ_BKUP_INFO_SIZE 130  /* description */
#define TQ_BKUP_DATE_SIZE 32   /* "2003/7/5 09:04"; room for any numbers that a history may claim */
#define TQ_BKUP_TEXT_SIZE 260  /* texts of the settings */

/* Values of CBackUpCtl::ErrorCause. */
#define TQ_BKUP_CAUSE_NONE (-1) /* nothing failed yet */
#define TQ_BKUP_CAUSE_MEMORY 0  /* out of memory */
#define TQ_BKUP_CAUSE_FOLDER 1  /* the backup's folder could not be made */
#define TQ_BKUP_CAUSE_FILE 2    /* a file could not be opened or read, or is not there */
#define TQ_BKUP_CAUSE_WRITE_PROTECTED 3
#define TQ_BKUP_CAUSE_NOT_READY 4
#define TQ_BKUP_CAUSE_BAD_DISK 5
#define TQ_BKUP_CAUSE_WRITE_FAULT 6
#define TQ_BKUP_CAUSE_READ_FAULT 7
#define TQ_BKUP_CAUSE_DISK_FULL 8
#define TQ_BKUP_CAUSE_OTHER 9 /* anything else, and a copy whose size is not the recorded one */

/* A calendar moment, field for field the SYSTEMTIME of Windows. */
typedef struct tBKUP_TIME {
  uint16_t year;
  uint16_t month;     /* 1-12 */
  uint16_t dayOfWeek; /* 0 = Sunday */
  uint16_t day;
  uint16_t hour;
  uint16_t minute;
  uint16_t second;
  uint16_t milliseconds;
} tBKUP_TIME;

/* A count of 100 ns since 1601-01-01 UTC, field for field the FILETIME of Windows. */
typedef struct tBKUP_FILETIME {
  uint32_t low;
  uint32_t high;
} tBKUP_FILETIME;

/* One backup. */
typedef struct tBKUP_INFO {
  char id[TQ_BKUP_ID_SIZE];
  short kind;                     /* as the caller gave it */
  tBKUP_TIME time;                /* local time at which the run started */
  char info[TQ_BKUP_INFO_SIZE];   /* description; a history keeps 128 bytes of it */
  int32_t groupCnt;               /* file groups, empty ones included */
  char historyPath[TQ_PATH_SIZE]; /* the `.BKH` file */
  int32_t generation;             /* among the backups of its kind, 1 = newest; set by sorting */
  int32_t cap;                    /* capacity of the table, in its first row */
} tBKUP_INFO;

/* One file of a group, or a folder that a whole-folder group has to make again. */
typedef struct tBKUP_FILE {
  short type;                    /* the group's */
  short fileKind;                /* the caller's */
  char path[TQ_PATH_SIZE];       /* the original */
  char backupPath[TQ_PATH_SIZE]; /* the copy; "dummy" for a folder; empty until the run */
  tBKUP_FILETIME created;        /* of the original, like all that follows */
  tBKUP_FILETIME accessed;
  tBKUP_FILETIME written;
  uint32_t attributes; /* file attribute bits of Windows */
  uint32_t size;       /* bytes, the low 32 bits; 1 for a file that was not there */
  int32_t cap;         /* capacity of the table, in its first row */
} tBKUP_FILE;

/* One group of files. */
typedef struct tBKUP_FIELGRP {
  char id[TQ_BKUP_GRP_ID_SIZE]; /* backup id and the group's position */
  short type;
  char name[TQ_PATH_SIZE]; /* for a whole folder, the folder */
  int32_t fileCnt;
  tBKUP_FILE* files; /* owned by the group */
  short restore;     /* non-zero: to be restored; not part of the history */
  int32_t cap;       /* capacity of the table, in its first row */
} tBKUP_FIELGRP;

#ifdef __cplusplus
#include <memory>

/* Prepares one backup, serves one list of backups, and restores and deletes; these three do not
 * disturb each other. Unless told otherwise operations give 0 for success and 1 for failure. */
class TQ_API CBackUpCtl {
 public:
  /* Asks for the data and backup folder, makes them, and reads the generation count. */
  CBackUpCtl();
  ~CBackUpCtl();
  CBackUpCtl(const CBackUpCtl&) = delete;
  CBackUpCtl& operator=(const CBackUpCtl&) = delete;

  /* How many backups of each kind stay: always the count that the settings hold for kind 0. Set
   * stores and writes it (always 0), Get reads it again. */
  short SetGenerationCnt(short count);
  short GetGenerationCnt();

  /* Starts over with a new backup of that kind and gives it the lowest free id. Always 0. */
  short CreateBackUp(short kind);
  /* The description, at most 128 bytes. Line breaks become blanks, and a blank is put before a ';'
   * at its start, since histories are read by lines and ';' begins a comment. Always 0. */
  short SetBackUpInfo(const unsigned char* text);
  /* Adds a group; `name` may be null. For type 64 it is the folder, and every folder below it that
   * has no sub-folder is recorded. 1 when memory is out, and for a name that no history can hold
   * (longer than a path, or with a line break). */
  short StartBackUpFileGrp(short type, const unsigned char* name);
  /* Adds a file to the last group. One that is not there is recorded too, but then the run fails.
   * 1 when there is no group or the file cannot be recorded. */
  short AddBackUpFileGrp(const unsigned char* path, short fileKind);
  /* The same with the file kind that `fldcom` makes of `text` (may be null); only for groups of
   * type 0, else 0. */
  short AddBackUpFileGrp(const unsigned char* path, const unsigned char* text);
  /* Copies everything while it shows its progress. 0; 1 when the user stopped it or the backup's
   * folder could not be made; -1 when a copy failed. After a failure no copy is left. An id that
   * somebody else took since CreateBackUp is exchanged for the next free one. */
  short StartBackUp();
  /* Records the backup in its history file and deletes the oldest backups of its kind beyond the
   * generation count. 1 without a StartBackUp that succeeded, and when the history cannot be
   * written. With a generation count below 1 nothing is done. */
  short RenewalBackUp();
  /* Forgets the backup that is being prepared. Always 0. */
  short FreeBackUp();

  /* Lists the backups of a kind (negative: all), by kind and then newest first. Their number, or -1
   * when a history file cannot be read or memory is out; what was listed until then stays. */
  int32_t ReadBackUpFileList(short kind);
  /* Back to the first backup; always 0. Then the next one; 1 at the end. */
  short GetBackUpFileListInit();
  short GetBackUpFileListNext(unsigned char* id, short* kind, unsigned char* dateText,
                              unsigned char* infoText, int32_t* groupCount);
  /* Loads the groups of a listed backup; their number (groups without files are not among them), or
   * -1 when it is not listed or its history cannot be opened. Then the next one; 1 at the end. */
  int32_t GetBackUpFileGrpInit(const unsigned char* id);
  short GetBackUpFileGrpNext(unsigned char* groupId, short* type, int32_t* fileCount);
  /* Selects one of these groups; its file count, or -1. Then its next file; 1 at the end. The date
   * is the local time of the last change. */
  int32_t GetBackUpFileInit(const unsigned char* groupId);
  short GetBackUpFileNext(unsigned char* path, unsigned char* backupPath, unsigned char* dateText,
                          uint32_t* size, short* fileKind);

  /* Restoring. Before files are changed a backup of kind 4 is made of what is there now, so that a
   * restore can be undone; whole folders alone make none. Nothing is changed, and the result is 1,
   * when the history names a place that no restore may touch (the error box tells which), or when
   * the user cancels the choice of a folder; it is -1 when a copy is missing or has not its size.
   */

  /* The backup of a kind with that generation (1 = newest). 1 when there is none or the backup
   * before failed; -1 when list or history cannot be read or a file could not be restored. */
  short AutoRestoreGrp(short kind, short generation);
  /* Generation 1, without a backup before: the way back after an operation that failed. */
  short ErrRestoreGrp(short kind);
  /* The backup with that id; -1 when there is none. */
  short RestoreGrp(const unsigned char* id);
  /* One file group of any backup. 1 when it is not found or its history cannot be read; -1 when the
   * backup before or a copy failed. */
  short RestoreFile(const unsigned char* groupId);
  /* Loads a backup's groups with no group marked; marks one; restores the marked ones (-1 when the
   * backup before or a copy failed). */
  short RestoreFileInit(const unsigned char* id);
  short RestoreFileSet(const unsigned char* groupId);
  short RestoreFileStart();

  /* Deletes every backup; stops with 1 at the first that cannot be deleted whole. */
  short DeleteBkupAll();
  /* Deletes the backup of that kind and generation, or with that id. 1 when there is none, and when
   * its folder holds a file that the history does not know: folder and file stay then. -1 when the
   * folder or the history file could not be deleted. */
  short DeleteAutoBkupGrp(short kind, short generation);
  short DeleteBkupGrp(const unsigned char* id);

  /* Whether the next backup of that kind will rotate one away that holds a mail store, so that the
   * mail client has to be there: 1 or 0. */
  short IsNeedOutlook(short kind);

  /* Why the last failing operation failed (TQ_BKUP_CAUSE_*), and the path concerned (TQ_PATH_SIZE
   * bytes, empty when there is none). Neither is cleared by a success. */
  short ErrorCause() const;
  void ErrorPath(char* path) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};
#endif

TQ_BEGIN_DECLS

/* Over handles: 20 slots, one table for runs, lists and selective restores. A dead handle gives 1
 * unless told otherwise; closing a closed one gives 0. */

/* A run. The handle, 0 when no slot or no memory is left. */
int32_t TQ_CALL tqCreateBackUp(short kind) TQ_NOEXCEPT;
short TQ_CALL tqSetBackUpInfo(int32_t handle, const char* text) TQ_NOEXCEPT;
short TQ_CALL tqStartBackUpFileGrp(int32_t handle, short type, const char* name) TQ_NOEXCEPT;
short TQ_CALL tqAddBackUpFileGrp(int32_t handle, const char* path, short fileKind) TQ_NOEXCEPT;
short TQ_CALL tqStartBackUp(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL tqRenewalBackUp(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL tqFreeBackUp(int32_t handle) TQ_NOEXCEPT;

/* A list. The handle with the number of backups in *count; 0 with 0 when it cannot be read. */
int32_t TQ_CALL tqOpenBackUpFileList(short kind, int32_t* count) TQ_NOEXCEPT;
short TQ_CALL tqGetBackUpFileListInit(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL tqGetBackUpFileListNext(int32_t handle, char* id, short* kind, char* dateText,
                                      char* infoText, int32_t* groupCount) TQ_NOEXCEPT;
int32_t TQ_CALL tqGetBackUpFileGrpInit(int32_t handle, const char* id) TQ_NOEXCEPT;
short TQ_CALL tqGetBackUpFileGrpNext(int32_t handle, char* groupId, short* type,
                                     int32_t* fileCount) TQ_NOEXCEPT;
int32_t TQ_CALL tqGetBackUpFileInit(int32_t handle, const char* groupId) TQ_NOEXCEPT;
short TQ_CALL tqGetBackUpFileNext(int32_t handle, char* path, char* backupPath, char* dateText,
                                  uint32_t* size, short* fileKind) TQ_NOEXCEPT;
short TQ_CALL tqCloseBackUpFileList(int32_t handle) TQ_NOEXCEPT;

/* Restoring and deleting with an object of their own; 1 when memory is out. */
short TQ_CALL tqAutoRestoreGrp(short kind, short generation) TQ_NOEXCEPT;
short TQ_CALL tqErrRestoreGrp(short kind) TQ_NOEXCEPT;
short TQ_CALL tqRestoreGrp(const char* id) TQ_NOEXCEPT;
short TQ_CALL tqRestoreFile(const char* groupId) TQ_NOEXCEPT;
short TQ_CALL tqDeleteBkupAll(void) TQ_NOEXCEPT;
short TQ_CALL tqDeleteAutoBkupGrp(short kind, short generation) TQ_NOEXCEPT;
short TQ_CALL tqDeleteBkupGrp(const char* id) TQ_NOEXCEPT;

/* A selective restore: a handle (0 on failure), marks, start. The handle of Set comes second. */
int32_t TQ_CALL tqRestoreFileInit(const char* id) TQ_NOEXCEPT;
short TQ_CALL tqRestoreFileSet(const char* groupId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL tqRestoreFileStart(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL tqRestoreFileClose(int32_t handle) TQ_NOEXCEPT;

/* As the member; -1 when no slot or no memory is left. */
short TQ_CALL tqIsNeedOutlook(short kind) TQ_NOEXCEPT;

/* The settings. Writers give non-zero when the value has reached the disk. */

/* Generation counts by kind, 3 when not set. Writing knows kinds 0, 1 and 3 by name, reading 0, 1
 * and 2; all others share one count. Kinds 2 and 3 therefore do not read what was written. */
short TQ_CALL setBkupGeneration(short kind, short count) TQ_NOEXCEPT;
short TQ_CALL getBkupGeneration(short kind) TQ_NOEXCEPT;
/* The same for kind 0, the count that every backup goes by. */
short TQ_CALL tqSetGenerationCnt(uint16_t count) TQ_NOEXCEPT;
short TQ_CALL tqGetBkupGeneration(void) TQ_NOEXCEPT;
/* A path that the application keeps by kind (0, 1, any other) and number. Reading fills 260 bytes
 * (empty when not set) and gives the number of bytes before the terminator. */
short TQ_CALL setBkupFilePath(short kind, short number, const char* path) TQ_NOEXCEPT;
int32_t TQ_CALL getBkupFilePath(short kind, short number, char* path) TQ_NOEXCEPT;

/* What the library and the mail-store transfer of `adrconv` tell each other. Transfer flag: 0 back
 * up, 1 restore, 2 delete (0 when not set). Status flag: -9 asked for, 0 done, else failed (1 when
 * not set). Folder name: under which the copy is kept, 260 bytes. */
short TQ_CALL tqSetPstTrFlg(short value) TQ_NOEXCEPT;
short TQ_CALL tqGetPstTrFlg(void) TQ_NOEXCEPT;
short TQ_CALL tqSetPstStsFlg(short value) TQ_NOEXCEPT;
short TQ_CALL tqGetPstStsFlg(void) TQ_NOEXCEPT;
short TQ_CALL tqSetPstFolderName(const char* text) TQ_NOEXCEPT;
int32_t TQ_CALL tqGetPstFolderName(char* text) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_BACKUP_H_ */
