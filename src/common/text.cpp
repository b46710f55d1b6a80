#include "common/text.h"

#include <cstring>
#include <limits>

#include "base/sjis.h"

namespace tq {

void copy_text(char* to, std::size_t size, std::string_view text) {
  if (to == nullptr || size == 0) return;
  const std::size_t bytes = sjis::cut_size(text, size - 1);
  if (bytes != 0) std::memmove(to, text.data(), bytes);
  to[bytes] = '\0';
}

void append_line(std::string& out, std::string_view text) {
  const std::size_t start = out.size();
  out += text;
  // Neither byte is ever the second half of a character.
  for (const char line_break : {'\n', '\r'}) {
    for (std::size_t at = start; (at = out.find(line_break, at)) != std::string::npos;)
      out[at] = ' ';
  }
  out += '\n';
}

std::int32_t decimal(std::string_view text) {
  std::size_t pos = 0;
  while (pos < text.size() && (text[pos] == ' ' || (text[pos] >= '\t' && text[pos] <= '\r'))) ++pos;
  bool negative = false;
  if (pos < text.size() && (text[pos] == '-' || text[pos] == '+')) negative = text[pos++] == '-';
  std::int64_t value = 0;
  for (; pos < text.size() && text[pos] >= '0' && text[pos] <= '9'; ++pos) {
    value = value * 10 + (text[pos] - '0');
    if (value > std::int64_t{1} << 32) value = std::int64_t{1} << 32;  // past every limit already
  }
  if (negative) value = -value;
  constexpr std::int64_t kMin = std::numeric_limits<std::int32_t>::min();
  constexpr std::int64_t kMax = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(value < kMin ? kMin : value > kMax ? kMax : value);
}

}  // namespace tq
