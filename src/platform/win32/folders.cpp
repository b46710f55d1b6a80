// Folders: making, removing and listing them, and new names in them.
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

constexpr int kMaxNames = 100'000;  // new names that are tried before giving up

// A search through a folder. Windows' own patterns also match short names, so all entries are asked
// for and ours are matched.
class Search {
 public:
  explicit Search(const WidePath& folder) {
    const std::wstring all = std::wstring(folder.c_str()) + L"\\*";
    handle_ = ::FindFirstFileExW(all.c_str(), FindExInfoBasic, &entry_, FindExSearchNameMatch,
                                 nullptr, 0);
    if (found()) fault::count_handle(1);
  }
  ~Search() {
    if (!found()) return;
    ::FindClose(handle_);
    fault::count_handle(-1);
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  bool found() const { return handle_ != INVALID_HANDLE_VALUE; }
  const WIN32_FIND_DATAW& entry() const { return entry_; }
  bool next() { return ::FindNextFileW(handle_, &entry_) != FALSE; }

 private:
  WIN32_FIND_DATAW entry_{};
  HANDLE handle_;
};

// Adds the entry when the library can name it and it matches.
void add_entry(const WIN32_FIND_DATAW& found, const Pattern& mask,
               std::vector<FolderEntry>& entries) {
  FolderEntry entry;
  if (!win32::narrow(found.cFileName, entry.name)) return;
  if (!is_plain_name(entry.name) || !mask.matches(entry.name)) return;
  entry.folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  // The tag stands in dwReserved0; other reparse points (files kept online) are no links.
  entry.linked = entry.folder && (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                 IsReparseTagNameSurrogate(found.dwReserved0);
  entries.push_back(std::move(entry));
}

}  // namespace

Status create_folder(std::string_view path) {
  if (Status status = fault::gate("create folder", path, true); !status.ok()) return status;
  const WidePath wide(path);
  if (!wide.status().ok()) return wide.status();
  return ::CreateDirectoryW(wide.c_str(), nullptr) ? Status() : failure("create folder", path);
}

Status remove_folder(std::string_view path) {
  if (Status status = fault::gate("remove folder", path, false); !status.ok()) return status;
  const WidePath wide(path);
  if (!wide.status().ok()) return wide.status();
  return ::RemoveDirectoryW(wide.c_str()) ? Status() : failure("remove folder", path);
}

Status list_folder(std::string_view pattern, std::vector<FolderEntry>& entries) {
  entries.clear();
  if (Status status = fault::gate("list", pattern, false); !status.ok()) return status;
  const PatternParts parts = split_pattern(pattern);
  if (parts.mask.empty()) return refusal(Code::kInvalid, "list", pattern, "no pattern");
  const WidePath wide(parts.folder.empty() ? "." : parts.folder);
  if (!wide.status().ok()) return wide.status();
  Search search(wide);
  if (!search.found()) {
    // The root of an empty drive has not even "." in it.
    if (::GetLastError() == ERROR_FILE_NOT_FOUND) return {};
    const Status failed = failure("list", pattern);
    const Status wrong = win32::require_folder("list", pattern, wide);
    return wrong.ok() ? failed : wrong;
  }
  const Pattern mask(parts.mask);
  do {
    add_entry(search.entry(), mask, entries);
  } while (search.next());
  if (::GetLastError() != ERROR_NO_MORE_FILES) return failure("list", pattern);
  sort_entries(entries);
  return {};
}

Status unique_file(std::string_view folder, std::string_view prefix, std::string& path) {
  path.clear();
  if (Status status = fault::gate("create a file in", folder, true); !status.ok()) return status;
  if (Status status = WidePath(folder).status(); !status.ok()) return status;
  UniqueNames names(prefix);
  for (int tries = 0; tries < kMaxNames; ++tries) {
    const std::string name = names.next();
    if (!is_plain_name(name)) return refusal(Code::kInvalid, "create", name, "bad prefix");
    const WidePath wide(join(folder, name));
    const HANDLE file = ::CreateFileW(wide.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
      ::CloseHandle(file);
      path = join(folder, name);
      return {};
    }
    if (::GetLastError() != ERROR_FILE_EXISTS) return failure("create a file in", folder);
  }
  return refusal(Code::kExists, "create a file in", folder, "no name is free");
}

}  // namespace tq::platform
