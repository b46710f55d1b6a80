#include "textutil/width_avx2.h"

#ifdef TQ_HAS_AVX2_CODE

#include <immintrin.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

#include "textutil/width_avx2_tables.h"
#include "textutil/width_rules.h"

// For the functions of this file only: the library is built for any x86.
#define TQ_AVX2 __attribute__((target("avx2,popcnt")))
#define TQ_AVX2_INLINE __attribute__((target("avx2,popcnt"), always_inline)) inline

namespace tq::textutil {
namespace avx2 {
namespace {

using Bytes = __m256i;
using Bits = std::uint32_t;  // bit n stands for byte n of a block

// The compiler makes constants that it can see from numbers, which takes longer than loading them.
inline const Tables& tables() {
  const Tables* tables = &kTables;
  asm("" : "+r"(tables));
  return *tables;
}

constexpr Bits lowest(std::size_t count) {
  return count >= kWidth ? ~Bits{0} : (Bits{1} << count) - 1;
}

TQ_AVX2_INLINE __m128i load_16(const void* at) {
  return _mm_loadu_si128(static_cast<const __m128i*>(at));
}
TQ_AVX2_INLINE Bytes load(const char* at) {
  return _mm256_loadu_si256(reinterpret_cast<const Bytes*>(at));
}
TQ_AVX2_INLINE Bytes load(const Vector& vector) {
  return _mm256_load_si256(reinterpret_cast<const Bytes*>(vector.bytes.data()));
}
TQ_AVX2_INLINE Bytes load(const Row& row) {
  return _mm256_broadcastsi128_si256(load_16(row.data()));
}
TQ_AVX2_INLINE void store(char* at, Bytes bytes) {
  _mm256_storeu_si256(reinterpret_cast<Bytes*>(at), bytes);
}
TQ_AVX2_INLINE Bytes zeros() { return _mm256_setzero_si256(); }
TQ_AVX2_INLINE Bytes either(Bytes a, Bytes b) { return _mm256_or_si256(a, b); }
TQ_AVX2_INLINE Bytes both(Bytes a, Bytes b) { return _mm256_and_si256(a, b); }
TQ_AVX2_INLINE Bytes but_not(Bytes a, Bytes b) { return _mm256_andnot_si256(b, a); }
TQ_AVX2_INLINE Bytes turn(Bytes a, Bytes b) { return _mm256_xor_si256(a, b); }
TQ_AVX2_INLINE Bytes plus(Bytes a, Bytes b) { return _mm256_add_epi8(a, b); }
TQ_AVX2_INLINE Bytes minus(Bytes a, Bytes b) { return _mm256_sub_epi8(a, b); }
TQ_AVX2_INLINE Bytes equal(Bytes a, Bytes b) { return _mm256_cmpeq_epi8(a, b); }
TQ_AVX2_INLINE Bytes choose(Bytes yes, Bytes a, Bytes b) { return _mm256_blendv_epi8(b, a, yes); }
TQ_AVX2_INLINE Bits bits_of(Bytes yes) { return static_cast<Bits>(_mm256_movemask_epi8(yes)); }

TQ_AVX2_INLINE Bytes in(Bytes bytes, const Range& range) {
  return _mm256_cmpgt_epi8(load(range.end), plus(bytes, load(range.move)));
}

TQ_AVX2_INLINE Bytes leads(const Tables& t, Bytes bytes) {
  return in(turn(bytes, load(t.first_ascii)), t.turned_leads);
}

// The entries for `places`: 0 to 16 * kRows - 1, and none (0) for negative ones.
template <std::size_t kRows, std::size_t... kNext>
TQ_AVX2_INLINE Bytes look_up(const std::array<Row, kRows>& rows, Bytes places, Bytes row,
                             std::index_sequence<kNext...>) {
  Bytes found = _mm256_shuffle_epi8(load(rows[0]), places);
  ((places = _mm256_subs_epi8(places, row),
    found = turn(found, _mm256_shuffle_epi8(load(rows[kNext + 1]), places))),
   ...);
  return found;
}
template <std::size_t kRows>
TQ_AVX2_INLINE Bytes look_up(const std::array<Row, kRows>& rows, Bytes places, Bytes row) {
  return look_up(rows, places, row, std::make_index_sequence<kRows - 1>());
}

// A yes for each place in the set; `one_of` has the bit of the place's upper half.
TQ_AVX2_INLINE Bytes in_set(const Row& set, Bytes places, Bytes one_of) {
  return equal(both(_mm256_shuffle_epi8(load(set), places), one_of), one_of);
}

// A yes for each bit.
TQ_AVX2_INLINE Bytes spread(const Tables& t, Bits bits) {
  const Bytes bit = load(t.bit_in_byte);
  const Bytes bytes = _mm256_set1_epi32(static_cast<int>(bits));
  return equal(both(_mm256_shuffle_epi8(bytes, load(t.byte_of_bit)), bit), bit);
}

// `bytes` one place on; the last byte of the block before comes in.
TQ_AVX2_INLINE Bytes one_on(Bytes bytes, Bytes before) {
  return _mm256_alignr_epi8(bytes, _mm256_permute2x128_si256(before, bytes, 0x21), 15);
}

// `bytes` one place back; a zero comes in.
TQ_AVX2_INLINE Bytes one_back(Bytes bytes) {
  return _mm256_alignr_epi8(_mm256_permute2x128_si256(bytes, bytes, 0x81), bytes, 1);
}

// A text of sixteen to 31 bytes with zeros behind it. No other byte is read.
TQ_AVX2_INLINE Bytes load_short(const Tables& t, std::string_view text) {
  // The last sixteen bytes without those that are among the first sixteen.
  const __m128i move = load_16(t.moves.bytes.data() + kWidth - text.size());
  const __m128i last = load_16(text.data() + text.size() - 16);
  return _mm256_set_m128i(_mm_shuffle_epi8(last, move), load_16(text.data()));
}

// What every_other() hands on to the next block: whether the last candidate counts. That of a run
// that begins within the block does not depend on the blocks before, so that they need not wait for
// one another.
TQ_AVX2_INLINE Bits carry_of(Bits candidates, Bits carry) {
  return candidates == ~Bits{0} ? carry : static_cast<Bits>(std::countl_one(candidates)) & 1;
}

// ---- To half width ----

// The characters that change, by their first bytes, block for block.
struct HalfLook {
  Bits lead_carry = 0;

  TQ_AVX2_INLINE Bits changes(const Tables& t, Bytes bytes, Bytes next) {
    const Bits lead_bits = bits_of(leads(t, bytes));
    const Bits begin = every_other(lead_bits, lead_carry);
    lead_carry = carry_of(lead_bits, lead_carry);
    return begin & bits_of(both(in(bytes, t.changing_leads), in(next, t.changing_trails)));
  }
};

// What write_half() hands on to the next block.
struct HalfCarry {
  Bits changes;   // whether the last byte begins a changing character
  Bytes seconds;  // its last byte: what the second byte of that character becomes, 0 for nothing
};

// Writes the bytes of `stays`, eight at a time.
template <std::size_t... kEight>
TQ_AVX2_INLINE char* pack(Bytes bytes, Bits stays, char* out, std::index_sequence<kEight...>) {
  char eights[kWidth];
  store(eights, bytes);
  const auto write_eight = [](const char* eight, Bits bits, char* at) TQ_AVX2 {
    const void* const packing = kPackings[bits].data();
    const __m128i packed =
        _mm_shuffle_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(eight)),
                         _mm_loadl_epi64(static_cast<const __m128i*>(packing)));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(at), packed);
    return at + _mm_popcnt_u32(bits);
  };
  ((out = write_eight(eights + 8 * kEight, stays >> 8 * kEight & 0xFF, out)), ...);
  return out;
}

// Writes a block in which no characters change but those of `changes`. Of its bytes the first
// `count` count.
TQ_AVX2_INLINE char* write_half(const Tables& t, Bytes bytes, Bytes next, Bits changes,
                                std::size_t count, HalfCarry& carry, char* out) {
  const Bytes place = minus(next, load(t.first_trail));
  const Bytes symbols = look_up(t.symbols, place, load(t.row));
  const Bytes katakana = look_up(t.katakana, place, load(t.row));
  const Bytes upper_half = both(_mm256_srli_epi16(place, 4), load(t.low_half));
  const Bytes one_of = _mm256_shuffle_epi8(load(t.one_of), upper_half);
  const Bytes behind_gap = _mm256_cmpgt_epi8(zeros(), next);
  const Bytes letters =
      both(plus(minus(next, load(t.letter_move)), behind_gap), in_set(t.letters, place, one_of));
  const Bytes row_1 = equal(bytes, load(t.symbol_lead));
  const Bytes row_3 = equal(bytes, load(t.letter_lead));
  const Bytes form = choose(row_1, symbols, choose(row_3, letters, katakana));
  const Bytes changing = but_not(spread(t, changes), equal(form, zeros()));

  const Bytes voiced = in_set(t.voiced_katakana, place, one_of);
  const Bytes semi_voiced = in_set(t.semi_voiced_katakana, place, one_of);
  const Bytes marks = both(minus(load(t.voiced_mark), semi_voiced), either(voiced, semi_voiced));
  const Bytes seconds = both(marks, but_not(changing, either(row_1, row_3)));

  const Bytes second = one_on(seconds, carry.seconds);
  const Bytes no_second = equal(second, zeros());
  const Bytes result = choose(no_second, choose(changing, form, bytes), second);
  const Bits changed = bits_of(changing);
  const Bits dropped = (changed << 1 | carry.changes) & bits_of(no_second);
  carry = {changed >> (kWidth - 1), seconds};
  return pack(result, ~dropped & lowest(count), out, std::make_index_sequence<kWidth / 8>());
}

TQ_AVX2 char* write_half_short(std::string_view text, char* out) {
  const Tables& t = tables();
  const Bytes bytes = load_short(t, text);
  const Bytes next = one_back(bytes);
  HalfCarry carry{0, zeros()};
  return write_half(t, bytes, next, HalfLook().changes(t, bytes, next), text.size(), carry, out);
}

TQ_AVX2 Progress write_half_blocks(std::string_view text, std::size_t size, char* out) {
  const Tables& t = tables();
  const char* at = text.data();
  const char* const last = at + size - kWidth;
  HalfLook look;
  HalfCarry carry{0, zeros()};
  Bits changes = look.changes(t, load(at), load(at + 1));
  for (; at != last; at += kWidth) {
    // Looking one block ahead: by the time it is asked for, the answer is there.
    const Bits ahead = look.changes(t, load(at + kWidth), load(at + kWidth + 1));
    const Bytes bytes = load(at);
    if ((changes | carry.changes) == 0) {
      store(out, bytes);
      out += kWidth;
    } else {
      out = write_half(t, bytes, load(at + 1), changes, kWidth, carry, out);
    }
    changes = ahead;
  }
  // A character that begins with the last byte is left for the next piece.
  const std::size_t left = look.lead_carry != 0 && size != text.size() ? 1 : 0;
  out = write_half(t, load(at), load(at + 1), changes, kWidth - left, carry, out);
  return {size - left, out};
}

// ---- To full width ----

struct FullChanges {
  Bits pairs;   // bytes that become two
  Bits joined;  // marks that go with the byte before them
};

// The bytes that change, block for block.
struct FullLook {
  Bits lead_carry = 0;
  Bits single_carry = 0;
  Bits joined_carry = 0;

  TQ_AVX2_INLINE FullChanges changes(const Tables& t, Bytes bytes) {
    const Bits lead_bits = bits_of(leads(t, bytes));
    const Bits owned = every_other(lead_bits, lead_carry) << 1 | lead_carry;
    lead_carry = carry_of(lead_bits, lead_carry);
    const Bits with_form = bits_of(either(in(bytes, t.ascii), in(bytes, t.kana)));
    const Bits single = with_form & (~owned | bits_of(in(bytes, t.no_trails)));
    const Bits behind_single = single & (single << 1 | single_carry);
    const Bits marks = bits_of(in(bytes, t.marks)) & behind_single;
    single_carry = single >> (kWidth - 1);
    if (marks == 0) {  // as in most blocks
      joined_carry = 0;
      return {single, 0};
    }
    const Bits joined = every_other(marks, joined_carry);
    joined_carry = carry_of(marks, joined_carry);
    return {single & ~joined, joined};
  }
};

// Writes the first `count` of the bytes, eight at a time, behind those of `pairs` their seconds.
template <std::size_t... kEight>
TQ_AVX2_INLINE char* interleave(Bytes firsts, Bytes seconds, Bits pairs, std::size_t count,
                                char* out, std::index_sequence<kEight...>) {
  char eights[2 * kWidth];
  const Bytes even = _mm256_unpacklo_epi64(firsts, seconds);
  const Bytes odd = _mm256_unpackhi_epi64(firsts, seconds);
  store(eights, _mm256_permute2x128_si256(even, odd, 0x20));
  store(eights + kWidth, _mm256_permute2x128_si256(even, odd, 0x31));
  char* const end = out + count + _mm_popcnt_u32(pairs);
  const auto write_eight = [](const char* eight, Bits bits, char* at) TQ_AVX2 {
    const __m128i paired = _mm_shuffle_epi8(load_16(eight), load_16(kPairings[bits].data()));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(at), paired);
    return at + 8 + _mm_popcnt_u32(bits);
  };
  ((out = write_eight(eights + 16 * kEight, pairs >> 8 * kEight & 0xFF, out)), ...);
  return end;
}

// The same without the bytes of `dropped`.
TQ_AVX2_INLINE char* interleave_some(Bytes firsts, Bytes seconds, Bits pairs, Bits dropped,
                                     std::size_t count, char* out) {
  char first[kWidth];
  char second[kWidth];
  store(first, firsts);
  store(second, seconds);
  for (std::size_t i = 0; i < count; ++i) {
    out[0] = first[i];
    out[1] = second[i];
    out += (~dropped >> i & 1) + (pairs >> i & 1);
  }
  return out;
}

// The second bytes of the kana, voiced where a mark follows.
TQ_AVX2_INLINE Bytes with_marks(const Tables& t, Bytes bytes, Bytes next, Bytes trail) {
  const Bytes voiced = equal(next, load(t.voiced_mark));
  const Bytes ha_to_ho = in(bytes, t.ha_to_ho);
  const Bytes by_one = both(voiced, either(in(bytes, t.ka_to_to), ha_to_ho));
  const Bytes by_two = both(equal(next, load(t.semi_voiced_mark)), ha_to_ho);
  const Bytes vu = both(both(voiced, equal(bytes, load(t.kana_u))), load(t.vu_move));
  return plus(minus(trail, plus(by_one, plus(by_two, by_two))), vu);  // yes is -1
}

// Writes a block, of whose bytes the first `count` count.
TQ_AVX2_INLINE char* write_full(const Tables& t, Bytes bytes, Bytes next, FullChanges changes,
                                std::size_t count, char* out) {
  const Bytes ascii = look_up(t.full_ascii, minus(bytes, load(t.first_ascii)), load(t.row));
  const Bytes kana = look_up(t.full_kana, minus(bytes, load(t.first_kana)), load(t.row));
  const Bytes small = either(bytes, load(t.first_ascii));
  const Bytes letter = either(in(small, t.small_letters), in(bytes, t.digits));
  const Bytes katakana = but_not(in(bytes, t.wo_to_n), equal(bytes, load(t.prolonged)));
  const Bytes lead =
      minus(minus(load(t.symbol_lead), letter), plus(katakana, katakana));  // yes is -1

  const Bytes trail = turn(ascii, kana);

  const Bytes first = choose(spread(t, changes.pairs), lead, bytes);
  const Bits pairs = changes.pairs & lowest(count);
  const Bits before_mark = bits_of(in(next, t.marks)) & pairs;
  if ((before_mark | changes.joined) != 0) {
    const Bytes marked = with_marks(t, bytes, next, trail);
    return interleave_some(first, marked, pairs, changes.joined, count, out);
  }
  return interleave(first, trail, pairs, count, out, std::make_index_sequence<kWidth / 8>());
}

TQ_AVX2 char* write_full_short(std::string_view text, char* out) {
  const Tables& t = tables();
  const Bytes bytes = load_short(t, text);
  return write_full(t, bytes, one_back(bytes), FullLook().changes(t, bytes), text.size(), out);
}

TQ_AVX2 Progress write_full_blocks(std::string_view text, std::size_t size, char* out) {
  const Tables& t = tables();
  const char* at = text.data();
  const char* const last = at + size - kWidth;
  FullLook look;
  FullChanges changes = look.changes(t, load(at));
  for (; at != last; at += kWidth) {
    const FullChanges ahead = look.changes(t, load(at + kWidth));
    const Bytes bytes = load(at);
    if ((changes.pairs | changes.joined) == 0) {
      store(out, bytes);
      out += kWidth;
    } else {
      out = write_full(t, bytes, load(at + 1), changes, kWidth, out);
    }
    changes = ahead;
  }
  const std::size_t left = look.lead_carry != 0 && size != text.size() ? 1 : 0;
  out = write_full(t, load(at), load(at + 1), changes, kWidth - left, out);
  // A mark behind the piece goes with its last byte.
  const bool mark_follows = kMarks[index_of(text.data()[size])] != kPlain;
  const bool joins = mark_follows && changes.pairs >> (kWidth - 1) != 0 && left == 0;
  return {size - left + (joins ? 1 : 0), out};
}

// The bytes of the whole blocks that go through the buffer next.
std::size_t whole_blocks(std::string_view text) {
  return std::min(text.size(), rewrite_detail::kPiece) / kWidth * kWidth;
}

}  // namespace

const bool kUsable = __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("popcnt") != 0;

Progress ToHalf::piece(std::string_view text, char* out) {
  if (text.size() < 16) return rewrite_by_character<textutil::ToHalf>(text, text.size(), out);
  if (text.size() < kWidth) return {text.size(), write_half_short(text, out)};
  return write_half_blocks(text, whole_blocks(text), out);
}

Progress ToFull::piece(std::string_view text, char* out) {
  if (text.size() < 16) return rewrite_by_character<textutil::ToFull>(text, text.size(), out);
  if (text.size() < kWidth) return {text.size(), write_full_short(text, out)};
  return write_full_blocks(text, whole_blocks(text), out);
}

}  // namespace avx2
}  // namespace tq::textutil

#endif  // TQ_HAS_AVX2_CODE
