// The field tables of one run: building them and asking them.
#include <algorithm>
#include <iterator>
#include <utility>

#include "common/guarded.h"
#include "common/text.h"
#include "syncfld/sync_fld_state.h"

using tq::copy_text;
using tq::view;

namespace {

// The value of an entry, `missing` when there is none.
short value(const tq::tSYFL_FLDINFO* entry, short tq::tSYFL_FLDINFO::*column, short missing = -1) {
  return entry == nullptr ? missing : entry->*column;
}

// By position.
short value_at(const tq::FieldList* list, short pos, short tq::tSYFL_FLDINFO::*column) {
  return list == nullptr ? short{-1} : value(list->at(pos), column);
}

}  // namespace

CSyncFldCtl::CSyncFldCtl() : state_(std::make_unique<State>()) {}

CSyncFldCtl::~CSyncFldCtl() = default;

short CSyncFldCtl::SyflCreateFileTbl(short capacity) {
  state_->clear_files();
  state_->capacity = capacity > 0 ? static_cast<std::size_t>(capacity) : 0;
  state_->firstKei = 0;
  state_->secondKei = 0;
  return 0;
}

void CSyncFldCtl::SyflFreeFileTbl() {
  state_->clear_files();
  state_->capacity = 0;
  state_->master = {};
}

void CSyncFldCtl::SyflSetMode(short mode) { state_->mode = mode; }

int32_t CSyncFldCtl::SyflAddFileInfo(tSYNC_INFO* info) {
  State& state = *state_;
  if (info == nullptr || state.files.size() >= state.capacity) return -1;
  return tq::guarded<int32_t>(-1, [&] {
    tq::tSYFL_FILEINFO added;
    added.appType = info->appType;
    added.appType2 = info->appType2;
    copy_text(added.fldFile, view(info->fldFile));
    copy_text(added.memberText, view(info->memberText));
    copy_text(added.tmpFileO, view(info->tmpFileO));
    copy_text(added.tmpFileN, view(info->tmpFileN));
    std::copy(std::begin(info->trFlg), std::end(info->trFlg), added.trFlg);
    state.mMakeFldInfo(added);
    state.add(std::move(added));
    return state.files.size() - 1;
  });
}

short CSyncFldCtl::SyflSetMstFileInfo(const unsigned char* masterFldFile) {
  const char* path = reinterpret_cast<const char*>(masterFldFile);
  try {
    state_->read_master(path == nullptr ? "" : path);
  } catch (...) {  // out of memory
    state_->master = {};
    state_->cmpItems.clear();
  }
  return 0;
}

// --- Member files --------------------------------------------------------------------------------

short CSyncFldCtl::SyflGetFldCnt(short file) const {
  const tq::FieldList* list = state_->list(file);
  return list == nullptr ? short{-1} : list->size();
}

short CSyncFldCtl::SyflGetFldId(short file, short pos) const {
  return value_at(state_->list(file), pos, &tq::tSYFL_FLDINFO::fldId);
}

short CSyncFldCtl::SyflGetMugen(short file, short pos) const {
  return value_at(state_->list(file), pos, &tq::tSYFL_FLDINFO::mugenType);
}

short CSyncFldCtl::SyflGetSchFlg(short file, short pos) const {
  return value_at(state_->list(file), pos, &tq::tSYFL_FLDINFO::schFld);
}

short CSyncFldCtl::SyflIsFldId(short file, short fldId) const {
  const tq::FieldList* list = state_->list(file);
  return list != nullptr && list->find(fldId) >= 0 ? 1 : 0;
}

short CSyncFldCtl::SyflIsOutPutFldId(short file, short fldId) const {
  const tq::FieldList* list = state_->list(file);
  return list == nullptr ? short{1} : value(list->entry(fldId), &tq::tSYFL_FLDINFO::special, 1);
}

short CSyncFldCtl::SyflIsOutPutFldId2(short file, short fldId) const {
  const tq::FieldList* list = state_->list(file);
  return list == nullptr ? short{0} : value(list->entry(fldId), &tq::tSYFL_FLDINFO::special, 0);
}

short CSyncFldCtl::SyflGetDataIdS(int32_t file, short fldId) const {
  const tq::FieldList* list = state_->list(file);
  return list == nullptr ? short{-1} : value(list->entry(fldId), &tq::tSYFL_FLDINFO::dataId);
}

short CSyncFldCtl::SyflGetExtGrpFldIdOrg(short file, short fldId) const {
  const tq::FieldList* list = state_->list(file);
  return list == nullptr ? short{-1} : tq::replacement(*list, fldId);
}

short CSyncFldCtl::SyflGetDataId(int32_t file, short fldId) const {
  const std::vector<tq::DataIds>& files = state_->data_ids[state_->mode == 0 ? 0 : 1];
  const auto at = static_cast<std::uint32_t>(file);
  return at < files.size() ? files[at].at(fldId) : short{-1};
}

// --- The master ----------------------------------------------------------------------------------

short CSyncFldCtl::SyflGetMstFldCnt() const { return state_->master_visible(); }

short CSyncFldCtl::SyflGetMstFldCntMax() const { return state_->list(state_->master).size(); }

short CSyncFldCtl::SyflGetMstFldId(short pos) const {
  return value_at(&state_->list(state_->master), pos, &tq::tSYFL_FLDINFO::fldId);
}

short CSyncFldCtl::SyflGetMstFldIdM(short pos) const { return SyflGetMstFldId(pos); }

short CSyncFldCtl::SyflGetMstMugen(short pos) const {
  return value_at(&state_->list(state_->master), pos, &tq::tSYFL_FLDINFO::mugenType);
}

short CSyncFldCtl::SyflGetMstMugenM(short pos) const { return SyflGetMstMugen(pos); }

short CSyncFldCtl::SyflGetMstType(short pos) const {
  return value_at(&state_->list(state_->master), pos, &tq::tSYFL_FLDINFO::dataType);
}

short CSyncFldCtl::SyflGetMstTypeM(short pos) const { return SyflGetMstType(pos); }

short CSyncFldCtl::SyflGetMstSchFlg(short pos) const {
  return value_at(&state_->list(state_->master), pos, &tq::tSYFL_FLDINFO::schFld);
}

short CSyncFldCtl::SyflIsMstFld(short fldId) const {
  return state_->is_master_field(fldId) ? 1 : 0;
}

short CSyncFldCtl::SyflGetDataType(short fldId) const {
  return value(state_->list(state_->master).entry(fldId), &tq::tSYFL_FLDINFO::dataType);
}

short CSyncFldCtl::SyflGetMstDataId(short /*fldId*/, short cmpGrp) const {
  return tq::master_form(cmpGrp);
}
