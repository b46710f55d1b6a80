// Flat functions of the field-file listing: handles over CCsvInfoCtl.
#include "api/handle_table.h"
#include "tqutil/csvinfo.h"

namespace {

constexpr std::size_t kSlots = 10;
tq::HandleTable<CCsvInfoCtl, kSlots> handles;

constexpr short kNone = -1;

int32_t open(short (CCsvInfoCtl::*init)()) noexcept {
  return handles.open([&](CCsvInfoCtl& object) { return (object.*init)() == 0; });
}

template <class... Params, class... Args>
short call(int32_t handle, short (CCsvInfoCtl::*member)(Params...), Args... args) noexcept {
  return tq::with(handles, handle, kNone,
                  [&](CCsvInfoCtl& object) { return (object.*member)(args...); });
}

}  // namespace

int32_t TQ_CALL GetCsvFldInfoInit1() noexcept { return open(&CCsvInfoCtl::GetCsvFldInfoInit1); }

int32_t TQ_CALL GetCsvFldInfoInit2() noexcept { return open(&CCsvInfoCtl::GetCsvFldInfoInit2); }

int32_t TQ_CALL GetCsvFldInfoInit3() noexcept { return open(&CCsvInfoCtl::GetCsvFldInfoInit3); }

short TQ_CALL GetCsvFldInfoNext1(short* number, short* number2, char* name, char* path,
                                 int32_t handle) noexcept {
  return call(handle, &CCsvInfoCtl::GetCsvFldInfoNext1, number, number2, name, path);
}

short TQ_CALL GetCsvFldInfoNext2(short* number, short* number2, char* path,
                                 int32_t handle) noexcept {
  return call(handle, &CCsvInfoCtl::GetCsvFldInfoNext2, number, number2, path);
}

short TQ_CALL GetCsvFldInfoNext3(short* number, char* name, char* path, int32_t handle) noexcept {
  return call(handle, &CCsvInfoCtl::GetCsvFldInfoNext3, number, name, path);
}

short TQ_CALL GetCsvFldInfo1(short number, char* name, char* path, int32_t handle) noexcept {
  return call(handle, &CCsvInfoCtl::GetCsvFldInfo1, number, name, path);
}

short TQ_CALL GetCsvFldInfoEnd(int32_t handle) noexcept { return handles.close(handle, 1); }
