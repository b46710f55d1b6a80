// The width conversions for machines with AVX2: the same bytes as by the rules of width_rules.h,
// 32 at a time and without a branch for the single character.
#pragma once

#include <cstddef>
#include <string_view>

#include "textutil/rewrite.h"

#if defined(__x86_64__) || defined(__i386__)
#define TQ_HAS_AVX2_CODE

namespace tq::textutil::avx2 {

// Whether this machine and its system can run them. False while the library is being loaded.
extern const bool kUsable;

// Ways for rewrite().
struct ToHalf {
  static constexpr std::size_t kGrowth = 1;
  static Progress piece(std::string_view text, char* out);
};
struct ToFull {
  static constexpr std::size_t kGrowth = 2;
  static Progress piece(std::string_view text, char* out);
};

}  // namespace tq::textutil::avx2

#endif
