// Calling a conversion every way that a caller may: with buffers that end where they must, without
// a destination, over the text itself and beside it.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tq::test {

using Conversion = std::function<std::int32_t(const char* src, char* dst)>;

inline std::string hex(std::string_view text) {
  std::string out;
  for (const char byte : text) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    ((out += kDigits[value >> 4]) += kDigits[value & 15]) += ' ';
  }
  return out;
}

// Expects `want`, and that no byte behind the result is touched. The text stands in a block of its
// own size, so that reading past it is found by the sanitizer.
inline void expect_conversion(const Conversion& convert, std::string_view text,
                              std::string_view want) {
  SCOPED_TRACE(hex(text.substr(0, 200)));
  const auto size = static_cast<std::int32_t>(want.size());
  const auto src = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(src.get(), text.data(), text.size());
  EXPECT_EQ(convert(src.get(), nullptr), size);

  const auto dst = std::make_unique<char[]>(want.size() + 2);
  std::memset(dst.get(), '\x5A', want.size() + 2);
  EXPECT_EQ(convert(src.get(), dst.get()), size);
  EXPECT_EQ(hex({dst.get(), want.size()}), hex(want));
  EXPECT_EQ(dst[want.size()], '\0');
  EXPECT_EQ(dst[want.size() + 1], '\x5A') << "the byte behind the result";

  // Over the text, and with the result one byte before and behind it.
  for (const std::ptrdiff_t shift : {0, -1, 1}) {
    SCOPED_TRACE(shift);
    std::string both(text.size() + want.size() + 3, '\x5A');
    std::memcpy(both.data() + 1, src.get(), text.size() + 1);
    EXPECT_EQ(convert(both.data() + 1, both.data() + 1 + shift), size);
    EXPECT_EQ(hex(both.c_str() + 1 + shift), hex(want));
  }
}

}  // namespace tq::test
