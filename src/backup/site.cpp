#include "backup/site.h"

#include <algorithm>
#include <cstdio>

#include "backup/list.h"
#include "backup/settings.h"
#include "base/sjis.h"
#include "common/path.h"
#include "platform/names.h"
#include "platform/platform.h"
#include "siblings/siblings.h"
#include "tqutil/backup.h"

namespace tq {
namespace {

constexpr int kIds = 100'000;
constexpr std::size_t kIdDigits = TQ_BKUP_ID_SIZE - 1;

std::string sibling_tree(FolderQuery query) {
  std::string folder = sibling_folder(query);
  // A folder that cannot be made shows when something is to be put there.
  if (!folder.empty()) static_cast<void>(MakeFolderTree(folder));
  return folder;
}

bool is_id(std::string_view text) {
  return text.size() == kIdDigits &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool is_separator(char c) { return c == '\\' || c == '/'; }

bool parse_absolute(std::string_view path, platform::ParsedPath& parsed) {
  const bool rooted =
      path.size() >= 3 &&
      (path[1] == ':' ? is_separator(path[2]) : is_separator(path[0]) && is_separator(path[1]));
  return rooted && platform::parse_path(path, parsed).ok();
}

bool same_name(std::string_view a, std::string_view b) {
  return platform::upper_name(a) == platform::upper_name(b);
}

short cause_of(Code code) {
  switch (code) {
    case Code::kNoMemory:
      return TQ_BKUP_CAUSE_MEMORY;
    case Code::kNotFound:
      return TQ_BKUP_CAUSE_FILE;
    case Code::kWriteProtected:
      return TQ_BKUP_CAUSE_WRITE_PROTECTED;
    case Code::kNotReady:
      return TQ_BKUP_CAUSE_NOT_READY;
    case Code::kBadDisk:
      return TQ_BKUP_CAUSE_BAD_DISK;
    case Code::kWriteFault:
      return TQ_BKUP_CAUSE_WRITE_FAULT;
    case Code::kReadFault:
      return TQ_BKUP_CAUSE_READ_FAULT;
    case Code::kDiskFull:
      return TQ_BKUP_CAUSE_DISK_FULL;
    default:
      return TQ_BKUP_CAUSE_OTHER;
  }
}

}  // namespace

Site::Site()
    : data_folder(sibling_tree(&tFLDCOM_API::FldComGetDataFolder)),
      backup_folder(sibling_tree(&tFLDCOM_API::FldComGetBackupFolder)),
      generations(Settings(data_folder).generations(TQ_BKUP_CONVERSION)),
      cause(TQ_BKUP_CAUSE_NONE) {}

std::string Site::history_of(std::string_view id) const {
  return data_folder + std::string(id) + std::string(kHistoryExtension);
}

std::string Site::folder_of_history(std::string_view history) const {
  const std::string_view name = PathFileName(history);
  const std::string_view id = name.substr(0, PathExtension(name));
  return is_id(id) && !backup_folder.empty() ? folder_of(id) : std::string();
}

std::string Site::new_id(const BackupList& known) const {
  if (backup_folder.empty() || data_folder.empty()) return {};
  for (int number = 0; number < kIds; ++number) {
    char id[16];
    std::snprintf(id, sizeof id, "%05d", number);
    // The name without its extension is asked for in the data folder, too, though no history is
    // called so.
    if (!known.has(id) && !platform::exists(folder_of(id)) && !platform::exists(data_folder + id)) {
      return id;
    }
  }
  return {};
}

bool Site::is_copy(std::string_view path) const {
  const std::string folder = PathFolder(path);
  return lies_in(path, folder) && lies_in(folder, backup_folder) && is_id(PathFileName(folder));
}

bool Site::is_ours(std::string_view path) const {
  platform::ParsedPath parsed;
  if (!parse_absolute(path, parsed) || is_within(path, backup_folder)) return true;
  if (!is_within(path, data_folder)) return false;
  const std::string_view name = PathFileName(parsed.names);
  return same_name(name, kSettingsFile) ||
         same_name(name.substr(PathExtension(name)), kHistoryExtension);
}

bool Site::is_around_us(std::string_view folder) const {
  return is_within(backup_folder, folder) || is_within(data_folder, folder);
}

void Site::fail(short because, std::string_view path) {
  cause = because;
  cause_path = path;
}

void Site::fail(const Status& status, std::string_view path) {
  fail(cause_of(status.code()), path);
}

bool is_within(std::string_view path, std::string_view folder) {
  platform::ParsedPath inner, outer;
  if (!parse_absolute(path, inner) || !parse_absolute(folder, outer)) return false;
  if (inner.drive != outer.drive || inner.share != outer.share) return false;
  const std::string name = platform::upper_name(inner.names);
  const std::string around = platform::upper_name(outer.names);
  return name.size() >= around.size() && name.compare(0, around.size(), around) == 0 &&
         (name.size() == around.size() || name[around.size()] == '\\');
}

}  // namespace tq
