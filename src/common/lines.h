// Reading the library's text files line by line with a byte limit, as its formats are defined.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/status.h"
#include "platform/platform.h"

namespace tq {

// Buffer sizes in bytes, terminator included, with which the formats are read.
inline constexpr std::size_t kLineBuffer = 4000;  // group files, registries, backup histories

// One text file open for reading. Lines end in LF or CR LF; a line that does not fit the buffer
// comes in pieces; a zero byte ends the text of its line. One reader, one thread.
class LineReader {
 public:
  // `buffer_size` counts the terminator: pieces have at most buffer_size - 1 bytes.
  explicit LineReader(std::size_t buffer_size = kLineBuffer) : limit_(buffer_size - 1) {}

  Status open(std::string_view path);
  bool is_open() const { return file_.is_open(); }
  // The next line without its end; good until the next call. False at the end of the file or when
  // it cannot be read further (`status` tells).
  bool next(std::string_view& line);
  // The same, passing over comment lines, whose first character is ';'.
  bool next_data(std::string_view& line);
  const Status& status() const { return status_; }
  void close();

 private:
  bool fill();

  std::size_t limit_;
  platform::File file_;
  std::string buffer_;  // bytes read and not yet given out start at position_
  std::size_t position_ = 0;
  bool at_end_ = true;
  Status status_;
};

}  // namespace tq
