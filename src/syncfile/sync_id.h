// Sync ids as numbers and as text: "001" group, "001002" file, "001002000000345" record. The shared
// vocabulary of every family that keys its tables by records; the loops of candidate and link
// tables run through here, hence inline.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tqutil/records.h"

namespace tq {

// Whether two ids name the same record; the capacity word is no part of the identity.
inline bool same_record(const tSYNC_ID& a, const tSYNC_ID& b) {
  return a.grp == b.grp && a.file == b.file && a.rec == b.rec;
}

// The identity as one number, and the part of it that names the member file.
inline std::uint32_t file_key(const tSYNC_ID& id) {
  return static_cast<std::uint32_t>(id.grp) << 16 | id.file;
}
inline std::uint64_t record_key(const tSYNC_ID& id) {
  return static_cast<std::uint64_t>(file_key(id)) << 32 | id.rec;
}

namespace sync_id_detail {

// As take_number, for text that is not all digits.
inline std::int32_t take_odd_number(const char*& text, int width) {
  const char* const start = text;
  int pos = 0;
  const auto blank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
  while (pos < width && blank(start[pos])) ++pos;
  bool negative = false;
  if (pos < width && (start[pos] == '-' || start[pos] == '+')) negative = start[pos++] == '-';
  std::int32_t value = 0;  // nine digits at most, so it cannot overflow
  for (; pos < width && start[pos] >= '0' && start[pos] <= '9'; ++pos) {
    value = value * 10 + (start[pos] - '0');
  }
  while (pos < width && start[pos] != '\0') ++pos;
  text = start + pos;
  return negative ? -value : value;
}

// The decimal number in at most `width` characters from `text`: blanks and a sign may come first,
// the first other character ends it. Moves `text` behind these characters, or to the terminator
// when it comes first.
inline std::int32_t take_number(const char*& text, int width) {
  std::int32_t value = 0;
  for (int pos = 0; pos < width; ++pos) {
    if (text[pos] < '0' || text[pos] > '9') return take_odd_number(text, width);
    value = value * 10 + (text[pos] - '0');
  }
  text += width;
  return value;
}

// Writes a number with at least `width` digits; the place behind them.
inline char* put_number(char* out, std::uint32_t value, int width) {
  char digits[10];
  int count = 0;
  do {
    digits[count++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value != 0);
  for (int pad = count; pad < width; ++pad) *out++ = '0';
  while (count > 0) *out++ = digits[--count];
  return out;
}

}  // namespace sync_id_detail

inline constexpr int kGroupDigits = 3;
inline constexpr int kFileDigits = 3;
inline constexpr int kRecordDigits = 9;

// Group and file from characters 1-3 and 4-6; the record number becomes 0. Null reads as empty.
inline void parse_rec_id(const char* text, tSYNC_ID& id) {
  const char* at = text == nullptr ? "" : text;
  id.grp = static_cast<std::uint16_t>(sync_id_detail::take_number(at, kGroupDigits));
  id.file = static_cast<std::uint16_t>(sync_id_detail::take_number(at, kFileDigits));
  id.rec = 0;
}

// Group, file and record from characters 1-3, 4-6 and 7-15. Null reads as empty.
inline void parse_sync_id(const char* text, tSYNC_ID& id) {
  const char* at = text == nullptr ? "" : text;
  id.grp = static_cast<std::uint16_t>(sync_id_detail::take_number(at, kGroupDigits));
  id.file = static_cast<std::uint16_t>(sync_id_detail::take_number(at, kFileDigits));
  id.rec = static_cast<std::uint32_t>(sync_id_detail::take_number(at, kRecordDigits));
}

// Prints into 6 bytes.
inline char* print_group_id(const tSYNC_ID& id, char* out) {
  char* end = sync_id_detail::put_number(out, id.grp, kGroupDigits);
  *end = '\0';
  return end;
}

// Prints into 11 bytes.
inline char* print_file_id(const tSYNC_ID& id, char* out) {
  char* end = sync_id_detail::put_number(print_group_id(id, out), id.file, kFileDigits);
  *end = '\0';
  return end;
}

// Prints into TQ_SYNC_ID_SIZE bytes.
inline char* print_sync_id(const tSYNC_ID& id, char* out) {
  char* end = sync_id_detail::put_number(print_file_id(id, out), id.rec, kRecordDigits);
  *end = '\0';
  return end;
}

}  // namespace tq
