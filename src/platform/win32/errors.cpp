#include "platform/win32/errors.h"

#include <string>

#include "platform/names.h"

namespace tq::platform::win32 {

Code code_of(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_DIRECTORY:  // a file stands where a folder is wanted
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
      return Code::kNotFound;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return Code::kExists;
    case ERROR_ACCESS_DENIED:
    case ERROR_CANNOT_MAKE:
    case ERROR_NETWORK_ACCESS_DENIED:
      return Code::kDenied;
    case ERROR_WRITE_PROTECT:
      return Code::kWriteProtected;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_BUSY:
    case ERROR_USER_MAPPED_FILE:
      return Code::kBusy;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return Code::kDiskFull;
    case ERROR_DIR_NOT_EMPTY:
      return Code::kNotEmpty;
    case ERROR_NOT_READY:
      return Code::kNotReady;
    case ERROR_NOT_DOS_DISK:
    case ERROR_UNRECOGNIZED_VOLUME:
    case ERROR_UNRECOGNIZED_MEDIA:
    case ERROR_DISK_CORRUPT:
    case ERROR_FILE_CORRUPT:
      return Code::kBadDisk;
    case ERROR_WRITE_FAULT:
      return Code::kWriteFault;
    case ERROR_READ_FAULT:
    case ERROR_CRC:
    case ERROR_SECTOR_NOT_FOUND:
      return Code::kReadFault;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
      return Code::kNoMemory;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_INVALID_PARAMETER:
    case ERROR_NEGATIVE_SEEK:
      return Code::kInvalid;
    default:
      return Code::kIo;
  }
}

Status failure(const char* doing, std::string_view path) {
  const DWORD error = ::GetLastError();  // first: anything below may overwrite it
  return refusal(code_of(error), doing, path, "error " + std::to_string(error));
}

}  // namespace tq::platform::win32
