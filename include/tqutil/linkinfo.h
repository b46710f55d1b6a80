/* Links from a master record to the records of partner files that stand behind it, with weights.
 * Kept in memory for one run. Sync ids travel as text (see records.h). One calling thread at a
 * time.
 */
#ifndef TQUTIL_LINKINFO_H_
#define TQUTIL_LINKINFO_H_

#include <tqutil/config.h>
#include <tqutil/records.h>

#ifdef __cplusplus
#include <memory>

/* The links of one run. Ids come as sync id text, null reads as empty. */
class TQ_API CLinkInfoCtl {
 public:
  CLinkInfoCtl();
  ~CLinkInfoCtl();
  CLinkInfoCtl(const CLinkInfoCtl&) = delete;
  CLinkInfoCtl& operator=(const CLinkInfoCtl&) = delete;

  /* Adds a member file with room for `recCnt` records; its key text is cut to 7 bytes. The file's
   * index, -1 when there is no memory or no index left. */
  short SylkAddFileInfo(const unsigned char* fileKey, short recCnt);
  /* Stores a sync id as record `recNo` of a file. 0; an index out of range stores nothing and
   * gives 1. */
  short SylkAddRecID(short file, int32_t recNo, const unsigned char* syncId);
  /* The lowest number that is not the record number of any master. */
  int32_t SylkGetMstLinkNo();
  /* Adds a master without origins; its index, -1 when there is no memory. `linkNo` is only stored.
   * Of masters with the same id only the first is ever found. */
  int32_t SylkAddMstLinkInfo(int32_t linkNo, const unsigned char* mstSyncId);
  /* Adds an origin to the master with that id. 0; 1 when there is none or no memory, nothing
   * changed. */
  short SylkAddOrgLinkInfo(const unsigned char* mstSyncId, const unsigned char* orgSyncId,
                           int32_t value);
  /* The master's origins and their values, `*cnt` each; the first element's `cap` is the size of
   * the block. The arrays belong to the object and are good until its next change or walk. Read
   * them only: the object keeps lookups of what they hold. Null and 0 when the master is unknown or
   * has no origins. */
  tSYNC_ID* SylkGetMstLinkOrgInfo(const unsigned char* mstSyncId, int32_t* cnt);
  tVAL_INFO* SylkGetMstLinkValInfo(const unsigned char* mstSyncId, int32_t* cnt);
  /* 1 when the master has an origin from the member file that `recId` (group and file) names, else
   * 0. */
  short SylkSchLinkMst2Org(const unsigned char* mstSyncId, const unsigned char* recId);
  /* Walks a master's origins of one member file by falling value. Start with `*pos` 0 (which sorts
   * the origins), go on with the returned position plus one. 0 with the id (TQ_SYNC_ID_SIZE bytes)
   * and its position; 1 at the end, for an unknown master or a negative position, `*pos` untouched
   * and the text empty. A null text or position gives 1. */
  short SylkGetLinkMst2OrgID(const unsigned char* mstSyncId, const unsigned char* recId,
                             unsigned char* orgSyncId, int32_t* pos);

 private:
  struct State;
  std::unique_ptr<State> state_;
};
#endif

TQ_BEGIN_DECLS

/* Over handles (10 slots). A dead handle gives -1, or null with *cnt 0. */

/* A handle, 0 on failure. */
int32_t TQ_STDCALL CreateSylkCtl(void) TQ_NOEXCEPT;
/* -1 for handle 0, else 0. */
short TQ_STDCALL FreeSylkCtl(int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SylkAddFileInfo(const unsigned char* fileKey, short recCnt,
                              int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SylkAddRecID(short file, int32_t recNo, const unsigned char* syncId,
                           int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL SylkGetMstLinkNo(int32_t handle) TQ_NOEXCEPT;
int32_t TQ_CALL SylkAddMstLinkInfo(int32_t linkNo, const unsigned char* mstSyncId,
                                   int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SylkAddOrgLinkInfo(const unsigned char* mstSyncId, const unsigned char* orgSyncId,
                                 int32_t value, int32_t handle) TQ_NOEXCEPT;
tSYNC_ID* TQ_CALL SylkGetMstLinkOrgInfo(const unsigned char* mstSyncId, int32_t* cnt,
                                        int32_t handle) TQ_NOEXCEPT;
tVAL_INFO* TQ_CALL SylkGetMstLinkValInfo(const unsigned char* mstSyncId, int32_t* cnt,
                                         int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SylkSchLinkMst2Org(const unsigned char* mstSyncId, const unsigned char* recId,
                                 int32_t handle) TQ_NOEXCEPT;
short TQ_CALL SylkGetLinkMst2OrgID(const unsigned char* mstSyncId, const unsigned char* recId,
                                   unsigned char* orgSyncId, int32_t* pos,
                                   int32_t handle) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_LINKINFO_H_ */
