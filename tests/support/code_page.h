// The system's own conversion between code page 932 and Unicode, to check ours against: that of
// Windows, or the C library's.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#ifdef _WIN32
#include <windows.h>
#else
#include <iconv.h>
#endif

namespace tq::test {

class SystemCodePage {
 public:
#ifdef _WIN32
  bool usable() const { return true; }

  // One character; empty when the system has none for these bytes, or none in the code page.
  std::u16string decode(std::string_view bytes) const {
    wchar_t out[4];
    const int size = ::MultiByteToWideChar(932, MB_ERR_INVALID_CHARS, bytes.data(),
                                           static_cast<int>(bytes.size()), out, 4);
    return std::u16string(out, out + size);
  }
  std::string encode(char16_t unit) const {
    const auto wide = static_cast<wchar_t>(unit);
    char out[4];
    BOOL replaced = FALSE;
    const int size =
        ::WideCharToMultiByte(932, WC_NO_BEST_FIT_CHARS, &wide, 1, out, 4, nullptr, &replaced);
    return {out, replaced ? 0 : static_cast<std::size_t>(size)};
  }
#else
  SystemCodePage() = default;
  ~SystemCodePage() {
    if (!usable()) return;
    ::iconv_close(decoder_);
    ::iconv_close(encoder_);
  }
  SystemCodePage(const SystemCodePage&) = delete;
  SystemCodePage& operator=(const SystemCodePage&) = delete;

  // False where the C library came without its conversion tables, as 32-bit ones often do.
  bool usable() const { return decoder_ != kNone && encoder_ != kNone; }

  std::u16string decode(std::string_view bytes) const {
    char16_t out[4];
    const std::size_t size = convert(decoder_, bytes, out, sizeof out);
    return {out, size / sizeof *out};
  }
  std::string encode(char16_t unit) const {
    char out[8];
    const std::string_view bytes(reinterpret_cast<const char*>(&unit), sizeof unit);
    return {out, convert(encoder_, bytes, out, sizeof out)};
  }

 private:
  // Bytes of the whole conversion, 0 when it fails.
  static std::size_t convert(::iconv_t converter, std::string_view bytes, void* out,
                             std::size_t size) {
    ::iconv(converter, nullptr, nullptr, nullptr, nullptr);
    char* from = const_cast<char*>(bytes.data());
    char* to = static_cast<char*>(out);
    std::size_t from_left = bytes.size();
    std::size_t to_left = size;
    const std::size_t result = ::iconv(converter, &from, &from_left, &to, &to_left);
    return result == 0 && from_left == 0 ? size - to_left : 0;
  }

  inline static const ::iconv_t kNone = reinterpret_cast<::iconv_t>(std::intptr_t{-1});
  ::iconv_t decoder_ = ::iconv_open("UTF-16LE", "CP932");
  ::iconv_t encoder_ = ::iconv_open("CP932", "UTF-16LE");
#endif
};

}  // namespace tq::test
