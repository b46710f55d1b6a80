// The record table: taking it over and reading it.
#include <algorithm>
#include <limits>

#include "ctd/ctd_state.h"

// The records have no gaps; hosts of 32 bits rely on every place.
static_assert(offsetof(tSYNC_CTDRECINFO, syncId) == 9);
static_assert(offsetof(tSYNC_CTDRECINFO, description) == 287);
static_assert(offsetof(tSYNC_CTDRECINFO, kind) == 1415);
static_assert(offsetof(tSYNC_CTDRECINFO, merge) == 1419);
static_assert(offsetof(tSYNC_CTDRECINFO, fldCnt) == 1423);
static_assert(offsetof(tSYNC_CTDRECINFO, fields) == 1425);
static_assert(offsetof(tSYNC_CTDRECINFO, title) == 1425 + sizeof(void*));
static_assert(offsetof(tSYNC_CTDRECINFO, cap) == 1681 + sizeof(void*));
static_assert(sizeof(tSYNC_CTDRECINFO) == 1685 + sizeof(void*));
static_assert(offsetof(tSYNC_FLDTBL, text) == 2);
static_assert(offsetof(tSYNC_FLDTBL, used) == 4 + sizeof(void*));
static_assert(offsetof(tSYNC_FLDTBL, cap) == 10 + sizeof(void*));
static_assert(sizeof(tSYNC_FLDTBL) == 12 + sizeof(void*));

namespace {

// The caller's buffer holds what the size getters told.
short copy_whole(char* out, std::string_view text) {
  if (out == nullptr) return -1;
  text.copy(out, text.size());
  out[text.size()] = '\0';
  return 0;
}

}  // namespace

namespace tq {

short length(std::string_view text) {
  constexpr std::size_t kMost = std::numeric_limits<short>::max();
  return static_cast<short>(std::min(text.size(), kMost));
}

}  // namespace tq

void CCtdCtl::State::set_table(std::uint32_t map, std::int32_t rec_count, tSYNC_CTDRECINFO* recs,
                               short fld_count, tSYNC_FLDTBL* fld_names) {
  fld_map = map;
  rec_cnt = recs == nullptr ? 0 : std::max(rec_count, 0);
  records = recs;
  fld_cnt = fld_names == nullptr ? short{0} : std::max<short>(fld_count, 0);
  names = fld_names;
  kept_record = kept_field = -1;
}

tSYNC_CTDRECINFO* CCtdCtl::State::record(std::int32_t index) const {
  return index < 0 || index >= rec_cnt ? nullptr : records + index;
}

const tSYNC_FLDTBL* CCtdCtl::State::name(std::int32_t field) const {
  return field < 0 || field >= fld_cnt ? nullptr : names + field;
}

const tSYNC_FLDTBL* CCtdCtl::State::value(std::int32_t index, std::int32_t field) const {
  const tSYNC_CTDRECINFO* of = record(index);
  if (of == nullptr || of->fields == nullptr || name(field) == nullptr) return nullptr;
  return of->fields + field;
}

void CCtdCtl::SetCtdInfo(uint32_t fldMap, int32_t recCnt, tSYNC_CTDRECINFO* records, short fldCnt,
                         tSYNC_FLDTBL* names) {
  state_->set_table(fldMap, recCnt, records, fldCnt, names);
}

void CCtdCtl::GetCtdInfo(int32_t* recCnt, tSYNC_CTDRECINFO** records, short* fldCnt,
                         tSYNC_FLDTBL** names) {
  if (recCnt != nullptr) *recCnt = state_->rec_cnt;
  if (records != nullptr) *records = state_->records;
  if (fldCnt != nullptr) *fldCnt = state_->fld_cnt;
  if (names != nullptr) *names = state_->names;
}

void CCtdCtl::ClrCtdInfo() { state_->set_table(0, 0, nullptr, 0, nullptr); }

int32_t CCtdCtl::GetCtdRecCnt() { return state_->rec_cnt; }
short CCtdCtl::GetCtdFldCnt() { return state_->fld_cnt; }

short CCtdCtl::GetCtdFldNameSize(int32_t field) {
  const tSYNC_FLDTBL* name = state_->name(field);
  return name == nullptr ? short{-1} : tq::length(tq::text_of(*name));
}

short CCtdCtl::GetCtdFldNameSizeMax() {
  short longest = 0;
  for (int32_t i = 0; i < state_->fld_cnt; ++i) longest = std::max(longest, GetCtdFldNameSize(i));
  return longest;
}

short CCtdCtl::GetCtdFldName(int32_t field, char* name) {
  const tSYNC_FLDTBL* found = state_->name(field);
  return found == nullptr ? short{-1} : copy_whole(name, tq::text_of(*found));
}

short CCtdCtl::GetCtdFldInfo(int32_t field, char* name, short* width) {
  if (width == nullptr || GetCtdFldName(field, name) != 0) return -1;
  *width = 0;
  for (int32_t i = 0; i < state_->rec_cnt; ++i) {
    *width = std::max(*width, GetCtdFldStrSize(i, field));
  }
  return 0;
}

short CCtdCtl::GetCtdFldStrSize(int32_t record, int32_t field) {
  const tSYNC_FLDTBL* value = state_->value(record, field);
  return value == nullptr ? short{-1} : tq::length(tq::text_of(*value));
}

short CCtdCtl::GetCtdFldStrSizeMax() {
  short longest = 0;
  for (int32_t i = 0; i < state_->rec_cnt; ++i) {
    for (int32_t field = 0; field < state_->fld_cnt; ++field) {
      longest = std::max(longest, GetCtdFldStrSize(i, field));
    }
  }
  return longest;
}

short CCtdCtl::GetCtdFldStr(int32_t record, int32_t field, char* text) {
  const tSYNC_FLDTBL* value = state_->value(record, field);
  return value == nullptr ? short{-1} : copy_whole(text, tq::text_of(*value));
}

short CCtdCtl::GetCtdRecTitleSize(int32_t record) {
  const tSYNC_CTDRECINFO* found = state_->record(record);
  return found == nullptr ? short{-1} : tq::length(tq::view(found->title));
}

short CCtdCtl::GetCtdRecTitleSizeMax() {
  short longest = 0;
  for (int32_t i = 0; i < state_->rec_cnt; ++i) longest = std::max(longest, GetCtdRecTitleSize(i));
  return longest;
}

short CCtdCtl::GetCtdRecInfo(int32_t record, char* title, char* description, short* kind) {
  const tSYNC_CTDRECINFO* found = state_->record(record);
  if (found == nullptr || title == nullptr || description == nullptr || kind == nullptr) return -1;
  tq::copy_text(title, sizeof found->title, tq::view(found->title));
  tq::copy_text(description, sizeof found->description, tq::view(found->description));
  *kind = found->kind;
  return 0;
}
