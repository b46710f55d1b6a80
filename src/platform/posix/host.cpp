// The process and its user: native paths, the environment, where things are kept.
#include <dlfcn.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>

#include "base/cp932.h"
#include "platform/names.h"
#include "platform/platform.h"
#include "platform/posix/errors.h"
#include "platform/posix/paths.h"

namespace tq::platform {

namespace fs = std::filesystem;

namespace {

// Complete and without "." and "..".
fs::path absolute(std::string_view native) {
  std::error_code error;
  const fs::path path = fs::absolute(fs::path(native), error);
  // Only the file system knows where ".." leads when the name before it is a link.
  for (const fs::path& name : path) {
    if (name == "..") return fs::weakly_canonical(path, error);
  }
  return path.lexically_normal();
}

// The rest of `path` below `folder` ("" for the folder itself), null when it lies elsewhere.
const char* below(const std::string& path, const std::string& folder) {
  if (folder.empty() || !path.starts_with(folder)) return nullptr;
  const char* rest = path.c_str() + folder.size();
  return *rest == '\0' || *rest == '/' ? rest : nullptr;
}

// `X:/…` for a path under one of the drives, or under what a drive's entry is a link to; `Z:/…`
// else.
std::string with_drive(const std::string& path) {
  const std::string drives = posix::drives_folder();
  std::string best = "Z:" + path;
  if (drives.empty()) return best;
  std::error_code error;
  std::size_t best_size = 0;
  for (fs::directory_iterator entry(drives, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string letter = entry->path().filename().native();
    if (letter.size() != 1 || !std::isalpha(static_cast<unsigned char>(letter[0]))) continue;
    std::error_code dangling;
    for (const fs::path& folder : {entry->path(), fs::canonical(entry->path(), dangling)}) {
      const char* rest = below(path, folder.native());
      if (rest == nullptr || folder.native().size() <= best_size) continue;
      best = upper_name(letter) + ":" + (*rest == '\0' ? "/" : rest);
      best_size = folder.native().size();
    }
  }
  return best;
}

std::string home_folder() {
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
  const passwd* user = ::getpwuid(::getuid());
  return user == nullptr ? "" : user->pw_dir;
}

}  // namespace

Status path_from_native(std::string_view native_utf8, std::string& path) {
  path.clear();
  const auto refuse = [&](const char* why) {
    return Status(Code::kInvalid, "path " + std::string(native_utf8) + " " + why);
  };
  if (native_utf8.empty() || native_utf8.find('\0') != std::string_view::npos)
    return refuse("is no path");
  std::string text = with_drive(absolute(native_utf8).native());
  if (text.find('\\') != std::string::npos) return refuse("holds a backslash");
  if (text.size() > 3 && text.ends_with('/')) text.pop_back();
  std::replace(text.begin(), text.end(), '/', '\\');
  std::string converted;
  if (!cp932::from_utf8(text, converted, cp932::Accept::kJisSpellings)) {
    return refuse("holds characters that Shift-JIS does not have");
  }
  ParsedPath parsed;
  if (Status status = parse_path(converted, parsed); !status.ok()) return status;
  const std::string_view names = std::string_view(converted).substr(2);
  if (names != "\\" && names != parsed.names) return refuse("ends a name with a dot or a space");
  path = converted;
  return {};
}

Status path_to_native(std::string_view path, std::string& native_utf8) {
  native_utf8.clear();
  posix::NativePath native(path);
  if (!native.status().ok()) return native.status();
  native.match_case();
  native_utf8 = native.text();
  return {};
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string user_data_folder() {
  std::string base = environment("XDG_DATA_HOME");
  if (!base.starts_with('/'))
    base = home_folder() + "/.local/share";  // a relative one is to be ignored
  std::string path;
  return path_from_native(base + "/tqutil", path).ok() ? path : "";
}

std::string module_folder() {
  Dl_info module{};
  std::error_code error;
  fs::path binary;
  // A program is known by the name that it was started with, which may not lead to it.
  if (::dladdr(reinterpret_cast<const void*>(&module_folder), &module) != 0 &&
      std::string_view(module.dli_fname).find(".so") != std::string_view::npos) {
    binary = fs::canonical(module.dli_fname, error);
  }
  if (binary.empty()) binary = fs::read_symlink("/proc/self/exe", error);
  std::string path;
  return path_from_native(binary.parent_path().native(), path).ok() ? path : "";
}

}  // namespace tq::platform
