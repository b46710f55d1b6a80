#include "library/home_file.h"

#include "failure.h"
#include "text/library_text.h"
#include "text/native_path.h"
#include "tqutil/host.h"
#include "tqutil/records.h"

namespace tqsync {

std::filesystem::path home_file(short folder, const std::string& name) {
  char path[TQ_PATH_SIZE];
  if (tqGetFolder(folder, path) != 0) {
    throw Failure("a folder of the home folder cannot be found. Check tqutil.ini.");
  }
  return to_path(to_native_path(path + name));
}

}  // namespace tqsync
