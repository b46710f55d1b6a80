// Flat functions of field mapping: handles over CSyncFldCtl, and the field comparison control.
#include <type_traits>

#include "api/handle_table.h"
#include "syncfld/fld_comp.h"
#include "tqutil/syncfld.h"

namespace {

constexpr std::size_t kSlots = 10;
tq::HandleTable<CSyncFldCtl, kSlots> handles;

constexpr std::size_t kComparisonSlots = 20;
tq::HandleTable<tq::FieldComparison, kComparisonSlots> comparisons;

// The values for handle 0 (and every other handle that is not open).
constexpr short kNone = -1;
constexpr short kNo = 0;

// Runs a member; one without a result gives 0. The member is a parameter of the template, so that
// nothing stands between a lookup and its table.
template <auto kMember, class Result, class... Args>
Result call(int32_t handle, Result failure, Args... args) noexcept {
  return tq::with(handles, handle, failure, [&](CSyncFldCtl& object) {
    if constexpr (std::is_void_v<decltype((object.*kMember)(args...))>) {
      (object.*kMember)(args...);
      return short{0};
    } else {
      return (object.*kMember)(args...);
    }
  });
}

}  // namespace

int32_t TQ_CALL CreateSyflCtl() noexcept {
  return handles.open([](CSyncFldCtl&) { return true; });
}

short TQ_CALL FreeSyflCtl(int32_t handle) noexcept { return handles.close(handle, 1); }

short TQ_CALL SyflCreateFileTbl(short capacity, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflCreateFileTbl>(handle, kNone, capacity);
}

short TQ_CALL SyflFreeFileTbl(int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflFreeFileTbl>(handle, kNone);
}

short TQ_CALL SyflSetMode(short mode, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflSetMode>(handle, kNone, mode);
}

int32_t TQ_CALL SyflAddFileInfo(tSYNC_INFO* info, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflAddFileInfo>(handle, int32_t{kNone}, info);
}

short TQ_CALL SyflSetMstFileInfo(const unsigned char* masterFldFile, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflSetMstFileInfo>(handle, kNone, masterFldFile);
}

short TQ_CALL SyflGetFldCnt(short file, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetFldCnt>(handle, kNone, file);
}

short TQ_CALL SyflGetFldId(short file, short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetFldId>(handle, kNone, file, pos);
}

short TQ_CALL SyflGetMugen(short file, short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMugen>(handle, kNone, file, pos);
}

short TQ_CALL SyflGetSchFlg(short file, short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetSchFlg>(handle, kNone, file, pos);
}

short TQ_CALL SyflIsFldId(short file, short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflIsFldId>(handle, kNo, file, fldId);
}

short TQ_CALL SyflIsOutPutFldId(short file, short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflIsOutPutFldId>(handle, kNo, file, fldId);
}

short TQ_CALL SyflIsOutPutFldId2(short file, short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflIsOutPutFldId2>(handle, kNo, file, fldId);
}

short TQ_CALL SyflGetDataIdS(int32_t file, short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetDataIdS>(handle, kNone, file, fldId);
}

short TQ_CALL SyflGetExtGrpFldIdOrg(short file, short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetExtGrpFldIdOrg>(handle, kNone, file, fldId);
}

short TQ_CALL SyflGetDataId(int32_t file, short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetDataId>(handle, kNone, file, fldId);
}

short TQ_CALL SyflGetMstFldCnt(int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstFldCnt>(handle, kNone);
}

short TQ_CALL SyflGetMstFldCntMax(int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstFldCntMax>(handle, kNone);
}

short TQ_CALL SyflGetMstFldId(short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstFldId>(handle, kNone, pos);
}

short TQ_CALL SyflGetMstFldIdM(short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstFldIdM>(handle, kNone, pos);
}

short TQ_CALL SyflGetMstMugen(short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstMugen>(handle, kNone, pos);
}

short TQ_CALL SyflGetMstMugenM(short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstMugenM>(handle, kNone, pos);
}

short TQ_CALL SyflGetMstType(short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstType>(handle, kNone, pos);
}

short TQ_CALL SyflGetMstTypeM(short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstTypeM>(handle, kNone, pos);
}

short TQ_CALL SyflGetMstSchFlg(short pos, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstSchFlg>(handle, kNone, pos);
}

short TQ_CALL SyflIsMstFld(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflIsMstFld>(handle, kNo, fldId);
}

short TQ_CALL SyflGetDataType(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetDataType>(handle, kNone, fldId);
}

short TQ_CALL SyflGetMstDataId(short fldId, short cmpGrp, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SyflGetMstDataId>(handle, kNone, fldId, cmpGrp);
}

short TQ_CALL SykyGetKey(short appType, short keyNo, int32_t handle) noexcept {
  return handle >= 1 ? CSyncFldCtl::SykyGetKey(appType, keyNo) : kNone;
}

short TQ_CALL SykyIsMugen(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyIsMugen>(handle, kNone, fldId);
}

short TQ_CALL SykyGetMugenType(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetMugenType>(handle, kNone, fldId);
}

short TQ_CALL SykyGetMugenGrp(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetMugenGrp>(handle, kNone, fldId);
}

short TQ_CALL SykyGetCmpGrp(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetCmpGrp>(handle, kNone, fldId);
}

short TQ_CALL SykyGetFldRank(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetFldRank>(handle, kNone, fldId);
}

short TQ_CALL SykyFld2SchFld(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyFld2SchFld>(handle, kNone, fldId);
}

short TQ_CALL SykyFld2SchFldMst(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyFld2SchFldMst>(handle, kNone, fldId);
}

const char* TQ_CALL SykyGetSchTblName(short schId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetSchTblName>(handle, static_cast<const char*>(nullptr), schId);
}

short TQ_CALL SykyGetMugenGrpCnt(short grp, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetMugenGrpCnt>(handle, kNone, grp);
}

short TQ_CALL SykyGetMugenGrpNext(short grp, tSYNC_MSCH* state, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetMugenGrpNext>(handle, kNone, grp, state);
}

short TQ_CALL SykyGetMugenTypeFld(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetMugenTypeFld>(handle, kNone, fldId);
}

short TQ_CALL SykyGetMugenLinkFldNext(short fldId, tSYNC_MSCH* state, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetMugenLinkFldNext>(handle, kNone, fldId, state);
}

short TQ_CALL SykyIsKeiFldID(short fldId, int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyIsKeiFldID>(handle, kNo, fldId);
}

short TQ_CALL SykyGetMugenGrpSizeMax(int32_t handle) noexcept {
  return call<&CSyncFldCtl::SykyGetMugenGrpSizeMax>(handle, kNone);
}

int32_t TQ_CALL CreateFldCompCtl() noexcept {
  return comparisons.open([](tq::FieldComparison&) { return true; });
}

short TQ_CALL FreeFldCompCtl(int32_t handle) noexcept { return comparisons.close(handle, 1); }

// The control is not asked, so the handle does not matter.
short TQ_CALL isFldComp(short /*fldId*/, int32_t /*handle*/) noexcept { return 1; }
