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
    if (folder == TQ_FOLDER_HOME) {
      throw Failure("there is no home folder. Name one with --home or in TQUTIL_HOME.");
    }
    throw Failure("a folder that " + from_path(settings_file()) +
                  " names cannot be found or made. Check its entries.");
  }
  return to_path(to_native_path(path + name));
}

std::filesystem::path settings_file() { return home_file(TQ_FOLDER_HOME, "tqutil.ini"); }

}  // namespace tqsync
