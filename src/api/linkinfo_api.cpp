// Flat functions of link information: handles over CLinkInfoCtl.
#include "api/handle_table.h"
#include "tqutil/linkinfo.h"

namespace {

constexpr std::size_t kSlots = 10;
tq::HandleTable<CLinkInfoCtl, kSlots> handles;

// A member that gives a number: -1 for a dead handle.
template <class Result, class... Params, class... Args>
Result call(int32_t handle, Result (CLinkInfoCtl::*member)(Params...), Args... args) noexcept {
  return tq::with(handles, handle, Result{-1},
                  [&](CLinkInfoCtl& object) { return (object.*member)(args...); });
}

// A member that gives an array: null for a dead handle, with a count of 0.
template <class Record>
Record* array(int32_t handle, Record* (CLinkInfoCtl::*member)(const unsigned char*, int32_t*),
              const unsigned char* mstSyncId, int32_t* cnt) noexcept {
  if (cnt != nullptr) *cnt = 0;
  return tq::with(handles, handle, static_cast<Record*>(nullptr),
                  [&](CLinkInfoCtl& object) { return (object.*member)(mstSyncId, cnt); });
}

}  // namespace

int32_t TQ_STDCALL CreateSylkCtl() noexcept {
  return handles.open([](CLinkInfoCtl&) { return true; });
}

short TQ_STDCALL FreeSylkCtl(int32_t handle) noexcept { return handles.close(handle, -1); }

short TQ_CALL SylkAddFileInfo(const unsigned char* fileKey, short recCnt, int32_t handle) noexcept {
  return call(handle, &CLinkInfoCtl::SylkAddFileInfo, fileKey, recCnt);
}

short TQ_CALL SylkAddRecID(short file, int32_t recNo, const unsigned char* syncId,
                           int32_t handle) noexcept {
  return call(handle, &CLinkInfoCtl::SylkAddRecID, file, recNo, syncId);
}

int32_t TQ_CALL SylkGetMstLinkNo(int32_t handle) noexcept {
  return call(handle, &CLinkInfoCtl::SylkGetMstLinkNo);
}

int32_t TQ_CALL SylkAddMstLinkInfo(int32_t linkNo, const unsigned char* mstSyncId,
                                   int32_t handle) noexcept {
  return call(handle, &CLinkInfoCtl::SylkAddMstLinkInfo, linkNo, mstSyncId);
}

short TQ_CALL SylkAddOrgLinkInfo(const unsigned char* mstSyncId, const unsigned char* orgSyncId,
                                 int32_t value, int32_t handle) noexcept {
  return call(handle, &CLinkInfoCtl::SylkAddOrgLinkInfo, mstSyncId, orgSyncId, value);
}

tSYNC_ID* TQ_CALL SylkGetMstLinkOrgInfo(const unsigned char* mstSyncId, int32_t* cnt,
                                        int32_t handle) noexcept {
  return array(handle, &CLinkInfoCtl::SylkGetMstLinkOrgInfo, mstSyncId, cnt);
}

tVAL_INFO* TQ_CALL SylkGetMstLinkValInfo(const unsigned char* mstSyncId, int32_t* cnt,
                                         int32_t handle) noexcept {
  return array(handle, &CLinkInfoCtl::SylkGetMstLinkValInfo, mstSyncId, cnt);
}

short TQ_CALL SylkSchLinkMst2Org(const unsigned char* mstSyncId, const unsigned char* recId,
                                 int32_t handle) noexcept {
  return call(handle, &CLinkInfoCtl::SylkSchLinkMst2Org, mstSyncId, recId);
}

short TQ_CALL SylkGetLinkMst2OrgID(const unsigned char* mstSyncId, const unsigned char* recId,
                                   unsigned char* orgSyncId, int32_t* pos,
                                   int32_t handle) noexcept {
  return call(handle, &CLinkInfoCtl::SylkGetLinkMst2OrgID, mstSyncId, recId, orgSyncId, pos);
}
