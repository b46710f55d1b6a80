// Copying a file with the system's own function, which knows the fastest way.
#include <windows.h>

#include "platform/fault.h"
#include "platform/platform.h"
#include "platform/win32/errors.h"
#include "platform/win32/files.h"
#include "platform/win32/paths.h"

namespace tq::platform {

using win32::failure;
using win32::WidePath;

namespace {

// Cuts a copy down to its first half, which is what a failure in the middle leaves.
void halve(const WidePath& path) {
  ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  LARGE_INTEGER size;
  if (::GetFileSizeEx(file, &size)) {
    size.QuadPart /= 2;
    ::SetFilePointerEx(file, size, nullptr, FILE_BEGIN);
    ::SetEndOfFile(file);
  }
  ::CloseHandle(file);
}

// The copy with content, last write time and attributes.
Status copy_whole(const WidePath& from, const WidePath& to, std::string_view name) {
  const Status refused = fault::gate("copy content to", name, true);
  if (!refused.ok() && !fault::leaves_half()) return refused;
  if (!::CopyFileW(from.c_str(), to.c_str(), FALSE)) return failure("copy to", name);
  if (!refused.ok()) {
    halve(to);
    return refused;
  }
  if (Status status = fault::gate("copy times to", name, false); !status.ok()) return status;
  // The times have come with the content. Attributes do not always replace those of an old file.
  const DWORD bits = ::GetFileAttributesW(from.c_str());
  return ::SetFileAttributesW(to.c_str(), bits) ? Status() : failure("copy to", name);
}

}  // namespace

Status copy_file(std::string_view from, std::string_view to) {
  if (Status status = fault::gate("copy to", to, true); !status.ok()) return status;
  const WidePath source(from);
  const WidePath target(to);
  if (!source.status().ok()) return source.status();
  if (!target.status().ok()) return target.status();
  if (Status status = win32::refuse_target("copy to", to, target); !status.ok()) return status;
  const DWORD old_bits = ::GetFileAttributesW(target.c_str());
  const bool existed = old_bits != INVALID_FILE_ATTRIBUTES;
  // The system refuses to copy over a hidden file; the copy gets the source's attributes anyway.
  if (existed) ::SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
  const Status status = copy_whole(source, target, to);
  if (status.ok() || fault::crashed()) return status;
  if (existed) {
    ::SetFileAttributesW(target.c_str(), old_bits);
  } else {
    ::SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
    ::DeleteFileW(target.c_str());
  }
  return status;
}

}  // namespace tq::platform
