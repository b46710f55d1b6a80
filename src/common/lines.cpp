#include "common/lines.h"

#include <algorithm>

namespace tq {
namespace {

constexpr std::size_t kReadSize = 16384;

}  // namespace

Status LineReader::open(std::string_view path) {
  close();
  status_ = file_.open(path, platform::OpenMode::kReadShared);
  at_end_ = !status_.ok();
  return status_;
}

void LineReader::close() {
  static_cast<void>(file_.close());
  buffer_.clear();
  position_ = 0;
  at_end_ = true;
}

bool LineReader::fill() {
  if (at_end_) return false;
  buffer_.erase(0, position_);
  position_ = 0;
  const std::size_t have = buffer_.size();
  buffer_.resize(have + kReadSize);
  std::size_t got = 0;
  status_ = file_.read(buffer_.data() + have, kReadSize, got);
  if (!status_.ok()) got = 0;
  buffer_.resize(have + got);
  at_end_ = got == 0;
  return got != 0;
}

bool LineReader::next(std::string_view& line) {
  // A piece needs its bytes and, to see whether it is a whole line, the CR LF behind them.
  std::size_t end = buffer_.find('\n', position_);
  while (end == std::string::npos && buffer_.size() - position_ < limit_ + 2) {
    const std::size_t seen = buffer_.size() - position_;
    if (!fill()) break;
    end = buffer_.find('\n', position_ + seen);
  }
  const std::size_t available = buffer_.size() - position_;
  if (available == 0) return false;
  std::size_t size = end == std::string::npos ? available : end - position_;
  std::size_t used = end == std::string::npos ? available : size + 1;
  if (end != std::string::npos && size != 0 && buffer_[end - 1] == '\r') --size;
  // A line end counts as one byte of the buffer, so a piece of exactly the limit leaves it to the
  // next.
  if (size > limit_ || (size == limit_ && used > size)) {
    size = limit_;
    used = limit_;
  }
  line = std::string_view(buffer_).substr(position_, size);
  line = line.substr(0, line.find('\0'));
  position_ += used;
  return true;
}

bool LineReader::next_data(std::string_view& line) {
  while (next(line)) {
    if (line.empty() || line.front() != ';') return true;
  }
  return false;
}

}  // namespace tq
