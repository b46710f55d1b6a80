// Flat functions of histories: handles over CHistoryCtl.
#include "api/handle_table.h"
#include "tqutil/history.h"

namespace {

constexpr std::size_t kSlots = 20;
tq::HandleTable<CHistoryCtl, kSlots> handles;

// The value of every operation for handle 0 and every other handle that is not open.
constexpr short kNone = -1;

template <class Result, class... Params, class... Args>
Result call(int32_t handle, Result (CHistoryCtl::*member)(Params...), Args... args) noexcept {
  return tq::with(handles, handle, Result{kNone},
                  [&](CHistoryCtl& object) { return (object.*member)(args...); });
}

}  // namespace

int32_t TQ_STDCALL CreateSyncHstyCtl(unsigned short count) noexcept {
  bool made = false;
  const int32_t handle = handles.open([&](CHistoryCtl& object) {
    made = object.CreateHistory(static_cast<short>(count)) == 0;
    return true;
  });
  // Hosts rely on a number other than 0 here, although nothing is behind it.
  if (!made) handles.close(handle, kNone);
  return handle;
}

short TQ_STDCALL FreeSyncHstyCtl(int32_t handle) noexcept { return handles.close(handle, kNone); }

short TQ_CALL AddHstyFileInfo(const char* fileId, tSYNC_INFO* info, int32_t handle) noexcept {
  return call(handle, &CHistoryCtl::AddFileInfo, fileId, info);
}

short TQ_CALL HstyAllFileClose(int32_t handle) noexcept {
  return call(handle, &CHistoryCtl::AllFileClose);
}

short TQ_CALL HstyBeforMst(int32_t handle) noexcept {
  return call(handle, &CHistoryCtl::HstyBeforMst);
}

short TQ_CALL HstyGetMst(int32_t handle) noexcept { return call(handle, &CHistoryCtl::HstyGetMst); }

#define TQ_HISTORY_PHASE(name)                                      \
  short TQ_CALL HstyBefor##name(short i, int32_t handle) noexcept { \
    return call(handle, &CHistoryCtl::HstyBefor##name, i);          \
  }                                                                 \
  short TQ_CALL HstyGet##name(short i, int32_t handle) noexcept {   \
    return call(handle, &CHistoryCtl::HstyGet##name, i);            \
  }
TQ_HISTORY_PHASE(App2Xdb)
TQ_HISTORY_PHASE(Xdb2App)
TQ_HISTORY_PHASE(WriteXdb)
TQ_HISTORY_PHASE(WriteXdbDmy)
#undef TQ_HISTORY_PHASE

#define TQ_HISTORY_CATEGORY(writer, category)                                                \
  short TQ_CALL writer(const char* fileId, const char* text, int32_t handle) noexcept {      \
    return call(handle, &CHistoryCtl::writer, fileId, text);                                 \
  }                                                                                          \
  short TQ_CALL writer##2(short i, const char* text, int32_t handle) noexcept {              \
    return call(handle, &CHistoryCtl::writer##2, i, text);                                   \
  }                                                                                          \
  short TQ_CALL HstyGetInfo4##category##Init(short i, int32_t handle) noexcept {             \
    return call(handle, &CHistoryCtl::GetInfo4##category##Init, i);                          \
  }                                                                                          \
  short TQ_CALL HstyGetInfo4##category##Next(short i, char* text, int32_t handle) noexcept { \
    return call(handle, &CHistoryCtl::GetInfo4##category##Next, i, text);                    \
  }                                                                                          \
  short TQ_CALL HstyGetInfo4##category##End(short i, int32_t handle) noexcept {              \
    return call(handle, &CHistoryCtl::GetInfo4##category##End, i);                           \
  }                                                                                          \
  int32_t TQ_CALL HstyGetInfo4##category##Cnt(short i, int32_t handle) noexcept {            \
    return call(handle, &CHistoryCtl::GetInfo4##category##Cnt, i);                           \
  }
TQ_HISTORY_CATEGORY(WriteErrInfo4Read, Read)
TQ_HISTORY_CATEGORY(WriteErrInfo4Write, Write)
TQ_HISTORY_CATEGORY(WriteErrInfo4Tran, Tran)
TQ_HISTORY_CATEGORY(WriteReNewInfo, ReNew)
TQ_HISTORY_CATEGORY(WriteAddNewInfo, AddNew)
TQ_HISTORY_CATEGORY(WriteHeadInfo, Head)
#undef TQ_HISTORY_CATEGORY
