// Values as they are shown: joined from their parts, converted, cut, kept.
#include <cstdio>
#include <map>

#include "ctd/record_table.h"
#include "support/own_siblings.h"
#include "support/test.h"
#include "tqutil/syncfld.h"

namespace {

std::string shown(CCtdCtl& ctd, int32_t record, int32_t field) {
  std::string text(TQ_CTD_TEXT_SIZE, 'x');
  if (ctd.GetCtdFldStrS(record, field, text.data()) != 0) return "failed";
  text.resize(text.find('\0'));
  return text;
}

// What is shown for field `id` of a record that has these values, and which fields count as used.
std::string shown(int id, const std::map<int, std::string>& values, std::string* used = nullptr) {
  std::vector<std::pair<int, std::string>> fields = {{id, "shown"}};
  Texts texts = {values.count(id) == 0 ? "" : values.at(id)};
  for (const auto& [other, text] : values) {
    if (other == id) continue;
    fields.emplace_back(other, "");
    texts.push_back(text);
  }
  RecordTable table(fields);
  table.add("001001000000001", "", texts);
  CCtdCtl ctd;
  table.give_to(ctd);
  std::string result = shown(ctd, 0, 0);
  for (std::size_t i = 0; used != nullptr && i < fields.size(); ++i) {
    if (table.value(0, i).used == 1) *used += std::to_string(fields[i].first) + " ";
  }
  return result;
}

TEST(ShownTexts, AreJoinedFromTheirParts) {
  const std::tuple<const char*, std::vector<int>, std::map<int, std::string>, std::string> cases[] =
      {
          {"family and given name", {1, 3}, {{1, "Taro"}, {3, "Yamada"}, {5, "x"}}, "Yamada Taro"},
          {"no blank in front of one part", {1, 3}, {{1, "A"}, {3, ""}}, "A"},
          {"nor behind it", {1, 3}, {{1, ""}, {3, "B"}}, "B"},
          {"the whole name when the parts are empty", {1, 3}, {{1, ""}, {3, ""}, {5, "B"}}, "B"},
          {"the whole name is its own", {5}, {{1, "x"}, {3, "y"}, {5, "B"}}, "B"},
          {"readings", {0, 2}, {{0, "t"}, {2, "y"}, {4, "x"}}, "y t"},
          {"address without its postal code",
           {31, 32, 33, 34, 624},
           {{31, "100"}, {32, "a"}, {33, "b"}, {34, "c"}, {624, "d"}, {35, "x"}},
           "abcd"},
          {"address in lines instead",
           {31, 33},
           {{31, "100"}, {35, "a"}, {36, "b"}, {37, "c"}},
           "abc"},
          {"lines first", {35, 36, 37}, {{32, "x"}, {35, "a"}, {37, "c"}}, "ac"},
          {"parts instead of lines", {35, 37}, {{31, "100"}, {32, "a"}, {624, "d"}}, "ad"},
          {"company",
           {67, 70, 625},
           {{67, "9"}, {68, "a"}, {69, "b"}, {70, "c"}, {625, "d"}},
           "abcd"},
          {"company in lines", {68, 71, 73}, {{71, "a"}, {72, "b"}, {73, "c"}}, "abc"},
          {"other", {57, 626}, {{57, "9"}, {58, "a"}, {59, "b"}, {60, "c"}, {626, "d"}}, "abcd"},
          {"other in lines", {60, 61}, {{61, "a"}, {62, "b"}, {63, "c"}}, "abc"},
          {"telephone", {43, 46, 627}, {{44, "03"}, {45, "12"}, {46, "34"}, {42, "x"}}, "031234"},
          {"whole telephone", {43, 627}, {{42, "03-12-34"}}, "03-12-34"},
          {"home fax", {50, 628}, {{53, "4"}, {628, "5"}}, "45"},
          {"company telephone", {95, 98, 629}, {{95, "1"}, {629, "5"}}, "15"},
          {"company fax", {107, 631}, {{107, "1"}, {110, "4"}}, "14"},
          {"pages", {230, 233, 527, 528}, {{230, "a"}, {527, "c"}, {528, "d"}}, "a,c,d"},
          {"company pages", {231, 236}, {{234, "b"}, {236, "d"}, {230, "x"}}, "b,d"},
          {"school pages", {232, 529, 531}, {{232, "a"}, {531, "d"}}, "a,d"},
          {"mail", {242, 246, 255}, {{242, "a,b"}, {246, "c"}, {255, "d"}, {256, "x"}}, "a,b,c,d"},
          {"company mail", {243, 256, 265}, {{256, "c"}, {265, "d"}, {246, "x"}}, "c,d"},
          {"names of mail", {244, 266, 275}, {{266, "c"}, {275, "d"}}, "c,d"},
          {"names of company mail", {245, 276, 285}, {{276, "c"}, {285, "d"}}, "c,d"},
          {"joint names",
           {286, 299, 351},
           {{286, "a"}, {299, "b"}, {351, "f"}, {287, "x"}},
           "a,b,f"},
          {"last joint column", {298, 363}, {{298, "a"}, {363, "f"}, {364, "x"}}, "a,f"},
          {"no family", {101}, {{101, "a"}, {102, "b"}}, "a"},
          {"nothing", {87}, {}, ""},
      };
  for (const auto& [why, ids, values, text] : cases) {
    SCOPED_TRACE(why);
    for (const int id : ids) EXPECT_EQ(shown(id, values), text) << id;
  }
}

TEST(ShownTexts, UsedFieldsAreMarked) {
  std::string used;
  shown(34, {{31, "100"}, {32, "a"}, {35, "b"}}, &used);
  EXPECT_EQ(used, "34 31 32 ") << "the postal code although its text is not taken, 35 not";
  used.clear();
  shown(1, {{1, ""}, {5, "b"}}, &used);
  EXPECT_EQ(used, "1 5 ") << "an empty text was looked at as well";
}

TEST(ShownTexts, LongTextsAreCut) {
  const std::string x(300, 'x');
  const std::string kanji = std::string(249, 'x') + "表表"_sjis;
  EXPECT_EQ(shown(200, {{200, x}}), x.substr(0, 250) + ".....");
  EXPECT_EQ(shown(197, {{197, kanji}}), kanji.substr(0, 249) + ".....");
  EXPECT_EQ(shown(209, {{209, x.substr(0, 250)}}), x.substr(0, 250));
  EXPECT_EQ(shown(196, {{196, x}}), x);
  EXPECT_EQ(shown(210, {{210, std::string(50000, 'y')}}), std::string(TQ_CTD_TEXT_SIZE - 1, 'y'));
}

TEST(ShownTexts, TheLastOneIsKept) {
  TestHome home;
  RecordTable table({{200, "memo"}, {87, "company"}});
  table.add("001001000000001", "", {std::string(300, 'm'), "old"});
  table.add("001001000000002", "", {"", ""});
  CCtdCtl ctd;
  table.give_to(ctd);
  EXPECT_EQ(shown(ctd, 0, 1), "old");
  table.value(0, 1).text[0] = 'O';
  EXPECT_EQ(shown(ctd, 0, 1), "old") << "not joined again";
  CCtdCtl copy(ctd);
  EXPECT_EQ(shown(copy, 0, 1), "old") << "a copy has its own";
  EXPECT_EQ(shown(ctd, 1, 1), "");
  EXPECT_EQ(shown(ctd, 0, 1), "Old")
      << "a value without text is not kept, but the last one is lost";
  table.value(0, 1).text[0] = 'o';
  table.give_to(ctd);
  EXPECT_EQ(shown(ctd, 0, 1), "old") << "another table forgets";
  EXPECT_EQ(ctd.mGetCtdFldStrSize(0, 0), 300);
  EXPECT_EQ(shown(ctd, 0, 0), std::string(300, 'm')) << "the joined text is shown as it stands";
  EXPECT_EQ(shown(ctd, 0, 1), "old");
  EXPECT_EQ(shown(ctd, 0, 0).size(), 255u);
  EXPECT_EQ(ctd.mGetCtdFldStrSize(1, 0), 0);
  for (const auto& [record, field] : {std::pair(-1, 0), {2, 0}, {0, -1}, {0, 2}}) {
    EXPECT_EQ(shown(ctd, record, field), "failed");
    EXPECT_EQ(ctd.mGetCtdFldStrSize(record, field), -1);
  }
  EXPECT_EQ(ctd.GetCtdFldStrS(0, 0, nullptr), -1);
  ctd.FreeData();
  table.give_to(ctd);
  EXPECT_EQ(shown(ctd, 0, 1), "failed") << "the buffer is gone";
  EXPECT_EQ(ctd.mGetCtdFldStrSize(0, 0), -1);
}

// Converts to "<text:group:data:master>"; leaves "keep" as it is.
short TQ_CALL convert(void*, const char* text, short group, short data, short master, char* out,
                      int32_t size) {
  if (std::string(text) == "keep") return 1;
  std::snprintf(out, static_cast<std::size_t>(size), "<%s:%d:%d:%d>", text, group, data, master);
  return 0;
}

TEST(ShownTexts, AddressFieldsAreConverted) {
  TestHome home;
  OwnSiblings own(nullptr);
  own.adrconv.AdrConvIsConvField = [](void*, short id) { return short{id == 87 || id == 242}; };
  own.adrconv.AdrConvConvert = convert;
  own.install();
  RecordTable table({{87, "company"}, {242, "mail"}, {88, "short"}});
  table.add("001001000000001", "", {"a,b", "c,keep,d", "e"});
  CCtdCtl ctd;
  const int32_t map = CreateSyflCtl();
  table.give_to(ctd, static_cast<uint32_t>(map));
  EXPECT_EQ(shown(ctd, 0, 0), "<a,b:9:-1:99>");
  EXPECT_EQ(shown(ctd, 0, 1), "<c:7:-1:99>,keep,<d:7:-1:99>") << "lists item by item";
  EXPECT_EQ(shown(ctd, 0, 2), "e");
  FreeSyflCtl(map);
}

}  // namespace
