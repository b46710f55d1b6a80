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

// Runs a member; one without a result gives 0.
template <class Result, class Member, class... Args>
Result call(int32_t handle, Result failure, Member member, Args... args) noexcept {
  return tq::with(handles, handle, failure, [&](CSyncFldCtl& object) {
    if constexpr (std::is_void_v<decltype((object.*member)(args...))>) {
      (object.*member)(args...);
      return short{0};
    } else {
      return (object.*member)(args...);
    }
  });
}

}  // namespace

int32_t TQ_CALL CreateSyflCtl() noexcept {
  return handles.open([](CSyncFldCtl&) { return true; });
}

short TQ_CALL FreeSyflCtl(int32_t handle) noexcept { return handles.close(handle, 1); }

short TQ_CALL SyflCreateFileTbl(short capacity, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflCreateFileTbl, capacity);
}

short TQ_CALL SyflFreeFileTbl(int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflFreeFileTbl);
}

short TQ_CALL SyflSetMode(short mode, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflSetMode, mode);
}

int32_t TQ_CALL SyflAddFileInfo(tSYNC_INFO* info, int32_t handle) noexcept {
  return call(handle, int32_t{kNone}, &CSyncFldCtl::SyflAddFileInfo, info);
}

short TQ_CALL SyflSetMstFileInfo(const unsigned char* masterFldFile, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflSetMstFileInfo, masterFldFile);
}

short TQ_CALL SyflGetFldCnt(short file, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetFldCnt, file);
}

short TQ_CALL SyflGetFldId(short file, short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetFldId, file, pos);
}

short TQ_CALL SyflGetMugen(short file, short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMugen, file, pos);
}

short TQ_CALL SyflGetSchFlg(short file, short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetSchFlg, file, pos);
}

short TQ_CALL SyflIsFldId(short file, short fldId, int32_t handle) noexcept {
  return call(handle, kNo, &CSyncFldCtl::SyflIsFldId, file, fldId);
}

short TQ_CALL SyflIsOutPutFldId(short file, short fldId, int32_t handle) noexcept {
  return call(handle, kNo, &CSyncFldCtl::SyflIsOutPutFldId, file, fldId);
}

short TQ_CALL SyflIsOutPutFldId2(short file, short fldId, int32_t handle) noexcept {
  return call(handle, kNo, &CSyncFldCtl::SyflIsOutPutFldId2, file, fldId);
}

short TQ_CALL SyflGetDataIdS(int32_t file, short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetDataIdS, file, fldId);
}

short TQ_CALL SyflGetExtGrpFldIdOrg(short file, short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetExtGrpFldIdOrg, file, fldId);
}

short TQ_CALL SyflGetDataId(int32_t file, short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetDataId, file, fldId);
}

short TQ_CALL SyflGetMstFldCnt(int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstFldCnt);
}

short TQ_CALL SyflGetMstFldCntMax(int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstFldCntMax);
}

short TQ_CALL SyflGetMstFldId(short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstFldId, pos);
}

short TQ_CALL SyflGetMstFldIdM(short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstFldIdM, pos);
}

short TQ_CALL SyflGetMstMugen(short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstMugen, pos);
}

short TQ_CALL SyflGetMstMugenM(short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstMugenM, pos);
}

short TQ_CALL SyflGetMstType(short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstType, pos);
}

short TQ_CALL SyflGetMstTypeM(short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstTypeM, pos);
}

short TQ_CALL SyflGetMstSchFlg(short pos, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstSchFlg, pos);
}

short TQ_CALL SyflIsMstFld(short fldId, int32_t handle) noexcept {
  return call(handle, kNo, &CSyncFldCtl::SyflIsMstFld, fldId);
}

short TQ_CALL SyflGetDataType(short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetDataType, fldId);
}

short TQ_CALL SyflGetMstDataId(short fldId, short cmpGrp, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SyflGetMstDataId, fldId, cmpGrp);
}

short TQ_CALL SykyGetKey(short appType, short keyNo, int32_t handle) noexcept {
  return handle >= 1 ? CSyncFldCtl::SykyGetKey(appType, keyNo) : kNone;
}

short TQ_CALL SykyIsMugen(short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyIsMugen, fldId);
}

short TQ_CALL SykyGetMugenType(short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyGetMugenType, fldId);
}

short TQ_CALL SykyGetMugenGrp(short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyGetMugenGrp, fldId);
}

short TQ_CALL SykyGetCmpGrp(short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyGetCmpGrp, fldId);
}

short TQ_CALL SykyGetFldRank(short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyGetFldRank, fldId);
}

short TQ_CALL SykyFld2SchFld(short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyFld2SchFld, fldId);
}

short TQ_CALL SykyFld2SchFldMst(short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyFld2SchFldMst, fldId);
}

const char* TQ_CALL SykyGetSchTblName(short schId, int32_t handle) noexcept {
  return call(handle, static_cast<const char*>(nullptr), &CSyncFldCtl::SykyGetSchTblName, schId);
}

short TQ_CALL SykyGetMugenGrpCnt(short grp, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyGetMugenGrpCnt, grp);
}

short TQ_CALL SykyGetMugenGrpNext(short grp, tSYNC_MSCH* state, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyGetMugenGrpNext, grp, state);
}

short TQ_CALL SykyGetMugenTypeFld(short fldId, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyGetMugenTypeFld, fldId);
}

short TQ_CALL SykyGetMugenLinkFldNext(short fldId, tSYNC_MSCH* state, int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyGetMugenLinkFldNext, fldId, state);
}

short TQ_CALL SykyIsKeiFldID(short fldId, int32_t handle) noexcept {
  return call(handle, kNo, &CSyncFldCtl::SykyIsKeiFldID, fldId);
}

short TQ_CALL SykyGetMugenGrpSizeMax(int32_t handle) noexcept {
  return call(handle, kNone, &CSyncFldCtl::SykyGetMugenGrpSizeMax);
}

int32_t TQ_CALL CreateFldCompCtl() noexcept {
  return comparisons.open([](tq::FieldComparison&) { return true; });
}

short TQ_CALL FreeFldCompCtl(int32_t handle) noexcept { return comparisons.close(handle, 1); }

// The control is not asked, so the handle does not matter.
short TQ_CALL isFldComp(short /*fldId*/, int32_t /*handle*/) noexcept { return 1; }
