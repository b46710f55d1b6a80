#include "text/native_path.h"

namespace tqsync {

namespace fs = std::filesystem;

fs::path to_path(const std::string& utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string from_path(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string whole_path(const std::string& utf8) {
  return from_path(fs::absolute(to_path(utf8)).lexically_normal());
}

std::string file_name(const std::string& utf8) { return from_path(to_path(utf8).filename()); }

}  // namespace tqsync
