// Texts to compare conversions on: made of the characters that matter and of broken ones, the same
// ones for the same seed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/sjis_literal.h"

namespace tq::test {

class Texts {
 public:
  explicit Texts(std::uint64_t seed) : state_(seed) {}

  std::size_t below(std::size_t limit) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<std::size_t>((state_ >> 33) % limit);
  }

  // At most `size` bytes, never a zero byte. Half of the texts are well-formed.
  std::string next(std::size_t size) {
    const bool broken = below(2) == 0;
    std::string text;
    while (text.size() + 2 <= size) {
      switch (below(broken ? 12 : 8)) {
        case 0:
          text += byte(0x20, 0x7E);
          break;
        case 1:
          text += byte(0xA0, 0xDF);
          break;
        case 2:
          text += pair(0x81, 0x83);
          break;
        case 3:
          text += pair(0x81, 0x9F);
          break;
        case 4:
          text += pair(0xE0, 0xFC);
          break;
        case 5:
          text += one_of("ﾞﾟｳｶﾄﾅﾊﾎﾏ"_sjis, 1);
          break;
        case 6:
          text += one_of("〇一二三九十百千零壱丁番号代の　／昭和平成大正明治西暦"_sjis, 2);
          break;
        case 7:
          text += one_of("0123456789/-.:;, MTSHmtsh", 1);
          break;
        case 8:
          text += byte(0x81, 0x9F);
          break;  // a lead byte before anything
        case 9:
          text += byte(0xE0, 0xFC);
          break;
        case 10:
          text += byte(0x01, 0x20);
          break;
        default:
          text += byte(0x7F, 0xFF);
          break;
      }
    }
    return text;
  }

 private:
  char byte(unsigned first, unsigned last) {
    return static_cast<char>(first + below(last - first + 1));
  }

  std::string pair(unsigned first, unsigned last) {
    const char lead = byte(first, last);
    const char trail = byte(0x40, 0xFC);
    return {lead, trail == 0x7F ? '\x80' : trail};
  }

  std::string_view one_of(std::string_view characters, std::size_t size) {
    return characters.substr(below(characters.size() / size) * size, size);
  }

  std::uint64_t state_;
};

}  // namespace tq::test
