// Id texts of any content: reading takes fixed places and stays in the text, printing fits its
// buffers, and what was read and is in range comes back.
#include <cstring>
#include <memory>
#include <string_view>

#include "target.h"
#include "tqutil/records.h"

void try_input(std::string_view input) {
  // Of exact size, so that a read past the end is seen.
  const auto exact = std::make_unique<char[]>(input.size() + 1);
  std::memcpy(exact.get(), input.data(), input.size());
  tSYNC_ID id{};
  tqSyncIdStr2Val(exact.get(), &id);
  tSYNC_ID file{};
  tqRecIdStr2Val(exact.get(), &file);
  require(file.grp == id.grp && file.file == id.file && file.rec == 0);

  const auto printed = std::make_unique<char[]>(TQ_SYNC_ID_SIZE);
  tqSyncIdVal2Str(&id, nullptr, nullptr, printed.get());
  if (id.grp >= 1000 || id.file >= 1000 || id.rec >= 1000000000) return;
  tSYNC_ID back{};
  tqSyncIdStr2Val(printed.get(), &back);
  require(back.grp == id.grp && back.file == id.file && back.rec == id.rec);
}
