// Numbers in texts that people read and type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tqsync {

// "1 copy", "2 copies": a count with its noun, whose plural ends in -s, or -ies for -y.
std::string counted(std::uint64_t count, std::string noun);

// Whether a text is nothing but digits, at least one.
bool is_number(std::string_view text);

// A number that people may type short with its zeros before it, "7" as "007"; nothing for a text
// that is no number of at most so many digits.
std::optional<std::string> with_zeros(const std::string& text, std::size_t digits);

}  // namespace tqsync
