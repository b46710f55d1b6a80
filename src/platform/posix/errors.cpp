#include "platform/posix/errors.h"

#include <string>
#include <system_error>

#include "platform/names.h"

namespace tq::platform::posix {

Code code_of(int error, Code on_medium) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:  // a file stands where the path needs a folder; Windows does not find it either
      return Code::kNotFound;
    case EEXIST:
      return Code::kExists;
    case EACCES:
    case EPERM:
    case EISDIR:
      return Code::kDenied;
    case EROFS:
      return Code::kWriteProtected;
    case EBUSY:
    case ETXTBSY:
    case EAGAIN:
      return Code::kBusy;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return Code::kDiskFull;
    case ENOTEMPTY:
      return Code::kNotEmpty;
    case ENODEV:
    case ENXIO:
    case ENOMEDIUM:
      return Code::kNotReady;
    case ENOMEM:
      return Code::kNoMemory;
    case EINVAL:
    case ENAMETOOLONG:
    case ELOOP:
    case EILSEQ:
      return Code::kInvalid;
    case EIO:
      return on_medium;
    default:
      return Code::kIo;
  }
}

Status failure(const char* doing, std::string_view path, Code on_medium) {
  const int error = errno;  // first: anything below may overwrite it
  const std::string text =
      std::generic_category().message(error) + " (" + std::to_string(error) + ")";
  return refusal(code_of(error, on_medium), doing, path, text);
}

}  // namespace tq::platform::posix
