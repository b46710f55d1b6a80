// The list of fields of one file in one of the two modes, with its places by field id.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "common/record_table.h"
#include "syncfld/id_index.h"

namespace tq {

inline constexpr std::size_t kTableNameSize = 66;

// One field of a list.
struct tSYFL_FLDINFO {
  short fldId;
  short dataId;    // place of the data; 0 when the field file has no record of the field
  short dataType;  // master only: 0, 1 may repeat, 2 long text
  short schFld;    // search table
  char table[kTableNameSize];  // table to which the field belongs
  short mugenType;             // unlimited type
  short hidden;                // master only: 1 = not shown
  short special;               // 1: appended by the system
  std::int32_t cap;            // capacity of the list, in its first record
};

template <>
struct RecordTraits<tSYFL_FLDINFO> {
  static constexpr std::size_t kBlock = 20;
  static std::int32_t& capacity(tSYFL_FLDINFO& first) { return first.cap; }
};

// A file may list a field twice; lookups find the first. What allocates may throw std::bad_alloc
// and leaves the list as it was.
class FieldList {
 public:
  std::span<const tSYFL_FLDINFO> records() const { return table_.records(); }
  std::span<tSYFL_FLDINFO> records() { return table_.records(); }
  short size() const { return static_cast<short>(table_.size()); }

  // Adds a field at the end; a list of 32767 fields is full and stays as it is.
  void append(const tSYFL_FLDINFO& field);
  // Gives the field at a position another id.
  void rename(short pos, short fldId);
  // Moves hidden fields behind the visible ones; both keep their order.
  void hidden_last();

  // Null for a position out of range.
  const tSYFL_FLDINFO* at(short pos) const {
    return pos >= 0 && pos < size() ? &table_[static_cast<std::size_t>(pos)] : nullptr;
  }
  // The position of the first entry of a field, -1 when it is not listed.
  short find(short fldId) const { return static_cast<short>(places_.find(fldId)); }
  const tSYFL_FLDINFO* entry(short fldId) const { return at(find(fldId)); }

  // Works out `data_ids`; the list must be complete.
  void resolve();
  // By field id: the data id of the field or of the one that stands in for it, -1 when there is
  // none. They stay where they are when the list is moved.
  std::span<const short> data_ids() const { return data_ids_; }

 private:
  void index_all();

  RecordTable<tSYFL_FLDINFO> table_;
  IdIndex places_;
  std::vector<short> data_ids_;  // by field id
};

// The field that stands in for one that a list lacks: the first of the same key that it has. The
// field itself when the list has it or nothing stands in.
short replacement(const FieldList& list, short fldId);

}  // namespace tq
