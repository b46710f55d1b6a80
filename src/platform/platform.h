// What the library asks of the operating system. posix/ and win32/ are twins behind this header;
// above it there is no #ifdef.
//
// Paths are Windows paths in Shift-JIS (`Z:\data\001.SYG`, `\` or `/` between names, names compared
// without regard to case) on every system. On Linux `Z:\` is the root folder and every other drive
// is looked up under the folder that the environment variable TQUTIL_DRIVES names, one entry per
// letter; names are UTF-8 on disk. On Windows the wide functions are called, so the active code
// page does not matter. A relative path is completed from the current folder.
//
// A path that names no file on Windows is kInvalid on every system and reaches nothing: `..` above
// the root, device names (`NUL`, `COM1.txt`), control characters and `"*:<>?|`, halves of two-byte
// characters, `\\.\` and `\\?\`. Dots and spaces at the end of a name are dropped.
//
// Nothing here throws except std::bad_alloc. In test builds every operation that can fail on a real
// system passes through the fault gate (fault.h) first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/status.h"

namespace tq::platform {

// --- Attributes, times -------------------------------------------------------------------------

// File attribute bits, with the values that Windows uses.
inline constexpr std::uint32_t kReadOnly = 0x01;
inline constexpr std::uint32_t kHidden = 0x02;
inline constexpr std::uint32_t kSystem = 0x04;
inline constexpr std::uint32_t kFolder = 0x10;
inline constexpr std::uint32_t kArchive = 0x20;
inline constexpr std::uint32_t kNormal = 0x80;
// What `attributes` answers when nothing of that name exists.
inline constexpr std::uint32_t kNoAttributes = 0xFFFFFFFF;

// Moments in units of 100 ns since 1601-01-01 00:00 UTC (the FILETIME count).
using FileTime = std::uint64_t;

struct FileTimes {
  FileTime created = 0;
  FileTime accessed = 0;
  FileTime written = 0;
};

// A calendar moment, field for field a SYSTEMTIME.
struct DateTime {
  std::uint16_t year = 0;
  std::uint16_t month = 0;        // 1-12
  std::uint16_t day_of_week = 0;  // 0 = Sunday
  std::uint16_t day = 0;          // 1-31
  std::uint16_t hour = 0;
  std::uint16_t minute = 0;
  std::uint16_t second = 0;
  std::uint16_t milliseconds = 0;
};

DateTime local_now();
FileTime utc_now();
// Local calendar time of a moment; false (and all fields 0) when it cannot be expressed.
bool to_local(FileTime moment, DateTime& local);

void sleep_ms(unsigned milliseconds);

// --- Files and folders ---------------------------------------------------------------------------

// Attribute bits of a file or folder, kNoAttributes when nothing of that name exists (or the path
// cannot name anything). A plain file without other bits answers kArchive or kNormal.
std::uint32_t attributes(std::string_view path);
// Sets the bits that can be set (read-only, hidden, system, archive; kNormal clears them all).
Status set_attributes(std::string_view path, std::uint32_t bits);

inline bool exists(std::string_view path) { return attributes(path) != kNoAttributes; }
inline bool is_folder(std::string_view path) {
  const std::uint32_t bits = attributes(path);
  return bits != kNoAttributes && (bits & kFolder) != 0;
}

// Creates one folder; its parent must exist. kExists when something of that name is there.
Status create_folder(std::string_view path);
// Removes an empty folder.
Status remove_folder(std::string_view path);
// Deletes a file; refuses read-only files and folders, as Windows does.
Status delete_file(std::string_view path);
// Copies content, last write time and attributes to `to` by the fastest way that the system has. An
// existing `to` is overwritten in place, which is quick but leaves a mixture when it fails: who
// cannot bear that copies to a new name and replaces. A `to` that did not exist is gone again after
// a failure. kDenied when `to` is read-only, kBusy when both are one file. On Linux a new file gets
// the permissions of `from`; an existing one keeps its own, but for the read-only bit.
Status copy_file(std::string_view from, std::string_view to);
// `to` becomes `from` in one step; on failure both are as before. Same folder or at least same
// drive. kDenied when `to` is read-only or a folder.
Status replace_file(std::string_view from, std::string_view to);
// Makes what was created, renamed or removed in the folder survive a power cut. Where the system
// needs nothing for that it does nothing.
Status sync_folder(std::string_view folder);
// The same for whole files and their entries in their folders; for many files much quicker than
// syncing each. After a failure any of them may not have reached the medium.
Status sync_files(const std::vector<std::string>& paths);

Status file_times(std::string_view path, FileTimes& times);
// Sets all three; 0 leaves one as it is. Linux cannot set the creation time; it is kept in an
// extended attribute where the file system has those, and read back from there by `file_times`.
Status set_file_times(std::string_view path, const FileTimes& times);
// Bytes in a file. Sizes of 4 GiB and more are given in full.
Status file_size(std::string_view path, std::uint64_t& size);

struct FolderEntry {
  std::string name;  // Shift-JIS
  bool folder = false;
  bool linked = false;  // a folder that stands elsewhere: a symbolic link, a junction
};
// The entries of a folder whose names match the pattern after the path's last separator
// (`Z:\data\*.SYG`; `*`, `?`, case ignored; `*.*` and `*` match every name), in ascending byte
// order of the upper-cased names, so that listings repeat. "." and "..", what is neither file nor
// folder, and entries that no path can name are left out. kNotFound when the folder does not exist;
// nothing matching is success with an empty list.
Status list_folder(std::string_view pattern, std::vector<FolderEntry>& entries);

// Creates an empty file with a new unique name in the folder (with or without a trailing backslash)
// and gives its full path. The name is the first three characters of the prefix, five hexadecimal
// digits and `.tmp`.
Status unique_file(std::string_view folder, std::string_view prefix, std::string& path);

// --- Open files ----------------------------------------------------------------------------------

enum class OpenMode : std::uint8_t {
  kRead,        // must exist
  kReadShared,  // kRead, and others may go on writing
  kCreate,      // made new; an existing file is emptied
  kCreateNew,   // must not exist yet
  kAppend,      // made when absent; every write goes to the end; reading is allowed
  kUpdate,      // must exist; read and write in place
};

// A file held open. Move-only; the destructor closes it and forgets errors, so writers call
// `close`. Unbuffered: callers read and write in pieces of their own choice.
class File {
 public:
  File() = default;
  File(File&& other) noexcept
      : handle_(std::exchange(other.handle_, kClosed)),
        path_(std::move(other.path_)),
        native_(std::move(other.native_)) {}
  File& operator=(File&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(path_, other.path_);
    std::swap(native_, other.native_);
    return *this;
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File();

  Status open(std::string_view path, OpenMode mode);
  // Opens the file that was closed here last once more, for appending. It is taken to be the same
  // ordinary file still, so this costs little more than the system's own part; for files that are
  // closed after every line.
  Status append_again();
  bool is_open() const { return handle_ != kClosed; }

  // Reads up to `size` bytes, sometimes fewer; `got` is 0 only at the end of the file.
  Status read(void* data, std::size_t size, std::size_t& got);
  // Writes all bytes or fails; after a failure some of them may have reached the file.
  Status write(std::string_view bytes);
  // Bytes from the start.
  Status seek(std::uint64_t position);
  Status size(std::uint64_t& bytes);
  // Content and size reach the medium before this returns.
  Status sync();
  Status times(FileTimes& times);
  Status set_times(const FileTimes& times);
  // Idempotent.
  Status close();

 private:
  static constexpr std::intptr_t kClosed = -1;

  std::intptr_t handle_ = kClosed;
  std::string path_;    // for error texts, and to open the file again
  std::string native_;  // the same as the system takes it; posix only
};

// --- Memory --------------------------------------------------------------------------------------

// A zero-filled, locked block of the system's movable global memory (plain zeroed memory where the
// system has none); null when there is none left. Release it with `free_movable`; null is allowed.
void* alloc_movable(std::size_t bytes) noexcept;
void free_movable(void* block) noexcept;

// --- Host paths and environment ------------------------------------------------------------------

// A native path in UTF-8 (`/home/x/住所.csv`, on Windows `C:\x` or `\\?\`-free forms) as the
// library's Windows-form Shift-JIS path: on Linux relative paths are completed from the current
// folder and given as `Z:\…` (or `X:\…` when the path lies under a drive of TQUTIL_DRIVES).
// kInvalid when it has no Shift-JIS form.
Status path_from_native(std::string_view native_utf8, std::string& path);
// The other way; names that exist are given with the case that they have on disk.
Status path_to_native(std::string_view path, std::string& native_utf8);

// An environment variable as UTF-8; empty when unset.
std::string environment(const char* name);
// The per-user data folder for this application, in library form without a trailing backslash
// (`$XDG_DATA_HOME/tqutil` or `~/.local/share/tqutil`; on Windows `%APPDATA%\tqutil`).
std::string user_data_folder();
// The folder that holds this library's own binary (the module's folder on Windows and Linux), in
// library form without a trailing backslash; empty when it cannot be told. Shipped definition files
// are found relative to it.
std::string module_folder();

}  // namespace tq::platform
