#include "files/whole_file.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <system_error>

#include "failure.h"
#include "text/native_path.h"

namespace tqsync {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestFile = 256u << 20;

}  // namespace

std::string read_whole_file(const std::string& native_path, const std::string& kind) {
  const fs::path path = to_path(native_path);
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    throw Failure(native_path + ": there is no such file. Put it back, or give another one.");
  }
  if (status.type() != fs::file_type::regular) {
    throw Failure(native_path + ": this is no file. Give " + kind + ".");
  }
  if (fs::file_size(path, error) > kLargestFile) {
    throw Failure(native_path + ": the file is larger than 256 MB. Split it into several files.");
  }
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file || bytes.size() > kLargestFile) {
    throw Failure(native_path + ": the file cannot be read. Check that it is not open elsewhere " +
                  "and that you may read it.");
  }
  return bytes;
}

bool save_whole_file(const fs::path& target, std::string_view bytes) {
  fs::path temporary = target;
  temporary += ".new";
  std::ofstream file(temporary, std::ios::binary);
  file << bytes;
  file.close();
  std::error_code error;
  if (file) fs::rename(temporary, target, error);
  if (file && !error) return true;
  fs::remove(temporary, error);
  return false;
}

}  // namespace tqsync
