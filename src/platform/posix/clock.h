// Between the system's seconds since 1970 and our 100 ns since 1601.
#pragma once

#include <sys/stat.h>

#include <ctime>

#include "platform/platform.h"

namespace tq::platform::posix {

// Moments before 1601 become 0, the start of our count.
FileTime from_system(std::int64_t seconds, std::uint32_t nanoseconds);
inline FileTime from_system(const struct statx_timestamp& moment) {
  return from_system(moment.tv_sec, moment.tv_nsec);
}

// For setting file times: 0 becomes the mark for "leave it as it is".
timespec to_system(FileTime moment);

}  // namespace tq::platform::posix
