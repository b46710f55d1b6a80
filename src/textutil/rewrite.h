// Copying a text with some of its characters replaced: the engine behind the width conversions and
// the removal of spaces.
//
// A rule says which characters change and into what; everything else is copied in bulk. Two ways
// lead to the same bytes: character by character, on any machine and for very short texts, and in
// blocks, where there is SSE2. Blocks are looked at in two passes, first which bytes begin a
// character that changes, as masks, then the copying, so that the first pass has no branches to
// mispredict.
//
// A rule is a struct with
//   kGrowth                     most bytes written for each byte of the text
//   changes_pair(lead, trail)   whether a two-byte character may change
//   changes_byte(byte)          whether a single byte changes
//   form(at)                    what the changing character at `at` becomes; at[1] can be read
//   changes(block)              the same choice for a block of bytes; called for one block after
//                               the other, from a character's first byte on
//   inside_pair()               whether the first byte after these blocks follows a lead byte
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "base/sjis.h"
#include "textutil/block.h"
#include "textutil/source.h"
#include "textutil/width_tables.h"

namespace tq::textutil {

// How far a rewrite came: bytes of the text taken, end of the result.
struct Progress {
  std::size_t taken;
  char* out;
};

// Bytes that a rewrite may use in `out` behind its result.
inline constexpr std::size_t kSlack = 64;

// Rewrites the characters that begin in the first `limit` bytes of the text. The byte behind the
// text can be read and is zero.
template <class Rule>
Progress rewrite_by_character(std::string_view text, std::size_t limit, char* out) {
  std::size_t pos = 0;
  while (pos < limit) {
    const char* at = text.data() + pos;
    const auto byte = static_cast<unsigned char>(at[0]);
    if (sjis::is_pair(text, pos)) {
      if (!Rule::changes_pair(byte, static_cast<unsigned char>(at[1]))) {
        std::memcpy(out, at, 2);
        out += 2;
        pos += 2;
        continue;
      }
    } else if (!Rule::changes_byte(byte)) {
      *out++ = *at;
      ++pos;
      continue;
    }
    const Form form = Rule::form(at);
    std::memcpy(out, form.bytes, 2);
    out += form.size;
    pos += form.taken;
  }
  return {pos, out};
}

namespace rewrite_detail {

// Bytes of text that go through the buffer at a time.
inline constexpr std::size_t kPiece = 4096;

#if defined(__SSE2__)

// How far the text is read behind a place when the bytes before a change are copied.
inline constexpr std::size_t kOverread = 32;

// Copies in steps of sixteen bytes, at least kAtLeast of them. Returns the end of the copy.
template <std::size_t kAtLeast>
char* copy_over(char* out, const char* from, std::size_t size) {
  for (std::size_t at = 0; at < kAtLeast; at += 16) Sixteen::load(from + at).store(out + at);
  for (std::size_t at = kAtLeast; at < size; at += 16) Sixteen::load(from + at).store(out + at);
  return out + size;
}

// Makes the changes of the block that begins at text[base]. `pos` is the first byte that is not yet
// copied; it moves behind the last change.
template <class Rule, std::size_t kAtLeast>
char* apply(const char* text, std::size_t base, Mask changes, std::size_t& pos, char* out) {
  for (; changes != 0; changes &= changes - 1) {
    const int bit = std::countr_zero(changes);
    const std::size_t at = base + static_cast<std::size_t>(bit);
    const auto form = std::bit_cast<std::uint32_t>(Form(Rule::form(text + at)));
    out = copy_over<kAtLeast>(out, text + pos, at - pos);
    std::memcpy(out, &form, 4);
    out += form >> 16 & 0xFF;
    pos = at + (form >> 24);
  }
  return out;
}

// Rewrites the first `size` bytes, whole blocks of them or the rest of a text, and the second byte
// of a character that begins there. Blocks may be read to their end and kOverread bytes further.
// `out` null in the result: nothing changes, nothing was written.
template <class Rule>
Progress rewrite_blocks(const char* text, std::size_t size, char* out) {
  Mask changes[kPiece / kBlockSize];
  const std::size_t blocks = (size + kBlockSize - 1) / kBlockSize;
  Rule rule;
  Mask any = 0;
  for (std::size_t block = 0; block < blocks; ++block) {
    changes[block] = rule.changes(WholeBlock(text + block * kBlockSize));
    any |= changes[block];
  }
  const std::size_t end = size + (rule.inside_pair() && sjis::is_trail(text[size]) ? 1 : 0);
  if (any == 0) return {end, nullptr};
  std::size_t pos = 0;
  for (std::size_t block = 0; block < blocks; ++block) {
    out = apply<Rule, kOverread>(text, block * kBlockSize, changes[block], pos, out);
  }
  if (pos < end) {
    std::memcpy(out, text + pos, end - pos);
    out += end - pos;
    pos = end;
  }
  return {pos, out};
}

// The next piece of a text of more than kBlockSize bytes.
template <class Rule>
Progress rewrite_piece(std::string_view text, char* out) {
  if (text.size() >= kBlockSize + kOverread) {
    const std::size_t whole = (text.size() - kOverread) / kBlockSize * kBlockSize;
    return rewrite_blocks<Rule>(text.data(), std::min(whole, kPiece), out);
  }
  char rest[2 * kBlockSize + kOverread + 1] = {};
  std::memcpy(rest, text.data(), text.size());
  return rewrite_blocks<Rule>(rest, text.size(), out);
}

// A text of 16 to kBlockSize bytes.
template <class Rule>
Progress rewrite_short(std::string_view text, char* out) {
  const std::size_t size = text.size();
  Rule rule;
  const Mask changes = rule.changes(ShortBlock(text.data(), size));
  if (changes == 0) return {size, nullptr};
  char copy[kBlockSize + kOverread];
  for (std::size_t at = 0; at + 16 < size; at += 16) Sixteen::load(&text[at]).store(copy + at);
  Sixteen::load(&text[size - 16]).store(copy + size - 16);
  copy[size] = '\0';
  std::size_t pos = 0;
  out = apply<Rule, 16>(copy, 0, changes, pos, out);
  if (pos < size) out = copy_over<16>(out, copy + pos, size - pos);
  return {size, out};
}

#endif

// Texts of any length, piece by piece through a buffer, so that no byte behind the result is
// touched and the text may lie under the result.
template <class Way>
std::int32_t rewrite_long(Source& source, char* dst) {
  char buffer[(kPiece + 1) * Way::kGrowth + kSlack];
  if (!source.size_fits() || !source.keep_from(dst)) return -1;
  std::string_view text = source.text();
  std::size_t size = 0;
  while (!text.empty()) {
    const Progress piece = Way::piece(text, buffer);
    const std::size_t written =
        piece.out == nullptr ? piece.taken : static_cast<std::size_t>(piece.out - buffer);
    const char* const from = piece.out == nullptr ? text.data() : buffer;
    if (dst != nullptr && dst + size != from) std::memmove(dst + size, from, written);
    size += written;
    text.remove_prefix(piece.taken);
  }
  if (dst != nullptr) dst[size] = '\0';
  return static_cast<std::int32_t>(size);
}

// Texts of at most kBrief bytes: the result is there before the first byte of it is written.
inline constexpr std::size_t kBrief = 64;

// Copies a result, in steps of eight bytes that lie in it. The steps of one round do for every form
// of a field of some twenty bytes, so that its size is no branch to mispredict.
inline void copy_brief(char* dst, const char* from, std::size_t size) {
  if (size < 8) {
    for (std::size_t at = 0; at < size; ++at) dst[at] = from[at];
    return;
  }
  std::size_t at = 0;
  do {
    for (std::size_t step = 0; step < 6; ++step, at += 8) {
      std::uint64_t word;
      const std::size_t place = std::min(at, size - 8);
      std::memcpy(&word, from + place, 8);
      std::memcpy(dst + place, &word, 8);
    }
  } while (at < size);
}

template <class Way>
std::int32_t rewrite_brief(std::string_view text, char* dst) {
  char buffer[kBrief * Way::kGrowth + kSlack];
  char* out = buffer;
  while (!text.empty()) {
    const Progress piece = Way::piece(text, out);
    if (piece.out == nullptr) std::memcpy(out, text.data(), piece.taken);
    out = piece.out == nullptr ? out + piece.taken : piece.out;
    text.remove_prefix(piece.taken);
  }
  *out = '\0';
  const auto size = static_cast<std::size_t>(out - buffer);
  if (dst != nullptr) copy_brief(dst, buffer, size + 1);
  return static_cast<std::int32_t>(size);
}

}  // namespace rewrite_detail

// A way to rewrite(): by a rule, in blocks where there is SSE2. piece() rewrites the beginning of a
// text that is not empty, as much of it as it likes, and may use kSlack bytes of `out` behind the
// result; `out` null in its answer: what it took does not change, nothing was written.
template <class Rule>
struct ByRule {
  static constexpr std::size_t kGrowth = Rule::kGrowth;

  static Progress piece(std::string_view text, char* out) {
#if defined(__SSE2__)
    if (text.size() > kBlockSize) return rewrite_detail::rewrite_piece<Rule>(text, out);
    if (text.size() >= 16) return rewrite_detail::rewrite_short<Rule>(text, out);
#endif
    return rewrite_by_character<Rule>(text, std::min(text.size(), rewrite_detail::kPiece), out);
  }
};

// Rewrites the text at `src` to `dst` (which may be null, or lie anywhere, over the text too) and
// returns the length of the result; -1 when the text is too long or there is no memory for a copy
// of it, with `dst` as it was.
template <class Way>
std::int32_t rewrite(const char* src, char* dst) {
  Source source(src, Way::kGrowth);
  const std::string_view text = source.text();
  return text.size() <= rewrite_detail::kBrief ? rewrite_detail::rewrite_brief<Way>(text, dst)
                                               : rewrite_detail::rewrite_long<Way>(source, dst);
}

}  // namespace tq::textutil
