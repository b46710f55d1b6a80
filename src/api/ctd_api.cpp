// Flat functions of candidate groups: handles over CCtdCtl.
#include "api/handle_table.h"
#include "tqutil/ctd.h"

namespace {

constexpr std::size_t kSlots = 20;
tq::HandleTable<CCtdCtl, kSlots> handles;

// A member that gives a result: -1 for a dead handle.
template <class Result, class... Params, class... Args>
Result call(int32_t handle, Result (CCtdCtl::*member)(Params...), Args... args) noexcept {
  return tq::with(handles, handle, Result{-1},
                  [&](CCtdCtl& object) { return (object.*member)(args...); });
}

// A member that gives none.
template <class... Params, class... Args>
void call(int32_t handle, void (CCtdCtl::*member)(Params...), Args... args) noexcept {
  tq::with(handles, handle, 0, [&](CCtdCtl& object) {
    (object.*member)(args...);
    return 0;
  });
}

}  // namespace

int32_t TQ_CALL CreateSyncCtdCtl() noexcept {
  return handles.open([](CCtdCtl&) { return true; });
}

short TQ_CALL FreeSyncCtdCtl(int32_t handle) noexcept { return handles.close(handle, 1); }

int32_t TQ_CALL CopySyncCtdCtl(int32_t handle) noexcept {
  CCtdCtl* source = handles.find(handle);
  if (source == nullptr) return 0;
  return handles.open([&](CCtdCtl& copy) { return copy.CopyData(source) == 0; });
}

short TQ_CALL AddCtdData(const char* orgId, int32_t score, const char* mstId,
                         const tSYNC_CTDTBL* fields, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::AddCtdData, orgId, score, mstId, fields);
}

short TQ_CALL AddCtdData2(const tSYNC_ID* org, int32_t score, const char* mstId,
                          int32_t handle) noexcept {
  return call(handle, &CCtdCtl::AddCtdData2, org, score, mstId);
}

int32_t TQ_CALL SchMstSyncID(const char* mstId, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::SchMstSyncID, mstId);
}

int32_t TQ_CALL SchOrgSyncID(const char* orgId, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::SchOrgSyncID, orgId);
}

int32_t TQ_CALL GetCtdCnt(int32_t handle) noexcept { return call(handle, &CCtdCtl::GetCtdCnt); }

int32_t TQ_CALL GetCtdMstCnt(int32_t group, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdMstCnt, group);
}

int32_t TQ_CALL GetCtdOrgCnt(int32_t group, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdOrgCnt, group);
}

void TQ_CALL CtdSchInit(int32_t handle) noexcept { call(handle, &CCtdCtl::CtdSchInit); }

int32_t TQ_CALL CtdSchNext(int32_t handle) noexcept { return call(handle, &CCtdCtl::CtdSchNext); }

void TQ_CALL CtdSchFlgSet(int32_t group, int32_t handle) noexcept {
  call(handle, &CCtdCtl::CtdSchFlgSet, group);
}

short TQ_CALL FindCtdMstSyncID(char* id, tSYNC_SCHINFO* cursor, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::FindCtdMstSyncID, id, cursor);
}

short TQ_CALL FindCtdOrgSyncID(const char* recId, char* id, tSYNC_SCHINFO* cursor,
                               int32_t handle) noexcept {
  return call(handle, &CCtdCtl::FindCtdOrgSyncID, recId, id, cursor);
}

short TQ_CALL FindCtdOrgSyncID2(short group, char* id, tSYNC_SCHINFO* cursor,
                                int32_t handle) noexcept {
  return call(handle, &CCtdCtl::FindCtdOrgSyncID2, group, id, cursor);
}

short TQ_CALL FindCtdOrgSyncID3(short group, const char* recId, char* id, tSYNC_SCHINFO* cursor,
                                int32_t handle) noexcept {
  return call(handle, &CCtdCtl::FindCtdOrgSyncID3, group, recId, id, cursor);
}

void TQ_CALL SetCtdTitle(const char* title, int32_t handle) noexcept {
  call(handle, &CCtdCtl::SetCtdTitle, title);
}

void TQ_CALL GetCtdTitle(char* title, int32_t handle) noexcept {
  call(handle, &CCtdCtl::GetCtdTitle, title);
}

void TQ_CALL SetCtdInfo(uint32_t fldMap, int32_t recCnt, tSYNC_CTDRECINFO* records, short fldCnt,
                        tSYNC_FLDTBL* names, int32_t handle) noexcept {
  call(handle, &CCtdCtl::SetCtdInfo, fldMap, recCnt, records, fldCnt, names);
}

void TQ_CALL GetCtdInfo(int32_t* recCnt, tSYNC_CTDRECINFO** records, short* fldCnt,
                        tSYNC_FLDTBL** names, int32_t handle) noexcept {
  call(handle, &CCtdCtl::GetCtdInfo, recCnt, records, fldCnt, names);
}

void TQ_CALL ClrCtdInfo(int32_t handle) noexcept { call(handle, &CCtdCtl::ClrCtdInfo); }

int32_t TQ_CALL GetCtdRecCnt(int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdRecCnt);
}

short TQ_CALL GetCtdFldCnt(int32_t handle) noexcept { return call(handle, &CCtdCtl::GetCtdFldCnt); }

short TQ_CALL GetCtdFldNameSize(int32_t field, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdFldNameSize, field);
}

short TQ_CALL GetCtdFldNameSizeMax(int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdFldNameSizeMax);
}

short TQ_CALL GetCtdFldName(int32_t field, char* name, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdFldName, field, name);
}

short TQ_CALL GetCtdFldInfo(int32_t field, char* name, short* width, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdFldInfo, field, name, width);
}

short TQ_CALL GetCtdFldStrSize(int32_t record, int32_t field, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdFldStrSize, record, field);
}

short TQ_CALL GetCtdFldStrSizeMax(int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdFldStrSizeMax);
}

short TQ_CALL GetCtdFldStr(int32_t record, int32_t field, char* text, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdFldStr, record, field, text);
}

short TQ_CALL GetCtdFldStrS(int32_t record, int32_t field, char* text, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdFldStrS, record, field, text);
}

short TQ_CALL GetCtdRecTitleSize(int32_t record, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdRecTitleSize, record);
}

short TQ_CALL GetCtdRecTitleSizeMax(int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdRecTitleSizeMax);
}

short TQ_CALL GetCtdRecInfo(int32_t record, char* title, char* description, short* kind,
                            int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetCtdRecInfo, record, title, description, kind);
}

short TQ_CALL SetCtdFilePath(int32_t which, const char* ctdPath, const char* mrgPath,
                             int32_t handle) noexcept {
  return call(handle, &CCtdCtl::SetCtdFilePath, which, ctdPath, mrgPath);
}

short TQ_CALL WriteCtdFile(int32_t handle) noexcept { return call(handle, &CCtdCtl::WriteCtdFile); }

short TQ_CALL ReadCtdFile(int32_t handle) noexcept { return call(handle, &CCtdCtl::ReadCtdFile); }

void TQ_CALL SetMargSts(short state, short subState, int32_t handle) noexcept {
  call(handle, &CCtdCtl::SetMargSts, state, subState);
}

short TQ_CALL GetMargSts1(int32_t handle) noexcept { return call(handle, &CCtdCtl::GetMargSts1); }

short TQ_CALL GetMargSts2(int32_t handle) noexcept { return call(handle, &CCtdCtl::GetMargSts2); }

void TQ_CALL SetMargInfo(short field, short choice, int32_t handle) noexcept {
  call(handle, &CCtdCtl::SetMargInfo, field, choice);
}

short TQ_CALL GetMargInfo(short field, int32_t handle) noexcept {
  return call(handle, &CCtdCtl::GetMargInfo, field);
}

void TQ_CALL SetMargPer(short record, int32_t handle) noexcept {
  call(handle, &CCtdCtl::SetMargPer, record);
}

short TQ_CALL WriteMargFile(int32_t handle) noexcept {
  return call(handle, &CCtdCtl::WriteMargFile);
}

short TQ_CALL ReadMargFile(int32_t handle) noexcept { return call(handle, &CCtdCtl::ReadMargFile); }
