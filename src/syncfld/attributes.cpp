// What the built-in tables say about a field, and walks through the fields that repeat without
// limit.
#include "syncfld/field_tables.h"
#include "syncfld/sync_fld_state.h"

namespace {

constexpr short kGroupSizeMax = 20;  // most types that a walk through a group gives

// One attribute of a field's first row; `missing` without a row.
short attribute(short fldId, short tq::FieldAttributes::*column, short missing) {
  const tq::FieldAttributes* row = tq::find_attributes(fldId);
  return row == nullptr ? missing : row->*column;
}

bool is_row(short row) {
  return row >= 0 && static_cast<std::size_t>(row) < tq::s_fldAttrTbl.size();
}

// Whether the walk has given a type already.
bool was_given(const tSYNC_MSCH& state, short type) {
  for (short i = 0; i < state.count; ++i) {
    if (state.types[i] == type) return true;
  }
  return false;
}

}  // namespace

short CSyncFldCtl::SykyIsMugen(short fldId) const {
  return attribute(fldId, &tq::FieldAttributes::isMugen, 0);
}

short CSyncFldCtl::SykyGetMugenType(short fldId) const {
  return attribute(fldId, &tq::FieldAttributes::mugenType, 0);
}

short CSyncFldCtl::SykyGetMugenGrp(short fldId) const {
  return attribute(fldId, &tq::FieldAttributes::mugenGrp, -1);
}

short CSyncFldCtl::SykyGetCmpGrp(short fldId) const {
  return attribute(fldId, &tq::FieldAttributes::cmpGrp, -1);
}

short CSyncFldCtl::SykyGetFldRank(short fldId) const {
  constexpr short kUnranked = 99;
  return attribute(fldId, &tq::FieldAttributes::rank, kUnranked);
}

short CSyncFldCtl::SykyFld2SchFld(short fldId) const { return tq::search_table(fldId); }

short CSyncFldCtl::SykyFld2SchFldMst(short fldId) const {
  if (fldId == tq::kRecordIdField) return tq::kSearchRecordId;
  return attribute(fldId, &tq::FieldAttributes::schFldMst, -1);
}

const char* CSyncFldCtl::SykyGetSchTblName(short schId) const {
  return tq::search_table_name(schId);
}

short CSyncFldCtl::SykyGetMugenGrpCnt(short grp) const {
  short count = 0;
  for (const tq::FieldAttributes& row : tq::s_fldAttrTbl) {
    if (row.mugenGrp == grp) ++count;
  }
  return count;
}

short CSyncFldCtl::SykyGetMugenGrpNext(short grp, tSYNC_MSCH* state) const {
  if (state == nullptr || state->count < 0 || state->count >= TQ_MSCH_TYPES) return -1;
  // A state that points before the table starts at its first row.
  for (short row = state->next == -1 ? short{0} : state->next; is_row(row); ++row) {
    const auto at = static_cast<std::size_t>(row);
    const tq::FieldAttributes& field = tq::s_fldAttrTbl[at];
    const bool shown = at < state_->cmpItems.size() && state_->cmpItems[at] != 0;
    if (field.mugenGrp != grp || !shown || was_given(*state, field.mugenType)) continue;
    state->types[state->count++] = field.mugenType;
    state->next = static_cast<short>(row + 1);
    return field.fldId;
  }
  return -1;
}

short CSyncFldCtl::SykyGetMugenTypeFld(short fldId) const {
  const short type = SykyGetMugenType(fldId);
  if (type == 0) return -1;
  for (const tq::FieldAttributes& row : tq::s_fldAttrTbl) {
    if (row.mugenType == type && row.isMugen != 0) return row.fldId;
  }
  return 0;
}

short CSyncFldCtl::SykyGetMugenLinkFldNext(short fldId, tSYNC_MSCH* state) const {
  if (state == nullptr) return -1;
  if (state->next == 0) {
    const short type = SykyGetMugenType(fldId);
    if (type == 0) return -1;
    state->types[0] = type;
  }
  for (short row = state->next; is_row(row); ++row) {
    const tq::FieldAttributes& field = tq::s_fldAttrTbl[static_cast<std::size_t>(row)];
    if (field.mugenType != state->types[0] || field.isMugen != 0) continue;
    state->next = static_cast<short>(row + 1);
    return field.fldId;
  }
  return -1;
}

short CSyncFldCtl::SykyIsKeiFldID(short fldId) const {
  const short grp = SykyGetMugenGrp(fldId);
  return grp == state_->firstKei || grp == state_->secondKei ? 1 : 0;
}

short CSyncFldCtl::SykyGetMugenGrpSizeMax() const { return kGroupSizeMax; }
