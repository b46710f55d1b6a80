// The history of a run: what was read, found and decided, in the library's six categories for the
// run as a whole and for each of its files. The library keeps it in temporary files while the run
// goes on; `save` writes it to the data folder, from where it can be read until the next run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tqsync {

enum class HistoryCategory { kHead, kRead, kWrite, kTran, kReNew, kAddNew };

// Names of the categories, in their order.
inline constexpr const char* kHistoryCategories[] = {"head",     "read",    "write",
                                                     "transfer", "renewed", "added"};

struct HistoryLine {
  std::string level;  // name of a file; empty for the run
  std::string category;
  std::string text;
};

class RunHistory {
 public:
  // Of a run over these files. Throws Failure when the library has no room for one more history.
  explicit RunHistory(std::vector<std::string> files);
  ~RunHistory();  // the temporary files go
  RunHistory(const RunHistory&) = delete;
  RunHistory& operator=(const RunHistory&) = delete;

  // Adds a line for a file, or for the run (-1). Characters that Shift-JIS does not have become
  // "?". Throws Failure when it cannot be kept.
  void add(std::int32_t file, HistoryCategory category, std::string_view text);
  // Replaces the saved history of the run before.
  void save();

 private:
  std::vector<HistoryLine> lines();

  std::vector<std::string> files_;
  std::int32_t handle_;
};

// The saved history of the last run. Throws Failure when there is none.
struct SavedHistory {
  std::vector<HistoryLine> lines;
  std::size_t damaged = 0;  // lines that no run has written; they are left out
};
SavedHistory last_history();

}  // namespace tqsync
