// Dates in any form: the known texts, and reading and printing against the C library's way.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <map>
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

TEST(DateText, ReadInAnyForm) {
  struct Case {
    const char* why;
    const char* text;
    short era_out, want, year, month, day;
  };
  const Case cases[] = {
      {"full-width era letter", "Ｈ１５．４．１"_sjis, 0, 0, 2003, 4, 1},
      {"era name and words", "昭和50年1月2日"_sjis, 0, 0, 1975, 1, 2},
      {"half of the era's name", "昭50/1/2"_sjis, 0, 0, 1975, 1, 2},
      {"lower case", "m45-7-30", 0, 0, 1912, 7, 30},
      {"Taisho", "大正1.7.30"_sjis, 0, 0, 1912, 7, 30},
      {"Western, said and not said", "西暦2003年4月1日"_sjis, 0, 0, 2003, 4, 1},
      {"in another era", "2003/4/1", 4, 0, 15, 4, 1},
      {"from era to era", "昭和64年1月7日"_sjis, 4, 0, 1, 1, 7},
      {"an era asked for that does not exist", "2003/4/1", 5, 0, 2003, 4, 1},
      {"anything between the numbers", "生年月日 1975 -- 1 / 2 頃"_sjis, 0, 0, 1975, 1, 2},
      {"a second era mark is only a separator", "S50H1T2", 0, 0, 1975, 1, 2},
      {"months and days are not checked", "1/13/0", 0, 0, 1, 13, 0},
      {"numbers keep 16 bits", "65537/32768/5", 0, 0, 1, -32768, 5},
      {"digits only", "20030401", 0, 1, 0, 0, 0},
      {"full-width digits only", "２００３"_sjis, 0, 1, 0, 0, 0},
      {"digits only, but of an era", "H150401", 0, -1, 0, 0, 0},
      {"digits only behind a Western mark", "西暦20030401"_sjis, 0, -1, 0, 0, 0},
      {"digits only behind a space", " 20030401", 0, -1, 0, 0, 0},
      {"two numbers", "2003/4", 0, -1, 0, 0, 0},
      {"the month ends the text", "2003/4/", 0, -1, 0, 0, 0},
      {"no number", "abc", 0, -1, 0, 0, 0},
      {"nothing", "", 0, -1, 0, 0, 0},
      {"an era alone", "平成"_sjis, 0, -1, 0, 0, 0},
      {"a stray lead byte goes with the byte behind it",
       "\x82\x31"
       "7/8/9",
       0, 0, 7, 8, 9},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.why);
    short year = 99, month = 99, day = 99;
    EXPECT_EQ(tqDateFormatCnv3(c.text, &year, &month, &day, c.era_out), c.want);
    EXPECT_EQ(year, c.year);
    EXPECT_EQ(month, c.month);
    EXPECT_EQ(day, c.day);
    EXPECT_EQ(tqDateFormatCnv3(c.text, nullptr, nullptr, nullptr, c.era_out), c.want);
  }
}

TEST(DateText, CompactFormIsTakenApartByPosition) {
  struct Case {
    const char* text;
    short want, year, month, day;
  };
  const Case cases[] = {
      {"20030401", 0, 2003, 4, 1}, {"030401", 0, 3, 4, 1},
      {"30401", 0, 3, 4, 1},       {"0401", 1, 0, 0, 0},
      {"020030401", 1, 0, 0, 0},   {"ab0401", 0, 0, 4, 1},
      {"1-2-3", 0, 1, -2, -3},     {"１２３４５"_sjis, 0, 1, 23, 45},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    short year = 99, month = 99, day = 99;
    EXPECT_EQ(tqDateFormatCnv4(c.text, &year, &month, &day), c.want);
    EXPECT_EQ(year, c.year);
    EXPECT_EQ(month, c.month);
    EXPECT_EQ(day, c.day);
  }
}

TEST(DateText, NormalisedForms) {
  struct Case {
    const char* why;
    const char* text;
    short mode, pad, want;
    const char* out;
  };
  const Case cases[] = {
      {"padded", "Ｈ１５．４．１"_sjis, 0, 1, 0, "2003/04/01"},
      {"not padded", "昭和50年1月2日"_sjis, 1, 0, 0, "1975-1-2"},
      {"no separator", "1975/1/2", -1, 1, 0, "19750102"},
      {"compact", "20030401", 2, 0, 0, "2003.4.1"},
      {"two-digit years stay", "030401", 0, 0, 0, "3/4/1"},
      {"unless asked for", "030401", 200, 0, 0, "2003/4/1"},
      {"from 20 on they are of the last century", "20.1.1", 201, 0, 0, "1920/1/1"},
      {"up to 19 of this one", "19.1.1", 299, 0, 0, "2019/1/1"},
      {"three digits are a year", "100.1.1", 205, 1, 0, "100/01/01"},
      {"the next hundred of modes does not expand", "3.4.1", 300, 0, 0, "3/4/1"},
      {"nor does a negative one", "3.4.1", -200, 0, 0, "3/4/1"},
      {"no date", "abc", 0, 1, 1, "abc"},
      {"digits of no length that a date has", "1234", 0, 1, 1, "1234"},
      {"no date, broken text", "\x82", 0, 1, 1, "\x82"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.why);
    char dst[32] = "before";
    EXPECT_EQ(tqDateFormatCnv(c.text, dst, c.mode, c.pad), c.want);
    EXPECT_STREQ(dst, c.out);
    EXPECT_EQ(tqDateFormatCnv(c.text, nullptr, c.mode, c.pad), c.want);
    char text[32];
    std::strcpy(text, c.text);
    EXPECT_EQ(tqDateFormatCnv(text, text, c.mode, c.pad), c.want);
    EXPECT_STREQ(text, c.out) << "over the text";
  }
}

TEST(DateText, PrintingAgreesWithTheCLibrary) {
  const short numbers[] = {-32768, -10, -3, 0, 3, 10, 100, 1975, 32767};
  for (const short year : numbers) {
    for (const short month : numbers) {
      for (short separator = -2; separator <= 6; ++separator) {
        for (short era = -1; era <= 5; ++era) {
          const int offset = std::array{0, 0, 1867, 1911, 1925, 1988, 0}[era + 1u];
          const short pad = era % 2;
          const std::string want = reference_print(year + offset, month, year, separator, pad != 0);
          char dst[21];
          ASSERT_EQ(tqDateFormatCnv2(era, year, month, year, dst, separator, pad),
                    static_cast<std::int32_t>(want.size()));
          ASSERT_STREQ(dst, want.c_str());
        }
      }
    }
  }
}

TEST(DateText, WidthOfWhatDatesAreWrittenWith) {
  const auto narrow = [](const char* src, char* dst) { return tqDateFormatZH(src, dst, 0); };
  const auto widen = [](const char* src, char* dst) { return tqDateFormatZH(src, dst, 1); };
  const std::string full = "０１２３４５６７８９ＭＴＳＨｍｔｓｈ／－・．：；，　"_sjis;
  const std::string half = "0123456789MTSHmtsh/-･.:;, "_sjis;
  const KnownText narrowed[] = {
      {"all of them", full, half},
      {"others stay", "Ａ年ｱA＋"_sjis, "Ａ年ｱA＋"_sjis},
      {"stray lead bytes go with the byte behind them", "1\x82\x09\x32\x82", "12"},
  };
  EXPECT_EQ(known_text_faults(narrow, narrowed), "");
  const KnownText widened[] = {
      {"all of them", half, full},
      {"others stay", "Ａ年ｱAa+"_sjis, "Ａ年ｱAa+"_sjis},
      {"and stray lead bytes", "\x82/\x82", "\x82\x81\x5E\x82"},
  };
  EXPECT_EQ(known_text_faults(widen, widened), "");
}

TEST(DateText, AgreesWithTheReference) {
  Texts texts(1);
  for (int round = 0; round < 6000; ++round) {
    const std::string text = texts.next(texts.below(round % 50 == 0 ? 2100 : 40));
    SCOPED_TRACE(hex(text));
    const auto era = static_cast<short>(texts.below(6));
    const ReferenceDate want = reference_date(text, era);
    short year = 99, month = 99, day = 99;
    EXPECT_EQ(tqDateFormatCnv3(text.c_str(), &year, &month, &day, era), want.form);
    EXPECT_EQ(year, want.year);
    EXPECT_EQ(month, want.month);
    EXPECT_EQ(day, want.day);
    if (HasFailure()) return;
  }
}

TEST(DateText, LongTextsAreCutAtACharacter) {
  const std::string filler(997, ' ');
  const auto narrow = [](const char* src, char* dst) { return tqDateFormatZH(src, dst, 0); };
  for (const auto& [text, kept] : std::map<std::string, std::string>{
           {"123", "123"}, {"1234", "123"}, {"12年"_sjis, "12"}, {"1年"_sjis, "1年"_sjis}}) {
    EXPECT_EQ(conversion_fault(narrow, filler + text, filler + kept), "");
  }
  char dst[1100];
  const std::string no_date = filler + "12年99"_sjis;
  EXPECT_EQ(tqDateFormatCnv(no_date.c_str(), dst, 0, 0), 1);
  EXPECT_EQ(dst, filler + "12");
}

}  // namespace
