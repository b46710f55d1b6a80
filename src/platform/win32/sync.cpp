// Making sure that what was written survives a power cut. Folders need nothing: the file system's
// journal keeps their entries, and what replaces a file is written through.
#include <windows.h>

#include "platform/fault.h"
#include "platform/names.h"
#include "platform/platform.h"
#include "platform/win32/errors.h"
#include "platform/win32/files.h"
#include "platform/win32/paths.h"

namespace tq::platform {

using win32::failure;
using win32::WidePath;

namespace {

// Flushing needs the right to write, which a read-only file gives for this moment only.
Status sync_one(std::string_view path) {
  const WidePath wide(path);
  if (!wide.status().ok()) return wide.status();
  const DWORD bits = ::GetFileAttributesW(wide.c_str());
  if (bits == INVALID_FILE_ATTRIBUTES) return failure("sync", path);
  const bool locked = (bits & FILE_ATTRIBUTE_READONLY) != 0;
  if (locked) ::SetFileAttributesW(wide.c_str(), bits & ~DWORD{FILE_ATTRIBUTE_READONLY});
  const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = ::CreateFileW(wide.c_str(), GENERIC_WRITE, share, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  const bool synced = file != INVALID_HANDLE_VALUE && ::FlushFileBuffers(file);
  const Status status = synced ? Status() : failure("sync", path);
  if (file != INVALID_HANDLE_VALUE) ::CloseHandle(file);
  if (locked) ::SetFileAttributesW(wide.c_str(), bits);
  return status;
}

}  // namespace

Status sync_folder(std::string_view folder) {
  if (Status status = fault::gate("sync folder", folder, true); !status.ok()) return status;
  const WidePath wide(folder);
  if (!wide.status().ok()) return wide.status();
  return win32::require_folder("sync", folder, wide);
}

Status sync_files(const std::vector<std::string>& paths) {
  if (paths.empty()) return {};
  if (Status status = fault::gate("sync files", paths.front(), true); !status.ok()) return status;
  for (const std::string& path : paths) {
    if (Status status = sync_one(path); !status.ok()) return status;
  }
  return {};
}

}  // namespace tq::platform
