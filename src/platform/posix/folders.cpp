// Folders: making, removing and listing them, and new names in them.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

#include "base/cp932.h"
#include "platform/fault.h"
#include "platform/names.h"
#include "platform/platform.h"
#include "platform/posix/errors.h"
#include "platform/posix/paths.h"

namespace tq::platform {

using posix::failure;
using posix::NativePath;

namespace {

constexpr mode_t kNewFolderMode = 0777;  // less what the umask takes away
constexpr mode_t kNewFileMode = 0666;
constexpr int kMaxNames = 100'000;  // new names that are tried before giving up

struct CloseFolder {
  void operator()(DIR* folder) const {
    ::closedir(folder);
    fault::count_handle(-1);
  }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

OpenFolder open_folder(NativePath& native) {
  const int fd = native.find(
      [](const char* name) { return ::open(name, O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
  if (fd < 0) return nullptr;
  DIR* folder = ::fdopendir(fd);
  if (folder == nullptr) {
    ::close(fd);
    return nullptr;
  }
  fault::count_handle(1);
  return OpenFolder(folder);
}

enum class Kind { kFile, kFolder, kOther };

Kind kind_of(DIR* folder, const dirent& entry) {
  switch (entry.d_type) {
    case DT_REG:
      return Kind::kFile;
    case DT_DIR:
      return Kind::kFolder;
    case DT_LNK:
    case DT_UNKNOWN:  // not every file system says it here
      break;
    default:
      return Kind::kOther;
  }
  struct stat info;
  if (::fstatat(::dirfd(folder), entry.d_name, &info, 0) != 0) return Kind::kOther;
  if (S_ISDIR(info.st_mode)) return Kind::kFolder;
  return S_ISREG(info.st_mode) ? Kind::kFile : Kind::kOther;
}

bool is_link(DIR* folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_LNK;
  struct stat info;
  return ::fstatat(::dirfd(folder), entry.d_name, &info, AT_SYMLINK_NOFOLLOW) == 0 &&
         S_ISLNK(info.st_mode);
}

// Adds the entry when the library can name it and it matches.
void add_entry(DIR* folder, const dirent& found, const Pattern& mask,
               std::vector<FolderEntry>& entries) {
  FolderEntry entry;
  if (!cp932::from_utf8(found.d_name, entry.name, cp932::Accept::kJisSpellings)) return;
  if (!is_plain_name(entry.name) || !mask.matches(entry.name)) return;
  const Kind kind = kind_of(folder, found);
  entry.folder = kind == Kind::kFolder;
  entry.linked = entry.folder && is_link(folder, found);
  if (kind != Kind::kOther) entries.push_back(std::move(entry));
}

}  // namespace

Status create_folder(std::string_view path) {
  if (Status status = fault::gate("create folder", path, true); !status.ok()) return status;
  NativePath native(path);
  if (!native.status().ok()) return native.status();
  if (native.match_case())
    return refusal(Code::kExists, "create folder", path, "it is there already");
  return ::mkdir(native.c_str(), kNewFolderMode) == 0 ? Status() : failure("create folder", path);
}

Status remove_folder(std::string_view path) {
  if (Status status = fault::gate("remove folder", path, false); !status.ok()) return status;
  NativePath native(path);
  if (!native.status().ok()) return native.status();
  if (native.find(::rmdir) == 0) return {};
  if (errno == EEXIST) errno = ENOTEMPTY;  // some file systems say it in this way
  return failure("remove folder", path);
}

Status list_folder(std::string_view pattern, std::vector<FolderEntry>& entries) {
  entries.clear();
  if (Status status = fault::gate("list", pattern, false); !status.ok()) return status;
  const PatternParts parts = split_pattern(pattern);
  if (parts.mask.empty()) return refusal(Code::kInvalid, "list", pattern, "no pattern");
  NativePath native(parts.folder.empty() ? "." : parts.folder);
  if (!native.status().ok()) return native.status();
  const OpenFolder folder = open_folder(native);
  if (folder == nullptr) return failure("list", pattern);
  const Pattern mask(parts.mask);
  errno = 0;
  while (const dirent* entry = ::readdir(folder.get())) {
    add_entry(folder.get(), *entry, mask, entries);
    errno = 0;
  }
  if (errno != 0) return failure("list", pattern, Code::kReadFault);
  sort_entries(entries);
  return {};
}

Status unique_file(std::string_view folder, std::string_view prefix, std::string& path) {
  path.clear();
  if (Status status = fault::gate("create a file in", folder, true); !status.ok()) return status;
  NativePath native(folder);
  if (!native.status().ok()) return native.status();
  UniqueNames names(prefix);
  for (int tries = 0; tries < kMaxNames; ++tries) {
    const std::string name = names.next();
    if (!is_plain_name(name)) return refusal(Code::kInvalid, "create", name, "bad prefix");
    const auto create = [utf8 = cp932::to_utf8(name)](const std::string& in) {
      const std::string file = in + "/" + utf8;
      return ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode);
    };
    const int fd = native.find(create);
    if (fd >= 0) {
      ::close(fd);
      path = join(folder, name);
      return {};
    }
    if (errno != EEXIST) return failure("create a file in", folder);
  }
  return refusal(Code::kExists, "create a file in", folder, "no name is free");
}

}  // namespace tq::platform
