// Calling a conversion every way that a caller may: with buffers that end where they must, without
// a destination, over the text itself and beside it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <span>
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

// What is wrong with the conversion of a text to `want`, empty if nothing is. The text and the
// result stand in blocks of their own sizes, so that a step past either is found: by the sanitizer,
// or by the byte behind the result.
inline std::string conversion_fault(const Conversion& convert, std::string_view text,
                                    std::string_view want) {
  const auto size = static_cast<std::int32_t>(want.size());
  const auto src = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(src.get(), text.data(), text.size());
  const auto fault = [&](const char* what, std::string_view got) {
    return std::string(what) + "\n text " + hex(text) + "\n want " + hex(want) + "\n got  " +
           hex(got);
  };
  if (convert(src.get(), nullptr) != size) return fault("length without a destination", "");

  const auto dst = std::make_unique<char[]>(want.size() + 2);
  std::memset(dst.get(), '\x5A', want.size() + 2);
  const std::string_view got(dst.get(), want.size());
  if (convert(src.get(), dst.get()) != size || got != want) return fault("result", got);
  if (dst[want.size()] != '\0') return fault("no zero byte behind the result", got);
  if (dst[want.size() + 1] != '\x5A') return fault("a byte behind the result", got);

  // Over the text, and with the result one byte before and behind it.
  for (const std::ptrdiff_t shift : {0, -1, 1}) {
    std::string both(text.size() + want.size() + 3, '\x5A');
    std::memcpy(both.data() + 1, src.get(), text.size() + 1);
    char* const over = both.data() + 1 + shift;
    if (convert(both.data() + 1, over) != size || over != want) {
      return fault("result over the text", over);
    }
  }
  return "";
}

struct KnownText {
  const char* why;
  std::string_view text, want;
};

// What is wrong with any of these conversions, empty if nothing is.
inline std::string known_text_faults(const Conversion& convert, std::span<const KnownText> texts) {
  std::string faults;
  for (const KnownText& known : texts) {
    const std::string fault = conversion_fault(convert, known.text, known.want);
    if (!fault.empty()) faults += std::string(known.why) + ": " + fault + "\n";
  }
  return faults;
}

}  // namespace tq::test
