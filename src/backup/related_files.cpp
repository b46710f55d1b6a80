#include "backup/related_files.h"

#include <cstdint>

#include "common/text.h"
#include "siblings/siblings.h"

namespace tq {
namespace {

constexpr short kClear = 0;
constexpr short kRelease = 1;

// The sibling's list from the query on; released whatever happens.
struct Listing {
  Listing() { fldcom().FldComRelatedFilesReset(fldcom().context, kClear); }
  ~Listing() { fldcom().FldComRelatedFilesReset(fldcom().context, kRelease); }
  Listing(const Listing&) = delete;
  Listing& operator=(const Listing&) = delete;
};

}  // namespace

bool related_files(short type, const char* first_file, std::vector<std::string>& paths) {
  paths.clear();
  const Listing listing;
  std::int32_t count = 0;
  const char* const* listed = nullptr;
  if (fldcom().FldComRelatedFiles(fldcom().context, type, first_file, &count, &listed) != 0) {
    return false;
  }
  for (std::int32_t i = 0; listed != nullptr && i < count; ++i) paths.emplace_back(view(listed[i]));
  return true;
}

}  // namespace tq
