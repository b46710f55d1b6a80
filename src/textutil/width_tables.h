// The pairs of full-width and half-width forms, as data and as lookup tables built from it.
//
// The lists follow the code order of their source: JIS X 0208 rows 1, 3 and 5 for the way to half
// width (row 3 and 5 list no more than their characters), the single bytes for the way to full
// width. Each line of full-width characters stands beside the line of what it becomes. A character
// that stays as it is stands beside itself; SP is the space, NB the byte 0xA0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/sjis.h"
#include "base/sjis_literal.h"

namespace tq::textutil {

struct WidthList {
  std::string_view from;
  std::string_view to;
};

// Row 1, cells 1 to 94, ten to a line.
inline constexpr WidthList kSymbolsToHalf[] = {
    {R"(　 、 。 ， ． ・ ： ； ？ ！)"_sjis, R"(SP ､ ｡ , . ･ : ; ? !)"_sjis},
    {R"(゛ ゜ ´ ｀ ¨ ＾ ￣ ＿ ヽ ヾ)"_sjis, R"(ﾞ ﾟ ' ` ¨ ^ ~ _ ヽ ヾ)"_sjis},
    {R"(ゝ ゞ 〃 仝 々 〆 〇 ー ― ‐)"_sjis, R"(ゝ ゞ 〃 仝 々 〆 〇 ｰ - -)"_sjis},
    {R"(／ ＼ ～ ∥ ｜ … ‥ ‘ ’ “)"_sjis, R"(/ ＼ ～ ∥ | … ‥ ' ' ")"_sjis},
    {R"(” （ ） 〔 〕 ［ ］ ｛ ｝ 〈)"_sjis, R"(" ( ) [ ] [ ] { } <)"_sjis},
    {R"(〉 《 》 「 」 『 』 【 】 ＋)"_sjis, R"(> < > ｢ ｣ ｢ ｣ [ ] +)"_sjis},
    {R"(－ ± × ÷ ＝ ≠ ＜ ＞ ≦ ≧)"_sjis, R"(- ± × ÷ = ≠ < > ≦ ≧)"_sjis},
    {R"(∞ ∴ ♂ ♀ ° ′ ″ ℃ ￥ ＄)"_sjis, R"(∞ ∴ ♂ ♀ ﾟ ' " ℃ \ $)"_sjis},
    {R"(￠ ￡ ％ ＃ ＆ ＊ ＠ § ☆ ★)"_sjis, R"(￠ ￡ % # & * @ § ☆ ★)"_sjis},
    {R"(○ ● ◎ ◇)"_sjis, R"(○ ● ◎ ◇)"_sjis},
};

// Row 3: the digits from cell 16, the letters from cells 33 and 65.
inline constexpr WidthList kLettersToHalf[] = {
    {"０ １ ２ ３ ４ ５ ６ ７ ８ ９"_sjis, "0 1 2 3 4 5 6 7 8 9"_sjis},
    {"Ａ Ｂ Ｃ Ｄ Ｅ Ｆ Ｇ Ｈ Ｉ Ｊ Ｋ Ｌ Ｍ"_sjis, "A B C D E F G H I J K L M"_sjis},
    {"Ｎ Ｏ Ｐ Ｑ Ｒ Ｓ Ｔ Ｕ Ｖ Ｗ Ｘ Ｙ Ｚ"_sjis, "N O P Q R S T U V W X Y Z"_sjis},
    {"ａ ｂ ｃ ｄ ｅ ｆ ｇ ｈ ｉ ｊ ｋ ｌ ｍ"_sjis, "a b c d e f g h i j k l m"_sjis},
    {"ｎ ｏ ｐ ｑ ｒ ｓ ｔ ｕ ｖ ｗ ｘ ｙ ｚ"_sjis, "n o p q r s t u v w x y z"_sjis},
};

// Row 5, cells 1 to 86. The letters without a half-width form of their own take the nearest one:
// ヮ, ヰ, ヱ, ヵ and ヶ.
inline constexpr WidthList kKatakanaToHalf[] = {
    {"ァ ア ィ イ ゥ ウ ェ エ ォ オ"_sjis, "ｧ  ｱ  ｨ  ｲ  ｩ  ｳ  ｪ  ｴ  ｫ  ｵ"_sjis},
    {"カ ガ キ ギ ク グ ケ ゲ コ ゴ"_sjis, "ｶ  ｶﾞ ｷ  ｷﾞ ｸ  ｸﾞ ｹ  ｹﾞ ｺ  ｺﾞ"_sjis},
    {"サ ザ シ ジ ス ズ セ ゼ ソ ゾ"_sjis, "ｻ  ｻﾞ ｼ  ｼﾞ ｽ  ｽﾞ ｾ  ｾﾞ ｿ  ｿﾞ"_sjis},
    {"タ ダ チ ヂ ッ ツ ヅ テ デ ト ド"_sjis, "ﾀ  ﾀﾞ ﾁ  ﾁﾞ ｯ  ﾂ  ﾂﾞ ﾃ  ﾃﾞ ﾄ  ﾄﾞ"_sjis},
    {"ナ ニ ヌ ネ ノ"_sjis, "ﾅ  ﾆ  ﾇ  ﾈ  ﾉ"_sjis},
    {"ハ バ パ ヒ ビ ピ フ ブ プ"_sjis, "ﾊ  ﾊﾞ ﾊﾟ ﾋ  ﾋﾞ ﾋﾟ ﾌ  ﾌﾞ ﾌﾟ"_sjis},
    {"ヘ ベ ペ ホ ボ ポ"_sjis, "ﾍ  ﾍﾞ ﾍﾟ ﾎ  ﾎﾞ ﾎﾟ"_sjis},
    {"マ ミ ム メ モ ャ ヤ ュ ユ ョ ヨ"_sjis, "ﾏ  ﾐ  ﾑ  ﾒ  ﾓ  ｬ  ﾔ  ｭ  ﾕ  ｮ  ﾖ"_sjis},
    {"ラ リ ル レ ロ ヮ ワ ヰ ヱ ヲ ン"_sjis, "ﾗ  ﾘ  ﾙ  ﾚ  ﾛ  ﾜ  ﾜ  ｨ  ｴ  ｦ  ﾝ"_sjis},
    {"ヴ ヵ ヶ"_sjis, "ｳﾞ ｶ  ｹ"_sjis},
};

// The single bytes 0x20 to 0x7E and 0xA0 to 0xDF, sixteen to a line.
inline constexpr WidthList kToFull[] = {
    {R"(SP ! " # $ % & ' ( ) * + , - . /)"_sjis,
     R"(　 ！ ” ＃ ＄ ％ ＆ ’ （ ） ＊ ＋ ， － ． ／)"_sjis},
    {R"(0 1 2 3 4 5 6 7 8 9 : ; < = > ?)"_sjis,
     R"(０ １ ２ ３ ４ ５ ６ ７ ８ ９ ： ； ＜ ＝ ＞ ？)"_sjis},
    {R"(@ A B C D E F G H I J K L M N O)"_sjis,
     R"(＠ Ａ Ｂ Ｃ Ｄ Ｅ Ｆ Ｇ Ｈ Ｉ Ｊ Ｋ Ｌ Ｍ Ｎ Ｏ)"_sjis},
    {R"(P Q R S T U V W X Y Z [ \ ] ^ _)"_sjis,
     R"(Ｐ Ｑ Ｒ Ｓ Ｔ Ｕ Ｖ Ｗ Ｘ Ｙ Ｚ ［ ￥ ］ ＾ ＿)"_sjis},
    {R"(` a b c d e f g h i j k l m n o)"_sjis,
     R"(‘ ａ ｂ ｃ ｄ ｅ ｆ ｇ ｈ ｉ ｊ ｋ ｌ ｍ ｎ ｏ)"_sjis},
    {R"(p q r s t u v w x y z { | } ~)"_sjis,
     R"(ｐ ｑ ｒ ｓ ｔ ｕ ｖ ｗ ｘ ｙ ｚ ｛ ｜ ｝ ￣)"_sjis},
    {R"(NB ｡ ｢ ｣ ､ ･ ｦ ｧ ｨ ｩ ｪ ｫ ｬ ｭ ｮ ｯ)"_sjis,
     R"(　 。 「 」 、 ・ ヲ ァ ィ ゥ ェ ォ ャ ュ ョ ッ)"_sjis},
    {R"(ｰ ｱ ｲ ｳ ｴ ｵ ｶ ｷ ｸ ｹ ｺ ｻ ｼ ｽ ｾ ｿ)"_sjis,
     R"(ー ア イ ウ エ オ カ キ ク ケ コ サ シ ス セ ソ)"_sjis},
    {R"(ﾀ ﾁ ﾂ ﾃ ﾄ ﾅ ﾆ ﾇ ﾈ ﾉ ﾊ ﾋ ﾌ ﾍ ﾎ ﾏ)"_sjis,
     R"(タ チ ツ テ ト ナ ニ ヌ ネ ノ ハ ヒ フ ヘ ホ マ)"_sjis},
    {R"(ﾐ ﾑ ﾒ ﾓ ﾔ ﾕ ﾖ ﾗ ﾘ ﾙ ﾚ ﾛ ﾜ ﾝ ﾞ ﾟ)"_sjis,
     R"(ミ ム メ モ ヤ ユ ヨ ラ リ ル レ ロ ワ ン ゛ ゜)"_sjis},
};

// The half-width kana that a following mark turns into a voiced or semi-voiced full-width one.
inline constexpr WidthList kVoiced[] = {
    {"ｳ  ｶ  ｷ  ｸ  ｹ  ｺ  ｻ  ｼ  ｽ  ｾ  ｿ"_sjis, "ヴ ガ ギ グ ゲ ゴ ザ ジ ズ ゼ ゾ"_sjis},
    {"ﾀ  ﾁ  ﾂ  ﾃ  ﾄ  ﾊ  ﾋ  ﾌ  ﾍ  ﾎ"_sjis, "ダ ヂ ヅ デ ド バ ビ ブ ベ ボ"_sjis},
};
inline constexpr WidthList kSemiVoiced[] = {
    {"ﾊ  ﾋ  ﾌ  ﾍ  ﾎ"_sjis, "パ ピ プ ペ ポ"_sjis},
};

// What one step of a conversion writes, and what it takes from the text.
struct Form {
  char bytes[2];
  std::uint8_t size;   // bytes that count, 1 or 2
  std::uint8_t taken;  // bytes of the text that it stands for
};

constexpr std::size_t index_of(char byte) { return static_cast<unsigned char>(byte); }

namespace width_detail {

// Takes the next character (or two, for a kana with its mark) off the front of a list.
constexpr std::string_view take(std::string_view& list) {
  std::size_t size = 0;
  while (size < list.size() && list[size] != ' ') ++size;
  const std::string_view word = list.substr(0, size);
  list.remove_prefix(size);
  while (!list.empty() && list[0] == ' ') list.remove_prefix(1);
  if (word == "SP") return " ";
  if (word == "NB") return "\xA0";
  if (word.empty() || word.size() > 2) throw "a word of one or two bytes is expected";
  return word;
}

// Calls put(from, to) for each character of the lists, which must be in code order.
template <std::size_t kLists>
constexpr void for_each(const WidthList (&lists)[kLists], auto put) {
  std::string_view last;
  for (const WidthList& list : lists) {
    std::string_view from = list.from;
    std::string_view to = list.to;
    while (!from.empty()) {
      const std::string_view character = take(from);
      if (!(last < character)) throw "the list is not in code order";
      put(character, take(to));
      last = character;
    }
    if (!to.empty()) throw "the two sides of a list differ in their number of characters";
  }
}

constexpr Form form(std::string_view bytes, std::size_t taken) {
  return {{bytes[0], bytes.size() == 2 ? bytes[1] : '\0'},
          static_cast<std::uint8_t>(bytes.size()),
          static_cast<std::uint8_t>(taken)};
}

}  // namespace width_detail

// Half-width forms of the pairs of rows 1, 3 and 5 (lead bytes 0x81 to 0x83, second bytes below
// 0x9F), by half_index; the other entries are the pairs themselves.
constexpr bool may_have_half_form(unsigned char lead, unsigned char trail) {
  return lead >= 0x81 && lead <= 0x83 && trail >= 0x40 && trail <= 0x9E;
}

constexpr std::size_t half_index(unsigned char lead, unsigned char trail) {
  return std::size_t{lead & 3u} << 8 | trail;
}

consteval auto make_half_forms() {
  std::array<Form, 4 * 256> forms{};
  for (unsigned lead = 0x80; lead <= 0x83; ++lead) {
    for (unsigned trail = 0; trail < 256; ++trail) {
      const char pair[] = {static_cast<char>(lead), static_cast<char>(trail)};
      forms[half_index(static_cast<unsigned char>(lead), static_cast<unsigned char>(trail))] =
          width_detail::form({pair, 2}, 2);
    }
  }
  const auto put = [&](std::string_view from, std::string_view to) {
    const auto lead = static_cast<unsigned char>(from[0]);
    const auto trail = static_cast<unsigned char>(from[1]);
    if (!may_have_half_form(lead, trail)) throw "the list holds a pair outside rows 1, 3 and 5";
    forms[half_index(lead, trail)] = width_detail::form(to, 2);
  };
  width_detail::for_each(kSymbolsToHalf, put);
  width_detail::for_each(kLettersToHalf, put);
  width_detail::for_each(kKatakanaToHalf, put);
  return forms;
}

inline constexpr auto kHalfForms = make_half_forms();

// Full-width forms of the single bytes, by what follows: kPlain, or one of the two marks. A byte
// that has a full-width form takes the mark along, combined with it or not; one that has none
// leaves the mark to itself.
enum Mark : std::uint8_t { kPlain, kVoicedMark, kSemiVoicedMark };

consteval auto make_full_forms() {
  std::array<std::array<Form, 256>, 3> forms{};
  for (std::size_t byte = 0; byte < 256; ++byte) {
    const char text[] = {static_cast<char>(byte)};
    for (auto& row : forms) row[byte] = width_detail::form({text, 1}, 1);
  }
  const auto put = [&](std::string_view from, std::string_view to) {
    for (std::size_t mark = kPlain; mark <= kSemiVoicedMark; ++mark) {
      forms[mark][index_of(from[0])] = width_detail::form(to, mark == kPlain ? 1 : 2);
    }
  };
  const auto put_marked = [&](Mark mark) {
    return [&, mark](std::string_view from, std::string_view to) {
      forms[mark][index_of(from[0])] = width_detail::form(to, 2);
    };
  };
  width_detail::for_each(kToFull, put);
  width_detail::for_each(kVoiced, put_marked(kVoicedMark));
  width_detail::for_each(kSemiVoiced, put_marked(kSemiVoicedMark));
  return forms;
}

inline constexpr auto kFullForms = make_full_forms();

// The mark that a byte is, for the byte after the one to convert.
consteval auto make_marks() {
  std::array<Mark, 256> marks{};
  marks[index_of("ﾞ"_sjis[0])] = kVoicedMark;
  marks[index_of("ﾟ"_sjis[0])] = kSemiVoicedMark;
  return marks;
}

inline constexpr auto kMarks = make_marks();

}  // namespace tq::textutil
