// Half width, full width, and what is taken out of a text: the known cases, and the fast code
// against the plain reference on texts of every length, well-formed and not.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <thread>

#include "base/sjis_literal.h"
#include "textutil/call.h"
#include "textutil/reference.h"
#include "textutil/texts.h"
#include "textutil/width_rules.h"
#include "tqutil/textutil.h"

namespace {

using namespace tq::test;
using namespace tq::literals;

TEST(ToHalf, KnownTexts) {
  const KnownText texts[] = {
      {"voiced kana become kana and mark", "ガッコウ"_sjis, "ｶﾞｯｺｳ"_sjis},
      {"semi-voiced ones too", "パピプ"_sjis, "ﾊﾟﾋﾟﾌﾟ"_sjis},
      {"hiragana and kanji stay", "あいう東京"_sjis, "あいう東京"_sjis},
      {"brackets and letters", "『Ａ』"_sjis, "｢A｣"_sjis},
      {"letters without a half-width form take the nearest", "ヮヰヱヵヶヴ"_sjis, "ﾜｨｴｶｹｳﾞ"_sjis},
      {"symbols without one stay", "〇々〆～＼§"_sjis, "〇々〆～＼§"_sjis},
      {"several symbols share a form", "〔［【《〈‘´"_sjis, "[[[<<''"_sjis},
      {"second byte 5C is no backslash", "表ソ￥"_sjis, "表ｿ\\"_sjis},
      {"second byte 82 is no lead byte", "\x88\x82\x4F\x82\x4F", "\x88\x82\x4F\x30"},
      {"a lead byte at the end", "\x82\x4F\x82", "0\x82"},
      {"a lead byte before a byte that cannot follow", "\x82 \x82\x7F\x82\x4F",
       "\x82 \x82\x7F\x30"},
      {"bytes that are no characters", "\x80\xA0\xFD\xFE\xFF\x01", "\x80\xA0\xFD\xFE\xFF\x01"},
      {"codes of the rows between that hold nothing", "\x81\xAC\x82\x40\x83\x97",
       "\x81\xAC\x82\x40\x83\x97"},
  };
  EXPECT_EQ(known_text_faults(tqStrToHan, texts), "");
}

TEST(ToFull, KnownTexts) {
  const KnownText texts[] = {
      {"a mark joins its kana", "ｶﾞｯｺｳﾊﾟｳﾞ"_sjis, "ガッコウパヴ"_sjis},
      {"a mark that its kana cannot take is dropped", "ｱﾞｶﾟAﾞ ﾞ"_sjis, "アカＡ　"_sjis},
      {"a mark alone stands for itself", "ﾞﾟ"_sjis, "゛"_sjis},
      {"the second of two marks has no kana left", "ｶﾞﾞｱ"_sjis, "ガ゛ア"_sjis},
      {"three marks: the third goes with the second", "ﾊﾟﾟﾟ"_sjis, "パ゜"_sjis},
      {"a mark behind what has no full-width form stays", "\tﾞ東ﾞ\u0080ﾟ"_sjis,
       "\t゛東゛\u0080゜"_sjis},
      {"backslash, quotes and tilde", R"(\"'`~-)"_sjis, "￥”’‘￣－"_sjis},
      {"0xA0 is a space, with a mark too", "\xA0\xA0\xDE", "\x81\x40\x81\x40"},
      {"controls and unused bytes stay", "\x01\x1F\x7F\x80\xFD\xFF", "\x01\x1F\x7F\x80\xFD\xFF"},
      {"a lead byte at the end", "A\x82", "\x82\x60\x82"},
      {"the byte behind a stray lead byte stands for itself", "\x82 \x82\x31\xDE\x82\x09",
       "\x82\x81\x40\x82\x82\x50\x82\x09"},
      {"a mark may be a second byte", "\x88\xDE\xDE", "\x88\xDE\x81\x4A"},
  };
  EXPECT_EQ(known_text_faults(tqStrToZen, texts), "");
}

TEST(Removal, KnownTexts) {
  const KnownText texts[] = {
      {"both spaces", "山田　太郎 様"_sjis, "山田太郎様"_sjis},
      {"no half characters", "\x81 \x81\x40\x88\x81\x40\x81", "\x81\x88\x81\x40\x81"},
  };
  EXPECT_EQ(known_text_faults(tqStrDelSpace, texts), "");
  struct Bytes {
    const char *unwanted, *text, *want;
  };
  const Bytes bytes[] = {
      {"-() ", "(03) 1234-5678-", "0312345678"},
      {"", "a-b", "a-b"},
      {nullptr, "a-b", "a-b"},
      {"-", "", ""},
      {"\\", "表\\示"_sjis, "\x95\x8E\xA6"},  // by bytes: the first character ends in a backslash
  };
  for (const Bytes& c : bytes) {
    const auto without = [&](const char* src, char* dst) {
      return tqStrDelAnyTok(c.unwanted, src, dst);
    };
    EXPECT_EQ(conversion_fault(without, c.text, c.want), "");
  }
  char text[] = "-a-b-";
  EXPECT_EQ(tqStrDelAnyTok(text, text, text), 0) << "the text's own bytes are the unwanted ones";
}

TEST(Width, NullIsAnEmptyText) {
  char dst[] = "x";
  EXPECT_EQ(tqStrToHan(nullptr, dst), 0);
  EXPECT_STREQ(dst, "");
  EXPECT_EQ(tqStrToZen(nullptr, nullptr), 0);
  EXPECT_EQ(tqStrDelAnyTok("x", nullptr, dst), 0);
}

struct Function {
  const char* name;
  Conversion convert;
  std::string (*reference)(std::string_view text);
};

// The ways that the machine has no use for, too.
using tq::textutil::ByRule;
using tq::textutil::rewrite;
const Function kFunctions[] = {
    {"half", tqStrToHan, reference_half},
    {"half, by its rule", rewrite<ByRule<tq::textutil::ToHalf>>, reference_half},
    {"full", tqStrToZen, reference_full},
    {"full, by its rule", rewrite<ByRule<tq::textutil::ToFull>>, reference_full},
    {"spaces", tqStrDelSpace, reference_without_spaces}};

// The blocks agree with the loop over characters.
void expect_agreement(const std::string& text) {
  for (const Function& function : kFunctions) {
    EXPECT_EQ(conversion_fault(function.convert, text, function.reference(text)), "")
        << function.name;
  }
}

TEST(Width, AgreesWithTheReferenceAtEveryLength) {
  Texts texts(1);
  for (std::size_t round = 0; round < 3000; ++round) expect_agreement(texts.next(round / 10));
  for (int round = 0; round < 60; ++round) expect_agreement(texts.next(3900 + texts.below(9000)));
}

// One character walks through the places where blocks, pieces and the rest of a text meet.
TEST(Width, ACharacterOnABoundaryIsSeenWhole) {
  for (const std::string_view character :
       {"ガ"_sjis, "　"_sjis, "ｶﾞ"_sjis, " ", "\x82", "\x88\x82", "ｱﾞﾞ"_sjis}) {
    for (const std::string_view filler : {std::string_view("亜"_sjis), std::string_view("\x01")}) {
      for (const std::size_t total : {std::size_t{130}, std::size_t{200}, std::size_t{4300}}) {
        for (std::size_t at = total > 4000 ? 4000 : 0; at + 80 < total; ++at) {
          std::string text(at % filler.size(), '\x01');
          while (text.size() < at) text += filler;
          text += character;
          while (text.size() + filler.size() < total) text += filler;
          for (const Function& function : kFunctions) {
            std::string out(2 * text.size() + 1, '\0');
            const auto size = function.convert(text.c_str(), out.data());
            ASSERT_EQ(hex(out.substr(0, static_cast<std::size_t>(size))),
                      hex(function.reference(text)))
                << function.name << " at " << at << " of " << total;
          }
        }
      }
    }
  }
}

TEST(Width, PropertiesOfAnyText) {
  Texts texts(3);
  for (int round = 0; round < 3000; ++round) {
    const std::string text = texts.next(texts.below(120));
    const std::string half = reference_half(text);
    const std::string full = reference_full(text);
    char again[600];
    SCOPED_TRACE(hex(text));
    EXPECT_LE(half.size(), text.size());
    EXPECT_LE(full.size(), 2 * text.size());
    tqStrToHan(half.c_str(), again);
    EXPECT_EQ(hex(again), hex(half)) << "half width has no further half width";
    tqStrDelSpace(text.c_str(), again);
    EXPECT_EQ(std::string(again).find(' '), std::string::npos);
    EXPECT_EQ(reference_without_spaces(again), again);
  }
}

// Full width twice is full width once where no stray lead byte can take up what became a pair.
TEST(Width, FullWidthOfWellFormedTextIsFinal) {
  for (int byte = 1; byte < 256; ++byte) {
    if (tq::sjis::is_lead(static_cast<char>(byte))) continue;
    for (const std::string_view mark : {"", "ﾞ"_sjis, "ﾟ"_sjis, "ﾞﾟ"_sjis}) {
      const std::string full =
          reference_full(std::string(1, static_cast<char>(byte)) + std::string(mark));
      EXPECT_EQ(conversion_fault(tqStrToZen, full, full), "");
    }
  }
}

TEST(Width, TwoThreadsConvertAtOnce) {
  Texts texts(4);
  const std::string text = texts.next(5000);
  const std::string half = reference_half(text);
  const std::string full = reference_full(text);
  const auto work = [&text](const Conversion& convert, const std::string& want) {
    for (int round = 0; round < 200; ++round) {
      std::string out(2 * text.size() + 1, '\0');
      out.resize(static_cast<std::size_t>(convert(text.c_str(), out.data())));
      if (out != want) return ADD_FAILURE() << "the other thread's text came through";
    }
  };
  std::thread other([&] { work(tqStrToHan, half); });
  work(tqStrToZen, full);
  other.join();
}

}  // namespace
