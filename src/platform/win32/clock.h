// Between the system's two halves and our one count; both are 100 ns since 1601.
#pragma once

#include <windows.h>

#include "platform/platform.h"

namespace tq::platform::win32 {

inline FileTime from_system(const FILETIME& moment) {
  return FileTime{moment.dwHighDateTime} << 32 | moment.dwLowDateTime;
}

inline FILETIME to_system(FileTime moment) {
  return {static_cast<DWORD>(moment), static_cast<DWORD>(moment >> 32)};
}

}  // namespace tq::platform::win32
