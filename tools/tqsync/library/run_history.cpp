#include "library/run_history.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <limits>
#include <utility>

#include "failure.h"
#include "text/library_text.h"
#include "tqutil/history.h"
#include "tqutil/host.h"

namespace tqsync {
namespace {

// The library's functions of one category.
struct CategoryFunctions {
  short (*write)(short i, const char* text, std::int32_t handle);
  short (*init)(short i, std::int32_t handle);
  short (*next)(short i, char* text, std::int32_t handle);
  short (*end)(short i, std::int32_t handle);
};

// In the order of HistoryCategory.
constexpr std::array<CategoryFunctions, 6> kFunctions = {{
    {WriteHeadInfo2, HstyGetInfo4HeadInit, HstyGetInfo4HeadNext, HstyGetInfo4HeadEnd},
    {WriteErrInfo4Read2, HstyGetInfo4ReadInit, HstyGetInfo4ReadNext, HstyGetInfo4ReadEnd},
    {WriteErrInfo4Write2, HstyGetInfo4WriteInit, HstyGetInfo4WriteNext, HstyGetInfo4WriteEnd},
    {WriteErrInfo4Tran2, HstyGetInfo4TranInit, HstyGetInfo4TranNext, HstyGetInfo4TranEnd},
    {WriteReNewInfo2, HstyGetInfo4ReNewInit, HstyGetInfo4ReNewNext, HstyGetInfo4ReNewEnd},
    {WriteAddNewInfo2, HstyGetInfo4AddNewInit, HstyGetInfo4AddNewNext, HstyGetInfo4AddNewEnd},
}};

// One line of the saved file is level, category and text with tabs between them, in UTF-8.
std::filesystem::path saved_file() {
  char folder[TQ_PATH_SIZE];
  if (tqGetFolder(TQ_FOLDER_DATA, folder) != 0) {
    throw Failure("there is no data folder. Check the entry \"data\" of tqutil.ini.");
  }
  const std::string path = to_native_path(std::string(folder) + "history.txt");
  return std::filesystem::path(std::u8string(path.begin(), path.end()));
}

// Tabs and line ends separate; within a cell they are blanks.
std::string cell(std::string text) {
  for (char& c : text) {
    if (c == '\t' || c == '\n' || c == '\r') c = ' ';
  }
  return text;
}

}  // namespace

RunHistory::RunHistory(std::vector<std::string> files) : files_(std::move(files)) {
  constexpr std::size_t kMost = std::numeric_limits<short>::max();
  handle_ =
      files_.size() > kMost ? 0 : CreateSyncHstyCtl(static_cast<unsigned short>(files_.size()));
  if (handle_ == 0) throw Failure("the history of this run cannot be kept: there is no room.");
}

RunHistory::~RunHistory() { FreeSyncHstyCtl(handle_); }

void RunHistory::add(std::int32_t file, HistoryCategory category, std::string_view text) {
  const std::string sjis = to_sjis_or_mark(text);
  const CategoryFunctions& functions = kFunctions[static_cast<std::size_t>(category)];
  if (functions.write(static_cast<short>(file), sjis.c_str(), handle_) != 0) {
    throw Failure("the history of this run cannot be written. Check the work folder and its disk.");
  }
}

std::vector<HistoryLine> RunHistory::lines() {
  std::vector<HistoryLine> lines;
  const auto count = static_cast<short>(files_.size());
  for (short i = -1; i < count; ++i) {
    const std::string level = i < 0 ? std::string() : files_[static_cast<std::size_t>(i)];
    for (std::size_t category = 0; category < kFunctions.size(); ++category) {
      const CategoryFunctions& functions = kFunctions[category];
      char text[TQ_HISTORY_LINE_SIZE];
      if (functions.init(i, handle_) != 0) continue;
      while (functions.next(i, text, handle_) == 0) {
        lines.push_back({level, kHistoryCategories[category], from_sjis(text)});
      }
      functions.end(i, handle_);
    }
  }
  return lines;
}

// Beside the old one first, so that a full disk leaves one history or the other.
void RunHistory::save() {
  const std::filesystem::path target = saved_file();
  std::filesystem::path temporary = target;
  temporary += ".new";
  std::ofstream file(temporary, std::ios::binary);
  for (const HistoryLine& line : lines()) {
    file << cell(line.level) << '\t' << line.category << '\t' << cell(line.text) << '\n';
  }
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(temporary, target, error);
  if (!file || error) {
    std::filesystem::remove(temporary, error);
    throw Failure("the history of this run cannot be saved in the data folder. Check its disk.");
  }
}

std::vector<HistoryLine> last_history() {
  std::ifstream file(saved_file(), std::ios::binary);
  if (!file) throw Failure("there is no history yet. \"tqsync pair\" makes one.");
  std::vector<HistoryLine> lines;
  for (std::string line; std::getline(file, line);) {
    const std::size_t level = line.find('\t');
    const std::size_t category = level == std::string::npos ? level : line.find('\t', level + 1);
    if (category == std::string::npos) continue;  // not a line of ours
    lines.push_back({line.substr(0, level), line.substr(level + 1, category - level - 1),
                     line.substr(category + 1)});
  }
  return lines;
}

}  // namespace tqsync
