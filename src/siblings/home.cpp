#include "siblings/home.h"

#include <vector>

#include "base/cp932.h"
#include "base/sjis.h"
#include "common/path.h"
#include "common/profile.h"
#include "platform/platform.h"

namespace tq {
namespace {

constexpr std::string_view kSettingsFile = "\\tqutil.ini";

Profile settings(const std::string& home) {
  Profile profile;
  // Settings that cannot be read count as absent: the defaults serve.
  static_cast<void>(profile.load(home + std::string(kSettingsFile)));
  return profile;
}

bool is_absolute(std::string_view path) {
  return path.size() >= 3 && !sjis::is_lead(path[0]) && path[1] == ':' && path[2] == '\\';
}

// A value of [folders] as a path with a trailing backslash; empty when it has no such form.
std::string complete(const std::string& home, std::string_view value) {
  std::string folder(value);
  if (folder.front() == '/') {
    if (!platform::path_from_native(cp932::to_utf8(folder), folder).ok()) return {};
  } else if (!is_absolute(folder)) {
    folder = home + '\\' + folder;
  }
  AddBackslash(folder);
  return folder.size() > kPathMax ? std::string() : folder;
}

bool holds(const std::string& folder, std::string_view wanted) {
  std::vector<platform::FolderEntry> entries;
  return !folder.empty() && platform::list_folder(folder + std::string(wanted), entries).ok() &&
         !entries.empty();
}

// `share\tqutil` beside or above the library's own folder: `lib` and `bin` of an installed tree are
// one level down, `lib/<machine>` two, the build folders of the source tree three.
std::string find_shipped_folder() {
  constexpr int kLevels = 4;
  std::string folder = platform::module_folder();
  for (int level = 0; level < kLevels && !folder.empty(); ++level) {
    AddBackslash(folder);
    const std::string shipped = folder + "share\\tqutil\\";
    if (platform::is_folder(shipped)) return shipped;
    const std::string above = PathFolder(folder.substr(0, folder.size() - 1));
    if (above.size() >= folder.size()) break;
    folder = above;
  }
  return {};
}

}  // namespace

std::string home_folder() {
  const std::string native = platform::environment("TQUTIL_HOME");
  std::string home;
  if (native.empty() || !platform::path_from_native(native, home).ok()) {
    home = platform::user_data_folder();
  }
  RemoveBackslash(home);
  return home;
}

std::string configured_folder(std::string_view key, std::string_view fallback) {
  const std::string home = home_folder();
  if (home.empty()) return {};
  const std::string value = settings(home).text("folders", key, fallback);
  const std::string folder = complete(home, value.empty() ? fallback : value);
  return folder.empty() || MakeFolderTree(folder) != 0 ? std::string() : folder;
}

std::string definition_folder(std::string_view key, std::string_view name,
                              std::string_view wanted) {
  static const std::string shipped = find_shipped_folder();
  const std::string home = home_folder();
  std::string own;
  if (!home.empty()) {
    const std::string value = settings(home).text("folders", key, {});
    if (!value.empty()) return complete(home, value);
    own = complete(home, name);
  }
  if (shipped.empty() || holds(own, wanted)) return own;
  std::string folder = shipped + std::string(name) + '\\';
  return holds(folder, wanted) ? folder : own;
}

std::string configured_text(std::string_view key, std::string_view fallback) {
  const std::string home = home_folder();
  return home.empty() ? std::string(fallback) : settings(home).text("texts", key, fallback);
}

}  // namespace tq
