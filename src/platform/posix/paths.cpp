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

// A name that is looked for among those of a folder.
class Wanted {
 public:
  explicit Wanted(const std::string& name)
      : ascii_(std::all_of(name.begin(), name.end(), [](char c) { return (c & 0x80) == 0; })) {
    if (cp932::from_utf8(name, upper_, cp932::Accept::kJisSpellings)) upper_ = upper_name(upper_);
    // Without letters there is no other case; many numbered files are asked for in vain.
    only_itself_ = ascii_ && std::none_of(upper_.begin(), upper_.end(),
                                          [](char c) { return c >= 'A' && c <= 'Z'; });
  }
  // Whether no other spelling than the one looked for can be meant.
  bool only_itself() const { return only_itself_; }

  bool is(const char* on_disk) const {
    if (ascii_) {
      const std::string_view name = on_disk;
      return name.size() == upper_.size() &&
             std::equal(name.begin(), name.end(), upper_.begin(),
                        [](char a, char b) { return sjis::upper_ascii(a) == b; });
    }
    std::string name;
    return cp932::from_utf8(on_disk, name, cp932::Accept::kJisSpellings) &&
           upper_name(name) == upper_;
  }

 private:
  std::string upper_;
  bool ascii_;
  bool only_itself_;
};

}  // namespace

std::string drives_folder() {
  const char* folder = std::getenv("TQUTIL_DRIVES");
  std::string text = folder == nullptr ? "" : folder;
  while (text.ends_with('/')) text.pop_back();
  return text;
}

NativePath::NativePath(std::string_view path) {
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
  const Wanted wanted(text_.substr(begin, end - begin));
  if (wanted.only_itself()) return false;
  const Folder folder(::opendir(text_.substr(0, begin).c_str()));
  if (folder == nullptr) return false;
  std::string best;
  while (const dirent* entry = ::readdir(folder.get())) {
    if (!wanted.is(entry->d_name)) continue;
    if (best.empty() || best > entry->d_name) best = entry->d_name;
  }
  if (best.empty()) return false;
  text_.replace(begin, end - begin, best);
  return true;
}

}  // namespace tq::platform::posix
