// A folder of a test's own on the real file system, removed with all that is in it at the end.
//
// Tests talk to the library in Windows-form Shift-JIS paths, which `path` and `at` give: `Z:\tmp\…`
// on Linux, the drive's own form on Windows and under Wine. What the test itself looks at or
// prepares goes through the standard library, past the code under test. Names given to a TestFolder
// are Shift-JIS and relative to it, with `\` between folders. Anything that cannot be done throws
// std::filesystem::filesystem_error or std::runtime_error, which fails the test.
#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/cp932.h"

namespace tq::test {

class TestFolder {
 public:
  // `name` becomes part of the folder's name, for whoever finds it after a crash.
  explicit TestFolder(std::string_view name = "test");
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  // The folder in library form, without a trailing backslash.
  const std::string& path() const { return path_; }
  // A file or folder in it, in library form.
  std::string at(std::string_view name) const { return path_ + "\\" + std::string(name); }
  // The same for the operating system.
  const std::filesystem::path& native() const { return native_; }
  std::filesystem::path native(std::string_view name) const;

  void make_folder(std::string_view name) const;  // with all missing parents
  // Writes a file (an existing one is replaced), making missing folders.
  void write(std::string_view name, std::string_view bytes) const;
  std::string read(std::string_view name) const;
  bool exists(std::string_view name) const { return std::filesystem::exists(native(name)); }
  void remove(std::string_view name) const { std::filesystem::remove_all(native(name)); }

  // Everything in the folder and below: name as in `read` -> bytes; a folder is its name with a
  // trailing `\` -> empty. Compare two of them to see what an operation did.
  std::map<std::string, std::string> contents() const;

 private:
  std::filesystem::path native_;
  std::string path_;
};

// A native path in library form; throws when its name has no Shift-JIS form.
inline std::string library_path(const std::filesystem::path& native) {
  std::string path;
#ifdef _WIN32
  const std::wstring& wide = native.native();
  if (!cp932::from_utf16(std::u16string(wide.begin(), wide.end()), path)) {
    throw std::runtime_error("name without a Shift-JIS form");
  }
#else
  if (!cp932::from_utf8("Z:" + native.native(), path)) {
    throw std::runtime_error("name without a Shift-JIS form: " + native.native());
  }
#endif
  for (std::size_t pos = 0; pos < path.size(); ++pos) {
    if (path[pos] == '/') path[pos] = '\\';  // never the second half of a character
  }
  return path;
}

// A relative library-form name as the operating system writes it.
inline std::filesystem::path native_name(std::string_view name) {
  std::u16string wide = cp932::to_utf16(name);
  for (char16_t& unit : wide) {
    if (unit == u'\\') unit = u'/';
  }
  return std::filesystem::path(wide).make_preferred();
}

inline std::string read_file(const std::filesystem::path& native) {
  std::ifstream file(native, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file) throw std::runtime_error("cannot read " + native.string());
  return bytes;
}

inline TestFolder::TestFolder(std::string_view name) {
  namespace fs = std::filesystem;
  const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
  const fs::path parent = fs::canonical(fs::temp_directory_path());
  for (unsigned long long attempt = static_cast<unsigned long long>(ticks);; ++attempt) {
    native_ = parent / ("tq-" + std::string(name) + "-" + std::to_string(attempt % 10'000'000'000));
    if (fs::create_directory(native_)) break;  // false: somebody else has that one
  }
  path_ = library_path(native_);
}

inline TestFolder::~TestFolder() {
  namespace fs = std::filesystem;
  std::error_code error;
  // Windows does not remove what is read-only, Linux not what lies in a read-only folder.
  for (auto entry = fs::recursive_directory_iterator(native_, error);
       !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (entry->is_symlink()) continue;
    fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, error);
  }
  fs::remove_all(native_, error);
}

inline std::filesystem::path TestFolder::native(std::string_view name) const {
  return native_ / native_name(name);
}

inline void TestFolder::make_folder(std::string_view name) const {
  std::filesystem::create_directories(native(name));
}

inline void TestFolder::write(std::string_view name, std::string_view bytes) const {
  const std::filesystem::path target = native(name);
  std::filesystem::create_directories(target.parent_path());
  std::ofstream file(target, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error("cannot write " + target.string());
}

inline std::string TestFolder::read(std::string_view name) const { return read_file(native(name)); }

inline std::map<std::string, std::string> TestFolder::contents() const {
  std::map<std::string, std::string> all;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(native_)) {
    const std::string name = library_path(entry.path()).substr(path_.size() + 1);
    if (entry.is_directory()) {
      all[name + "\\"];
    } else {
      all[name] = read_file(entry.path());
    }
  }
  return all;
}

}  // namespace tq::test
