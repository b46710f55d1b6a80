// Single files: what is known about them, deleting and replacing, and File, the open one.
#include "platform/win32/files.h"

#include <windows.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/fault.h"
#include "platform/names.h"
#include "platform/platform.h"
#include "platform/win32/clock.h"
#include "platform/win32/errors.h"
#include "platform/win32/paths.h"

namespace tq::platform {

using win32::failure;
using win32::WidePath;

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Gate, path and what the system knows, which the operations on a named thing begin with.
struct Named {
  Named(const char* doing, std::string_view path, bool writes) : wide(path) {
    status = fault::gate(doing, path, writes);
    if (status.ok()) status = wide.status();
    if (!status.ok()) return;
    if (!::GetFileAttributesExW(wide.c_str(), GetFileExInfoStandard, &info)) {
      status = failure(doing, path);
    }
  }
  bool is_folder() const { return (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

  WidePath wide;
  WIN32_FILE_ATTRIBUTE_DATA info{};
  Status status;
};

// 0 is left as it is.
bool set_handle_times(HANDLE file, const FileTimes& times) {
  const FILETIME created = win32::to_system(times.created);
  const FILETIME accessed = win32::to_system(times.accessed);
  const FILETIME written = win32::to_system(times.written);
  return ::SetFileTime(file, times.created == 0 ? nullptr : &created,
                       times.accessed == 0 ? nullptr : &accessed,
                       times.written == 0 ? nullptr : &written) != FALSE;
}

}  // namespace

Status win32::refuse_target(const char* doing, std::string_view path, const WidePath& wide) {
  const DWORD bits = ::GetFileAttributesW(wide.c_str());
  if (bits == INVALID_FILE_ATTRIBUTES) return {};
  if ((bits & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return refusal(Code::kDenied, doing, path, "it is a folder");
  }
  if ((bits & FILE_ATTRIBUTE_READONLY) == 0) return {};
  return refusal(Code::kDenied, doing, path, "it is read-only");
}

Status win32::require_folder(const char* doing, std::string_view path, const WidePath& wide) {
  const DWORD bits = ::GetFileAttributesW(wide.c_str());
  if (bits == INVALID_FILE_ATTRIBUTES) return failure(doing, path);
  if ((bits & FILE_ATTRIBUTE_DIRECTORY) != 0) return {};
  return refusal(Code::kNotFound, doing, path, "it is no folder");
}

std::uint32_t attributes(std::string_view path) {
  const Named named("look at", path, false);
  return named.status.ok() ? win32::attribute_bits(named.info.dwFileAttributes) : kNoAttributes;
}

Status set_attributes(std::string_view path, std::uint32_t bits) {
  const Named named("set attributes of", path, false);
  if (!named.status.ok()) return named.status;
  const DWORD wanted = bits & (kReadOnly | kHidden | kSystem | kArchive);
  if (::SetFileAttributesW(named.wide.c_str(), wanted == 0 ? kNormal : wanted)) return {};
  return failure("set attributes of", path);
}

Status delete_file(std::string_view path) {
  const Named named("delete", path, false);
  if (!named.status.ok()) return named.status;
  return ::DeleteFileW(named.wide.c_str()) ? Status() : failure("delete", path);
}

Status replace_file(std::string_view from, std::string_view to) {
  if (Status status = fault::gate("replace", to, true); !status.ok()) return status;
  const WidePath source(from);
  const WidePath target(to);
  if (!source.status().ok()) return source.status();
  if (!target.status().ok()) return target.status();
  if (Status status = win32::refuse_target("replace", to, target); !status.ok()) return status;
  const DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  return ::MoveFileExW(source.c_str(), target.c_str(), how) ? Status() : failure("replace", to);
}

Status file_times(std::string_view path, FileTimes& times) {
  const Named named("get the times of", path, false);
  if (!named.status.ok()) return named.status;
  times = {win32::from_system(named.info.ftCreationTime),
           win32::from_system(named.info.ftLastAccessTime),
           win32::from_system(named.info.ftLastWriteTime)};
  return {};
}

Status set_file_times(std::string_view path, const FileTimes& times) {
  const Named named("set the times of", path, false);
  if (!named.status.ok()) return named.status;
  // The flag opens folders too.
  const HANDLE file = ::CreateFileW(named.wide.c_str(), FILE_WRITE_ATTRIBUTES, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return failure("set the times of", path);
  const Status status =
      set_handle_times(file, times) ? Status() : failure("set the times of", path);
  ::CloseHandle(file);
  return status;
}

Status file_size(std::string_view path, std::uint64_t& size) {
  const Named named("get the size of", path, false);
  if (!named.status.ok()) return named.status;
  if (named.is_folder()) {
    return refusal(Code::kDenied, "get the size of", path, "it is a folder");
  }
  size = std::uint64_t{named.info.nFileSizeHigh} << 32 | named.info.nFileSizeLow;
  return {};
}

// --- Open files ----------------------------------------------------------------------------------

namespace {

constexpr DWORD kReadWrite = GENERIC_READ | GENERIC_WRITE;
// Without the right to write anywhere, every write goes to the end.
constexpr DWORD kReadAppend = GENERIC_READ | FILE_APPEND_DATA | FILE_WRITE_ATTRIBUTES;
constexpr DWORD kMaxPiece = 1u << 30;  // bytes per call

HANDLE open_mode(const WidePath& path, OpenMode mode) {
  const auto open = [&](DWORD access, DWORD share, DWORD how) {
    return ::CreateFileW(path.c_str(), access, share, nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr);
  };
  switch (mode) {
    case OpenMode::kRead:
      return open(GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    case OpenMode::kReadShared:
      return open(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    case OpenMode::kUpdate:
      return open(kReadWrite, FILE_SHARE_READ, OPEN_EXISTING);
    case OpenMode::kCreateNew:
      return open(kReadWrite, FILE_SHARE_READ, CREATE_NEW);
    case OpenMode::kAppend:
      return open(kReadAppend, FILE_SHARE_READ, OPEN_ALWAYS);
    case OpenMode::kCreate:
      // Emptied after opening: CREATE_ALWAYS refuses hidden files and changes attributes.
      return open(kReadWrite, FILE_SHARE_READ, OPEN_ALWAYS);
  }
  ::SetLastError(ERROR_INVALID_PARAMETER);
  return INVALID_HANDLE_VALUE;
}

HANDLE as_handle(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);  // NOLINT(performance-no-int-to-ptr): it is one
}

bool write_all(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto piece = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kMaxPiece));
    DWORD written = 0;
    if (!::WriteFile(file, bytes.data(), piece, &written, nullptr)) return false;
    bytes.remove_prefix(written);
  }
  return true;
}

}  // namespace

File::~File() {
  if (!is_open()) return;
  ::CloseHandle(as_handle(handle_));
  fault::count_handle(-1);
}

Status File::open(std::string_view path, OpenMode mode) {
  if (is_open()) return refusal(Code::kBusy, "open", path, "another file is open here");
  const bool writing = mode != OpenMode::kRead && mode != OpenMode::kReadShared;
  const bool creates = writing && mode != OpenMode::kUpdate;
  if (Status status = fault::gate("open", path, creates); !status.ok()) return status;
  const WidePath wide(path);
  if (!wide.status().ok()) return wide.status();
  if (writing && mode != OpenMode::kCreateNew) {
    if (Status status = win32::refuse_target("open", path, wide); !status.ok()) return status;
  }
  const HANDLE handle = open_mode(wide, mode);
  if (handle == INVALID_HANDLE_VALUE) return failure("open", path);
  File opened;  // closes again on the ways out below
  opened.handle_ = reinterpret_cast<std::intptr_t>(handle);
  fault::count_handle(1);
  if (::GetFileType(handle) != FILE_TYPE_DISK) {
    return refusal(Code::kDenied, "open", path, "it is no ordinary file");
  }
  if (mode == OpenMode::kCreate && !::SetEndOfFile(handle)) return failure("empty", path);
  opened.path_ = path;
  *this = std::move(opened);
  return {};
}

// Nothing is worth leaving out here: the system's own part of opening a file outweighs ours.
Status File::append_again() { return open(std::string(path_), OpenMode::kAppend); }

Status File::read(void* data, std::size_t size, std::size_t& got) {
  got = 0;
  if (Status status = fault::gate("read", path_, false); !status.ok()) return status;
  const auto piece = static_cast<DWORD>(std::min<std::size_t>(size, kMaxPiece));
  DWORD more = 0;
  if (!::ReadFile(as_handle(handle_), data, piece, &more, nullptr)) return failure("read", path_);
  got = more;
  return {};
}

Status File::write(std::string_view bytes) {
  if (Status status = fault::gate("write", path_, true); !status.ok()) {
    if (fault::leaves_half()) write_all(as_handle(handle_), bytes.substr(0, bytes.size() / 2));
    return status;
  }
  return write_all(as_handle(handle_), bytes) ? Status() : failure("write", path_);
}

Status File::seek(std::uint64_t position) {
  if (Status status = fault::gate("seek in", path_, false); !status.ok()) return status;
  LARGE_INTEGER to;
  to.QuadPart = static_cast<LONGLONG>(position);
  const bool moved = ::SetFilePointerEx(as_handle(handle_), to, nullptr, FILE_BEGIN) != FALSE;
  return moved ? Status() : failure("seek in", path_);
}

Status File::size(std::uint64_t& bytes) {
  if (Status status = fault::gate("get the size of", path_, false); !status.ok()) return status;
  LARGE_INTEGER size;
  if (!::GetFileSizeEx(as_handle(handle_), &size)) return failure("get the size of", path_);
  bytes = static_cast<std::uint64_t>(size.QuadPart);
  return {};
}

Status File::sync() {
  if (Status status = fault::gate("sync", path_, true); !status.ok()) return status;
  return ::FlushFileBuffers(as_handle(handle_)) ? Status() : failure("sync", path_);
}

Status File::times(FileTimes& times) {
  if (Status status = fault::gate("get the times of", path_, false); !status.ok()) return status;
  FILETIME created, accessed, written;
  if (!::GetFileTime(as_handle(handle_), &created, &accessed, &written)) {
    return failure("get the times of", path_);
  }
  times = {win32::from_system(created), win32::from_system(accessed), win32::from_system(written)};
  return {};
}

Status File::set_times(const FileTimes& times) {
  if (Status status = fault::gate("set the times of", path_, false); !status.ok()) return status;
  return set_handle_times(as_handle(handle_), times) ? Status()
                                                     : failure("set the times of", path_);
}

Status File::close() {
  if (!is_open()) return {};
  const Status refused = fault::gate("close", path_, false);
  const bool closed = ::CloseHandle(as_handle(std::exchange(handle_, kClosed))) != FALSE;
  fault::count_handle(-1);
  if (!refused.ok()) return refused;
  return closed ? Status() : failure("close", path_);
}

}  // namespace tq::platform
