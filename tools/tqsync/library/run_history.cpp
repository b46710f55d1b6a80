#include "library/run_history.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <utility>

#include "failure.h"
#include "files/whole_file.h"
#include "library/home_file.h"
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
std::filesystem::path saved_file() { return home_file(TQ_FOLDER_DATA, "history.txt"); }

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

void RunHistory::save() {
  std::string text;
  for (const HistoryLine& line : lines()) {
    text += cell(line.level) + '\t' + line.category + '\t' + cell(line.text) + '\n';
  }
  if (!save_whole_file(saved_file(), text)) {
    throw Failure("the history of this run cannot be saved in the data folder. Check its disk.");
  }
}

SavedHistory last_history() {
  std::ifstream file(saved_file(), std::ios::binary);
  if (!file) throw Failure("there is no history yet. \"tqsync pair\" makes one.");
  SavedHistory saved;
  for (std::string text; std::getline(file, text);) {
    const std::size_t level = text.find('\t');
    const std::size_t end = level == std::string::npos ? level : text.find('\t', level + 1);
    const std::string category =
        end == std::string::npos ? "" : text.substr(level + 1, end - level - 1);
    if (std::ranges::find(kHistoryCategories, category) == std::end(kHistoryCategories)) {
      ++saved.damaged;
    } else {
      saved.lines.push_back({text.substr(0, level), category, text.substr(end + 1)});
    }
  }
  return saved;
}

}  // namespace tqsync
