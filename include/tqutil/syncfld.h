/* Field mapping: which fields each member file of a synchronisation has and where, how they stand
 * to the fields of the master, which of them are keys, and which may repeat without limit.
 *
 * Field ids are those of docs/fields.md; 970 (the record id) to 974 and 999 belong to every field
 * list. First the class, then the same operations over handles. One calling thread at a time.
 */
#ifndef TQUTIL_SYNCFLD_H_
#define TQUTIL_SYNCFLD_H_

#include <stdint.h>
#include <tqutil/config.h>
#include <tqutil/records.h>

/* One key field of an application. */
typedef struct tSYKY_KEY_ITEM {
  short grpSeq; /* running number of the key group; 0 after loading */
  short keyNo;  /* 0 after loading, and so is the next: applications rely on it */
  short subNo;
  short fldId;
  int32_t cap; /* capacity of the array, in its first item */
} tSYKY_KEY_ITEM;

/* One application of "SYNCKEY.DAT" and its key fields, in the file's order. */
typedef struct tSYKY_APP_TBL {
  short appType;
  short appNo;   /* kept; nothing here reads it */
  short itemCnt; /* number of items */
  tSYKY_KEY_ITEM* items;
  int32_t cap; /* capacity of the array, in its first entry */
} tSYKY_APP_TBL;

#define TQ_MSCH_TYPES 51 /* room for unlimited types in a search state */

/* Where a walk through unlimited groups and types stands (106 bytes). Zero it before the first
 * call; the same state must not serve both kinds of walk. */
typedef struct tSYNC_MSCH {
  short next;  /* row at which the walk goes on */
  short count; /* types given so far */
  short types[TQ_MSCH_TYPES];
} tSYNC_MSCH;

#ifdef __cplusplus
#include <memory>

/* The field tables of one run. A file index is what SyflAddFileInfo gave. In mode 0 the operations
 * see the main field lists, in any other mode the parallel lists of the second sync table. The
 * object owns its tables; the key tables are the process's. */
class TQ_API CSyncFldCtl {
 public:
  CSyncFldCtl();
  ~CSyncFldCtl();
  CSyncFldCtl(const CSyncFldCtl&) = delete;
  CSyncFldCtl& operator=(const CSyncFldCtl&) = delete;

  /* The keys of applications, from "SYNCKEY.DAT" in the definition folder (docs/formats.md). The
   * library reads them when it is loaded, and again when tqSetSiblings changes the folder. Reading
   * is 0 when the table is there already; 1 when the file cannot be read (nothing is loaded), its
   * header asks for more room than there is, or a line lacks its first three tokens (what stood
   * before it is kept). Releasing leaves the count as it was. */
  static short ReadSyncKeyFile();
  static void FreeSyncKeyFile();
  /* The field of an application type that serves a key number (the first in the order of the key
   * table, not of the file), -1 when there is none. The second entry of that type is asked when the
   * first has no such field, further ones never. */
  static short SykyGetKey(short appType, short keyNo);
  /* The same in one entry of the table; `appType` does not matter. */
  static short SykyGetKeyS(short appIndex, short appType, short keyNo);

  /* Attributes of a field (docs/fields.md). Without a row in the table: 0, 0, -1, -1, 99, -1, -1.
   * The search tables of field 970 are "RecordId". */
  short SykyIsMugen(short fldId) const;       /* heads an unlimited type */
  short SykyGetMugenType(short fldId) const;  /* unlimited type */
  short SykyGetMugenGrp(short fldId) const;   /* unlimited group */
  short SykyGetCmpGrp(short fldId) const;     /* compare group */
  short SykyGetFldRank(short fldId) const;    /* rank */
  short SykyFld2SchFld(short fldId) const;    /* search table in an ordinary file */
  short SykyFld2SchFldMst(short fldId) const; /* search table in the master */
  /* The name of a search table; null when there is none of that id. Static storage. */
  const char* SykyGetSchTblName(short schId) const;

  /* Starts over with room for so many member files; less than 1 makes room for none. Always 0. */
  short SyflCreateFileTbl(short capacity);
  /* Forgets all member files and the master. */
  void SyflFreeFileTbl();
  /* Which lists the operations see. Special fields and the fields that walks give are decided in
   * the mode that is set while files are added and the master is set. */
  void SyflSetMode(short mode);
  /* Adds a member file with the fields that its field file names, and the special fields of its
   * application. A file whose field file cannot be read is added without fields. Its index, -1 when
   * the table is full or memory is out. */
  int32_t SyflAddFileInfo(tSYNC_INFO* info);
  /* Takes the master's fields from its field file; one that cannot be read makes the master empty.
   * Always 0. */
  short SyflSetMstFileInfo(const unsigned char* masterFldFile);

  /* Of a member file. An index out of range gives -1, unless another value is told. */
  short SyflGetFldCnt(short file) const;                      /* fields in the list */
  short SyflGetFldId(short file, short pos) const;            /* by position, from 0 */
  short SyflGetMugen(short file, short pos) const;            /* unlimited type */
  short SyflGetSchFlg(short file, short pos) const;           /* search table */
  short SyflIsFldId(short file, short fldId) const;           /* 1 when listed, else 0 */
  short SyflIsOutPutFldId(short file, short fldId) const;     /* special flag, 1 if not listed */
  short SyflIsOutPutFldId2(short file, short fldId) const;    /* special flag, 0 if not listed */
  short SyflGetDataIdS(int32_t file, short fldId) const;      /* place of the data, -1 if none */
  short SyflGetExtGrpFldIdOrg(short file, short fldId) const; /* see SyflGetDataId */
  /* The place of a field's data: for the master SyflGetMstDataId of its compare group; otherwise
   * that of the field or, when the file lacks it, of the field that stands in for it: the first one
   * of the same key that the file has. -1 when there is none. */
  short SyflGetDataId(int32_t file, short fldId) const;

  /* Of the master: visible fields come first, hidden ones stay reachable behind them. A position
   * out of range gives -1. */
  short SyflGetMstFldCnt() const;    /* visible fields */
  short SyflGetMstFldCntMax() const; /* all */
  short SyflGetMstFldId(short pos) const;
  short SyflGetMstFldIdM(short pos) const;
  short SyflGetMstMugen(short pos) const;
  short SyflGetMstMugenM(short pos) const;
  short SyflGetMstType(short pos) const; /* data type: 0, 1 may repeat, 2 long text */
  short SyflGetMstTypeM(short pos) const;
  short SyflGetMstSchFlg(short pos) const;
  short SyflIsMstFld(short fldId) const;    /* 1 for a visible field */
  short SyflGetDataType(short fldId) const; /* of any field, -1 when there is none */
  /* The form in which the master keeps values of a compare group (the field does not matter): 3
   * for group 3, 1 for 11, 0 for 10 and 12 to 16, 99 (as it is) for all others. */
  short SyflGetMstDataId(short fldId, short cmpGrp) const;

  /* Fields that repeat without limit. Walks give -1 at the end. */
  short SykyGetMugenGrpCnt(short grp) const; /* fields of the group */
  /* The next unlimited type of a group: the first field of it that the master shows. */
  short SykyGetMugenGrpNext(short grp, tSYNC_MSCH* state) const;
  /* The field that heads the type of a field: -1 without a type, 0 when nothing heads it. */
  short SykyGetMugenTypeFld(short fldId) const;
  /* The next linked field of the type of a field. */
  short SykyGetMugenLinkFldNext(short fldId, tSYNC_MSCH* state) const;
  /* 1 when the field belongs to the group of telephone-book entries (field 512) or of telephones
   * (field 596), as the master was set; else 0. */
  short SykyIsKeiFldID(short fldId) const;
  /* The most types that a walk through a group can give: 20. */
  short SykyGetMugenGrpSizeMax() const;

  /* The key table: entries, null while nothing is loaded, and their number. The library's: read
   * them only. `s_keyIdTbl` is zero and serves nothing. */
  static tSYKY_APP_TBL* s_appTbl;
  static short s_appCnt;
  static short s_keyIdTbl[20];

 private:
  struct State;
  std::unique_ptr<State> state_;
};
#endif

TQ_BEGIN_DECLS

/* Over handles (ten slots, 0 is none). A dead handle gives -1, or what stands behind the line. */

/* A handle, 0 on failure. */
int32_t TQ_CALL CreateSyflCtl(void) TQ_NOEXCEPT;
/* 1 for handle 0, else 0. */
short TQ_CALL FreeSyflCtl(int32_t handle) TQ_NOEXCEPT;

short TQ_CALL SyflCreateFileTbl(short capacity, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflFreeFileTbl(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflSetMode(short mode, int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL SyflAddFileInfo(tSYNC_INFO* info, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflSetMstFileInfo(const unsigned char* masterFldFile, int32_t handle) TQ_NOEXCEPT;

short TQ_CALL SyflGetFldCnt(short file, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetFldId(short file, short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMugen(short file, short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetSchFlg(short file, short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflIsFldId(short file, short fldId, int32_t handle) TQ_NOEXCEPT;        /* 0 */
short TQ_CALL SyflIsOutPutFldId(short file, short fldId, int32_t handle) TQ_NOEXCEPT;  /* 0 */
short TQ_CALL SyflIsOutPutFldId2(short file, short fldId, int32_t handle) TQ_NOEXCEPT; /* 0 */
short TQ_CALL SyflGetDataIdS(int32_t file, short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetExtGrpFldIdOrg(short file, short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetDataId(int32_t file, short fldId, int32_t handle) TQ_NOEXCEPT;

short TQ_CALL SyflGetMstFldCnt(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMstFldCntMax(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMstFldId(short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMstFldIdM(short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMstMugen(short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMstMugenM(short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMstType(short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMstTypeM(short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMstSchFlg(short pos, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflIsMstFld(short fldId, int32_t handle) TQ_NOEXCEPT; /* 0 */
short TQ_CALL SyflGetDataType(short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SyflGetMstDataId(short fldId, short cmpGrp, int32_t handle) TQ_NOEXCEPT;

/* Any handle of 1 or more will do: the keys are the process's. */
short TQ_CALL SykyGetKey(short appType, short keyNo, int32_t handle) TQ_NOEXCEPT;

short TQ_CALL SykyIsMugen(short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyGetMugenType(short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyGetMugenGrp(short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyGetCmpGrp(short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyGetFldRank(short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyFld2SchFld(short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyFld2SchFldMst(short fldId, int32_t handle) TQ_NOEXCEPT;
const char* TQ_CALL SykyGetSchTblName(short schId, int32_t handle) TQ_NOEXCEPT; /* null */

short TQ_CALL SykyGetMugenGrpCnt(short grp, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyGetMugenGrpNext(short grp, tSYNC_MSCH* state, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyGetMugenTypeFld(short fldId, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyGetMugenLinkFldNext(short fldId, tSYNC_MSCH* state, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SykyIsKeiFldID(short fldId, int32_t handle) TQ_NOEXCEPT; /* 0 */
short TQ_CALL SykyGetMugenGrpSizeMax(int32_t handle) TQ_NOEXCEPT;

/* Field comparison: whether a field takes part in it. Every field does, whatever the handle is.
 * Twenty slots; opening gives a handle or 0, closing 1 for handle 0, else 0. */
int32_t TQ_CALL CreateFldCompCtl(void) TQ_NOEXCEPT;
short TQ_CALL FreeFldCompCtl(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL isFldComp(short fldId, int32_t handle) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_SYNCFLD_H_ */
