/* Candidate groups of duplicates: pairs of master and origin records that may be the same go in,
 * connected groups come out. The records of a group with their field texts are a second table; it
 * and the user's choice of what to merge travel between programs in two work files.
 *
 * Sync ids travel as text (see records.h). A group is named by its index, which is its place in the
 * order of creation; when two groups turn out to be one, the one with the lower index takes the
 * other's ids and later groups move down by one. One calling thread at a time.
 */
#ifndef TQUTIL_CTD_H_
#define TQUTIL_CTD_H_

#include <tqutil/config.h>
#include <tqutil/records.h>

TQ_BEGIN_DECLS

#define TQ_CTD_TITLE_SIZE 256  /* bytes of a title, terminator included */
#define TQ_CTD_TEXT_SIZE 40000 /* bytes of a formatted text, terminator included */

/* One field of the list given with a pair. The list ends at the first negative field number. */
typedef struct tSYNC_CTDTBL {
  short fldNo;
  uint16_t cap; /* ignored in a list; capacity of a stored array, in its first entry */
} tSYNC_CTDTBL;

/* Where a search stands. Zero it before the first call and leave it to the search from then on:
 * each call goes on at the cursor, and after the end it finds what was added since. A cursor with a
 * negative position finds nothing. */
typedef struct tSYNC_SCHINFO {
  int32_t grpPos; /* group at which the search goes on; unused in a search of one group */
  int32_t idPos;  /* place of the next id within it */
  int32_t spare;
  uint32_t recGrp;  /* record id searched for last: group number */
  uint32_t recFile; /* and file number */
} tSYNC_SCHINFO;

/* The two records of the record table have no gaps, whatever their fields are. */
#pragma pack(push, 1)

/* One field of a candidate record: its text; or one field of the table: its name. */
typedef struct tSYNC_FLDTBL {
  uint16_t fldId;
  char* text; /* may be null; reads as empty */
  uint16_t spare1;
  short used; /* set to 1 when the text went into a formatted one */
  uint16_t spare2[2];
  uint16_t cap; /* capacity of the array, in its first entry */
} tSYNC_FLDTBL;

#define TQ_CTD_ID_SIZE 278           /* bytes of a record's sync id text */
#define TQ_CTD_DESCRIPTION_SIZE 1128 /* bytes of a description */

/* One candidate record. Texts end with a zero. */
typedef struct tSYNC_CTDRECINFO {
  short dataNo; /* number of the file that the record belongs to, for the field mapping */
  char spare1[7];
  char syncId[TQ_CTD_ID_SIZE]; /* sync id as text */
  char description[TQ_CTD_DESCRIPTION_SIZE];
  short kind; /* the application's */
  char spare2[2];
  uint16_t merge; /* 1: the user chose this record */
  char spare3[2];
  short fldCnt;         /* entries of `fields`; 0 in records that were read from a file */
  tSYNC_FLDTBL* fields; /* one entry for each field of the table, in its order */
  char title[TQ_CTD_TITLE_SIZE];
  uint32_t cap; /* capacity of the array, in its first record */
} tSYNC_CTDRECINFO;

#pragma pack(pop)

/* Values of the merge state; others are kept as they are. */
#define TQ_MERGE_FIELDS 0  /* field by field: one choice a field */
#define TQ_MERGE_RECORDS 4 /* the marked records whole */

TQ_END_DECLS

#ifdef __cplusplus
#include <memory>

/* Candidate groups. Assigning one object to another lets both share the same groups until one of
 * them gives its share up (`FreeData`, `CopyData`, destruction); the last one releases them. The
 * title is each object's own. Ids come as sync id text, null reads as empty; texts that are written
 * need TQ_SYNC_ID_SIZE bytes.
 *
 * The record table is either the caller's (`SetCtdInfo`), who keeps it alive and unchanged in
 * number, or the object's own (`ReadCtdFile`), which lives until the object reads another one,
 * gives its data up or is destroyed. Record and field indexes count from 0; an index out of range
 * or a null output gives -1. Lengths are bytes without the terminator; lengths past 32767 read as
 * that. */
class TQ_API CCtdCtl {
 public:
  CCtdCtl();
  ~CCtdCtl();
  CCtdCtl(const CCtdCtl&);
  CCtdCtl& operator=(const CCtdCtl&);

  /* Records that an origin is a candidate duplicate of a master, with a score and the fields that
   * say so (may be null). Both ids known, in different groups: the groups become one, and score and
   * fields are dropped. Both known in the same group: nothing. Only one known: the other joins its
   * group, and the fields are added; the score is kept with the origin if that is the new one.
   * Neither: a new group. 0; -1 when there is no memory, nothing changed. */
  short AddCtdData(const char* orgId, int32_t score, const char* mstId, const tSYNC_CTDTBL* fields);
  /* Adds an origin with its score to the master's group (made when missing) unless it is in there;
   * never merges groups, so that an origin can be in several. 0; -1 for a null origin or without
   * memory, nothing changed. */
  short AddCtdData2(const tSYNC_ID* org, int32_t score, const char* mstId);

  /* Index of the first group that holds the id, -1 if none. */
  int32_t SchMstSyncID(const char* mstId);
  int32_t SchOrgSyncID(const char* orgId);

  /* Number of groups; master and origin ids of a group, 0 for an index out of range. */
  int32_t GetCtdCnt();
  int32_t GetCtdMstCnt(int32_t group);
  int32_t GetCtdOrgCnt(int32_t group);

  /* Handling groups one by one: clears all marks, gives the first group without a mark (-1 when all
   * are handled), marks a group (an index out of range is ignored). A group keeps its own mark when
   * it takes another one in. */
  void CtdSchInit();
  int32_t CtdSchNext();
  void CtdSchFlgSet(int32_t group);

  /* Walks. Each call gives the next id and 0, or 1 when there is no more (the text stays as it
   * was). A record id is the first six characters of a sync id: group and file.
   * All master ids group by group, handled groups included. */
  short FindCtdMstSyncID(char* id, tSYNC_SCHINFO* cursor);
  /* Origin ids of a member file, in groups that are not handled. An id that occurs in several
   * groups belongs to the first of them, handled or not, and is passed over in the others. Another
   * record id than the cursor's starts over. */
  short FindCtdOrgSyncID(const char* recId, char* id, tSYNC_SCHINFO* cursor);
  /* Origin ids of one group by file number, within a file by falling score; sorts the group when
   * the cursor is at its start. Only groups below 32768 can be named. */
  short FindCtdOrgSyncID2(short group, char* id, tSYNC_SCHINFO* cursor);
  /* The same, only ids whose file number is the record id's (its group number does not matter);
   * nothing for a handled group. */
  short FindCtdOrgSyncID3(short group, const char* recId, char* id, tSYNC_SCHINFO* cursor);

  /* Replaces all groups by as many as `source` has. The copied groups read as empty and are not
   * handled. Afterwards the object serves only the group operations. 0; -1 without memory, no
   * groups then. */
  short CopyData(CCtdCtl* source);
  /* Gives up the groups, the record table, the choices and the buffers. Afterwards the object
   * serves only the group operations; the files and formatted texts fail. */
  void FreeData();

  /* The title, at most 255 bytes (cut at a character); null is ignored. The output needs
   * TQ_CTD_TITLE_SIZE bytes. */
  void SetCtdTitle(const char* title);
  void GetCtdTitle(char* title);

  /* The record table. `fldMap` is the handle of the field mapping (syncfld.h) by which values are
   * converted. Negative counts and null arrays make the table empty. */
  void SetCtdInfo(uint32_t fldMap, int32_t recCnt, tSYNC_CTDRECINFO* records, short fldCnt,
                  tSYNC_FLDTBL* names);
  /* Null outputs are skipped. */
  void GetCtdInfo(int32_t* recCnt, tSYNC_CTDRECINFO** records, short* fldCnt, tSYNC_FLDTBL** names);
  /* An empty table. Nothing is released, so that a table read from a file can still be used. */
  void ClrCtdInfo();

  int32_t GetCtdRecCnt();
  short GetCtdFldCnt();
  /* Field names: length, longest length, text; and with the text the length of the longest value of
   * that field. The outputs need the length and a terminator. */
  short GetCtdFldNameSize(int32_t field);
  short GetCtdFldNameSizeMax();
  short GetCtdFldName(int32_t field, char* name);
  short GetCtdFldInfo(int32_t field, char* name, short* width);
  /* Values as they are: length, longest length of all, text. */
  short GetCtdFldStrSize(int32_t record, int32_t field);
  short GetCtdFldStrSizeMax();
  short GetCtdFldStr(int32_t record, int32_t field, char* text);
  /* A value as it is shown (docs/candidates.md): joined from its parts, converted where `adrconv`
   * says so, long texts cut to 250 bytes with "....." behind them. The output needs
   * TQ_CTD_TEXT_SIZE bytes. The last text is kept: asking again gives it as it was. Records that
   * were read from a file have no parts to join and give an empty text. -1 also after the data was
   * given up. */
  short GetCtdFldStrS(int32_t record, int32_t field, char* text);
  /* The length of the joined text, which becomes the kept one: GetCtdFldStrS of the same value then
   * gives it neither converted nor cut. */
  short mGetCtdFldStrSize(int32_t record, int32_t field);
  /* Title (TQ_CTD_TITLE_SIZE bytes), description (TQ_CTD_DESCRIPTION_SIZE) and kind. */
  short GetCtdRecTitleSize(int32_t record);
  short GetCtdRecTitleSizeMax();
  short GetCtdRecInfo(int32_t record, char* title, char* description, short* kind);

  /* Does nothing: the two files are "~CTDINFO.TMP" and "~MRGINFO.TMP" in the folder that was the
   * work folder when the object was made. Always 0. */
  short SetCtdFilePath(int32_t which, const char* ctdPath, const char* mrgPath);
  /* The record table with formatted values, to the candidate file and back (docs/candidates.md). A
   * file is replaced whole or stays as it was. Writing: 0, or 1. Reading: 0, 1 when the file cannot
   * be read (nothing changes), 2 when memory runs out (what was read until then is the table).
   * Reading makes a choice for each field, all 0. */
  short WriteCtdFile();
  short ReadCtdFile();

  /* The user's choice. A state of 3 is kept as 0; 4 takes the marks off all records. */
  void SetMargSts(short state, short subState);
  short GetMargSts1(); /* state */
  short GetMargSts2(); /* sub-state, the application's */
  /* One choice a field; there are none before a file was read. Setting ignores a bad index. */
  void SetMargInfo(short field, short choice);
  short GetMargInfo(short field);
  /* Marks a record; a bad index is ignored. */
  void SetMargPer(short record);
  /* The choice, to the merge file and back: 0, or 1 (reading: nothing changes). Reading a state of
   * 4 also splits the group that is being merged, the first that is not handled: marked records
   * stay, the others become a group of their own behind it; with none marked it stays whole. */
  short WriteMargFile();
  short ReadMargFile();

 private:
  struct State;
  std::unique_ptr<State> state_;
};
#endif

TQ_BEGIN_DECLS

/* The same over handles (20 slots); see the class for what each does. A dead handle gives -1, or
 * nothing where there is no result. */

/* A handle, 0 on failure. */
int32_t TQ_CALL CreateSyncCtdCtl(void) TQ_NOEXCEPT;
/* 1 for handle 0, else 0. */
short TQ_CALL FreeSyncCtdCtl(int32_t handle) TQ_NOEXCEPT;
/* A new object filled by `CopyData` from this one: its handle, 0 on failure. */
int32_t TQ_CALL CopySyncCtdCtl(int32_t handle) TQ_NOEXCEPT;

short TQ_CALL AddCtdData(const char* orgId, int32_t score, const char* mstId,
                         const tSYNC_CTDTBL* fields, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL AddCtdData2(const tSYNC_ID* org, int32_t score, const char* mstId,
                          int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL SchMstSyncID(const char* mstId, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL SchOrgSyncID(const char* orgId, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL GetCtdCnt(int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL GetCtdMstCnt(int32_t group, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL GetCtdOrgCnt(int32_t group, int32_t handle) TQ_NOEXCEPT;
void TQ_CALL CtdSchInit(int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL CtdSchNext(int32_t handle) TQ_NOEXCEPT;
void TQ_CALL CtdSchFlgSet(int32_t group, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL FindCtdMstSyncID(char* id, tSYNC_SCHINFO* cursor, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL FindCtdOrgSyncID(const char* recId, char* id, tSYNC_SCHINFO* cursor,
                               int32_t handle) TQ_NOEXCEPT;
short TQ_CALL FindCtdOrgSyncID2(short group, char* id, tSYNC_SCHINFO* cursor,
                                int32_t handle) TQ_NOEXCEPT;
short TQ_CALL FindCtdOrgSyncID3(short group, const char* recId, char* id, tSYNC_SCHINFO* cursor,
                                int32_t handle) TQ_NOEXCEPT;
void TQ_CALL SetCtdTitle(const char* title, int32_t handle) TQ_NOEXCEPT;
void TQ_CALL GetCtdTitle(char* title, int32_t handle) TQ_NOEXCEPT;

void TQ_CALL SetCtdInfo(uint32_t fldMap, int32_t recCnt, tSYNC_CTDRECINFO* records, short fldCnt,
                        tSYNC_FLDTBL* names, int32_t handle) TQ_NOEXCEPT;
void TQ_CALL GetCtdInfo(int32_t* recCnt, tSYNC_CTDRECINFO** records, short* fldCnt,
                        tSYNC_FLDTBL** names, int32_t handle) TQ_NOEXCEPT;
void TQ_CALL ClrCtdInfo(int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL GetCtdRecCnt(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdFldCnt(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdFldNameSize(int32_t field, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdFldNameSizeMax(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdFldName(int32_t field, char* name, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdFldInfo(int32_t field, char* name, short* width, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdFldStrSize(int32_t record, int32_t field, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdFldStrSizeMax(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdFldStr(int32_t record, int32_t field, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdFldStrS(int32_t record, int32_t field, char* text, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdRecTitleSize(int32_t record, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdRecTitleSizeMax(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCtdRecInfo(int32_t record, char* title, char* description, short* kind,
                            int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SetCtdFilePath(int32_t which, const char* ctdPath, const char* mrgPath,
                             int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteCtdFile(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL ReadCtdFile(int32_t handle) TQ_NOEXCEPT;
void TQ_CALL SetMargSts(short state, short subState, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetMargSts1(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetMargSts2(int32_t handle) TQ_NOEXCEPT;
void TQ_CALL SetMargInfo(short field, short choice, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetMargInfo(short field, int32_t handle) TQ_NOEXCEPT;
void TQ_CALL SetMargPer(short record, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL WriteMargFile(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL ReadMargFile(int32_t handle) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_CTD_H_ */
