#include "history/history_file.h"

#include <algorithm>
#include <limits>

namespace tq {
namespace {

constexpr std::size_t kReadBuffer = 1000;  // pieces of 999 bytes and a terminator
constexpr std::size_t kGatherSize = 32768;

}  // namespace

HistoryFault HistoryFile::append(std::string_view text, bool keep_open) {
  if (lines_ < std::numeric_limits<std::int32_t>::max()) ++lines_;
  // A line for a file that is being read goes to the reading handle and fails there.
  if (is_reading()) return give_up(TQ_HISTORY_DETAIL_TEXT);
  if (!file_.is_open() && !open_for_appending()) return TQ_HISTORY_DETAIL_OPEN;
  if (!keep_open) return append_and_close(text);
  const HistoryFault fault = gather(text, TQ_HISTORY_DETAIL_TEXT);
  return fault != kNoFault ? fault : gather("\n", TQ_HISTORY_DETAIL_LINE_END);
}

HistoryFault HistoryFile::start_reading() {
  const HistoryFault fault = close();
  auto reader = std::make_unique<LineReader>(kReadBuffer);
  if (!reader->open(path).ok()) return TQ_HISTORY_DETAIL_OPEN;
  reader_ = std::move(reader);
  return fault;
}

bool HistoryFile::next(std::string_view& line) { return is_reading() && reader_->next(line); }

HistoryFault HistoryFile::close() {
  reader_.reset();
  if (!file_.is_open()) return kNoFault;
  if (!write_gathered()) return give_up(TQ_HISTORY_DETAIL_TEXT);
  return file_.close().ok() ? kNoFault : HistoryFault{TQ_HISTORY_DETAIL_LINE_END};
}

bool HistoryFile::open_for_appending() {
  if (opened_before_) return file_.append_again().ok();
  opened_before_ = file_.open(path, platform::OpenMode::kAppend).ok();
  return opened_before_;
}

// One write for text and line end: half as many calls, and other writers never come between them.
HistoryFault HistoryFile::append_and_close(std::string_view text) {
  gathered_.assign(text);
  gathered_ += '\n';
  return close();
}

HistoryFault HistoryFile::gather(std::string_view bytes, HistoryFault fault) {
  gathered_.append(bytes);
  if (gathered_.size() < kGatherSize || write_gathered()) return kNoFault;
  return give_up(fault);
}

bool HistoryFile::write_gathered() {
  if (gathered_.empty()) return true;
  const bool written = file_.write(gathered_).ok();
  gathered_.clear();
  return written;
}

HistoryFault HistoryFile::give_up(HistoryFault fault) {
  reader_.reset();
  gathered_.clear();
  static_cast<void>(file_.close());  // the fault is known already
  return fault;
}

}  // namespace tq
