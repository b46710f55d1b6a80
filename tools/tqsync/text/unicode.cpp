#include "text/unicode.h"

namespace tqsync {
namespace {

struct Form {
  unsigned char lead_mask, lead;  // a lead byte of this form: (byte & lead_mask) == lead
  std::size_t size;
  char32_t lowest;  // smaller values have a shorter form
};

constexpr Form kForms[] = {
    {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

constexpr bool is_character(char32_t code) {
  return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

}  // namespace

std::optional<Character> first_character(std::string_view utf8) {
  const auto lead = static_cast<unsigned char>(utf8.front());
  for (const Form& form : kForms) {
    if ((lead & form.lead_mask) != form.lead) continue;
    if (utf8.size() < form.size) return std::nullopt;
    char32_t code = static_cast<unsigned char>(lead & ~form.lead_mask);
    for (const char c : utf8.substr(1, form.size - 1)) {
      const auto byte = static_cast<unsigned char>(c);
      if ((byte & 0xC0) != 0x80) return std::nullopt;
      code = code << 6 | (byte & 0x3F);
    }
    if (code < form.lowest || !is_character(code)) return std::nullopt;
    return Character{code, form.size};
  }
  return std::nullopt;
}

std::size_t find_malformed(std::string_view utf8) {
  for (std::size_t at = 0; at < utf8.size();) {
    const auto next = first_character(utf8.substr(at));
    if (!next) return at;
    at += next->size;
  }
  return std::string_view::npos;
}

std::u32string to_code_points(std::string_view utf8) {
  std::u32string codes;
  for (std::size_t at = 0; at < utf8.size();) {
    const Character next = first_character(utf8.substr(at)).value_or(Character{U'\uFFFD', 1});
    codes.push_back(next.code);
    at += next.size;
  }
  return codes;
}

void append_utf8(std::string& out, char32_t code) {
  const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (code < 0x80) return put(code);
  const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
  put(static_cast<unsigned char>(kForms[more].lead) | code >> (6 * more));
  for (int shift = 6 * (more - 1); shift >= 0; shift -= 6) put(0x80 | (code >> shift & 0x3F));
}

std::string to_utf8(std::u32string_view codes) {
  std::string out;
  for (const char32_t code : codes) append_utf8(out, code);
  return out;
}

}  // namespace tqsync
