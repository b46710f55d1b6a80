// The width tables against Unicode's compatibility mappings of the characters that the system's own
// code page conversion gives: whatever differs is meant, and docs/text.md lists it.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "base/cp932.h"
#include "support/code_page.h"
#include "textutil/reference.h"

namespace {

using namespace tq::test;

// The characters that Unicode's U+FF61 to U+FF9F are the half-width forms of, in that order.
constexpr std::u16string_view kKana =
    u"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノ"
    u"ハヒフヘホマミムメモヤユヨラリルレロワン゛゜";

std::u16string half_kana(char16_t unit) {
  const std::size_t at = kKana.find(unit);
  return at == std::u16string_view::npos ? u""
                                         : std::u16string(1, static_cast<char16_t>(0xFF61 + at));
}

// Unicode's half-width form of a character, empty for none.
std::u16string unicode_half(char16_t unit) {
  if (unit >= 0xFF01 && unit <= 0xFF5E) return {static_cast<char16_t>(unit - 0xFEE0)};
  if (unit == 0x3000) return u" ";
  if (unit == u'ヴ') return u"\uFF73\uFF9E";
  if (!half_kana(unit).empty()) return half_kana(unit);
  // A voiced kana stands behind its plain one, a semi-voiced one behind the voiced.
  const bool voiced =
      unit >= u'ガ' && unit <= u'ボ' && !half_kana(static_cast<char16_t>(unit - 1)).empty();
  if (voiced) return half_kana(static_cast<char16_t>(unit - 1)) + u"\uFF9E";
  if (unit >= u'パ' && unit <= u'ポ') return half_kana(static_cast<char16_t>(unit - 2)) + u"\uFF9F";
  return u"";
}

std::u16string unicode_full(char16_t unit) {
  if (unit >= 0x21 && unit <= 0x7E) return {static_cast<char16_t>(unit + 0xFEE0)};
  if (unit == 0x20) return u"\u3000";
  if (unit >= 0xFF61 && unit <= 0xFF9F) return {kKana[unit - 0xFF61u]};
  return u"";
}

std::string utf8(const std::u16string& text) {
  std::string sjis;
  return tq::cp932::from_utf16(text, sjis) ? tq::cp932::to_utf8(sjis) : "?";
}

std::string shown(const std::u16string& text) {
  if (text.empty()) return "stays";
  return text == u" " ? "space" : text == u"\u3000" ? "full-width space" : utf8(text);
}

// A row of the list when our form of a character is not Unicode's.
std::string difference(const SystemCodePage& system, std::string_view bytes,
                       const std::string& ours, std::u16string (*theirs)(char16_t)) {
  const std::u16string unit = system.decode(bytes);
  if (unit.size() != 1 || system.encode(unit[0]) != bytes) return "";  // none, or a second code
  std::u16string our_form;
  for (std::string_view rest = ours; !rest.empty();
       rest.remove_prefix(first_character(rest).size())) {
    our_form += system.decode(first_character(rest));
  }
  if (our_form == unit) our_form.clear();
  const std::u16string their_form = theirs(unit[0]);
  if (our_form == their_form) return "";
  return "| " + utf8(unit) + " | " + shown(our_form) + " | " + shown(their_form) + " |\n";
}

std::string differences(const SystemCodePage& system) {
  std::string list = "| character | becomes | in Unicode |\n|---|---|---|\n";
  for (int first = 1; first < 256; ++first) {
    const std::string byte(1, static_cast<char>(first));
    if (!tq::sjis::is_lead(byte[0])) {
      list += difference(system, byte, reference_full(byte), unicode_full);
      continue;
    }
    for (int second = 0x40; second < 0xFD; ++second) {
      const std::string pair = byte + static_cast<char>(second);
      if (second != 0x7F) list += difference(system, pair, reference_half(pair), unicode_half);
    }
  }
  return list;
}

TEST(WidthTables, DifferFromUnicodeOnlyWhereTheDocumentationSays) {
  const SystemCodePage system;
  if (!system.usable()) GTEST_SKIP() << "the C library has no tables for code page 932";
  std::ifstream file(TQ_DOCS_FOLDER "/text.md", std::ios::binary);
  const std::string document(std::istreambuf_iterator<char>(file), {});
  ASSERT_FALSE(document.empty()) << "docs/text.md cannot be read";
  const std::string list = differences(system);
  EXPECT_NE(document.find("\n" + list + "\n"), std::string::npos) << "docs/text.md must hold:\n"
                                                                  << list;
}

}  // namespace
