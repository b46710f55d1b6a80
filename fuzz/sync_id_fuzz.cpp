// Id texts of any content: reading takes fixed places and stays in the text, printing fits its
// buffers, and what was read and is in range comes back.
#include <string>
#include <vector>

#include "target.h"
#include "tqutil/records.h"

void try_input(std::string_view input) {
  // Both texts on the heap and of exact size, so that a step past their ends is seen.
  const std::string text(input);
  const std::vector<char> exact(text.c_str(), text.c_str() + text.size() + 1);
  tSYNC_ID id{}, file{}, back{};
  tqSyncIdStr2Val(exact.data(), &id);
  tqRecIdStr2Val(exact.data(), &file);
  require(file.grp == id.grp && file.file == id.file && file.rec == 0);

  std::vector<char> printed(TQ_SYNC_ID_SIZE);
  tqSyncIdVal2Str(&id, nullptr, nullptr, printed.data());
  if (id.grp >= 1000 || id.file >= 1000 || id.rec >= 1000000000) return;
  tqSyncIdStr2Val(printed.data(), &back);
  require(back.grp == id.grp && back.file == id.file && back.rec == id.rec);
}
