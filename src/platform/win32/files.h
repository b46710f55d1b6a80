// Attribute bits and what they forbid, shared by the operations on files and folders.
#pragma once

#include <windows.h>

#include <cstdint>

#include "platform/platform.h"
#include "platform/win32/paths.h"

namespace tq::platform::win32 {

// Of the system's bits those that platform.h has; there are others for compression, links and such.
inline std::uint32_t attribute_bits(DWORD system) {
  const std::uint32_t bits = system & (kReadOnly | kHidden | kSystem | kFolder | kArchive);
  return bits == 0 ? kNormal : bits;
}

// Refuses what cannot be written over: a folder or a read-only file. The system would do so too,
// but only says "access denied", and Wine lets the superuser pass.
Status refuse_target(const char* doing, std::string_view path, const WidePath& wide);

// kNotFound when it is something else than a folder.
Status require_folder(const char* doing, std::string_view path, const WidePath& wide);

}  // namespace tq::platform::win32
