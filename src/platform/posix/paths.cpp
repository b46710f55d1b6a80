#include "platform/posix/paths.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "base/cp932.h"
#include "base/sjis.h"
#include "platform/names.h"
#include "platform/platform.h"
#include "platform/posix/errors.h"

namespace tq::platform::posix {
namespace {

constexpr char kRootDrive = 'Z';  // `Z:\` is the root folder

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

std::string with_slashes(std::string text) {
  std::replace(text.begin(), text.end(), '\\', '/');
  return text;
}

// Whether a name from the disk is the wanted one, which is in upper case.
bool is_same_name(const char* on_disk, const std::string& wanted, bool wanted_is_ascii) {
  if (wanted_is_ascii) {
    const std::string_view name = on_disk;
    return name.size() == wanted.size() &&
           std::equal(name.begin(), name.end(), wanted.begin(),
                      [](char a, char b) { return sjis::upper_ascii(a) == b; });
  }
  std::string name;
  return cp932::from_utf8(on_disk, name, cp932::Accept::kJisSpellings) &&
         upper_name(name) == wanted;
}

}  // namespace

std::string drives_folder() {
  const char* folder = std::getenv("TQUTIL_DRIVES");
  std::string text = folder == nullptr ? "" : folder;
  while (text.ends_with('/')) text.pop_back();
  return text;
}

NativePath::NativePath(std::string_view path) {
  std::string complete;
  if (is_relative(path)) {
    status_ = path_from_native(".", complete);
    if (!status_.ok()) return;
    path = complete.append("\\").append(path);
  }
  ParsedPath parsed;
  status_ = parse_path(path, parsed);
  if (!status_.ok()) return;
  if (parsed.drive != 0 && parsed.drive != kRootDrive) {
    text_ = drives_folder();
    root_size_ = text_.size();
    if (text_.empty()) {
      status_ = refusal(Code::kNotFound, "find", path, "there is no such drive");
      return;
    }
    text_.append("/").push_back(static_cast<char>(parsed.drive - 'A' + 'a'));
  } else if (parsed.share) {
    status_ = refusal(Code::kNotFound, "find", path, "there are no network shares");
    return;
  }
  text_ += with_slashes(cp932::to_utf8(parsed.names));
  if (text_.empty()) text_ = "/";
}

bool NativePath::match_case() {
  const std::string before = text_;
  const bool found = match(0);
  changed_ = text_ != before;
  return found;
}

// Matches the text without its last `tail` bytes. The deepest folder that is there is looked for
// from the end, so that usually only one folder is listed.
bool NativePath::match(std::size_t tail) {
  const std::size_t end = text_.size() - tail;
  if (end <= root_size_) return true;
  struct stat found;
  if (::lstat(text_.substr(0, end).c_str(), &found) == 0) return true;
  if (errno != ENOENT) return false;
  const std::size_t slash = text_.rfind('/', end - 1);
  if (!match(text_.size() - slash)) return false;
  // The folders may have got names of another length.
  const std::size_t new_end = text_.size() - tail;
  return match_name(text_.rfind('/', new_end - 1) + 1, new_end);
}

// Looks for the name at [begin, end) in the folder before it.
bool NativePath::match_name(std::size_t begin, std::size_t end) {
  const Folder folder(::opendir(text_.substr(0, begin).c_str()));
  std::string wanted;
  const std::string name = text_.substr(begin, end - begin);
  if (folder == nullptr || !cp932::from_utf8(name, wanted, cp932::Accept::kJisSpellings))
    return false;
  wanted = upper_name(wanted);
  const bool is_ascii =
      wanted.size() == name.size() &&
      std::none_of(name.begin(), name.end(), [](char c) { return (c & 0x80) != 0; });
  std::string best;
  while (const dirent* entry = ::readdir(folder.get())) {
    if (!is_same_name(entry->d_name, wanted, is_ascii)) continue;
    if (best.empty() || best > entry->d_name) best = entry->d_name;
  }
  if (best.empty()) return false;
  text_.replace(begin, end - begin, best);
  return true;
}

}  // namespace tq::platform::posix
