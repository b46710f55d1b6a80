// How the columns of address files find their fields: by headings, by place, by stand-ins.
#include "failure.h"
#include "library/applications.h"
#include "library/field_map.h"
#include "library/headings.h"
#include "library/layout.h"
#include "support/definitions.h"
#include "support/test.h"

namespace tqsync {
namespace {

// "column>field " of each column that has one.
std::string text_of(const std::vector<FormatColumn>& fields) {
  std::string text;
  for (const FormatColumn& field : fields) {
    text += std::to_string(field.column) + ">" + std::to_string(field.field) + " ";
  }
  return text;
}

Format format(short application, std::vector<FormatColumn> fields) {
  Format format;
  format.application = application;
  format.fields = std::move(fields);
  return format;
}

TEST(Texts, TheBestFormatFirstThenTheOthers) {
  const Format formats[] = {
      format(1, {{5, 0, "氏名"}, {42, 1, "電話"}, {48, 2, "電話"}, {35, 3, "住所"}}),
      format(2, {{5, 0, "氏名"}, {512, 1, "電話"}}),
      format(3, {{246, 4, "E-mail"}, {5, 0, "Name"}, {247, 0, "E-mail"}, {248, 2, ""}})};
  // `format`: 0 for none
  const std::tuple<const char*, Texts, short, short, std::string> rows[] = {
      {"most headings", {"住所", "氏名", "電話"}, 0, 1, "0>35 1>5 2>42 "},
      {"as many: the smaller format", {"電話", "氏名"}, 0, 2, "0>512 1>5 "},
      {"a heading twice", {"電話", "氏名", "電話", "電話"}, 0, 1, "0>42 1>5 2>48 3>512 "},
      {"the others help out",
       {"氏名", "電話", "住所", "e mail", "?"},
       0,
       1,
       "0>5 1>42 2>35 3>246 "},
      {"the application decides", {"氏名", "電話", "住所"}, 2, 2, "0>5 1>512 2>35 "},
      {"an application without formats", {"氏名", "電話", "住所"}, 9, 1, "0>5 1>42 2>35 "},
      {"no heading is known: places", {"a", "b", "c"}, 3, 3, "0>5 2>248 "},
      {"nobody knows", {"a", "", "c"}, 0, 0, ""},
      {"no columns", {}, 3, 0, ""},
  };
  for (const auto& [why, headings, application, format, fields] : rows) {
    SCOPED_TRACE(why);
    const HeadingMatch match = match_headings(headings, formats, application);
    EXPECT_EQ(match.format == nullptr ? 0 : match.format->application, format);
    EXPECT_EQ(text_of(match.fields), fields);
  }
}

TEST(FieldMap, ShippedFormatsFindTheirOwnHeadings) {
  DefinitionHome home;
  for (const Format& known : known_formats()) {
    SCOPED_TRACE(known.name);
    Texts headings;
    for (const FormatColumn& field : known.fields) {
      headings.resize(std::max(headings.size(), field.column + 1), "?");
      headings[field.column] = field.heading;
    }
    const FieldMap by_headings(headings, 0);
    ASSERT_TRUE(by_headings.format());
    EXPECT_EQ(by_headings.application(), known.application);
    const FieldMap of_file(known);
    EXPECT_EQ(text_of(by_headings.fields()), text_of(of_file.fields()));
    const Texts strange(headings.size(), "?");
    const FieldMap by_place(strange, known.application);
    EXPECT_TRUE(by_place.by_place());
    for (const FormatColumn& field : known.fields) {
      EXPECT_EQ(by_headings.column(field.field), of_file.column(field.field)) << field.field;
      EXPECT_EQ(by_place.column(field.field), of_file.column(field.field)) << field.field;
    }
  }
}

TEST(Layout, FormsOfANameInTheOrderOfTheKeys) {
  DefinitionHome home;
  // Thunderbird's records are matched by the parts of a name, those of an address book by the
  // whole.
  const Layout parts = layout_of(FieldMap({"Display Name", "First Name", "Last Name"}, 21));
  ASSERT_EQ(parts.name.size(), 2u);
  EXPECT_EQ(parts.name[0].columns, (std::vector<std::size_t>{2, 1}));
  EXPECT_EQ(parts.name[1].columns, std::vector<std::size_t>{0});
  const Layout whole = layout_of(FieldMap({"氏名", "姓", "名", "郵便番号"}, 23));
  ASSERT_EQ(whole.name.size(), 2u);
  EXPECT_EQ(whole.name[0].columns, std::vector<std::size_t>{0});
  EXPECT_TRUE(whole.addresses.empty()) << "a postal code is no address";

  AddressFile file{"x.csv", Encoding::kUtf8, {"a", "b"}, {}, {}};
  EXPECT_THROW(find_layout(file, 0), Failure);
  EXPECT_EQ(find_layout(file, 24).mails, std::vector<std::size_t>{1});
  EXPECT_EQ(file.warnings.size(), 1u) << "the places were taken on trust";
}

TEST(Applications, ABadRegistryIsRefusedAndReadAgainWhenMended) {
  DefinitionHome home;
  home.write("program/APPINFO.DAT", "Book:3,1\nBook:4\n");
  EXPECT_THROW(registered_applications(), Failure);
  home.write("program/APPINFO.DAT", "Book:3,5\nBook:3,6\n");
  const std::vector<Application> applications = registered_applications();
  ASSERT_EQ(applications.size(), 2u);
  EXPECT_EQ(applications[1].type, 5) << "the first row of a number counts";
  EXPECT_FALSE(applications[0].keys.empty()) << "type 5 has keys in the shipped file";
}

}  // namespace
}  // namespace tqsync
