#include "syncfld/field_list.h"

#include <algorithm>
#include <limits>
#include <new>
#include <numeric>

#include "syncfld/field_tables.h"

namespace tq {

void FieldList::append(const tSYFL_FLDINFO& field) {
  if (table_.size() >= static_cast<std::size_t>(std::numeric_limits<short>::max())) return;
  places_.add(field.fldId, static_cast<std::int32_t>(table_.size()));
  if (!table_.append(field)) {
    index_all();
    throw std::bad_alloc();
  }
}

void FieldList::index_all() {
  places_.clear();
  for (short pos = 0; pos < size(); ++pos) places_.add(at(pos)->fldId, pos);
}

void FieldList::rename(short pos, short fldId) {
  table_[static_cast<std::size_t>(pos)].fldId = fldId;
  index_all();
}

void FieldList::hidden_last() {
  std::vector<std::uint32_t> order(table_.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_partition(order.begin(), order.end(),
                        [&](std::uint32_t pos) { return table_[pos].hidden == 0; });
  if (!table_.permute(order)) throw std::bad_alloc();
  index_all();
}

void FieldList::resolve() {
  data_ids_.clear();
  const auto set = [&](short fldId, short dataId) {
    const auto id = static_cast<std::uint16_t>(fldId);
    if (id >= data_ids_.size()) data_ids_.resize(std::size_t{id} + 1, -1);
    data_ids_[id] = dataId;
  };
  for (short pos = size(); pos-- > 0;) set(at(pos)->fldId, at(pos)->dataId);
  for (const KeyField& key : s_keyFldTbl) {
    const tSYFL_FLDINFO* stand_in = entry(replacement(*this, key.fldId));
    if (stand_in != nullptr) set(key.fldId, stand_in->dataId);
  }
}

short replacement(const FieldList& list, short fldId) {
  if (list.find(fldId) >= 0) return fldId;
  const KeyField* row = find_key(fldId);
  if (row == nullptr) return fldId;
  for (const KeyField& other : s_keyFldTbl) {
    if (other.keyNo == row->keyNo && list.find(other.fldId) >= 0) return other.fldId;
  }
  return fldId;
}

}  // namespace tq
