// What the width conversions and the removal of spaces change, as rules for rewrite.h.
#pragma once

#include "textutil/rewrite.h"

namespace tq::textutil {

constexpr unsigned char byte_at(const char* at) { return static_cast<unsigned char>(*at); }

// Which bytes of the blocks begin a two-byte character.
class Leads {
 public:
  template <class Block>
  Mask begin(const Block& block) {
    const Mask leads = block.mask([](auto bytes, auto) { return bytes.leads(); });
    owned_ = carry_;
    const Mask begin = every_other(leads, carry_);
    owned_ |= begin << 1;
    carry_ = carry_of(begin);
    return begin;
  }
  // The bytes behind those of the last call, second bytes and whatever else stands there.
  Mask owned() const { return owned_; }
  bool inside_pair() const { return carry_ != 0; }

 private:
  Mask carry_ = 0;
  Mask owned_ = 0;
};

struct ToHalf {
  static constexpr std::size_t kGrowth = 1;

  static bool changes_pair(unsigned char lead, unsigned char trail) {
    return may_have_half_form(lead, trail);
  }
  static bool changes_byte(unsigned char) { return false; }
  static const Form& form(const char* at) {
    return kHalfForms[half_index(byte_at(at), byte_at(at + 1))];
  }

  template <class Block>
  Mask changes(const Block& block) {
    return leads.begin(block) & block.mask([](auto bytes, auto next) {
      return bytes.template in<0x81, 0x83>() & next.template in<0x40, 0x9E>();
    });
  }
  bool inside_pair() const { return leads.inside_pair(); }

  Leads leads;
};

struct ToFull {
  static constexpr std::size_t kGrowth = 2;

  static bool changes_pair(unsigned char, unsigned char) { return false; }
  static bool changes_byte(unsigned char byte) { return kFullForms[kPlain][byte].size == 2; }
  static const Form& form(const char* at) {
    return kFullForms[kMarks[byte_at(at + 1)]][byte_at(at)];
  }

  // A mark goes with the byte before it, if that byte has a full-width form and is not itself a
  // mark that went with another.
  template <class Block>
  Mask changes(const Block& block) {
    leads.begin(block);
    const Mask with_form = block.mask([](auto bytes, auto) {
      return bytes.template in<0x20, 0x7E>() | bytes.template in<0xA0, 0xDF>();
    });
    const Mask no_trail =
        block.mask([](auto bytes, auto) { return bytes.template in<0x20, 0x3F>(); });
    const Mask marks = block.mask([](auto bytes, auto) { return bytes.template in<0xDE, 0xDF>(); });
    const Mask single = with_form & (~leads.owned() | no_trail);
    const Mask joined = every_other(marks & single & (single << 1 | single_carry), joined_carry);
    single_carry = carry_of(single);
    joined_carry = carry_of(joined);
    return single & ~joined;
  }
  bool inside_pair() const { return leads.inside_pair(); }

  Leads leads;
  Mask single_carry = 0;
  Mask joined_carry = 0;
};

struct WithoutSpaces {
  static constexpr std::size_t kGrowth = 1;

  static bool changes_pair(unsigned char lead, unsigned char trail) {
    return lead == 0x81 && trail == 0x40;
  }
  static bool changes_byte(unsigned char byte) { return byte == ' '; }
  static Form form(const char* at) {
    return {{}, 0, static_cast<std::uint8_t>(*at == ' ' ? 1 : 2)};
  }

  template <class Block>
  Mask changes(const Block& block) {
    const Mask full = block.mask([](auto bytes, auto next) {
      return bytes.template in<0x81, 0x81>() & next.template in<0x40, 0x40>();
    });
    const Mask half = block.mask([](auto bytes, auto) { return bytes.template in<' ', ' '>(); });
    return half | (leads.begin(block) & full);
  }
  bool inside_pair() const { return leads.inside_pair(); }

  Leads leads;
};

}  // namespace tq::textutil
