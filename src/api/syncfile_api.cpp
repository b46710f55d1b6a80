// Flat functions of sync groups: handles over CSyncFileCtl.
#include <utility>

#include "api/handle_table.h"
#include "syncfile/sync_id.h"
#include "tqutil/syncfile.h"

namespace {

constexpr std::size_t kSlots = 10;
tq::HandleTable<CSyncFileCtl, kSlots> handles;

// The values for handle 0 (and every other handle that is not open).
constexpr short kNone = 1;
constexpr short kNoValue = -1;

// A member that gives a result, as it is.
template <class... Params, class... Args>
short call(int32_t handle, short failure, short (CSyncFileCtl::*member)(Params...),
           Args... args) noexcept {
  return tq::with(handles, handle, failure,
                  [&](CSyncFileCtl& object) { return (object.*member)(args...); });
}

// A member that gives none: 0 for a live handle.
template <class... Params, class... Args>
short call(int32_t handle, void (CSyncFileCtl::*member)(Params...), Args... args) noexcept {
  return tq::with(handles, handle, kNone, [&](CSyncFileCtl& object) {
    (object.*member)(args...);
    return 0;
  });
}

// Success or failure: every failure is 1.
short normalised(short result) { return result == 0 ? short{0} : short{1}; }

}  // namespace

short TQ_STDCALL SyncInfoAlloc(tSYNC_INFO* info) noexcept {
  return CSyncFileCtl::SyncInfoAlloc(info);
}

short TQ_STDCALL SyncInfoFree(tSYNC_INFO* info) noexcept {
  return CSyncFileCtl::SyncInfoFree(info);
}

short TQ_STDCALL SyncGrpAlloc(tSYNC_GRP* grp) noexcept { return CSyncFileCtl::SyncGrpAlloc(grp); }

short TQ_STDCALL SyncGrpFree(tSYNC_GRP* grp) noexcept { return CSyncFileCtl::SyncGrpFree(grp); }

short TQ_STDCALL SyncInfoCopy(tSYNC_INFO* from, tSYNC_INFO2* to) noexcept {
  return CSyncFileCtl::SyncInfoCopy(from, to);
}

short TQ_STDCALL SyncInfoCopy2(tSYNC_INFO2* from, tSYNC_INFO* to) noexcept {
  return CSyncFileCtl::SyncInfoCopy2(from, to);
}

short TQ_STDCALL SyncGrpCopy(tSYNC_GRP* from, tSYNC_GRP2* to) noexcept {
  return CSyncFileCtl::SyncGrpCopy(from, to);
}

short TQ_STDCALL SyncGrpCopy2(tSYNC_GRP2* from, tSYNC_GRP* to) noexcept {
  return CSyncFileCtl::SyncGrpCopy2(from, to);
}

void TQ_CALL tqSyncIdVal2Str(const tSYNC_ID* id, char* grp, char* file, char* sync) noexcept {
  if (grp != nullptr) *grp = '\0';
  if (file != nullptr) *file = '\0';
  if (sync != nullptr) *sync = '\0';
  if (id == nullptr) return;
  if (grp != nullptr) tq::print_group_id(*id, grp);
  if (file != nullptr) tq::print_file_id(*id, file);
  if (sync != nullptr) tq::print_sync_id(*id, sync);
}

void TQ_CALL tqSyncIdStr2Val(const char* text, tSYNC_ID* id) noexcept {
  if (id != nullptr) tq::parse_sync_id(text, *id);
}

void TQ_CALL tqRecIdVal2Str(const tSYNC_ID* id, char* grp, char* file) noexcept {
  tqSyncIdVal2Str(id, grp, file, nullptr);
}

void TQ_CALL tqRecIdStr2Val(const char* text, tSYNC_ID* id) noexcept {
  if (id != nullptr) tq::parse_rec_id(text, *id);
}

int32_t TQ_CALL CreateSyncFile() noexcept {
  return handles.open([](CSyncFileCtl& object) { return object.Create() == 0; });
}

int32_t TQ_STDCALL CreateSyncFile2() noexcept {
  return handles.open([](CSyncFileCtl& object) { return object.Create2() == 0; });
}

int32_t TQ_CALL OpenSyncFile(const char* path, const char* mode) noexcept {
  return handles.open([&](CSyncFileCtl& object) { return object.Open(path, mode) == 0; });
}

short TQ_CALL CloseSyncFile(int32_t handle) noexcept { return handles.close(handle, kNone); }

short TQ_CALL ReadSyncFile(int32_t handle) noexcept {
  return call(handle, kNoValue, &CSyncFileCtl::Read);
}

short TQ_CALL WriteSyncFile(short renumber, int32_t handle) noexcept {
  return normalised(call(handle, kNone, &CSyncFileCtl::Write, renumber));
}

short TQ_CALL SetSyncReadMode(char* groupPath, char* adjustPath, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::SetReadMode, groupPath, adjustPath);
}

short TQ_CALL ReSaveSyncRead2Normal(const char* title, const char* memo, const char* dataPath,
                                    int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::ReSaveRead2Normal, title, memo, dataPath);
}

short TQ_CALL GetSyncFileCnt(int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncFileCnt);
}

short TQ_CALL SetSyncType(short type, int32_t handle) noexcept {
  return call(handle, &CSyncFileCtl::SetSyncType, type);
}

short TQ_CALL GetSyncType(int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncType);
}

short TQ_CALL SetSyncTitle(const char* title, int32_t handle) noexcept {
  return call(handle, &CSyncFileCtl::SetTitle, title);
}

short TQ_CALL GetSyncTitle(char* title, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetTitle, title);
}

short TQ_CALL SetSyncMemo(const char* memo, int32_t handle) noexcept {
  return call(handle, &CSyncFileCtl::SetMemo, memo);
}

short TQ_CALL GetSyncMemo(char* memo, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetMemo, memo);
}

short TQ_CALL SetSyncFlg(short n, short value, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::SetSyncFlg, n, value);
}

short TQ_CALL GetSyncFlg(short n, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncFlg, n);
}

short TQ_CALL GetSyncGrpID(char* id, int32_t handle) noexcept {
  return call(handle, &CSyncFileCtl::GetSyncGrpID, id);
}

short TQ_CALL GetSyncGrpPath(char* path, int32_t handle) noexcept {
  return call(handle, &CSyncFileCtl::GetSyncGrpPath, path);
}

short TQ_CALL GetSyncFilePath(char* path, int32_t handle) noexcept {
  return call(handle, &CSyncFileCtl::GetSyncFilePath, path);
}

short TQ_CALL SetSyncFileInfo(short i, tSYNC_INFO* info, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::SetSyncFileInfo, i, info);
}

short TQ_CALL AddSyncFileInfo(short i, tSYNC_INFO* info, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::AddSyncFileInfo, i, info);
}

short TQ_CALL GetSyncFileInfo(short i, tSYNC_INFO* info, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncFileInfo, i, info);
}

short TQ_CALL GetSyncFileID(short i, char* id, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncFileID, i, id);
}

short TQ_CALL DeleteSyncFileInfo(short i, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::DeleteSyncFileInfo, i);
}

short TQ_CALL SetSyncTrFlg(short i, short n, short value, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::SetSyncTrFlg, i, n, value);
}

short TQ_CALL GetSyncTrFlg(short i, short n, int32_t handle) noexcept {
  return call(handle, kNoValue, &CSyncFileCtl::GetSyncTrFlg, i, n);
}

short TQ_CALL SetSyncFileSts(short i, short n, short value, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::SetSyncFileSts, i, n, value);
}

short TQ_CALL GetSyncFileSts(short i, short n, int32_t handle) noexcept {
  return call(handle, kNoValue, &CSyncFileCtl::GetSyncFileSts, i, n);
}

short TQ_CALL GetSyncFileSts2(const char* fileId, short n, int32_t handle) noexcept {
  return call(handle, kNoValue, &CSyncFileCtl::GetSyncFileSts2, fileId, n);
}

short TQ_CALL GetSyncFilePos(const char* fileId, int32_t handle) noexcept {
  return call(handle, kNoValue, &CSyncFileCtl::GetSyncFilePos, fileId);
}

short TQ_CALL AddSyncFileFldFile(short i, const char* source, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::AddSyncFileFldFile, i, source);
}

short TQ_CALL SetSyncFileFldFile(short i, char* text, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::SetSyncFileFldFile, i, text);
}

short TQ_CALL GetSyncFileFldFile(short i, char* text, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncFileFldFile, i, text);
}

short TQ_CALL SetSyncFileTmpFileN(short i, char* text, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::SetSyncFileTmpFileN, i, text);
}

short TQ_CALL GetSyncFileTmpFileN(short i, char* text, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncFileTmpFileN, i, text);
}

short TQ_CALL SetSyncFileTmpFileO(short i, char* text, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::SetSyncFileTmpFileO, i, text);
}

short TQ_CALL GetSyncFileTmpFileO(short i, char* text, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncFileTmpFileO, i, text);
}

short TQ_STDCALL SetSyncFileSrchFile(short i, char* text, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::SetSyncFileSrchFile, i, text);
}

short TQ_STDCALL GetSyncFileSrchFile(short i, char* text, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncFileSrchFile, i, text);
}

short TQ_STDCALL GetSyncCsvHeadPath(short i, char* path, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncCsvHeadPath, i, path);
}

int32_t TQ_CALL GetSyncGrpInit(short* count) noexcept {
  short listed = 0;
  if (count != nullptr) *count = 0;
  const int32_t handle = handles.open([&](CSyncFileCtl& object) {
    listed = object.GetSyncGrpInit();
    return listed >= 0;
  });
  if (handle != 0 && count != nullptr) *count = listed;
  return handle;
}

short TQ_CALL GetSyncGrpNext(short* pos, tSYNC_GRP* grp, int32_t handle) noexcept {
  return normalised(call(handle, kNone, &CSyncFileCtl::GetSyncGrpNext, pos, grp));
}

short TQ_CALL GetSyncGrpInfo(short pos, tSYNC_GRP* grp, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::GetSyncGrpInfo, pos, grp);
}

short TQ_CALL DeleteSyncGrpInfo(short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFileCtl::DeleteSyncGrp, pos);
}

short TQ_CALL GetSyncGrpClose(int32_t handle) noexcept { return handles.close(handle, kNone); }
