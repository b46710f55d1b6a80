/* Candidate groups of duplicates: pairs of master and origin records that may be the same go in,
 * connected groups come out.
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

#define TQ_CTD_TITLE_SIZE 256 /* bytes of a title, terminator included */

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

TQ_END_DECLS

#ifdef __cplusplus
#include <memory>

/* Candidate groups. Assigning one object to another lets both share the same groups until one of
 * them gives its share up (`FreeData`, `CopyData`, destruction); the last one releases them. The
 * title is each object's own. Ids come as sync id text, null reads as empty; texts that are written
 * need TQ_SYNC_ID_SIZE bytes. */
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
  /* Gives up the groups. Afterwards the object serves only the group operations. */
  void FreeData();

  /* The title, at most 255 bytes (cut at a character); null is ignored. The output needs
   * TQ_CTD_TITLE_SIZE bytes. */
  void SetCtdTitle(const char* title);
  void GetCtdTitle(char* title);

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

TQ_END_DECLS

#endif /* TQUTIL_CTD_H_ */
