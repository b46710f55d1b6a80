// Flat functions of backups: handles over CBackUpCtl, operations with an object of their own, and
// the settings.
#include <cstddef>

#include "api/handle_table.h"
#include "backup/settings.h"
#include "common/guarded.h"
#include "common/text.h"
#include "tqutil/backup.h"

namespace {

constexpr std::size_t kSlots = 20;
tq::HandleTable<CBackUpCtl, kSlots> handles;

// The value for handle 0 (and every other handle that is not open).
constexpr short kNone = 1;

const unsigned char* in(const char* text) { return reinterpret_cast<const unsigned char*>(text); }
unsigned char* out(char* text) { return reinterpret_cast<unsigned char*>(text); }

template <class Value = short, class Body>
Value with(int32_t handle, Body&& body) noexcept {
  return tq::with(handles, handle, Value{kNone}, body);
}

// Runs the body on an object that is there for this call only; 1 when it cannot be made.
template <class Body>
short once(Body&& body) noexcept {
  return tq::guarded(kNone, [&] {
    CBackUpCtl object;
    return body(object);
  });
}

// Runs the body on the settings; `failure` when memory is out.
template <class Value, class Body>
Value with_settings(Value failure, Body&& body) noexcept {
  return tq::guarded(failure, [&] { return body(tq::Settings::of_application()); });
}

// Copies a text of the settings out; the bytes before its terminator.
int32_t give(const std::string& text, char* buffer) {
  tq::copy_text(buffer, TQ_BKUP_TEXT_SIZE, text);
  return static_cast<int32_t>(text.size());
}

}  // namespace

// --- A run ---------------------------------------------------------------------------------------

int32_t TQ_CALL tqCreateBackUp(short kind) noexcept {
  return handles.open([&](CBackUpCtl& object) { return object.CreateBackUp(kind) == 0; });
}

short TQ_CALL tqSetBackUpInfo(int32_t handle, const char* text) noexcept {
  return with(handle, [&](CBackUpCtl& object) { return object.SetBackUpInfo(in(text)); });
}

short TQ_CALL tqStartBackUpFileGrp(int32_t handle, short type, const char* name) noexcept {
  return with(handle,
              [&](CBackUpCtl& object) { return object.StartBackUpFileGrp(type, in(name)); });
}

short TQ_CALL tqAddBackUpFileGrp(int32_t handle, const char* path, short fileKind) noexcept {
  return with(handle,
              [&](CBackUpCtl& object) { return object.AddBackUpFileGrp(in(path), fileKind); });
}

short TQ_CALL tqStartBackUp(int32_t handle) noexcept {
  return with(handle, [](CBackUpCtl& object) { return object.StartBackUp(); });
}

short TQ_CALL tqRenewalBackUp(int32_t handle) noexcept {
  return with(handle, [](CBackUpCtl& object) { return object.RenewalBackUp(); });
}

short TQ_CALL tqFreeBackUp(int32_t handle) noexcept {
  // Freeing never fails, so closing alone tells the result.
  if (CBackUpCtl* object = handles.find(handle)) object->FreeBackUp();
  return handles.close(handle, kNone);
}

// --- A list --------------------------------------------------------------------------------------

int32_t TQ_CALL tqOpenBackUpFileList(short kind, int32_t* count) noexcept {
  int32_t listed = -1;
  if (count != nullptr) *count = 0;
  const int32_t handle = handles.open([&](CBackUpCtl& object) {
    listed = object.ReadBackUpFileList(kind);
    return listed >= 0;
  });
  if (handle != 0 && count != nullptr) *count = listed;
  return handle;
}

short TQ_CALL tqGetBackUpFileListInit(int32_t handle) noexcept {
  return with(handle, [](CBackUpCtl& object) { return object.GetBackUpFileListInit(); });
}

short TQ_CALL tqGetBackUpFileListNext(int32_t handle, char* id, short* kind, char* dateText,
                                      char* infoText, int32_t* groupCount) noexcept {
  return with(handle, [&](CBackUpCtl& object) {
    return object.GetBackUpFileListNext(out(id), kind, out(dateText), out(infoText), groupCount);
  });
}

int32_t TQ_CALL tqGetBackUpFileGrpInit(int32_t handle, const char* id) noexcept {
  return with<int32_t>(handle,
                       [&](CBackUpCtl& object) { return object.GetBackUpFileGrpInit(in(id)); });
}

short TQ_CALL tqGetBackUpFileGrpNext(int32_t handle, char* groupId, short* type,
                                     int32_t* fileCount) noexcept {
  return with(handle, [&](CBackUpCtl& object) {
    return object.GetBackUpFileGrpNext(out(groupId), type, fileCount);
  });
}

int32_t TQ_CALL tqGetBackUpFileInit(int32_t handle, const char* groupId) noexcept {
  return with<int32_t>(handle,
                       [&](CBackUpCtl& object) { return object.GetBackUpFileInit(in(groupId)); });
}

short TQ_CALL tqGetBackUpFileNext(int32_t handle, char* path, char* backupPath, char* dateText,
                                  uint32_t* size, short* fileKind) noexcept {
  return with(handle, [&](CBackUpCtl& object) {
    return object.GetBackUpFileNext(out(path), out(backupPath), out(dateText), size, fileKind);
  });
}

short TQ_CALL tqCloseBackUpFileList(int32_t handle) noexcept {
  return handles.close(handle, kNone);
}

// --- Restoring and deleting ----------------------------------------------------------------------

short TQ_CALL tqAutoRestoreGrp(short kind, short generation) noexcept {
  return once([&](CBackUpCtl& object) { return object.AutoRestoreGrp(kind, generation); });
}

short TQ_CALL tqErrRestoreGrp(short kind) noexcept {
  return once([&](CBackUpCtl& object) { return object.ErrRestoreGrp(kind); });
}

short TQ_CALL tqRestoreGrp(const char* id) noexcept {
  return once([&](CBackUpCtl& object) { return object.RestoreGrp(in(id)); });
}

short TQ_CALL tqRestoreFile(const char* groupId) noexcept {
  return once([&](CBackUpCtl& object) { return object.RestoreFile(in(groupId)); });
}

short TQ_CALL tqDeleteBkupAll() noexcept {
  return once([](CBackUpCtl& object) { return object.DeleteBkupAll(); });
}

short TQ_CALL tqDeleteAutoBkupGrp(short kind, short generation) noexcept {
  return once([&](CBackUpCtl& object) { return object.DeleteAutoBkupGrp(kind, generation); });
}

short TQ_CALL tqDeleteBkupGrp(const char* id) noexcept {
  return once([&](CBackUpCtl& object) { return object.DeleteBkupGrp(in(id)); });
}

int32_t TQ_CALL tqRestoreFileInit(const char* id) noexcept {
  return handles.open([&](CBackUpCtl& object) { return object.RestoreFileInit(in(id)) == 0; });
}

short TQ_CALL tqRestoreFileSet(const char* groupId, int32_t handle) noexcept {
  return with(handle, [&](CBackUpCtl& object) { return object.RestoreFileSet(in(groupId)); });
}

short TQ_CALL tqRestoreFileStart(int32_t handle) noexcept {
  return with(handle, [](CBackUpCtl& object) { return object.RestoreFileStart(); });
}

short TQ_CALL tqRestoreFileClose(int32_t handle) noexcept { return handles.close(handle, kNone); }

short TQ_CALL tqIsNeedOutlook(short kind) noexcept {
  short answer = -1;
  const int32_t handle = handles.open([&](CBackUpCtl& object) {
    answer = object.IsNeedOutlook(kind);
    return true;
  });
  handles.close(handle, kNone);
  return answer;
}

// --- The settings --------------------------------------------------------------------------------

short TQ_CALL setBkupGeneration(short kind, short count) noexcept {
  return with_settings(
      short{0}, [&](const tq::Settings& now) { return now.set_generations(kind, count) ? 1 : 0; });
}

short TQ_CALL getBkupGeneration(short kind) noexcept {
  return with_settings(short{0}, [&](const tq::Settings& now) { return now.generations(kind); });
}

short TQ_CALL tqSetGenerationCnt(uint16_t count) noexcept {
  return setBkupGeneration(TQ_BKUP_CONVERSION, static_cast<short>(count));
}

short TQ_CALL tqGetBkupGeneration() noexcept { return getBkupGeneration(TQ_BKUP_CONVERSION); }

short TQ_CALL setBkupFilePath(short kind, short number, const char* path) noexcept {
  return with_settings(short{0}, [&](const tq::Settings& now) {
    return now.set_file_path(kind, number, tq::view(path)) ? 1 : 0;
  });
}

int32_t TQ_CALL getBkupFilePath(short kind, short number, char* path) noexcept {
  return with_settings(
      int32_t{0}, [&](const tq::Settings& now) { return give(now.file_path(kind, number), path); });
}

short TQ_CALL tqSetPstTrFlg(short value) noexcept {
  return with_settings(short{0},
                       [&](const tq::Settings& now) { return now.set_transfer(value) ? 1 : 0; });
}

short TQ_CALL tqGetPstTrFlg() noexcept {
  return with_settings(short{0}, [](const tq::Settings& now) { return now.transfer(); });
}

short TQ_CALL tqSetPstStsFlg(short value) noexcept {
  return with_settings(
      short{0}, [&](const tq::Settings& now) { return now.set_transfer_status(value) ? 1 : 0; });
}

short TQ_CALL tqGetPstStsFlg() noexcept {
  return with_settings(short{1}, [](const tq::Settings& now) { return now.transfer_status(); });
}

short TQ_CALL tqSetPstFolderName(const char* text) noexcept {
  return with_settings(short{0}, [&](const tq::Settings& now) {
    return now.set_transfer_name(tq::view(text)) ? 1 : 0;
  });
}

int32_t TQ_CALL tqGetPstFolderName(char* text) noexcept {
  return with_settings(int32_t{0},
                       [&](const tq::Settings& now) { return give(now.transfer_name(), text); });
}
