// Looking at a block of text at once: one bit for each byte.
//
// A block has as many bytes as a machine word has bits. Bit n of a mask stands for byte n. Only
// machines with SSE2 have blocks; the constants and the arithmetic on masks are for all.
#pragma once

#include <concepts>
#include <cstddef>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tq::textutil {

using Mask = std::size_t;
inline constexpr std::size_t kBlockSize = 8 * sizeof(Mask);

// Every other candidate of each run of neighbouring candidates, beginning with the first: a
// candidate counts unless the one right before it does. `carry` (0 or 1) says whether the byte
// before the block counts. With the lead bytes as candidates these are the ones that begin a
// character, the others being second bytes.
template <std::unsigned_integral Bits>
constexpr Bits every_other(Bits candidates, Bits carry) {
  constexpr Bits kEven = ~Bits{0} / 3;
  candidates &= ~carry;
  const Bits after = candidates << 1 | carry;
  const Bits odd_runs = candidates & ~kEven & ~after;
  // The sum runs through each run that begins at an odd bit and so tells them from the others.
  const Bits sides = (odd_runs + candidates) << 1;
  return candidates & ~((kEven ^ sides) & after);
}

// The last bit of a mask, as the carry into the next block.
constexpr Mask carry_of(Mask mask) { return mask >> (kBlockSize - 1); }

#if defined(__SSE2__)

// Sixteen bytes, or a yes (0xFF) or no (0) for each of sixteen bytes.
struct Sixteen {
  static Sixteen load(const char* at) {
    return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(at))};
  }
  void store(char* at) const { _mm_storeu_si128(reinterpret_cast<__m128i*>(at), value); }

  // The bytes from kFirst to kLast. One signed comparison: the range is moved to the bottom.
  template <int kFirst, int kLast>
  Sixteen in() const {
    const __m128i moved = _mm_add_epi8(value, _mm_set1_epi8(static_cast<char>(0x80 - kFirst)));
    return {_mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(0x81 + kLast - kFirst)))};
  }

  // The lead bytes of code page 932: with bit 0x20 turned their two ranges are one.
  Sixteen leads() const {
    return Sixteen{_mm_xor_si128(value, _mm_set1_epi8(0x20))}.in<0xA1, 0xDC>();
  }

  friend Sixteen operator&(Sixteen a, Sixteen b) { return {_mm_and_si128(a.value, b.value)}; }
  friend Sixteen operator|(Sixteen a, Sixteen b) { return {_mm_or_si128(a.value, b.value)}; }

  Mask bits() const { return static_cast<unsigned>(_mm_movemask_epi8(value)); }

  __m128i value;
};

// The kBlockSize bytes at `text`, which can be read together with the one behind them.
class WholeBlock {
 public:
  explicit WholeBlock(const char* text) : text_(text) {}

  // The mask of look(bytes, next): for sixteen bytes and for the sixteen that begin one later.
  template <class Look>
  Mask mask(Look look) const {
    return mask(look, std::make_index_sequence<kBlockSize / 16>());
  }

 private:
  template <class Look, std::size_t... kAt>
  Mask mask(Look look, std::index_sequence<kAt...>) const {
    return ((look(Sixteen::load(text_ + 16 * kAt), Sixteen::load(text_ + 16 * kAt + 1)).bits()
             << 16 * kAt) |
            ...);
  }

  const char* text_;
};

// The same for a text of 16 to kBlockSize bytes; no byte past the one behind it is read.
class ShortBlock {
 public:
  ShortBlock(const char* text, std::size_t size) : text_(text), last_(size - 16) {}

  template <class Look>
  Mask mask(Look look) const {
    Mask mask = look(Sixteen::load(text_ + last_), Sixteen::load(text_ + last_ + 1)).bits()
                << last_;
    for (std::size_t at = 0; at < last_; at += 16) {
      mask |= look(Sixteen::load(text_ + at), Sixteen::load(text_ + at + 1)).bits() << at;
    }
    return mask;
  }

 private:
  const char* text_;
  std::size_t last_;
};

#endif  // __SSE2__

}  // namespace tq::textutil
