// The text utilities once more, one character after the other and step by step, for comparison with
// the fast code. They share its lists of characters and nothing else.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

#include "base/sjis.h"
#include "base/sjis_literal.h"
#include "textutil/width_tables.h"

namespace tq::test {

using namespace tq::literals;

// The characters of a text: two bytes for a lead byte before a trail byte, else one.
inline std::string_view first_character(std::string_view text) {
  return text.substr(0, sjis::is_pair(text, 0) ? 2 : 1);
}

using Replacements = std::map<std::string, std::string, std::less<>>;

inline void add_forms(const auto& lists, Replacements& all) {
  for (const auto& list : lists) {
    for (std::string_view from = list.from, to = list.to; !from.empty();) {
      const std::string character(textutil::width_detail::take(from));
      all[character] = textutil::width_detail::take(to);
    }
  }
}

inline const Replacements& half_forms() {
  static const Replacements forms = [] {
    Replacements all;
    add_forms(textutil::kSymbolsToHalf, all);
    add_forms(textutil::kLettersToHalf, all);
    add_forms(textutil::kKatakanaToHalf, all);
    return all;
  }();
  return forms;
}

inline const Replacements& full_forms() {
  static const Replacements forms = [] {
    Replacements all;
    add_forms(textutil::kToFull, all);
    return all;
  }();
  return forms;
}

inline std::string replaced(std::string_view text, const Replacements& forms) {
  std::string out;
  while (!text.empty()) {
    const std::string_view character = first_character(text);
    const auto found = forms.find(character);
    out += found == forms.end() ? character : std::string_view(found->second);
    text.remove_prefix(character.size());
  }
  return out;
}

inline std::string reference_half(std::string_view text) { return replaced(text, half_forms()); }

inline std::string reference_full(std::string_view text) {
  const auto between = [](unsigned char byte, std::string_view first, std::string_view last) {
    return byte >= textutil::index_of(first[0]) && byte <= textutil::index_of(last[0]);
  };
  std::string out;
  for (std::size_t pos = 0; pos < text.size();) {
    if (sjis::is_pair(text, pos)) {
      out += text.substr(pos, 2);
      pos += 2;
      continue;
    }
    const auto byte = static_cast<unsigned char>(text[pos]);
    const std::string_view next = text.substr(pos + 1, 1);
    const bool voiced = next == "ﾞ"_sjis;
    const bool semi_voiced = next == "ﾟ"_sjis;
    const auto found = full_forms().find(text.substr(pos, 1));
    ++pos;
    if (found == full_forms().end()) {
      out += static_cast<char>(byte);
      continue;
    }
    std::string full = found->second;
    const bool ha_row = between(byte, "ﾊ"_sjis, "ﾎ"_sjis);
    if (voiced && between(byte, "ｳ"_sjis, "ｳ"_sjis)) full = "ヴ"_sjis;
    if (voiced && (between(byte, "ｶ"_sjis, "ﾄ"_sjis) || ha_row)) full[1]++;
    if (semi_voiced && ha_row) full[1] = static_cast<char>(full[1] + 2);
    if (voiced || semi_voiced) ++pos;
    out += full;
  }
  return out;
}

inline std::string reference_without_spaces(std::string_view text) {
  return replaced(text, {{" ", ""}, {"　"_sjis, ""}});
}

inline std::string reference_without_bytes(std::string_view unwanted, std::string_view text) {
  std::string out;
  for (const char byte : text) {
    if (unwanted.find(byte) == std::string_view::npos) out += byte;
  }
  return out;
}

// The state machine of the kanji numbers as a table of places and a flag.
class ReferenceAddress {
 public:
  std::string rewrite(std::string_view text) {
    while (!text.empty()) {
      const std::string character(first_character(text));
      text.remove_prefix(character.size());
      if (const auto digit =
              value_of("〇零　一壱　二弐　三参　四　五　六　七　八　九"_sjis, character);
          digit >= 0) {
        take_digit(digit);
      } else if (const auto unit = value_of("　十　百　千"_sjis, character); unit > 0) {
        take_unit(kOnes - static_cast<std::size_t>(unit));
      } else {
        close(character);
        if (character != " " && character != "　"_sjis) out_ += character;
        continue;
      }
      raw_ += character;
    }
    if (!raw_.empty()) emit();
    return out_;
  }

 private:
  static constexpr std::size_t kOnes = 30;

  // How many ideographic spaces stand before a character in a list of groups, -1 if it is not
  // there.
  static int value_of(std::string_view groups, std::string_view character) {
    if (character == "　"_sjis) return -1;
    int value = 0;
    for (; !groups.empty(); groups.remove_prefix(2)) {
      if (groups.substr(0, 2) == character) return value;
      if (groups.substr(0, 2) == "　"_sjis) ++value;
    }
    return -1;
  }

  void take_digit(int digit) {
    if (unit_seen_ && places_[kOnes] != 0) {
      emit();
    } else if (!raw_.empty() && !unit_seen_) {
      for (std::size_t place = 0; place < kOnes; ++place) places_[place] = places_[place + 1];
    }
    places_[kOnes] = digit;
  }

  void take_unit(std::size_t place) {
    if (!raw_.empty() && places_[place] != 0) emit();
    if (!raw_.empty() && places_[kOnes] != 0) {
      places_[place] = places_[kOnes];
      places_[kOnes] = 0;
    } else {
      places_[place] = 1;
    }
    unit_seen_ = true;
  }

  void close(std::string_view character) {
    if (raw_.empty()) return;
    bool ends = false;
    for (std::string_view set = "条区丁番号階ＦFのノﾉ－-／/、，,・･（(　 "_sjis; !set.empty();) {
      ends = ends || first_character(set) == character;
      set.remove_prefix(first_character(set).size());
    }
    if (ends) {
      emit();
    } else {
      out_ += raw_;
    }
    places_.fill(0);
    raw_.clear();
    unit_seen_ = false;
  }

  void emit() {
    bool leading = true;
    for (const int place : places_) {
      leading = leading && place == 0;
      if (!leading) (out_ += '\x82') += static_cast<char>(0x4F + place);
    }
    places_.fill(0);
  }

  std::string out_;
  std::string raw_;
  std::array<int, kOnes + 1> places_{};
  bool unit_seen_ = false;
};

inline std::string reference_address(std::string_view text) {
  return ReferenceAddress().rewrite(text);
}

// Dates by way of the C library.
struct ReferenceDate {
  int form = -1;  // 0 date, 1 digits only, -1 none
  short year = 0, month = 0, day = 0;
};

inline std::string reference_date_half(std::string_view text) {
  static const std::string_view kFull = "０１２３４５６７８９ＭＴＳＨｍｔｓｈ／－・．：；，　"_sjis;
  static const std::string_view kHalf = "0123456789MTSHmtsh/-･.:;, "_sjis;
  text = sjis::cut(text, 1000);
  std::string out;
  for (std::size_t pos = 0; pos < text.size(); ++pos) {
    if (!sjis::is_lead(text[pos])) {
      out += text[pos];
      continue;
    }
    const std::string_view character = text.substr(pos++, 2);
    if (!sjis::is_pair(character, 0)) continue;
    std::size_t at = 0;
    while (at < kHalf.size() && kFull.substr(2 * at, 2) != character) ++at;
    out += at < kHalf.size() ? kHalf.substr(at, 1) : character;
  }
  return out;
}

inline ReferenceDate reference_date(std::string_view text, int era_out) {
  static const std::string_view kNames[] = {"西暦"_sjis, "明治"_sjis, "大正"_sjis, "昭和"_sjis,
                                            "平成"_sjis};
  static const int kOffsets[] = {0, 1867, 1911, 1925, 1988};
  const std::string half = reference_date_half(text);
  int era = 0;
  std::size_t skip = 0;
  for (int i = 0; i < 5; ++i) {
    if (half.empty()) break;
    if (half.substr(0, 2) == kNames[i].substr(0, 2)) {
      era = i;
      skip = half.substr(0, 4) == kNames[i] ? 4 : 2;
    } else if (i > 0 && (half[0] == " MTSH"[i] || half[0] == " mtsh"[i])) {
      era = i;
      skip = 1;
    }
  }
  ReferenceDate date;
  std::size_t pos = skip;
  short numbers[3] = {};
  for (int field = 0; field < 3; ++field) {
    const std::size_t begin = half.find_first_of("0123456789", pos);
    if (begin == std::string::npos) return date;
    pos = std::min(half.find_first_not_of("0123456789", begin), half.size());
    const long long number = std::strtoll(half.substr(begin, pos - begin).c_str(), nullptr, 10);
    numbers[field] = static_cast<short>(std::min<long long>(number, INT32_MAX));
    if (pos == half.size() && field < 2) {
      if (field == 0 && begin == 0 && era == 0) date.form = 1;
      return date;
    }
  }
  const int offset = kOffsets[era] - (era_out >= 1 && era_out <= 4 ? kOffsets[era_out] : 0);
  return {0, static_cast<short>(numbers[0] + offset), numbers[1], numbers[2]};
}

inline std::string reference_print(int year, int month, int day, int separator, bool pad) {
  static const char* const kSeparators[] = {"", "/", "-", ".", ":", ";", ","};
  const char* between = separator >= -1 && separator <= 5 ? kSeparators[separator + 1] : "/";
  char out[64];
  std::snprintf(out, sizeof out, pad ? "%d%s%02d%s%02d" : "%d%s%d%s%d", year, between, month,
                between, day);
  return out;
}

}  // namespace tq::test
