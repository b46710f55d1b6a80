// The master's fields: what its field file names, visible ones first.
#include <algorithm>

#include "common/text.h"
#include "siblings/siblings.h"
#include "syncfld/sync_fld_state.h"

namespace tq {
namespace {

// Unlimited groups that SykyIsKeiFldID knows are those of these fields.
constexpr short kFirstKeiField = 512;
constexpr short kSecondKeiField = 596;

constexpr short kLongTextKind = 10;  // of the database

short data_type(const tRECDB_FLDINFO& info, short mugenType) {
  if (info.kind == kLongTextKind) return 2;
  return mugenType == 0 ? 0 : 1;
}

tSYFL_FLDINFO master_field(short fldId) {
  const tRECDB_API& api = recdb();
  char table[kTableNameSize] = {};
  api.RecDbGetFldIdPair2(api.context, fldId, nullptr, table);
  tRECDB_FLDINFO info{};
  api.RecDbGetFldInfo(api.context, fldId, &info);

  tSYFL_FLDINFO field = new_field(fldId, view(table));
  const bool shown = is_in_every_list(fldId) || (is_address_table(view(table)) && info.hidden == 0);
  field.hidden = shown ? 0 : 1;
  field.dataType = data_type(info, field.mugenType);
  // Search tables are those of an ordinary file here too.
  field.schFld = search_table(fldId);
  return field;
}

// Moves the visible fields to the front; how many there are.
short show_first(FieldList& list) {
  list.hidden_last();
  const auto fields = list.records();
  return static_cast<short>(std::count_if(
      fields.begin(), fields.end(), [](const tSYFL_FLDINFO& field) { return field.hidden == 0; }));
}

short mugen_group(short fldId) {
  const FieldAttributes* attributes = find_attributes(fldId);
  return attributes == nullptr ? short{-1} : attributes->mugenGrp;
}

}  // namespace
}  // namespace tq

void CSyncFldCtl::State::read_master(const char* field_file) {
  master = {};
  const tRECDB_API& api = tq::recdb();
  const tq::FieldRecords file(field_file);
  for (tFLDCOM_FLDREC record; file.next(record);) {
    const tq::tSYFL_FLDINFO field = tq::master_field(record.fldId);
    master.main.append(field);
    if (api.RecDbIsFldSync2Tbl(api.context, record.fldId) != 0) {
      tq::append_to_second(master, field);
    }
  }
  master.mainVisible = tq::show_first(master.main);
  master.secondVisible = tq::show_first(master.second);
  mMakeCmpItemTblKey();
  firstKei = tq::mugen_group(tq::kFirstKeiField);
  secondKei = tq::mugen_group(tq::kSecondKeiField);
}

// Asked in the mode that is set now.
void CSyncFldCtl::State::mMakeCmpItemTblKey() {
  cmpItems.assign(tq::kAttributeRows, 0);
  for (std::size_t row = 0; row < tq::kAttributeRows; ++row) {
    cmpItems[row] = is_master_field(tq::s_fldAttrTbl[row].fldId) ? 1 : 0;
  }
}
