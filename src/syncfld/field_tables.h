// The compiled-in tables about fields, and their rows by field id in constant time.
//
// docs/fields.md names every field. The shipped definition files (share/tqutil) agree with these
// tables; a test compares them.
#pragma once

#include <array>
#include <cstddef>

namespace tq {

// What is known about a field. Rows ascend by field id, except that the long texts (197-209) stand
// a second time at the end, with another rank; lookups find the first row of an id.
struct FieldAttributes {
  short isMugen;    // 1: heads its unlimited type, 0: any other field
  short mugenType;  // unlimited type, 0 for none
  short mugenGrp;   // unlimited group, 0 for none
  short rank;       // 0 kept by the system, 1 main, 2 second, 9 the rest, 10 long text again
  short schFld;     // search table in an ordinary file, 0 for none
  short schFldMst;  // search table in the master
  short fldId;
  short cmpGrp;  // how values compare, see field_attributes.cpp
};

inline constexpr std::size_t kAttributeRows = 511;
extern const std::array<FieldAttributes, kAttributeRows> s_fldAttrTbl;

// Which fields serve as which matching key. Rows of one key stand together, the field to take first
// at the front.
struct KeyField {
  short keyNo;
  short subNo;  // 0 the key itself, 1 and 2 what may stand in for it
  short fldId;
};

inline constexpr std::size_t kKeyRows = 87;
extern const std::array<KeyField, kKeyRows> s_keyFldTbl;

// The first row of a field id; null when it has none.
const FieldAttributes* find_attributes(short fldId);
const KeyField* find_key(short fldId);

// The id of the search table of record ids, and the field that is one.
inline constexpr short kSearchRecordId = 9;
inline constexpr short kRecordIdField = 970;

// The name of a search table; null when there is none of that id.
const char* search_table_name(short schId);

}  // namespace tq
