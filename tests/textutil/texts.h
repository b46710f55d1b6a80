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
      const std::size_t kind = below(broken ? 12 : 8);
      if (kind < 3) text += pair(kLeads[kind]);
      if (kind >= 3 && kind < 6) text += one_of(kLists[kind - 3], kind == 3 ? 2 : 1);
      if (kind >= 6) text += byte(kBytes[kind - 6]);
    }
    return text;
  }

 private:
  struct Range {
    unsigned first, last;
  };
  static constexpr Range kLeads[] = {{0x81, 0x83}, {0x81, 0x9F}, {0xE0, 0xFC}};
  static constexpr std::string_view kLists[] = {
      "〇一二三九十百千零壱丁番号代の　／昭和平成大正明治西暦"_sjis, "ﾞﾟｳｶﾄﾅﾊﾎﾏ"_sjis,
      "0123456789/-.:;, MTSHmtsh"};
  // From the third on they break the text: lead bytes before anything, controls, unused bytes.
  static constexpr Range kBytes[] = {{0x20, 0x7E}, {0xA0, 0xDF}, {0x81, 0x9F},
                                     {0xE0, 0xFC}, {0x01, 0x20}, {0x7F, 0xFF}};

  char byte(Range range) {
    return static_cast<char>(range.first + below(range.last - range.first + 1));
  }

  std::string pair(Range leads) {
    const char lead = byte(leads);
    const char trail = byte({0x40, 0xFC});
    return {lead, trail == 0x7F ? '\x80' : trail};
  }

  std::string_view one_of(std::string_view characters, std::size_t size) {
    return characters.substr(below(characters.size() / size) * size, size);
  }

  std::uint64_t state_;
};

}  // namespace tq::test
