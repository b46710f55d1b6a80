#include "base/cp932.h"

#include "base/cp932_lookup.h"
#include "base/sjis.h"
#include "base/utf8.h"

namespace tq::cp932 {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

// The JIS spellings: what JIS X 0208's own mapping to Unicode gives for the codes that Windows maps
// to another character. The code page's character has the same shape.
struct Spelling {
  char16_t jis;
  char16_t code_page;
};
constexpr Spelling kJisSpellings[] = {
    {0x2014, 0x2015},  // em dash: horizontal bar
    {0x2016, 0x2225},  // double vertical line: parallel to
    {0x2212, 0xFF0D},  // minus sign: full-width hyphen-minus
    {0x301C, 0xFF5E},  // wave dash: full-width tilde
    {0x00A2, 0xFFE0},  // cent sign: full-width
    {0x00A3, 0xFFE1},  // pound sign: full-width
    {0x00AC, 0xFFE2},  // not sign: full-width
};

// Calls put(unit) for each character of the Shift-JIS text.
template <class Put>
void decode(std::string_view sjis, Put put) {
  for (std::size_t pos = 0; pos < sjis.size();) {
    const auto byte = static_cast<unsigned char>(sjis[pos]);
    if (sjis::is_pair(sjis, pos)) {
      const char16_t unit = unit_of_pair(byte, static_cast<unsigned char>(sjis[pos + 1]));
      put(unit != 0 ? unit : kReplacement);
      pos += 2;
    } else {
      put(sjis::is_lead(sjis[pos]) ? kReplacement : unit_of_byte(byte));
      ++pos;
    }
  }
}

// Appends the code of `code_point`; false when the code page has none.
bool append_code(std::string& out, char32_t code_point, Accept accept) {
  if (code_point > 0xFFFF) return false;
  const auto unit = static_cast<char16_t>(code_point);
  unsigned code = code_of(unit);
  if (code == 0 && unit != 0) {
    if (accept == Accept::kExact) return false;
    for (const Spelling& spelling : kJisSpellings) {
      if (spelling.jis == unit) code = code_of(spelling.code_page);
    }
    if (code == 0) return false;
  }
  if (code > 0xFF) out.push_back(static_cast<char>(code >> 8));
  out.push_back(static_cast<char>(code & 0xFF));
  return true;
}

}  // namespace

std::u16string to_utf16(std::string_view sjis) {
  std::u16string out;
  out.reserve(sjis.size());
  decode(sjis, [&](char16_t unit) { out.push_back(unit); });
  return out;
}

std::string to_utf8(std::string_view sjis) {
  std::string out;
  out.reserve(sjis.size() + sjis.size() / 2);
  decode(sjis, [&](char16_t unit) { utf8::append(out, unit); });
  return out;
}

std::size_t convert_utf8(std::string_view utf8, std::string& out, Accept accept) {
  out.clear();
  out.reserve(utf8.size());
  std::size_t pos = 0;
  while (pos < utf8.size()) {
    const utf8::Char next = utf8::first(utf8.substr(pos));
    if (next.code == utf8::kMalformed || !append_code(out, next.code, accept)) break;
    pos += next.size;
  }
  return pos;
}

std::size_t convert_utf16(std::u16string_view utf16, std::string& out, Accept accept) {
  out.clear();
  out.reserve(utf16.size() * 2);
  std::size_t pos = 0;
  while (pos < utf16.size() && append_code(out, utf16[pos], accept)) ++pos;
  return pos;
}

bool from_utf8(std::string_view utf8, std::string& out, Accept accept) {
  return convert_utf8(utf8, out, accept) == utf8.size();
}

bool from_utf16(std::u16string_view utf16, std::string& out, Accept accept) {
  return convert_utf16(utf16, out, accept) == utf16.size();
}

}  // namespace tq::cp932
