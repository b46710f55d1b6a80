#include "engine/normalize.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "engine/kanji.h"
#include "text/library_text.h"
#include "text/unicode.h"
#include "tqutil/textutil.h"

namespace tqsync {
namespace {

using namespace std::string_view_literals;

// --- Characters ---

bool is_latin(char32_t code) { return code >= U'a' && code <= U'z'; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

char32_t plain_letter(char32_t code) {
  if (code >= U'！' && code <= U'～') code -= U'！' - U'!';
  return code >= U'A' && code <= U'Z' ? code + (U'a' - U'A') : code;
}

// Spaces and the marks between the parts of a name.
bool is_separator(char32_t code) {
  constexpr std::u32string_view kSeparators = U" \t\r\n\u00A0　・.,=＝-‐'’";
  return kSeparators.find(code) != std::u32string_view::npos;
}

constexpr char32_t kVoicedMark = U'\u3099', kSemiVoicedMark = U'\u309A';

// か and a combining ゛ (as macOS writes names of files) become が. Every kana that takes the mark
// is followed by its voiced form, and those of the は row by the semi-voiced one after that.
std::u32string compose_kana(std::u32string_view codes) {
  std::u32string out;
  for (const char32_t code : codes) {
    if (code != kVoicedMark && code != kSemiVoicedMark) {
      out.push_back(code);
    } else if (!out.empty()) {
      out.back() += code == kVoicedMark ? 1 : 2;
    }
  }
  return out;
}

std::u32string to_full_width(std::string_view utf8) {
  return compose_kana(to_code_points(convert_text(tqStrToZen, utf8)));
}

std::string to_half_width(std::string_view utf8) {
  std::string half = convert_text(tqStrToHan, utf8);
  for (char& c : half) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  }
  return half;
}

char32_t large_katakana(char32_t code) {
  if (code >= U'ぁ' && code <= U'ゖ') code += U'ァ' - U'ぁ';
  constexpr std::u32string_view kSmall =
      U"ァィゥェォッャュョヮ";  // each is followed by its large one
  return kSmall.find(code) != std::u32string_view::npos ? code + 1 : code;
}

// --- Cells with several values ---

// In half width, with every mark that people put between values as a comma.
std::string half_width_list(std::string_view cell) {
  std::string half = to_half_width(cell);
  constexpr auto kComma = "､"sv;
  for (std::size_t at; (at = half.find(kComma)) != std::string::npos;) {
    half.replace(at, kComma.size(), ",");
  }
  for (char& c : half) {
    if ("/;|\r\n"sv.find(c) != std::string_view::npos) c = ',';
  }
  return half;
}

std::vector<std::string_view> split(std::string_view text, std::string_view separators) {
  std::vector<std::string_view> pieces;
  while (true) {
    const std::size_t end = text.find_first_of(separators);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

void keep_once(std::vector<std::string>& keys) {
  std::ranges::sort(keys);
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
}

// --- Telephone numbers ---

bool in_japan(const std::string& number) {
  const bool filler = number.find_first_not_of(number.back(), 1) == std::string::npos;
  return number[0] == '0' && number[1] != '0' && !filler &&
         (number.size() == 10 || number.size() == 11);
}

// A number with its country code, without the "+".
std::string with_country(std::string_view digits) {
  if (digits.starts_with("81")) {
    digits.remove_prefix(2);
    const std::string number = (digits.starts_with('0') ? "" : "0") + std::string(digits);
    return number.size() >= 2 && in_japan(number) ? number : "";
  }
  const bool complete = digits.size() >= 8 && digits.size() <= 15;  // the longest there are
  return complete && digits[0] != '0' ? "+" + std::string(digits) : "";
}

// The number in the form of the keys; empty when the digits are none.
std::string telephone(std::string_view digits, bool plus) {
  if (plus) return with_country(digits);
  if (digits.size() < 9) return "";
  if (digits.size() > 11 && digits.starts_with("010")) return with_country(digits.substr(3));
  if (digits.starts_with("00")) return with_country(digits.substr(2));
  if (digits.starts_with("81") && digits.size() > 10) return with_country(digits);
  // Spreadsheets take numbers for quantities and drop the leading 0.
  const bool mobile = "5789"sv.find(digits[0]) != std::string_view::npos && digits[1] == '0';
  const bool eaten = digits[0] != '0' && digits.size() == (mobile ? 10 : 9);
  const std::string number = (eaten ? "0" : "") + std::string(digits);
  return in_japan(number) ? number : "";
}

std::string_view without_extension(std::string_view number) {
  for (const auto mark : {"内線"sv, "ext"sv, "x"sv}) number = number.substr(0, number.find(mark));
  return number;
}

// --- Addresses ---

bool is_dash(char32_t code) {
  constexpr std::u32string_view kDashes = U"-‐‑‒–—―−ー－ｰ";
  return kDashes.find(code) != std::u32string_view::npos;
}

bool is_number(char32_t code) { return code >= U'0' && code <= U'9'; }

// Without the prefecture that an address may begin with: two or three kanji and 都, 道, 府 or 県.
// 太宰府市 has none.
std::u32string_view without_prefecture(std::u32string_view address) {
  constexpr std::u32string_view kKinds = U"都道府県";
  if (address.size() < 4) return address;
  if (kKinds.find(address[2]) != std::u32string_view::npos && address[3] != U'市') {
    return address.substr(3);
  }
  return address[3] == U'県' ? address.substr(4) : address;
}

// How many characters at the start stand for a hyphen when a number stands before them.
std::size_t separator_size(std::u32string_view text) {
  for (const std::u32string_view word :
       {U"丁目"sv, U"番地の"sv, U"番地"sv, U"番"sv, U"号室"sv, U"号"sv, U"の"sv}) {
    if (text.starts_with(word)) return word.size();
  }
  return is_dash(text.front()) ? 1 : 0;
}

// The numbers of an address joined by hyphens.
std::u32string with_hyphens(std::u32string_view text) {
  std::u32string out;
  while (!text.empty()) {
    const bool behind_number = !out.empty() && (is_number(out.back()) || out.back() == U'-');
    const std::size_t size = behind_number ? separator_size(text) : 0;
    if (size == 0) {
      out.push_back(common_kanji(text.front()));
    } else if (out.back() != U'-') {
      out.push_back(U'-');
    }
    text.remove_prefix(std::max<std::size_t>(size, 1));
  }
  if (!out.empty() && out.back() == U'-') out.pop_back();
  return out;
}

}  // namespace

std::string name_key(std::string_view name) {
  std::vector<std::u32string> words(1);
  bool latin = true;
  for (char32_t code : to_full_width(name)) {
    code = plain_letter(code);
    if (is_separator(code)) {
      if (!words.back().empty()) words.emplace_back();
      continue;
    }
    words.back().push_back(code);
    latin = latin && is_latin(code);
  }
  if (latin) std::ranges::sort(words);
  std::u32string key;
  for (const auto& word : words) key += word;
  if (key.size() > 1 && key.back() == U'様') key.pop_back();
  return to_utf8(key);
}

std::string common_spelling(std::string_view name_key) {
  std::u32string codes = to_code_points(name_key);
  for (char32_t& code : codes) code = common_kanji(code);
  return to_utf8(codes);
}

std::string reading_key(std::string_view reading) {
  std::u32string codes = to_code_points(name_key(reading));
  for (char32_t& code : codes) code = large_katakana(code);
  return to_utf8(codes);
}

bool is_kana(std::string_view name_key) {
  const std::u32string codes = to_code_points(name_key);
  return !codes.empty() &&
         std::ranges::all_of(codes, [](char32_t code) { return code >= U'ぁ' && code <= U'ヿ'; });
}

std::vector<std::string> phone_keys(std::string_view cell) {
  const std::string half = half_width_list(cell);
  std::vector<std::string> keys;
  for (const std::string_view piece : split(half, ",")) {
    const std::string_view number = without_extension(piece);
    std::string digits;
    std::ranges::copy_if(number, std::back_inserter(digits), is_digit);
    std::string key = telephone(digits, number.find('+') != std::string_view::npos);
    if (!key.empty()) keys.push_back(std::move(key));
  }
  keep_once(keys);
  return keys;
}

std::vector<std::string> mail_keys(std::string_view cell) {
  const std::string half = half_width_list(cell);
  std::vector<std::string> keys;
  for (const std::string_view word : split(half, " \t,:<>()\"")) {
    const std::size_t at = word.find('@');
    const bool address = at != std::string_view::npos && at > 0 && at + 1 < word.size() &&
                         word.find('@', at + 1) == std::string_view::npos;
    if (address) keys.emplace_back(word);
  }
  keep_once(keys);
  return keys;
}

bool share_key(const std::vector<std::string>& a, const std::vector<std::string>& b) {
  return std::ranges::find_first_of(a, b) != a.end();
}

std::string address_key(std::string_view address) {
  const std::string numbers = convert_text(tqAddressStrKan2Nrm, address);  // drops spaces too
  const std::u32string codes = to_code_points(to_half_width(numbers));
  if (std::ranges::none_of(codes, is_number)) return "";
  return to_utf8(with_hyphens(without_prefecture(codes)));
}

std::string heading_key(std::string_view heading) {
  std::string key = to_half_width(heading);
  std::erase_if(key, [](char c) { return " -_\t\r\n"sv.find(c) != std::string_view::npos; });
  return key;
}

}  // namespace tqsync
