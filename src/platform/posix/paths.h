// Library paths on a file system whose names are UTF-8 and differ by case.
#pragma once

#include <cerrno>
#include <string>
#include <string_view>

#include "base/status.h"

namespace tq::platform::posix {

// A library path as the system takes it. It costs one conversion when the names are written as they
// are on disk; only a name that is not found is looked for by walking the folders.
class NativePath {
 public:
  explicit NativePath(std::string_view path);

  // Not ok: the path names nothing, or stands on a drive that there is not.
  const Status& status() const { return status_; }
  const char* c_str() const { return text_.c_str(); }
  const std::string& text() const { return text_; }

  // Calls `call(c_str())`, and once more with the names as they are on disk when it found nothing.
  // Both times the result -1 with errno is a failure.
  template <class Call>
  auto find(Call call) {
    auto result = call(c_str());
    if (result != -1 || errno != ENOENT) return result;
    match_case();
    errno = ENOENT;
    return changed_ ? call(c_str()) : result;
  }

  // Puts the names that are there into the case that they have on disk; what cannot be found keeps
  // its own. True when all of it is there. An exact name wins over one in another case, and among
  // several such the first in byte order is taken.
  bool match_case();

 private:
  bool match(std::size_t tail);
  bool match_name(std::size_t begin, std::size_t end);

  std::string text_;
  std::size_t root_size_ = 0;  // what stands before the names, which is taken as it is
  bool changed_ = false;       // whether the last `match_case` changed the text
  Status status_;
};

// The folder with one entry for each drive but `Z:`, without a trailing slash; empty when there is
// none.
std::string drives_folder();

}  // namespace tq::platform::posix
