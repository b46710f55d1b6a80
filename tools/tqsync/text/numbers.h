// Numbers in texts that people read.
#pragma once

#include <cstdint>
#include <string>

namespace tqsync {

// "1 copy", "2 copies": a count with its noun, whose plural ends in -s, or -ies for -y.
std::string counted(std::uint64_t count, std::string noun);

}  // namespace tqsync
