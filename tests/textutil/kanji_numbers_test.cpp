// Kanji numbers in addresses: the known addresses, and the rewriting against the plain reference.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/sjis_literal.h"
#include "textutil/call.h"
#include "textutil/reference.h"
#include "textutil/texts.h"
#include "tqutil/textutil.h"

namespace {

using namespace tq::test;
using namespace tq::literals;

TEST(KanjiNumbers, KnownAddresses) {
  const KnownText texts[] = {
      {"block, lot and number", "二丁目三番四号"_sjis, "２丁目３番４号"_sjis},
      {"numerals in names stay", "千代田区一ツ橋"_sjis, "千代田区一ツ橋"_sjis},
      {"tens, hundreds, thousands", "三十五階百二十号千二百番"_sjis,
       "３５階１２０号１２００番"_sjis},
      {"a unit alone is one of it", "十条百番千号"_sjis, "１０条１００番１０００号"_sjis},
      {"places in a row", "一二三号一〇五号"_sjis, "１２３号１０５号"_sjis},
      {"a digit behind a completed number begins another", "二十三四号"_sjis, "２３４号"_sjis},
      {"so does a unit that is taken", "十二十号"_sjis, "１２１０号"_sjis},
      {"places in a row before a unit", "一二百号"_sjis, "２１０号"_sjis},
      {"a space ends a number and goes", "一 丁目二　三"_sjis, "１丁目２３"_sjis},
      {"spaces go everywhere", "東京 都　港区"_sjis, "東京都港区"_sjis},
      {"a lone zero prints nothing", "〇号零番"_sjis, "号番"_sjis},
      {"leading zeros print nothing", "〇〇七号"_sjis, "７号"_sjis},
      {"the second forms", "壱丁目弐番参号"_sjis, "１丁目２番３号"_sjis},
      {"the end of the text counts", "三田四"_sjis, "三田４"_sjis},
      {"half-width followers", "五F六-七/八(九,〇ﾉ"_sjis, "５F６-７/８(９,ﾉ"_sjis},
      {"full-width followers", "五Ｆ六－七／八（九、一，二・三の"_sjis,
       "５Ｆ６－７／８（９、１，２・３の"_sjis},
      {"a name after a completed number keeps its kanji behind the digits", "二十三四代"_sjis,
       "２３二十三四代"_sjis},
      {"the same for a unit", "千千代"_sjis, "１０００千千代"_sjis},
      {"31 places, then the first digits are lost",
       "九八一一一一一一一一一一一一一一一一一一一一一一一一一一一一一一号"_sjis,
       "８１１１１１１１１１１１１１１１１１１１１１１１１１１１１１１号"_sjis},
      {"a stray lead byte is another character", "\x88\xEA\x82", "\x88\xEA\x82"},
      {"a digit stands before the byte that follows it", "三\u0080四"_sjis, "三\u0080４"_sjis},
  };
  EXPECT_EQ(known_text_faults(tqAddressStrKan2Nrm, texts), "");
}

std::string address(Texts& texts, std::size_t size) {
  static constexpr std::string_view kCharacters =
      "〇零一壱二弐三参四五六七八九十百千十百千条区丁番号階ＦのノッＡ－／、，・（　亜千"_sjis;
  std::string text;
  while (text.size() + 2 <= size) {
    if (texts.below(12) == 0) {
      text += "F -/,(\xC9\xA5\x82x"[texts.below(10)];
    } else {
      text += kCharacters.substr(texts.below(kCharacters.size() / 2) * 2, 2);
    }
  }
  return text;
}

TEST(KanjiNumbers, AgreesWithTheReference) {
  Texts texts(1);
  for (int round = 0; round < 6000; ++round) {
    const std::string text =
        round % 2 == 0 ? address(texts, texts.below(60)) : texts.next(texts.below(60));
    EXPECT_EQ(conversion_fault(tqAddressStrKan2Nrm, text, reference_address(text)), "");
    if (HasFailure()) return;
  }
  for (int round = 0; round < 40; ++round) {
    const std::string text = address(texts, 600 + texts.below(9000));
    EXPECT_EQ(conversion_fault(tqAddressStrKan2Nrm, text, reference_address(text)), "");
  }
}

TEST(KanjiNumbers, TheResultIsAtMostFiveTimesAsLong) {
  std::string worst;
  while (worst.size() < 10000) worst += "千"_sjis;
  worst += "代"_sjis;
  const std::string want = reference_address(worst);
  EXPECT_EQ(want.size(), 5 * (worst.size() - 2) - 8 + 2) << "the last number is not written";
  EXPECT_EQ(conversion_fault(tqAddressStrKan2Nrm, worst, want), "");
}

}  // namespace
