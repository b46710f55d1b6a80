// Collects the result of a conversion that may write more than it reads, and hands it over in large
// pieces. Without a destination it only counts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tq::textutil {

class Writer {
 public:
  // Results up to this size are kept until finish(), so that they may be written over their text.
  static constexpr std::size_t kKept = 4096;

  explicit Writer(char* dst) : dst_(dst) {}

  // Where the next bytes go: room for `size` of them, at most kKept. Valid until the next call;
  // advance() says how many were written.
  char* room(std::size_t size) {
    if (used_ + size > kKept) flush();
    return buffer_ + used_;
  }
  void advance(const char* end) { used_ = static_cast<std::size_t>(end - buffer_); }

  void append(std::string_view bytes) {
    while (!bytes.empty()) {
      if (used_ == kKept) flush();
      const std::string_view fits = bytes.substr(0, kKept - used_);
      std::memcpy(buffer_ + used_, fits.data(), fits.size());
      used_ += fits.size();
      bytes.remove_prefix(fits.size());
    }
  }

  // Writes what is left and the zero byte; the length of the result.
  std::int32_t finish() {
    flush();
    if (dst_ != nullptr) dst_[size_] = '\0';
    return static_cast<std::int32_t>(size_);
  }

 private:
  void flush() {
    if (dst_ != nullptr) std::memcpy(dst_ + size_, buffer_, used_);
    size_ += used_;
    used_ = 0;
  }

  char* dst_;
  std::size_t size_ = 0;
  std::size_t used_ = 0;
  char buffer_[kKept];
};

}  // namespace tq::textutil
