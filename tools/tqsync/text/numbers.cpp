#include "text/numbers.h"

namespace tqsync {

std::string counted(std::uint64_t count, std::string noun) {
  if (count != 1 && noun.ends_with('y')) noun.replace(noun.size() - 1, 1, "ie");
  if (count != 1) noun += 's';
  return std::to_string(count) + ' ' + noun;
}

}  // namespace tqsync
