#include "siblings/home.h"

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
  std::string folder = settings(home).text("folders", key, fallback);
  if (folder.empty()) folder = fallback;
  if (folder.front() == '/') {
    if (!platform::path_from_native(cp932::to_utf8(folder), folder).ok()) return {};
  } else if (!is_absolute(folder)) {
    folder = home + '\\' + folder;
  }
  AddBackslash(folder);
  if (folder.size() > kPathMax || MakeFolderTree(folder) != 0) return {};
  return folder;
}

std::string configured_text(std::string_view key, std::string_view fallback) {
  const std::string home = home_folder();
  return home.empty() ? std::string(fallback) : settings(home).text("texts", key, fallback);
}

}  // namespace tq
