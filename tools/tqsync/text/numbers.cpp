#include "text/numbers.h"

namespace tqsync {

std::string counted(std::uint64_t count, std::string noun) {
  if (count != 1 && noun.ends_with('y')) noun.replace(noun.size() - 1, 1, "ie");
  if (count != 1) noun += 's';
  return std::to_string(count) + ' ' + noun;
}

bool is_number(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::optional<std::string> with_zeros(const std::string& text, std::size_t digits) {
  if (!is_number(text) || text.size() > digits) return std::nullopt;
  return std::string(digits - text.size(), '0') + text;
}

}  // namespace tqsync
