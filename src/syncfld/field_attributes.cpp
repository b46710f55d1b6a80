// The attributes of every field, as runs of neighbouring fields that share them. docs/fields.md
// names the fields one by one.
//
// Compare groups: 0 text as it stands, 1 part of a name, 2 whole name, 3 reading, 4 telephone,
// 5 postal code, 6 address, 7 mail, 8 internet address, 9 company, 10 sex, 11 honorific, 12 date,
// 13 blood type, 14 yes or no, 15 prefecture, 16 country.
// Search tables: 1 names, 2 telephones, 3 and 4 mail (home, company), 5 companies.
#include <cstdint>
#include <initializer_list>
#include <span>

#include "syncfld/field_tables.h"

namespace tq {
namespace {

// Fields `first` to `last`, with the values of FieldAttributes.
struct Run {
  short first, last;
  short isMugen, mugenType, mugenGrp, rank;
  short schFld, schFldMst, cmpGrp;
};

constexpr Run kPersonAndAddresses[] = {
    // The parts of a name with their readings, then the whole name: given (0, 1), family (2, 3).
    {0, 0, 0, 0, 0, 1, 0, 0, 3},
    {1, 1, 0, 0, 0, 1, 1, 1, 1},
    {2, 2, 0, 0, 0, 1, 0, 0, 3},
    {3, 3, 0, 0, 0, 1, 1, 1, 1},
    {4, 4, 0, 0, 0, 1, 0, 0, 3},
    {5, 5, 0, 0, 0, 1, 1, 1, 2},
    // Honorific, middle name, nickname, maiden name with reading, titles before and behind.
    {6, 6, 0, 0, 0, 2, 0, 0, 11},
    {7, 7, 0, 0, 0, 9, 0, 0, 1},
    {8, 8, 0, 0, 0, 2, 0, 0, 2},
    {9, 9, 0, 0, 0, 9, 0, 0, 1},
    {10, 10, 0, 0, 0, 9, 0, 0, 3},
    {11, 12, 0, 0, 0, 9, 0, 0, 0},
    // Displayed name with reading, name in Latin letters.
    {13, 13, 0, 0, 0, 2, 0, 0, 2},
    {14, 14, 0, 0, 0, 9, 0, 0, 3},
    {15, 15, 0, 0, 0, 9, 0, 0, 2},
    // Sex, date of birth, blood type, nationality.
    {16, 16, 0, 0, 0, 9, 0, 0, 10},
    {17, 17, 0, 0, 0, 2, 0, 0, 12},
    {18, 18, 0, 0, 0, 9, 0, 0, 13},
    {19, 19, 0, 0, 0, 9, 0, 0, 16},
    // Internet addresses: blog, social network, home page.
    {20, 21, 0, 0, 0, 9, 0, 0, 8},
    {22, 22, 0, 0, 0, 2, 0, 0, 8},
    // Spouse, wedding day, home prefecture, what else is known of the person, category.
    {23, 23, 0, 0, 0, 9, 0, 0, 2},
    {24, 24, 0, 0, 0, 9, 0, 0, 12},
    {25, 25, 0, 0, 0, 9, 0, 0, 15},
    {26, 29, 0, 0, 0, 9, 0, 0, 0},
    {30, 30, 0, 0, 0, 2, 0, 0, 0},
    // Home address in parts, then in lines; country, reading, station and bar code.
    {31, 31, 0, 0, 0, 1, 0, 0, 5},
    {32, 32, 0, 0, 0, 1, 0, 0, 15},
    {33, 34, 0, 0, 0, 1, 0, 0, 6},
    {35, 37, 0, 0, 0, 2, 0, 0, 6},
    {38, 38, 0, 0, 0, 9, 0, 0, 16},
    {39, 39, 0, 0, 0, 9, 0, 0, 3},
    {40, 41, 0, 0, 0, 9, 0, 0, 0},
    // Home telephone, its parts and memo, second telephone; fax, its parts, second fax; pager;
    // usual telephone.
    {42, 42, 0, 0, 0, 1, 2, 2, 4},
    {43, 46, 0, 0, 0, 9, 0, 0, 4},
    {47, 47, 0, 0, 0, 9, 0, 0, 0},
    {48, 48, 0, 0, 0, 2, 2, 2, 4},
    {49, 55, 0, 0, 0, 9, 0, 0, 4},
    {56, 56, 0, 0, 0, 9, 2, 2, 4},
    // Other address in parts, then in lines; its telephone, fax and country.
    {57, 57, 0, 0, 0, 2, 0, 0, 5},
    {58, 58, 0, 0, 0, 2, 0, 0, 15},
    {59, 60, 0, 0, 0, 2, 0, 0, 6},
    {61, 63, 0, 0, 0, 9, 0, 0, 6},
    {64, 64, 0, 0, 0, 9, 2, 2, 4},
    {65, 65, 0, 0, 0, 9, 0, 0, 4},
    {66, 66, 0, 0, 0, 9, 0, 0, 16},
    // Company address in parts, then in lines; country, reading, station and bar code.
    {67, 67, 0, 0, 0, 1, 0, 0, 5},
    {68, 68, 0, 0, 0, 1, 0, 0, 15},
    {69, 70, 0, 0, 0, 1, 0, 0, 6},
    {71, 73, 0, 0, 0, 2, 0, 0, 6},
    {74, 74, 0, 0, 0, 9, 0, 0, 16},
    {75, 75, 0, 0, 0, 9, 0, 0, 3},
    {76, 77, 0, 0, 0, 9, 0, 0, 0},
    // Company telephone, second one, extension; car, radio, ISDN, telex, text telephone, secretary.
    {78, 78, 0, 0, 0, 1, 2, 2, 4},
    {79, 79, 0, 0, 0, 2, 2, 2, 4},
    {80, 86, 0, 0, 0, 9, 0, 0, 4},
    // Company, its short form and reading; department, post, home page; other body.
    {87, 87, 0, 0, 0, 1, 5, 5, 9},
    {88, 88, 0, 0, 0, 2, 5, 5, 9},
    {89, 89, 0, 0, 0, 2, 0, 0, 3},
    {90, 90, 0, 0, 0, 2, 0, 0, 9},
    {91, 91, 0, 0, 0, 2, 0, 0, 0},
    {92, 92, 0, 0, 0, 2, 0, 0, 8},
    {93, 93, 0, 0, 0, 9, 5, 5, 9},
    // Company's main telephone, its parts, call-back; company mobile, its parts and memo; company
    // fax and its parts.
    {94, 94, 0, 0, 0, 2, 2, 2, 4},
    {95, 99, 0, 0, 0, 9, 0, 0, 4},
    {100, 100, 0, 0, 0, 9, 2, 2, 4},
    {101, 104, 0, 0, 0, 9, 0, 0, 4},
    {105, 105, 0, 0, 0, 9, 0, 0, 0},
    {106, 110, 0, 0, 0, 9, 0, 0, 4},
};

constexpr Run kLettersAndNotes[] = {
    // New-year cards sent (111-120) and received, mourning, summer cards sent and received, ten
    // years each.
    {111, 160, 0, 0, 0, 9, 0, 0, 14},
    // Midsummer and year-end gifts, ten years each.
    {161, 180, 0, 0, 0, 9, 0, 0, 0},
    // Days to remember, groups.
    {181, 190, 0, 0, 0, 9, 0, 0, 12},
    {191, 196, 0, 0, 0, 9, 0, 0, 0},
    // Long texts.
    {197, 197, 0, 0, 0, 2, 0, 0, 0},
    {198, 209, 0, 0, 0, 9, 0, 0, 0},
    // Secretary and superior; about the company; the day it was founded, its capital.
    {210, 211, 0, 0, 0, 9, 0, 0, 2},
    {212, 214, 0, 0, 0, 9, 0, 0, 0},
    {215, 215, 0, 0, 0, 9, 0, 0, 12},
    {216, 216, 0, 0, 0, 9, 0, 0, 0},
    // Business since, customer code, our own contact; card exchanged on, at, through.
    {217, 217, 0, 0, 0, 9, 0, 0, 12},
    {218, 218, 0, 0, 0, 9, 0, 0, 0},
    {219, 219, 0, 0, 0, 9, 0, 0, 2},
    {220, 220, 0, 0, 0, 9, 0, 0, 12},
    {221, 221, 0, 0, 0, 9, 0, 0, 0},
    {222, 222, 0, 0, 0, 9, 0, 0, 2},
    // Printing: done, to the company, with joint names; sender; last contact, priority, private.
    {223, 225, 0, 0, 0, 9, 0, 0, 14},
    {226, 226, 0, 0, 0, 9, 0, 0, 0},
    {227, 227, 0, 0, 0, 9, 0, 0, 12},
    {228, 228, 0, 0, 0, 9, 0, 0, 0},
    {229, 229, 0, 0, 0, 9, 0, 0, 14},
    // Home pages: of the person (type 1) and of the company (type 2); 232 the school's.
    {230, 230, 1, 1, 1, 9, 0, 0, 8},
    {231, 231, 1, 2, 2, 9, 0, 0, 8},
    {232, 232, 0, 0, 0, 9, 0, 0, 8},
    {233, 233, 0, 1, 1, 9, 0, 0, 8},
    {234, 236, 0, 2, 2, 9, 0, 0, 8},
    // Their titles; chat and network names; internet telephone.
    {237, 240, 0, 0, 0, 9, 0, 0, 0},
    {241, 241, 0, 0, 0, 9, 0, 0, 4},
};

constexpr Run kMail[] = {
    // Mail addresses without limit, home (type 3) and company (type 4), and the names that go with
    // them (types 5 and 6).
    {242, 242, 1, 3, 3, 9, 3, 3, 7},
    {243, 243, 1, 4, 4, 9, 4, 4, 7},
    {244, 244, 1, 5, 3, 9, 0, 0, 2},
    {245, 245, 1, 6, 4, 9, 0, 0, 2},
    // The first ten of each.
    {246, 255, 0, 3, 3, 9, 3, 0, 7},
    {256, 265, 0, 4, 4, 9, 4, 0, 7},
    {266, 275, 0, 5, 3, 9, 0, 0, 2},
    {276, 285, 0, 6, 4, 9, 0, 0, 2},
};

// The joint names on an envelope, 286-363: six people of thirteen columns. The first person's
// columns head types 7 to 19. Name, honorific, reading, relation, family name, its reading, sex,
// date of birth, blood type, mobile telephone, mail, school or company, remarks.
constexpr short kJointFirst = 286;
constexpr short kJointPeople = 6;
constexpr short kJointFirstType = 7;
constexpr short kJointGroup = 5;
constexpr short kJointCompare[] = {1, 11, 3, 0, 1, 3, 10, 12, 13, 4, 7, 9, 0};
constexpr short kJointColumns = sizeof kJointCompare / sizeof kJointCompare[0];

constexpr Run kTelephoneBooks[] = {
    // Fields that users name themselves.
    {364, 428, 0, 0, 0, 9, 0, 0, 0},
    // Settings of a mobile telephone; the day of its contract and its holder.
    {500, 502, 0, 0, 0, 9, 0, 0, 0},
    {503, 503, 0, 0, 0, 9, 0, 0, 14},
    {504, 509, 0, 0, 0, 9, 0, 0, 0},
    {510, 510, 0, 0, 0, 9, 0, 0, 12},
    {511, 511, 0, 0, 0, 9, 0, 0, 2},
    // Mobile telephone number without limit (type 20 of group 6).
    {512, 512, 1, 20, 6, 9, 2, 0, 4},
    // Second to sixth number and mail of a telephone-book entry, kinds of its numbers.
    {513, 517, 0, 0, 0, 9, 2, 0, 4},
    {518, 522, 0, 0, 0, 9, 3, 0, 7},
    {523, 526, 0, 0, 0, 9, 0, 0, 0},
    // More home pages: the person's, then the school's.
    {527, 528, 0, 1, 1, 9, 0, 0, 8},
    {529, 531, 0, 0, 0, 9, 0, 0, 8},
    // What synchronisation keeps for itself: numbers, moment, sources, marks; 588 the number of the
    // partner's record.
    {580, 580, 0, 0, 0, 0, 0, 0, 0},
    {581, 581, 0, 0, 0, 0, 0, 0, 12},
    {582, 583, 0, 0, 0, 0, 0, 0, 0},
    {584, 585, 0, 0, 0, 0, 0, 0, 14},
    {586, 586, 0, 0, 0, 0, 0, 0, 0},
    {587, 587, 0, 0, 0, 0, 0, 0, 14},
    {588, 588, 0, 0, 0, 0, 0, 0, 0},
    // Place on the map.
    {589, 592, 0, 0, 0, 9, 0, 0, 0},
    // The rest of a telephone-book entry (group 6): name, reading, mail.
    {593, 593, 1, 21, 6, 9, 1, 0, 2},
    {594, 594, 1, 22, 6, 9, 0, 0, 3},
    {595, 595, 1, 23, 6, 9, 3, 0, 7},
    // Telephone numbers without limit (group 7): number, kind, extension, memo, preferred, public.
    {596, 596, 1, 24, 7, 9, 2, 2, 4},
    {597, 597, 1, 25, 7, 9, 0, 0, 0},
    {598, 598, 1, 26, 7, 9, 0, 0, 4},
    {599, 599, 1, 27, 7, 9, 0, 0, 0},
    {600, 600, 1, 28, 7, 9, 0, 0, 14},
    {601, 601, 1, 29, 7, 9, 0, 0, 14},
    // Picture, signature, key, language and the like.
    {602, 608, 0, 0, 0, 9, 0, 0, 0},
    // What came to the addresses and telephones later: building (home, company, other) and
    // extension (home telephone and fax; company's main telephone, mobile and fax).
    {624, 624, 0, 0, 0, 1, 0, 0, 6},
    {625, 625, 0, 0, 0, 1, 0, 0, 6},
    {626, 626, 0, 0, 0, 2, 0, 0, 6},
    {627, 631, 0, 0, 0, 9, 0, 0, 4},
};

constexpr Run kLongTextsAgain[] = {{197, 209, 0, 0, 0, 10, 0, 0, 0}};

struct Built {
  std::array<FieldAttributes, kAttributeRows> table{};
  std::size_t rows = 0;

  constexpr void add(const FieldAttributes& row) { table[rows++] = row; }

  constexpr void add(std::span<const Run> runs) {
    for (const Run& run : runs) {
      for (int fldId = run.first; fldId <= run.last; ++fldId) {
        add({run.isMugen, run.mugenType, run.mugenGrp, run.rank, run.schFld, run.schFldMst,
             static_cast<short>(fldId), run.cmpGrp});
      }
    }
  }

  constexpr void add_joint_names() {
    for (int person = 0; person < kJointPeople; ++person) {
      for (int column = 0; column < kJointColumns; ++column) {
        add({static_cast<short>(person == 0), static_cast<short>(kJointFirstType + column),
             kJointGroup, 9, 0, 0,
             static_cast<short>(kJointFirst + person * kJointColumns + column),
             kJointCompare[column]});
      }
    }
  }
};

consteval Built build() {
  Built built;
  built.add(kPersonAndAddresses);
  built.add(kLettersAndNotes);
  built.add(kMail);
  built.add_joint_names();
  built.add(kTelephoneBooks);
  built.add(kLongTextsAgain);
  return built;
}

static_assert(build().rows == kAttributeRows);

}  // namespace

constexpr std::array<FieldAttributes, kAttributeRows> s_fldAttrTbl = build().table;

namespace {

// --- The first row of each id

constexpr short kLastId = 631;
constexpr std::size_t kRepeated = 13;
constexpr std::int16_t kNoRow = -1;

consteval auto index_rows() {
  std::array<std::int16_t, kLastId + 1> first{};
  first.fill(kNoRow);
  for (std::size_t row = kAttributeRows; row-- > 0;) {
    first[static_cast<std::size_t>(s_fldAttrTbl[row].fldId)] = static_cast<std::int16_t>(row);
  }
  return first;
}

constexpr auto kFirstRow = index_rows();

constexpr const FieldAttributes* first_row(short fldId) {
  if (fldId < 0 || fldId > kLastId) return nullptr;
  const std::int16_t row = kFirstRow[static_cast<std::size_t>(fldId)];
  return row == kNoRow ? nullptr : &s_fldAttrTbl[static_cast<std::size_t>(row)];
}

// --- What others rely on

consteval bool ids_ascend_and_repeat() {
  const std::size_t once = kAttributeRows - kRepeated;
  for (std::size_t row = 1; row < once; ++row) {
    if (s_fldAttrTbl[row - 1].fldId >= s_fldAttrTbl[row].fldId) return false;
  }
  for (std::size_t i = 0; i < kRepeated; ++i) {
    const FieldAttributes& again = s_fldAttrTbl[once + i];
    const FieldAttributes* before = first_row(again.fldId);
    if (again.fldId != static_cast<short>(197 + i) || again.rank != 10) return false;
    if (before->rank != 2 && before->rank != 9) return false;
  }
  return true;
}
static_assert(ids_ascend_and_repeat());

consteval bool holds(short fldId, short isMugen, short type, short grp, short rank, short schFld,
                     short schFldMst, short cmpGrp) {
  const FieldAttributes* row = first_row(fldId);
  return row != nullptr && row->isMugen == isMugen && row->mugenType == type &&
         row->mugenGrp == grp && row->rank == rank && row->schFld == schFld &&
         row->schFldMst == schFldMst && row->cmpGrp == cmpGrp;
}

// Whether fields `first` to `last` have all these values; types count up when `step` is 1.
consteval bool hold(short first, short last, short isMugen, short type, short step, short grp,
                    short schFld, short schFldMst, short cmpGrp) {
  for (int i = 0; i <= last - first; ++i) {
    if (!holds(static_cast<short>(first + i), isMugen, static_cast<short>(type + i * step), grp, 9,
               schFld, schFldMst, cmpGrp)) {
      return false;
    }
  }
  return true;
}

static_assert(holds(512, 1, 20, 6, 9, 2, 0, 4));
static_assert(holds(593, 1, 21, 6, 9, 1, 0, 2));
static_assert(holds(594, 1, 22, 6, 9, 0, 0, 3));
static_assert(holds(595, 1, 23, 6, 9, 3, 0, 7));
static_assert(holds(596, 1, 24, 7, 9, 2, 2, 4));
static_assert(holds(230, 1, 1, 1, 9, 0, 0, 8) && holds(231, 1, 2, 2, 9, 0, 0, 8));
static_assert(holds(233, 0, 1, 1, 9, 0, 0, 8) && hold(527, 528, 0, 1, 0, 1, 0, 0, 8));
static_assert(hold(234, 236, 0, 2, 0, 2, 0, 0, 8));
static_assert(holds(242, 1, 3, 3, 9, 3, 3, 7) && holds(243, 1, 4, 4, 9, 4, 4, 7));
static_assert(holds(244, 1, 5, 3, 9, 0, 0, 2) && holds(245, 1, 6, 4, 9, 0, 0, 2));
static_assert(hold(246, 255, 0, 3, 0, 3, 3, 0, 7) && hold(256, 265, 0, 4, 0, 4, 4, 0, 7));
static_assert(hold(266, 275, 0, 5, 0, 3, 0, 0, 2) && hold(276, 285, 0, 6, 0, 4, 0, 0, 2));

// Types and groups of a run whose other values are free.
consteval bool types_hold(short first, short last, short isMugen, short type, short types,
                          short grp) {
  for (int i = 0; i <= last - first; ++i) {
    const FieldAttributes* row = first_row(static_cast<short>(first + i));
    if (row == nullptr || row->isMugen != isMugen || row->mugenGrp != grp) return false;
    if (row->mugenType != (types == 0 ? 0 : type + i % types)) return false;
  }
  return true;
}

static_assert(types_hold(596, 601, 1, 24, 6, 7));
static_assert(types_hold(286, 298, 1, 7, 13, 5) && types_hold(299, 363, 0, 7, 13, 5));
static_assert(types_hold(364, 428, 0, 0, 0, 0) && types_hold(0, 30, 0, 0, 0, 0));

consteval bool plain_fields_hold() {
  for (short fldId = 0; fldId <= 30; ++fldId) {
    const FieldAttributes& row = *first_row(fldId);
    if (row.rank != 1 && row.rank != 2 && row.rank != 9) return false;
    if ((fldId >= 20 && fldId <= 22) != (row.cmpGrp == 8)) return false;
  }
  return true;
}
static_assert(plain_fields_hold());

consteval bool values_are_known() {
  bool ranks[11] = {};
  bool groups[17] = {};
  for (const FieldAttributes& row : s_fldAttrTbl) {
    if (row.rank < 0 || row.rank > 10 || row.cmpGrp < 0 || row.cmpGrp > 16) return false;
    ranks[row.rank] = true;
    groups[row.cmpGrp] = true;
  }
  for (const bool used : groups) {
    if (!used) return false;
  }
  for (int rank = 0; rank <= 10; ++rank) {
    if (ranks[rank] != (rank <= 2 || rank >= 9)) return false;
  }
  return true;
}
static_assert(values_are_known());

}  // namespace

const FieldAttributes* find_attributes(short fldId) { return first_row(fldId); }

}  // namespace tq
