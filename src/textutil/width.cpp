#include "textutil/width.h"

#include <array>

#include "textutil/width_avx2.h"
#include "textutil/width_rules.h"

namespace tq::textutil {

std::int32_t to_half(const char* src, char* dst) {
#ifdef TQ_HAS_AVX2_CODE
  if (avx2::kUsable) return rewrite<avx2::ToHalf>(src, dst);
#endif
  return rewrite<ByRule<ToHalf>>(src, dst);
}

std::int32_t to_full(const char* src, char* dst) {
#ifdef TQ_HAS_AVX2_CODE
  if (avx2::kUsable) return rewrite<avx2::ToFull>(src, dst);
#endif
  return rewrite<ByRule<ToFull>>(src, dst);
}

std::int32_t without_spaces(const char* src, char* dst) {
  return rewrite<ByRule<WithoutSpaces>>(src, dst);
}

std::int32_t without_bytes(const char* unwanted, const char* src, char* dst) {
  std::array<bool, 256> drop{};
  if (unwanted != nullptr) {
    for (; *unwanted != '\0'; ++unwanted) drop[byte_at(unwanted)] = true;
  }
  Source source(src, 1);
  if (!source.size_fits() || !source.keep_from(dst)) return -1;
  std::size_t size = 0;
  for (const char byte : source.text()) {
    if (drop[byte_at(&byte)]) continue;
    if (dst != nullptr) dst[size] = byte;
    ++size;
  }
  if (dst != nullptr) dst[size] = '\0';
  return static_cast<std::int32_t>(size);
}

}  // namespace tq::textutil
