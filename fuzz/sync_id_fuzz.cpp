// Id texts of any content: reading takes fixed places and stays in the text, printing fits its
// buffers, and what was read and is in range comes back.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "require.h"
#include "tqutil/records.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // On the heap and of exact size, so that a read past the end is seen.
  const std::string text(reinterpret_cast<const char*>(data), size);
  char* exact = static_cast<char*>(std::malloc(text.size() + 1));
  std::memcpy(exact, text.c_str(), text.size() + 1);
  tSYNC_ID id{};
  tqSyncIdStr2Val(exact, &id);
  tSYNC_ID file{};
  tqRecIdStr2Val(exact, &file);
  require(file.grp == id.grp && file.file == id.file && file.rec == 0);
  std::free(exact);

  char* printed = static_cast<char*>(std::malloc(TQ_SYNC_ID_SIZE));
  tqSyncIdVal2Str(&id, nullptr, nullptr, printed);
  if (id.grp < 1000 && id.file < 1000 && id.rec < 1000000000) {
    tSYNC_ID back{};
    tqSyncIdStr2Val(printed, &back);
    require(back.grp == id.grp && back.file == id.file && back.rec == id.rec);
  }
  std::free(printed);
  return 0;
}
