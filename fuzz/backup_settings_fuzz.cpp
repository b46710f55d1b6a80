// Backup settings of any content: read, one value written, read again. The value is there, the
// others are as before, and of the file's lines at most the value's own is another.
#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "support/home.h"
#include "target.h"
#include "tqutil/backup.h"

namespace {

constexpr char kFile[] = "data\\TQ_BKINF.DAT";

// Every value that is not written here.
std::string other_values() {
  char path[TQ_BKUP_TEXT_SIZE], name[TQ_BKUP_TEXT_SIZE];
  const int32_t path_size = getBkupFilePath(1, 2, path);
  const int32_t name_size = tqGetPstFolderName(name);
  require(path_size >= 0 && path_size < TQ_BKUP_TEXT_SIZE && path[path_size] == '\0');
  require(name_size >= 0 && name_size < TQ_BKUP_TEXT_SIZE && name[name_size] == '\0');
  std::string all = std::string(path) + '\n' + name;
  for (const short kind : {short{1}, short{2}, short{3}})
    all += '\n' + std::to_string(getBkupGeneration(kind));
  return all + '\n' + std::to_string(tqGetPstTrFlg()) + '\n' + std::to_string(tqGetPstStsFlg());
}

// Without their ends, which may be added to the last one.
std::vector<std::string> lines_of(std::string_view text) {
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines.emplace_back(text.substr(begin, end - begin));
    while (lines.back().ends_with('\r')) lines.back().pop_back();
    begin = end + 1;
  }
  return lines;
}

void require_rest_kept(const std::vector<std::string>& before,
                       const std::vector<std::string>& after) {
  require(after.size() >= before.size());
  const auto [first, other] = std::mismatch(before.begin(), before.end(), after.begin());
  const auto [last, ignored] =
      std::mismatch(before.rbegin(), std::make_reverse_iterator(first), after.rbegin());
  require(last.base() - first <= 1);
}

}  // namespace

void try_input(std::string_view input) {
  static const tq::test::TestHome home;
  home.write(kFile, input);
  const std::string others = other_values();
  require(tqSetGenerationCnt(5) != 0);
  require(tqGetBkupGeneration() == 5);
  require(other_values() == others);
  const std::string written = home.read(kFile);
  require_rest_kept(lines_of(input), lines_of(written));
  require(tqSetGenerationCnt(5) != 0);
  require(home.read(kFile) == written);
}
