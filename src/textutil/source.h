// A text that a function reads while it writes its result piece by piece, perhaps over the text
// itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace tq::textutil {

class Source {
 public:
  // The zero-terminated text at `src`; a null pointer is an empty text. `growth` is how many bytes
  // the result may have for each byte of the text.
  Source(const char* src, std::size_t growth)
      : text_(src == nullptr ? std::string_view("") : std::string_view(src)), growth_(growth) {}

  // The text, followed by a zero byte.
  std::string_view text() const { return text_; }

  // Whether the length of every possible result can be returned as an int32_t.
  bool size_fits() const { return text_.size() <= std::size_t{INT32_MAX} / growth_; }

  // Makes sure that writing a result of any size at `dst` changes no byte that is still to be read,
  // copying the text when the two overlap in a way that would. A result that never gets ahead of
  // the text may be written over it or before it. False when there is no memory.
  bool keep_from(const char* dst) {
    const auto first = reinterpret_cast<std::uintptr_t>(text_.data());
    const auto out = reinterpret_cast<std::uintptr_t>(dst);
    const bool apart = out > first + text_.size() || out + text_.size() * growth_ < first;
    if (dst == nullptr || apart || (growth_ == 1 && out <= first)) return true;
    copy_.reset(new (std::nothrow) char[text_.size() + 1]);
    if (copy_ == nullptr) return false;
    std::memcpy(copy_.get(), text_.data(), text_.size() + 1);
    text_ = {copy_.get(), text_.size()};
    return true;
  }

 private:
  std::string_view text_;
  std::size_t growth_;
  std::unique_ptr<char[]> copy_;
};

}  // namespace tq::textutil
