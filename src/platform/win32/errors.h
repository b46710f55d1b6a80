// The one place that turns the system's last error into our codes and texts.
#pragma once

#include <windows.h>

#include <string_view>

#include "base/status.h"

namespace tq::platform::win32 {

Code code_of(DWORD error);

// "<doing> <path>: error <number>" for the last error. `path` is Shift-JIS.
Status failure(const char* doing, std::string_view path);

}  // namespace tq::platform::win32
