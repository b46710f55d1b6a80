#include "library/layout.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>
#include <utility>

#include "files/place.h"

namespace tqsync {
namespace {

using Forms = std::vector<Joined>;

// A text that an address book keeps in parts or whole: the matching key that it serves and its
// fields (docs/fields.md).
struct Family {
  short key;
  std::initializer_list<short> parts;
  const char* between;
  std::initializer_list<short> whole;
};

constexpr Family kName = {0, {3, 1}, " ", {5}};
constexpr Family kReading = {18, {2, 0}, " ", {4}};
constexpr Family kAddresses[] = {{2, {32, 33, 34, 624}, "", {35, 36, 37}},    // home
                                 {11, {68, 69, 70, 625}, "", {71, 72, 73}},   // company
                                 {19, {58, 59, 60, 626}, "", {61, 62, 63}}};  // other
constexpr short kEntryName = 593, kEntryReading = 594;  // of a telephone-book entry
constexpr short kDisplayedName = 13, kDisplayedReading = 14;
constexpr std::initializer_list<short> kCompanies = {87, 88, 93};

// The parts of a name and of its reading, by their fields.
struct FieldKind {
  short field;
  ValueKind kind;
};
constexpr FieldKind kKinds[] = {{3, ValueKind::kFamilyName},
                                {1, ValueKind::kGivenName},
                                {5, ValueKind::kName},
                                {kEntryName, ValueKind::kName},
                                {kDisplayedName, ValueKind::kName},
                                {2, ValueKind::kFamilyReading},
                                {0, ValueKind::kGivenReading},
                                {4, ValueKind::kReading},
                                {kEntryReading, ValueKind::kReading},
                                {kDisplayedReading, ValueKind::kReading}};

ValueKind kind_of(const FieldMap& map, short field) {
  const auto* found = std::ranges::find(kKinds, field, &FieldKind::field);
  if (found != std::end(kKinds)) return found->kind;
  if (std::ranges::find(kCompanies, field) != kCompanies.end()) return ValueKind::kCompany;
  const std::string table = map.search_table(field);
  if (table == "Tel") return ValueKind::kPhone;
  return table == "Mail" || table == "Mail2" ? ValueKind::kMail : ValueKind::kOther;
}

// Adds what the file has of a form, if anything.
void add(Forms& forms, const FieldMap& map, std::initializer_list<short> fields,
         const char* between = "") {
  Joined form{{}, between};
  for (const short field : fields) {
    if (const auto column = map.column(field)) form.columns.push_back(*column);
  }
  if (!form.columns.empty()) forms.push_back(std::move(form));
}

Forms forms_of(const FieldMap& map, const Family& family) {
  Forms forms;
  const short lead = map.key_field(family.key);
  if (std::ranges::find(family.whole, lead) != family.whole.end()) {
    add(forms, map, family.whole, family.between);
    add(forms, map, family.parts, family.between);
  } else {
    add(forms, map, family.parts, family.between);
    add(forms, map, family.whole, family.between);
  }
  return forms;
}

}  // namespace

Layout layout_of(const FieldMap& map) {
  Layout layout;
  layout.name = forms_of(map, kName);
  for (const short field : {kEntryName, kDisplayedName}) add(layout.name, map, {field});
  layout.reading = forms_of(map, kReading);
  for (const short field : {kEntryReading, kDisplayedReading}) add(layout.reading, map, {field});
  for (const short field : kCompanies) add(layout.company, map, {field});
  for (const Family& family : kAddresses) {
    Forms forms = forms_of(map, family);
    if (!forms.empty()) layout.addresses.push_back(std::move(forms));
  }
  for (const FormatColumn& field : map.fields()) {
    const auto column = map.column(field.field);
    const ValueKind kind = kind_of(map, field.field);
    if (!column) continue;
    if (kind == ValueKind::kPhone) layout.phones.push_back(*column);
    if (kind == ValueKind::kMail) layout.mails.push_back(*column);
  }
  return layout;
}

FileColumns find_columns(const std::vector<std::string>& headings, short application) {
  const FieldMap map(headings, application);
  FileColumns columns(headings.size());
  for (const FormatColumn& field : map.fields()) {
    const auto column = map.column(field.field);
    if (column) columns[*column] = {field.field, kind_of(map, field.field)};
  }
  return columns;
}

Layout find_layout(AddressFile& file, short application) {
  const FieldMap map(file.headings, application);
  Layout layout = layout_of(map);
  if (!layout.usable()) {
    fail_at(
        file.name, 1,
        "no heading names a column to compare. The first line must hold headings such as "
        "\"氏名\", \"電話番号\" and \"メールアドレス\", or \"Name\", \"Phone\" and \"E-mail\". "
        "\"tqsync formats\" shows the known formats; a field file in the folder fields/2b of the "
        "home folder adds one, and with the application's number (\"group add --app\") columns are "
        "taken by their places.");
  }
  if (map.by_place()) {
    file.warnings.push_back(
        at_line(file.name, 1,
                "no heading is known; the columns are taken in the order of \"" +
                    map.format()->title + "\""));
  }
  return layout;
}

}  // namespace tqsync
