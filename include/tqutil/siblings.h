/* The tables through which the library calls the application's other libraries.
 *
 * The library asks five siblings for what it does not own: `fldcom` (folders, captions, field
 * files, history numbering), `recdb` (field definitions of the record database), `adrconv` (address
 * conversion, mail-store transfer), `hstytmp` (the store that records history while a phase runs)
 * and `errbox` (messages to the user); a sixth table shows the dialogs. Every operation has a
 * built-in default, so the library runs out of the box; an application replaces what it does
 * better.
 *
 * Conventions of all tables:
 *  1. `size` is sizeof(the table) as the application was compiled; tables only grow at their end,
 * and entries past `size` count as null. `context` is handed to every entry as its first argument.
 *  2. A null entry keeps the built-in default.
 *  3. Texts are Shift-JIS with a terminating zero. A path buffer has 262 bytes, captions too.
 *  4. Integers are 32 bits unless a field or argument says otherwise; 16-bit ones are `short`.
 *  5. Entries are called on the thread that called the library and must not throw.
 */
#ifndef TQUTIL_SIBLINGS_H_
#define TQUTIL_SIBLINGS_H_

#include <stdint.h>
#include <tqutil/config.h>

TQ_BEGIN_DECLS

/* --- fldcom -------------------------------------------------------------------------------------
 */

/* One row of the application table. */
typedef struct tFLDCOM_APPREC {
  short appNo;   /* application number */
  short appType; /* application type */
  char name[62]; /* for people */
} tFLDCOM_APPREC;

/* One record of a field file. */
typedef struct tFLDCOM_FLDREC {
  short fldId;       /* field id */
  short dataId;      /* position of the field's data in the partner's record, from 0 */
  char heading[256]; /* column heading */
} tFLDCOM_FLDREC;

typedef struct tFLDCOM_API {
  uint32_t size;
  void* context;

  /* Folders, each into 262 bytes; a trailing backslash may be missing. Program: "APPINFO.DAT".
   * Definition: "SYNCKEY.DAT". Data: backup settings and histories. Work: temporary files of a run.
   * Group: the `.SYG` files. Member: one sub-folder a group. 1, 2a, 2b, 3: field files of the three
   * lists. */
  void(TQ_CALL* FldComGetProgramFolder)(void* context, char* folder);
  void(TQ_CALL* FldComGetDefFolder)(void* context, char* folder);
  void(TQ_CALL* FldComGetDataFolder)(void* context, char* folder);
  void(TQ_CALL* FldComGetWorkFolder)(void* context, char* folder);
  void(TQ_CALL* FldComGetBackupFolder)(void* context, char* folder);
  void(TQ_CALL* FldComGetGroupFolder)(void* context, char* folder);
  void(TQ_CALL* FldComGetMemberFolder)(void* context, char* folder);
  void(TQ_CALL* FldComGetFldFolder1)(void* context, char* folder);
  void(TQ_CALL* FldComGetFldFolder2a)(void* context, char* folder);
  void(TQ_CALL* FldComGetFldFolder2b)(void* context, char* folder);
  void(TQ_CALL* FldComGetFldFolder3)(void* context, char* folder);

  /* The title of the library's windows, 262 bytes. */
  void(TQ_CALL* FldComGetCaption)(void* context, char* caption);
  /* What a file group of this type is called while it is copied, 262 bytes. */
  void(TQ_CALL* FldComGetGroupCaption)(void* context, short type, char* caption);

  /* The application table: `*count` rows that stay valid until the next call. Null when there is
   * none. */
  const tFLDCOM_APPREC*(TQ_CALL* FldComGetAppInfoTable)(void* context, int32_t* count);

  /* Classifies the field file at `path` from its header: 0 with the two numbers, the title (262
   * bytes) and the comment (256 bytes); non-zero when it is no usable field file. Backups hand it
   * the text that the application gave for a file and use only `number`, the kind. Outputs may be
   * null. */
  short(TQ_CALL* FldComClassifyFile)(void* context, const char* path, short* number, char* title,
                                     char* comment, short* number2);

  /* Membership tests: opens a field file (null when it cannot be read), asks whether it carries a
   * field for an application (non-zero = yes; callers pass 1000 and 1 for `master` and `side`),
   * closes it. */
  void*(TQ_CALL* FldComFldDataInInit)(void* context, const char* fldFile);
  short(TQ_CALL* FldComIsFldDataIn)(void* context, short appNo, short master, short fldId,
                                    short side, void* test);
  void(TQ_CALL* FldComFldDataInEnd)(void* context, void* test);

  /* Field-file records: opens (mode "r"; null when it cannot be read), gives the next record (0
   * while there was one), closes. */
  void*(TQ_CALL* FldComFldFileOpen)(void* context, const char* fldFile, const char* mode);
  short(TQ_CALL* FldComFldFileRead)(void* context, void* file, tFLDCOM_FLDREC* record);
  void(TQ_CALL* FldComFldFileClose)(void* context, void* file);

  /* Prepares field comparison; given 0 and a work buffer of 260 bytes that is released afterwards.
   */
  void(TQ_CALL* FldComFldCompInit)(void* context, short zero, char* buffer);

  /* Under which history number and application id the history store files what follows. */
  void(TQ_CALL* FldComSetHistoryNo)(void* context, uint16_t number);
  void(TQ_CALL* FldComSetHistoryAppId)(void* context, uint16_t appId);

  /* Whether the application uses data of that group type (10 = mail store); non-zero = yes. */
  short(TQ_CALL* FldComHasDataSet)(void* context, short type);
  /* The files that make up the data set of a group, given its type and its first file's path: 0
   * with the count and that many paths (owned by the sibling, valid until the list is released). */
  short(TQ_CALL* FldComRelatedFiles)(void* context, short type, const char* path, int32_t* count,
                                     const char* const** paths);
  /* Clears the list (mode 0, before the query) or releases it (mode 1, after use). */
  void(TQ_CALL* FldComRelatedFilesReset)(void* context, short mode);
} tFLDCOM_API;

/* --- recdb --------------------------------------------------------------------------------------
 */

/* The database's description of one field. */
typedef struct tRECDB_FLDINFO {
  short fldId;
  short kind;       /* kind of data; 10 gives data type 2 in the master lists */
  short hidden;     /* non-zero: not shown */
  char table[66];   /* table to which the field belongs */
  char caption[66]; /* name for people */
} tRECDB_FLDINFO;

typedef struct tRECDB_API {
  uint32_t size;
  void* context;

  /* Number of field definitions. */
  int32_t(TQ_CALL* RecDbGetMstFldInfoCnt)(void* context);
  /* Field id and table name (66 bytes) of definition `index`; 0, or non-zero when there is none. */
  short(TQ_CALL* RecDbGetFldIdPair)(void* context, int32_t index, short* fldId, char* table);
  /* Caption and table name (66 bytes each, either may be null) of a field id; 0, or non-zero with
   * empty texts when there is none. */
  short(TQ_CALL* RecDbGetFldIdPair2)(void* context, short fldId, char* caption, char* table);
  /* The description of a field id; 0, or non-zero with a zeroed record when there is none. */
  short(TQ_CALL* RecDbGetFldInfo)(void* context, short fldId, tRECDB_FLDINFO* info);
  /* Non-zero when the field belongs to the second sync table. */
  short(TQ_CALL* RecDbIsFldSync2Tbl)(void* context, short fldId);
  /* Releases a text that the record database allocated, and the field names that the library's
   * readers make through `RecDbAllocData`. */
  void(TQ_CALL* RecDbFreeData)(void* context, void* data);
  /* Allocates what `RecDbFreeData` releases; null when memory is out. Replace both or neither. */
  void*(TQ_CALL* RecDbAllocData)(void* context, uint32_t bytes);
} tRECDB_API;

/* --- adrconv ------------------------------------------------------------------------------------
 */

typedef struct tADRCONV_API {
  uint32_t size;
  void* context;

  /* Non-zero when the field is an address field whose values are converted for display. */
  short(TQ_CALL* AdrConvIsConvField)(void* context, short fldId);
  /* Converts one value from the form of the record's own data to the master's. `cmpGrp` is the
   * field's compare group, `dataId` and `mstDataId` its data ids there and in the master. Writes at
   * most `size` bytes, terminator included; 0 when converted, non-zero when the value stays as it
   * is. */
  short(TQ_CALL* AdrConvConvert)(void* context, const char* text, short cmpGrp, short dataId,
                                 short mstDataId, char* out, int32_t size);
  /* Starts the mail-store transfer that the backup settings describe; called with mode 2. */
  void(TQ_CALL* AdrConvStartTransfer)(void* context, short mode);
  /* Non-zero while that transfer runs; asked every 500 ms. */
  short(TQ_CALL* AdrConvIsBusy)(void* context);
} tADRCONV_API;

/* --- hstytmp ------------------------------------------------------------------------------------
 */

#pragma pack(push, 1)
/* One record of the history store, 518 bytes. */
typedef struct tHSTYTMP_REC {
  uint16_t spare;
  int32_t recordNo;
  char name[256];
  char detail[256];
} tHSTYTMP_REC;
#pragma pack(pop)

typedef struct tHSTYTMP_API {
  uint32_t size;
  void* context;

  /* Discards the recorded records. */
  void(TQ_CALL* HstyTmpDelete)(void* context);
  /* Ends recording. */
  void(TQ_CALL* HstyTmpTerm)(void* context);
  /* Non-zero when there are recorded records. */
  short(TQ_CALL* HstyTmpExists)(void* context);
  /* The next record of a file number; 0 while there was one. */
  short(TQ_CALL* HstyTmpRead)(void* context, tHSTYTMP_REC* record, short fileNo);
  /* Records one record under the history number and application id that `fldcom` was told last; 0,
   * or non-zero when it could not be kept. The record layer of the application calls it while a
   * phase runs. */
  short(TQ_CALL* HstyTmpWrite)(void* context, const tHSTYTMP_REC* record);
} tHSTYTMP_API;

/* --- errbox -------------------------------------------------------------------------------------
 */

/* Answers of a message, the system's own numbers. */
#define TQ_ANSWER_OK 1
#define TQ_ANSWER_CANCEL 2
#define TQ_ANSWER_YES 6
#define TQ_ANSWER_NO 7

typedef struct tERRBOX_API {
  uint32_t size;
  void* context;

  /* Chooses the message to show next. Category 2: 4 a folder could not be created, 5 the question
   * whether to stop a backup, 6 a file of the same name is in the chosen folder, 7 a backup
   * history names a place that is not restored. `detail` (a path, may be null) is shown with it. */
  void(TQ_CALL* ErrBoxSetMessage)(void* context, short category, short number, const char* detail);
  /* Shows it and gives the answer (TQ_ANSWER_*). */
  short(TQ_CALL* ErrBoxShow)(void* context);
} tERRBOX_API;

/* --- dialogs ------------------------------------------------------------------------------------
 */

/* Answers of the missing-folder dialog. */
#define TQ_FOLDER_RECREATE 0
#define TQ_FOLDER_OTHER 1
#define TQ_FOLDER_CANCEL 2

typedef struct tDIALOG_API {
  uint32_t size;
  void* context;

  /* Progress: opens it (null when it cannot be shown; the run goes on without), sets the group and
   * file lines, moves the bar (0-100), asks whether cancel was pressed, forgets that, closes it.
   * `canCancel` 0 disables the button. */
  void*(TQ_CALL* DlgProgressOpen)(void* context, const char* caption, const char* heading,
                                  short canCancel);
  void(TQ_CALL* DlgProgressGroup)(void* context, void* progress, const char* text);
  void(TQ_CALL* DlgProgressFile)(void* context, void* progress, const char* text);
  void(TQ_CALL* DlgProgressPos)(void* context, void* progress, short percent);
  short(TQ_CALL* DlgProgressCancelled)(void* context, void* progress);
  void(TQ_CALL* DlgProgressResume)(void* context, void* progress);
  void(TQ_CALL* DlgProgressClose)(void* context, void* progress);

  /* Shows `message`, the missing folder and the file name; the answer is TQ_FOLDER_*. With
   * TQ_FOLDER_OTHER the chosen folder is in `chosen` (262 bytes). */
  short(TQ_CALL* DlgMissingFolder)(void* context, const char* caption, const char* message,
                                   const char* folder, const char* fileName, char* chosen);

  /* The mail-client setup notice with its notes (`note2` null: hidden, the dialog is smaller);
   * `helpFile` is the text file behind the third button. 0 continue, 1 stop. */
  short(TQ_CALL* DlgSetupNotice)(void* context, const char* caption, const char* note1,
                                 const char* note2, const char* helpFile);
} tDIALOG_API;

/* --- Installing
 * ----------------------------------------------------------------------------------- */

/* All tables of an application; each pointer may be null to keep that sibling's defaults. */
typedef struct tTQ_SIBLINGS {
  uint32_t size;
  const tFLDCOM_API* fldcom;
  const tRECDB_API* recdb;
  const tADRCONV_API* adrconv;
  const tHSTYTMP_API* hstytmp;
  const tERRBOX_API* errbox;
  const tDIALOG_API* dialog;
} tTQ_SIBLINGS;

/* Replaces all six tables at once: what is given is copied, so the structures may go afterwards;
 * what is null is the built-in default again. Null restores every default. 0, or 1 for a `size` too
 * small to hold anything. Call it before opening objects: open ones keep the folders that they
 * asked for. */
short TQ_CALL tqSetSiblings(const tTQ_SIBLINGS* siblings) TQ_NOEXCEPT;
/* Points the six pointers at the tables in force, so that an application's entry can call what was
 * there before. The tables belong to the library and change with the next tqSetSiblings. 0, or 1
 * when `size` is too small. */
short TQ_CALL tqGetSiblings(tTQ_SIBLINGS* siblings) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_SIBLINGS_H_ */
