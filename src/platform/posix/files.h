// Reading and writing through descriptors, shared by File and copying.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string_view>

#include "platform/posix/node.h"

namespace tq::platform::posix {

// Null, or why an open file cannot be used as a file of the library.
const char* refuse_open(const struct statx& info, bool writing);

// read(2), repeated when a signal cuts in; and write(2) until all is written (false with errno).
ssize_t read_some(int fd, void* data, std::size_t size);
bool write_all(int fd, std::string_view bytes);

}  // namespace tq::platform::posix
