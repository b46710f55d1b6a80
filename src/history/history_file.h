// One category of one level of a history: its temporary file, its line count, and whether the file
// is closed, open for appending or open for reading.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "common/lines.h"
#include "platform/platform.h"
#include "tqutil/history.h"

namespace tq {

// What failed: 0, or a TQ_HISTORY_DETAIL_* value.
using HistoryFault = short;
inline constexpr HistoryFault kNoFault = 0;

class HistoryFile {
 public:
  // Where the lines go; empty when no name could be had, and then every opening fails.
  std::string path;

  // Appends `text` and a line end. A file that is kept open gathers lines in memory and writes them
  // in large pieces; any other is written and closed at once. The attempt counts in any case. After
  // a fault the file is closed; lines that were still gathered are lost.
  HistoryFault append(std::string_view text, bool keep_open);
  // Closes the file, whatever it was open for, and opens it for reading. Gathered lines that could
  // not be written are reported as that fault, and reading starts all the same: ask `is_reading`.
  HistoryFault start_reading();
  bool is_reading() const { return reader_ != nullptr; }
  // The next piece of at most 999 bytes, good until the next call; false when there is none.
  bool next(std::string_view& line);
  // Writes what is still gathered and closes. Idempotent.
  HistoryFault close();

  // Attempts to append, failed ones included.
  std::int32_t lines() const { return lines_; }

 private:
  bool open_for_appending();
  HistoryFault append_and_close(std::string_view text);
  HistoryFault gather(std::string_view bytes, HistoryFault fault);
  bool write_gathered();
  HistoryFault give_up(HistoryFault fault);

  std::int32_t lines_ = 0;
  platform::File file_;  // open for appending
  bool opened_before_ = false;
  std::string gathered_;                // lines that are not in the file yet
  std::unique_ptr<LineReader> reader_;  // open for reading
};

}  // namespace tq
