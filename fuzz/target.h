// What a target is made of: the function that tries an input, and what it demands.
#pragma once

#include <cstdlib>
#include <string_view>

// Defined by each target. The bytes lie in a block of exactly their size, so that a read past the
// end is seen.
void try_input(std::string_view input);

// Ends the program, which counts as a finding, unless it holds.
inline void require(bool holds) {
  if (!holds) std::abort();
}
