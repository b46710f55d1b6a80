// What tqsync takes for the same name, number or person, and the plan that follows from it.
#include <sstream>
#include <utility>

#include "engine/match.h"
#include "engine/normalize.h"
#include "engine/people.h"
#include "engine/plan.h"
#include "failure.h"
#include "files/address_file.h"
#include "library/layout.h"
#include "support/test.h"

namespace tqsync {
namespace {

TEST(Normalize, NamesThatAreTheSame) {
  const std::tuple<const char*, std::string, std::string, bool, bool> rows[] = {
      {"spaces of any kind", "山田 太郎", "山田　太郎", true, true},
      {"a title behind the name", "山田太郎様", "山田太郎", true, true},
      {"half-width kana, marks joined", "ﾊﾟﾝ ｶﾞ", "パンガ", true, true},
      {"kana and a combining mark", "か\u3099", "が", true, true},
      {"full-width letters and case", "ＡＢＣ商事", "abc商事", true, true},
      {"Latin words in another order", "Yamada, Taro", "taro yamada", true, true},
      {"kana words keep their order", "ジョン・スミス", "スミス ジョン", false, false},
      {"old and new kanji", "髙橋 齋藤", "高橋斉藤", false, true},
      {"the 﨑 of the vendors", "山\uFA11", "山崎", false, true},
      {"a kanji that Shift-JIS does not have", "𠮷田", "吉田", false, true},
      {"variants of 辺", "渡邉", "渡邊", false, true},
      {"names that only look alike", "坂本", "阪本", false, false},
      {"hiragana is another spelling", "さくら", "サクラ", false, false},
  };
  for (const auto& [why, first, second, same_key, same_common] : rows) {
    SCOPED_TRACE(why);
    const std::string a = name_key(first), b = name_key(second);
    EXPECT_EQ(a == b, same_key) << a << " " << b;
    EXPECT_EQ(common_spelling(a) == common_spelling(b), same_common);
    EXPECT_EQ(name_key(a), a) << "a key is its own key";
  }
  EXPECT_EQ(name_key(" 　"), "");
  EXPECT_EQ(name_key("様"), "様");
  EXPECT_EQ(reading_key("しょうじ　ﾔﾏﾓﾄ"), reading_key("シヨウジやまもと"));
}

TEST(Normalize, Telephones) {
  const std::tuple<const char*, std::string, std::string> rows[] = {
      {"hyphens", "03-0123-4567", "0301234567 "},
      {"full width, brackets, a long vowel", "０３（０１２３）４５ー６７", "0301234567 "},
      {"country code", "+81 90-0123-4567", "09001234567 "},
      {"country code with the 0 in brackets", "+81(0)3-0123-4567", "0301234567 "},
      {"dialled from Japan", "010-81-3-0123-4567", "0301234567 "},
      {"another country", "+1 (555) 010-0199", "+15550100199 "},
      {"a spreadsheet ate the 0", "9001234567", "09001234567 "},
      {"extension", "03-0123-4567 内線12", "0301234567 "},
      {"one of two in a cell twice", "03-0123-4567、090-0123-4567/0301234567",
       "0301234567 09001234567 "},
      {"no area code", "0123-4567", ""},
      {"fillers", "000-0000-0000, 0999999999", ""},
      {"too long, too short, no digits", "030123456789012, 110, なし", ""},
      {"a bare country code", "+81", ""},
  };
  for (const auto& [why, cell, keys] : rows) {
    std::string found;
    for (const std::string& key : phone_keys(cell)) found += key + " ";
    EXPECT_EQ(found, keys) << why;
  }
}

TEST(Normalize, Mails) {
  EXPECT_EQ(mail_keys("Taro <Taro.Y@Example.JP>; ｊｉｒｏ＠example.com"),
            (Texts{"jiro@example.com", "taro.y@example.jp"}));
  EXPECT_EQ(mail_keys("mailto:a@b,a@b"), Texts{"a@b"});
  EXPECT_EQ(mail_keys("@b a@ a@@b a@b@c none"), Texts{});
}

TEST(Normalize, Addresses) {
  const std::tuple<const char*, std::string, std::string, bool> rows[] = {
      {"numbers and words", "東京都千代田区緑町一丁目二番三号", "東京都千代田区緑町1-2-3", true},
      {"width, spaces, dashes", "大阪市北区中央　１－２ー３", "大阪市北区中央1−2‐3", true},
      {"with and without prefecture", "京都府京都市左京区東町7-8", "京都市左京区東町７の８", true},
      {"a prefecture of four kanji", "神奈川県横浜市中区港町3", "横浜市中区港町三番地", true},
      {"old kanji", "東京都澁谷區櫻丘町1", "東京都澁谷區桜丘町1", true},
      {"numbers in names stay", "仙台市青葉区一番町2-3", "仙台市青葉区二番町2-3", false},
      {"another number", "緑町1-2-3", "緑町1-23", false},
      {"another town", "北海道札幌市南町1", "北海道札幌市北町1", false},
      {"a city that looks like a prefecture", "太宰府市緑町1", "市緑町1", false},
  };
  for (const auto& [why, first, second, same] : rows) {
    SCOPED_TRACE(why);
    const std::string a = address_key(first), b = address_key(second);
    EXPECT_FALSE(a.empty());
    EXPECT_EQ(a == b, same) << a << " " << b;
  }
  EXPECT_EQ(address_key("東京都千代田区"), "") << "many live there";
  EXPECT_EQ(address_key(""), "");
}

// A file from its text, and its people.
AddressFile file_of(const std::string& text) {
  return parse_address_file("x.csv", text, Encoding::kDetect);
}
Book book_of(const std::string& rows) {
  AddressFile file = file_of("氏名,ふりがな,電話番号,メールアドレス,住所\n" + rows);
  return people_of(file, find_layout(file, 0));
}

TEST(People, AreReadByTheHeadings) {
  AddressFile file = file_of(
      "Last Name,First Name,せい,めい,携帯 電話,FAX,E-mail Address,Ｅメール,会社名\n"
      "髙橋,一郎,たかはし,いちろう,090-0123-4567,03-0000-1111,A@example.jp,b@example.jp,X\n"
      ",,,,,,,,見本商事\n"
      ",,,,,03-0000-1111,,,\n"
      ",,,,,03-0000-1111,,,\n");
  const Book people = people_of(file, find_layout(file, 0));
  ASSERT_EQ(people.size(), 4u);
  EXPECT_EQ(people[0].name, "髙橋 一郎");
  EXPECT_EQ(people[0].common_key, "高橋一郎");
  EXPECT_EQ(people[0].reading, "タカハシイチロウ");
  EXPECT_EQ(people[0].phones, Texts{"09001234567"}) << "fax numbers say nothing about a person";
  EXPECT_EQ(people[0].mails, (Texts{"a@example.jp", "b@example.jp"}));
  EXPECT_EQ(people[1].name, "見本商事");
  EXPECT_FALSE(people[2].comparable());
  EXPECT_EQ(people[3].copy_of, 2u);
  ASSERT_EQ(file.warnings.size(), 2u);
  EXPECT_TRUE(file.warnings[0].starts_with("x.csv, line 4: ")) << file.warnings[0];

  AddressFile headless = file_of("山田太郎,090-0123-4567\n田中,x\n");
  EXPECT_THROW(find_layout(headless, 0), Failure);
}

TEST(Match, ScoresAddUpFromTheSigns) {
  const std::tuple<const char*, std::string, std::string, int, std::string> rows[] = {
      {"name and address", "山田,,,,東京都緑町1-2", "山田,,,,緑町一丁目2番", 80, "name, address"},
      {"a household", "山田花子,,0301234567,a@b,緑町1", "山田太郎,,0301234567,a@b,緑町1", 74,
       "telephone, mail, address"},
      {"a name alone is weak", "山田,,,", "山田,,,", 50, "name"},
      {"name and telephone", "髙田,,0301234567,", "高田,,03-0123-4567,", 75,
       "name in other kanji, telephone"},
      {"at most 100", "山田,,0301234567,a@b", "山田,,0301234567,a@b", 100, "name, telephone, mail"},
      {"a reading counts where names differ", "山田,やまだ,,", "矢真田,ヤマダ,,", 20, "reading"},
      {"a name in kana is its reading", "山田,やまだ,,a@b", "ﾔﾏﾀﾞ,,,A@b", 55, "reading, mail"},
      {"a family's telephone", "山田太郎,,0301234567,", "山田花子,,0301234567,", 30, "telephone"},
      {"nothing in common, nothing there", ",,,", ",,0301234567,", 0, ""},
  };
  for (const auto& [why, first, second, score, reason] : rows) {
    SCOPED_TRACE(why);
    const Book people = book_of(first + "\n" + second + "\n");
    const Book parts = people.size() == 2 ? people : Book{Person{}, people.at(0)};
    const Likeness likeness = compare(parts[0], parts[1]);
    EXPECT_EQ(likeness.score, score);
    EXPECT_EQ(reason_text(likeness.signs), reason);
    EXPECT_EQ(compare(parts[1], parts[0]).score, score);
  }
}

// The pairs of a book as "master-record verdict", for reading in a test.
std::string pairs_text(const Plan& plan, std::size_t book) {
  std::string text;
  for (const Pair& pair : plan.books[book].pairs) {
    const char* verdicts[] = {"link", "open", "new"};
    text += std::to_string(pair.master) + "-" + std::to_string(pair.record) + " " +
            verdicts[static_cast<int>(pair.verdict)] + "; ";
  }
  return text;
}

// A book in short: names, each followed by what else is known: r a reading, t and u two telephone
// numbers, m, x and c three mail addresses.
Book known(const std::string& words) {
  const std::pair<char, const char*> signs[] = {
      {',', ""}, {'r', "やまだ"}, {',', ""},     {'t', "0301234567"}, {'u', "0309876543"},
      {',', ""}, {'m', "a@b "},   {'x', "x@y "}, {'c', "c@d "}};
  std::istringstream in(words);
  std::string rows;
  for (std::string word; in >> word; rows += "\n") {
    rows += word.substr(0, word.find_first_of("rtumxc"));
    for (const auto& [sign, cell] : signs) {
      if (sign == ',') rows += sign;
      if (word.find(sign) != std::string::npos) rows += cell;
    }
  }
  return book_of(rows);
}

// The pairs of a partner and the master records that it misses.
std::string plan_text(const Plan& plan, std::size_t book) {
  std::string text = pairs_text(plan, book) + "missing";
  for (const std::uint32_t record : plan.books[book].missing) text += " " + std::to_string(record);
  return text;
}

TEST(Plan, DecidesWhatIsCertainAndLeavesTheRest) {
  const std::tuple<const char*, std::string, std::string, std::string> rows[] = {
      {"all three", "山田t 田中 森", "山田t 田中x 林", "0-0 link; 1-1 open; 3-2 new; missing 2"},
      {"linked once, to the best", "山田t 山田tm", "山田tm", "1-0 link; 0-0 open; missing"},
      {"of equal ones to the first", "山田tx 山田t", "山田t", "0-0 link; 1-0 open; missing"},
      {"two behind one master record", "山田tm", "山田t 山田m", "0-0 link; 0-1 link; missing"},
      {"no question about a family", "太郎t", "太郎t 花子t", "0-0 link; 1-1 new; missing"},
      {"one about the same name", "鈴木t", "鈴木t 鈴木x", "0-0 link; 0-1 open; missing"},
      {"namesakes, both linked", "鈴木t 鈴木u", "鈴木u 鈴木t", "1-0 link; 0-1 link; missing"},
      {"copies take no part", "山田m 山田m", "山田m 山田m", "0-0 link; missing"},
      {"twice and new is new once", "森", "山田t 山田tm", "1-0 new; 1-1 link; missing 0"},
      {"a repeating record is there", "山田tm 山田t", "山田m", "0-0 link; 1-0 open; missing"},
      {"one about a copy of the linked", "山田m", "山田rtmc 矢真田rtc",
       "0-0 link; 0-1 open; missing"},
  };
  for (const auto& [why, master, partner, text] : rows) {
    SCOPED_TRACE(why);
    const Book books[] = {known(master), known(partner)};
    EXPECT_EQ(plan_text(make_plan(books), 1), text);
  }
}

TEST(Plan, APersonWhomTwoPartnersKnowIsNewOnce) {
  const Book books[] = {known("森"), known("山田t"), known("林 山田t")};
  const Plan plan = make_plan(books);
  EXPECT_EQ(plan_text(plan, 1), "1-0 new; missing 0 2") << "what is new in the other one, too";
  EXPECT_EQ(plan_text(plan, 2), "2-0 new; 1-1 link; missing 0");
}

TEST(Plan, WhatManyShareOnlyConfirms) {
  std::string office;
  for (std::size_t i = 0; i <= Finder::kCommon; ++i) {
    office += "社員" + std::to_string(i) + "t ";
  }
  const Book books[] = {known(office), known("社員7t 客t")};
  const Plan plan = make_plan(books);
  EXPECT_EQ(pairs_text(plan, 1), "7-0 link; " + std::to_string(Finder::kCommon + 1) + "-1 new; ");
  ASSERT_EQ(plan.common_keys.size(), 1u);
  EXPECT_EQ(plan.common_keys[0].key, "0301234567");
  EXPECT_EQ(plan.common_keys[0].holders, Finder::kCommon + 1);
}

}  // namespace
}  // namespace tqsync
