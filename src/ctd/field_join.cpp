#include "ctd/field_join.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "common/text.h"

namespace tq {
namespace {

using Ids = std::span<const short>;

// How a family of fields is shown: each of its fields as its parts in order, and when these are all
// empty as the parts of the other form.
struct Family {
  Ids shown;
  Ids parts;
  std::string_view between;  // stands between two parts that are not empty
  Ids instead;
  short only_marked = -1;  // a field that counts as used although its text is not taken
};

// Names: family name, given name; else the whole name. The same for readings.
constexpr short kName[] = {3, 1};
constexpr short kWholeName[] = {5};
constexpr short kReading[] = {2, 0};
constexpr short kWholeReading[] = {4};

// Addresses: prefecture, town, number, building; else three lines. The postal code is shown with
// the address but does not become part of it.
constexpr short kHome[] = {31, 32, 33, 34, 624};
constexpr short kHomeLines[] = {35, 36, 37};
constexpr short kCompany[] = {67, 68, 69, 70, 625};
constexpr short kCompanyLines[] = {71, 72, 73};
constexpr short kOther[] = {57, 58, 59, 60, 626};
constexpr short kOtherLines[] = {61, 62, 63};

// Telephones: country, area, exchange, subscriber, extension; else the whole number.
constexpr short kHomePhone[] = {43, 44, 45, 46, 627};
constexpr short kWholeHomePhone[] = {42};
constexpr short kHomeFax[] = {50, 51, 52, 53, 628};
constexpr short kWholeHomeFax[] = {49};
constexpr short kCompanyPhone[] = {95, 96, 97, 98, 629};
constexpr short kWholeCompanyPhone[] = {94};
constexpr short kCompanyFax[] = {107, 108, 109, 110, 631};
constexpr short kWholeCompanyFax[] = {106};

// Lists: the field that may hold several items, then the numbered ones.
constexpr short kPages[] = {230, 233, 527, 528};
constexpr short kCompanyPages[] = {231, 234, 235, 236};
constexpr short kSchoolPages[] = {232, 529, 530, 531};
constexpr short kHomeMail[] = {242, 246, 247, 248, 249, 250, 251, 252, 253, 254, 255};
constexpr short kCompanyMail[] = {243, 256, 257, 258, 259, 260, 261, 262, 263, 264, 265};
constexpr short kHomeMailNames[] = {244, 266, 267, 268, 269, 270, 271, 272, 273, 274, 275};
constexpr short kCompanyMailNames[] = {245, 276, 277, 278, 279, 280, 281, 282, 283, 284, 285};

// Joint names: six persons of thirteen fields each.
constexpr short kFirstJoint = 286;
constexpr short kJointColumns = 13;
constexpr short kJointPersons = 6;
constexpr auto kJoint = [] {
  std::array<std::array<short, kJointPersons>, kJointColumns> columns{};
  for (short column = 0; column < kJointColumns; ++column) {
    for (short person = 0; person < kJointPersons; ++person) {
      columns[static_cast<std::size_t>(column)][static_cast<std::size_t>(person)] =
          static_cast<short>(kFirstJoint + column + person * kJointColumns);
    }
  }
  return columns;
}();

constexpr Ids without_first(Ids ids) { return ids.subspan(1); }

constexpr Family kFamilies[] = {
    {kName, kName, " ", kWholeName},
    {kReading, kReading, " ", kWholeReading},
    {kHome, without_first(kHome), "", kHomeLines, 31},
    {kHomeLines, kHomeLines, "", without_first(kHome)},
    {kCompany, without_first(kCompany), "", kCompanyLines, 67},
    {kCompanyLines, kCompanyLines, "", without_first(kCompany)},
    {kOther, without_first(kOther), "", kOtherLines, 57},
    {kOtherLines, kOtherLines, "", without_first(kOther)},
    {kHomePhone, kHomePhone, "", kWholeHomePhone},
    {kHomeFax, kHomeFax, "", kWholeHomeFax},
    {kCompanyPhone, kCompanyPhone, "", kWholeCompanyPhone},
    {kCompanyFax, kCompanyFax, "", kWholeCompanyFax},
    {kPages, kPages, ",", {}},
    {kCompanyPages, kCompanyPages, ",", {}},
    {kSchoolPages, kSchoolPages, ",", {}},
    {kHomeMail, kHomeMail, ",", {}},
    {kCompanyMail, kCompanyMail, ",", {}},
    {kHomeMailNames, kHomeMailNames, ",", {}},
    {kCompanyMailNames, kCompanyMailNames, ",", {}},
};

constexpr std::size_t kFamilyIds = 632;  // no family has a higher id
constexpr std::uint8_t kNoFamily = 0xFF;
constexpr auto kFamilyOf = [] {
  std::array<std::uint8_t, kFamilyIds> families{};
  families.fill(kNoFamily);
  static_assert(std::size(kFamilies) < kNoFamily);
  for (std::size_t i = 0; i < std::size(kFamilies); ++i) {
    for (const short id : kFamilies[i].shown) {
      families[static_cast<std::size_t>(id)] = static_cast<std::uint8_t>(i);
    }
  }
  return families;
}();

constexpr bool is_joint(short fld_id) {
  return fld_id >= kFirstJoint && fld_id < kFirstJoint + kJointColumns * kJointPersons;
}

Ids joint_of(short fld_id) {
  return kJoint[static_cast<std::size_t>((fld_id - kFirstJoint) % kJointColumns)];
}

// A record's fields while a text is joined from them.
class Joining {
 public:
  Joining(std::span<tSYNC_FLDTBL> fields, short mark, std::string& text)
      : fields_(fields), mark_(mark), text_(text) {}

  // The text of a field, which counts as used; empty when the record has none.
  std::string_view take(short fld_id) {
    const auto id = static_cast<std::uint16_t>(fld_id);
    for (tSYNC_FLDTBL& field : fields_) {
      if (field.fldId != id) continue;
      if (mark_ >= 0) field.used = mark_;
      return view(+field.text);
    }
    return {};
  }

  void append(Ids parts, std::string_view between) {
    for (const short part : parts) {
      const std::string_view next = take(part);
      if (!text_.empty() && !next.empty()) text_ += between;
      text_ += next;
    }
  }

  void append(const Family& family) {
    if (family.only_marked >= 0) take(family.only_marked);
    append(family.parts, family.between);
    if (text_.empty()) append(family.instead, family.between);
  }

 private:
  std::span<tSYNC_FLDTBL> fields_;
  short mark_;
  std::string& text_;
};

}  // namespace

bool join_field(short fld_id, std::span<tSYNC_FLDTBL> fields, short mark, std::string& text) {
  text.clear();
  Joining joining(fields, mark, text);
  const auto id = static_cast<std::uint16_t>(fld_id);
  const std::uint8_t family = id < kFamilyIds ? kFamilyOf[id] : kNoFamily;
  if (is_joint(fld_id)) {
    joining.append(joint_of(fld_id), ",");
  } else if (family != kNoFamily) {
    joining.append(kFamilies[family]);
  } else {
    text = joining.take(fld_id);
  }
  return !text.empty();
}

}  // namespace tq
