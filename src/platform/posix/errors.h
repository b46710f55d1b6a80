// The one place that turns errno into our codes and texts.
#pragma once

#include <cerrno>
#include <string_view>

#include "base/status.h"

namespace tq::platform::posix {

// `on_medium` is the code for EIO, which alone does not say whether reading or writing failed.
Code code_of(int error, Code on_medium = Code::kIo);

// "<doing> <path>: <system's text> (<number>)" for the current errno. `path` is Shift-JIS.
Status failure(const char* doing, std::string_view path, Code on_medium = Code::kIo);

}  // namespace tq::platform::posix
