// The fields that serve as matching keys, in the order in which they are tried, and the names of
// the search tables.
#include <cstdint>

#include "syncfld/field_tables.h"

namespace tq {
namespace {

// Fields `first` to `last` as rows of one key.
struct Run {
  short keyNo, subNo;
  short first, last;
};

constexpr Run kRuns[] = {
    // 0 name, its parts or the whole; 18 reading, likewise
    {0, 0, 1, 1},
    {0, 0, 3, 3},
    {0, 1, 5, 5},
    {18, 0, 0, 0},
    {18, 0, 2, 2},
    {18, 1, 4, 4},
    // 1 home telephone
    {1, 0, 42, 42},
    // 2 home address: its parts, or its lines
    {2, 0, 31, 34},
    {2, 0, 624, 624},
    {2, 1, 35, 37},
    // 3 home page
    {3, 0, 22, 22},
    // 4 home mail addresses, 5 the names that go with them
    {4, 0, 246, 255},
    {4, 1, 242, 242},
    {5, 0, 266, 275},
    {5, 1, 244, 244},
    // 6, 7, 8 number, name and mail of a telephone-book entry
    {6, 0, 512, 512},
    {7, 0, 593, 593},
    {8, 0, 595, 595},
    // 9 company telephone
    {9, 0, 78, 78},
    // 10 company, its short form, another body
    {10, 0, 87, 87},
    {10, 1, 88, 88},
    {10, 2, 93, 93},
    // 11 company address: its parts, or its lines
    {11, 0, 67, 70},
    {11, 0, 625, 625},
    {11, 1, 71, 73},
    // 12 company home page
    {12, 0, 92, 92},
    // 13 company mail addresses
    {13, 0, 256, 265},
    {13, 1, 243, 243},
    // 14 to 17 are for companies what 5 to 8 are for people: one field serves two keys.
    {14, 0, 266, 275},
    {14, 1, 244, 244},
    {15, 0, 512, 512},
    {16, 0, 593, 593},
    {17, 0, 595, 595},
    // 19 other address: its parts, or its lines
    {19, 0, 57, 60},
    {19, 0, 626, 626},
    {19, 1, 61, 63},
};

struct Built {
  std::array<KeyField, kKeyRows> table{};
  std::size_t rows = 0;
};

consteval Built build() {
  Built built;
  for (const Run& run : kRuns) {
    for (int fldId = run.first; fldId <= run.last; ++fldId) {
      built.table[built.rows++] = {run.keyNo, run.subNo, static_cast<short>(fldId)};
    }
  }
  return built;
}

static_assert(build().rows == kKeyRows);

}  // namespace

constexpr std::array<KeyField, kKeyRows> s_keyFldTbl = build().table;

namespace {

constexpr short kLastId = 631;
constexpr std::int16_t kNoRow = -1;

consteval auto index_rows() {
  std::array<std::int16_t, kLastId + 1> first{};
  first.fill(kNoRow);
  for (std::size_t row = kKeyRows; row-- > 0;) {
    first[static_cast<std::size_t>(s_keyFldTbl[row].fldId)] = static_cast<std::int16_t>(row);
  }
  return first;
}

constexpr auto kFirstRow = index_rows();

struct SearchTable {
  short schId;
  const char* name;
};

// The last row has an id below 1.
constexpr SearchTable s_schTblNameTbl[] = {
    {1, "Name"}, {2, "Tel"}, {3, "Mail"}, {4, "Mail2"}, {5, "CName"}, {kSearchRecordId, "RecordId"},
    {0, nullptr}};

}  // namespace

const KeyField* find_key(short fldId) {
  if (fldId < 0 || fldId > kLastId) return nullptr;
  const std::int16_t row = kFirstRow[static_cast<std::size_t>(fldId)];
  return row == kNoRow ? nullptr : &s_keyFldTbl[static_cast<std::size_t>(row)];
}

const char* search_table_name(short schId) {
  const SearchTable* table = s_schTblNameTbl;
  while (table->schId >= 1 && table->schId != schId) ++table;
  return table->schId >= 1 ? table->name : nullptr;
}

}  // namespace tq
