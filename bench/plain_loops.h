// The text utilities as plain loops, for the benches: one character after the other, one table
// lookup each, into a result buffer that is then copied out, since the text may lie under the
// output.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

#include "base/sjis_literal.h"
#include "textutil/kanji_tables.h"
#include "textutil/width_tables.h"

namespace tq::bench {

using namespace tq::literals;
using textutil::Form;

inline constexpr std::size_t kResultSize = std::size_t{160} << 20;

inline unsigned char* result_buffer() {
  static const auto buffer = std::make_unique<unsigned char[]>(kResultSize);
  return buffer.get();
}

inline std::int32_t copied_out(const unsigned char* end, char* dst) {
  const auto size = static_cast<std::size_t>(end - result_buffer());
  std::memcpy(dst, result_buffer(), size);
  dst[size] = '\0';
  return static_cast<std::int32_t>(size);
}

inline bool is_pair(const unsigned char* at) {
  return sjis::is_lead(static_cast<char>(at[0])) && sjis::is_trail(static_cast<char>(at[1]));
}

inline std::int32_t plain_half(const char* src, char* dst) {
  const auto* at = reinterpret_cast<const unsigned char*>(src);
  unsigned char* out = result_buffer();
  while (*at != 0) {
    if (!is_pair(at)) {
      *out++ = *at++;
      continue;
    }
    if (textutil::may_have_half_form(at[0], at[1])) {
      const Form& form = textutil::kHalfForms[textutil::half_index(at[0], at[1])];
      *out++ = static_cast<unsigned char>(form.bytes[0]);
      if (form.size == 2) *out++ = static_cast<unsigned char>(form.bytes[1]);
    } else {
      *out++ = at[0];
      *out++ = at[1];
    }
    at += 2;
  }
  return copied_out(out, dst);
}

inline std::int32_t plain_full(const char* src, char* dst) {
  const auto* at = reinterpret_cast<const unsigned char*>(src);
  unsigned char* out = result_buffer();
  while (*at != 0) {
    if (is_pair(at)) {
      *out++ = *at++;
      *out++ = *at++;
      continue;
    }
    const bool marked = at[1] == 0xDE || at[1] == 0xDF;
    const Form& form = textutil::kFullForms[marked ? at[1] - 0xDD : 0][at[0]];
    *out++ = static_cast<unsigned char>(form.bytes[0]);
    if (form.size == 2) *out++ = static_cast<unsigned char>(form.bytes[1]);
    at += marked && form.taken == 2 ? 2 : 1;
  }
  return copied_out(out, dst);
}

inline std::int32_t plain_without_spaces(const char* src, char* dst) {
  const auto* at = reinterpret_cast<const unsigned char*>(src);
  unsigned char* out = result_buffer();
  while (*at != 0) {
    if (!is_pair(at)) {
      if (*at != ' ') *out++ = *at;
      ++at;
      continue;
    }
    if (at[0] != 0x81 || at[1] != 0x40) {
      *out++ = at[0];
      *out++ = at[1];
    }
    at += 2;
  }
  return copied_out(out, dst);
}

// The kanji numbers with one look into the class table for each character. Numbers of a plain
// address only: no more than four digits, nothing completed within a run.
inline std::int32_t plain_address(const char* src, char* dst) {
  const auto* at = reinterpret_cast<const unsigned char*>(src);
  unsigned char* out = result_buffer();
  const unsigned char* run = nullptr;
  int places[4] = {};
  bool unit_seen = false;
  const auto close = [&](bool ends) {
    if (!ends) {
      while (run != at) *out++ = *run++;
    }
    bool leading = true;
    for (int& place : places) {
      leading = leading && place == 0;
      if (ends && !leading) {
        *out++ = 0x82;
        *out++ = static_cast<unsigned char>(0x4F + place);
      }
      place = 0;
    }
    run = nullptr;
    unit_seen = false;
  };
  while (*at != 0) {
    const bool pair = is_pair(at);
    const auto sign =
        pair ? textutil::kSigns.of_pair(static_cast<char>(at[0]), static_cast<char>(at[1]))
             : textutil::kSigns.of_byte(static_cast<char>(at[0]));
    if (sign.kind == textutil::Sign::kDigit) {
      if (run != nullptr && !unit_seen) {
        for (int i = 0; i < 3; ++i) places[i] = places[i + 1];
      }
      places[3] = sign.value;
      if (run == nullptr) run = at;
    } else if (sign.kind == textutil::Sign::kUnit) {
      places[3 - sign.value] = places[3] != 0 ? places[3] : 1;
      places[3] = 0;
      unit_seen = true;
      if (run == nullptr) run = at;
    } else {
      if (run != nullptr) close(sign.kind != textutil::Sign::kOther);
      if (sign.kind != textutil::Sign::kSpace) {
        *out++ = at[0];
        if (pair) *out++ = at[1];
      }
    }
    at += pair ? 2 : 1;
  }
  if (run != nullptr) close(true);
  return copied_out(out, dst);
}

// A date of a form that the caller knows, by the C library.
inline std::int32_t plain_date(const char* form, int offset, const char* src, char* dst) {
  int year = 0;
  int month = 0;
  int day = 0;
  if (std::sscanf(src, form, &year, &month, &day) != 3) return 1;
  std::sprintf(dst, "%d/%02d/%02d", year + offset, month, day);
  return 0;
}

}  // namespace tq::bench
