#include "syncfile/sync_records.h"

#include <cstddef>
#include <cstring>
#include <iterator>

#include "common/table_memory.h"
#include "common/text.h"

namespace tq {
namespace {

// The interface is 32-bit Windows' own; every other build keeps the same layout of the flat forms.
static_assert(sizeof(tSYNC_ID) == 12);
static_assert(offsetof(tSYNC_ID, file) == 2 && offsetof(tSYNC_ID, rec) == 4);
static_assert(sizeof(tVAL_INFO) == 8);
static_assert(sizeof(tSYNC_INFO2) == 1396);
static_assert(offsetof(tSYNC_INFO2, srchFile) == 1048 && offsetof(tSYNC_INFO2, sts) == 1312);
static_assert(offsetof(tSYNC_INFO2, trFlg) == 1352 && offsetof(tSYNC_INFO2, appType) == 1392);
static_assert(sizeof(tSYNC_GRP2) == 836);
static_assert(offsetof(tSYNC_GRP2, id) == 4 && offsetof(tSYNC_GRP2, title) == 8);
static_assert(offsetof(tSYNC_GRP2, grpPath) == 268 && offsetof(tSYNC_GRP2, syncFlg) == 792);
static_assert(offsetof(tSYNC_GRP2, pos) == 832 && offsetof(tSYNC_GRP2, cap) == 834);
static_assert(sizeof(void*) != 4 || sizeof(tSYNC_INFO) == 104);
static_assert(sizeof(void*) != 4 || sizeof(tSYNC_GRP) == 64);

// The five strings of a member, in the order of the record.
constexpr char* tSYNC_INFO::*kInfoStrings[] = {&tSYNC_INFO::fldFile, &tSYNC_INFO::memberText,
                                               &tSYNC_INFO::tmpFileO, &tSYNC_INFO::tmpFileN,
                                               &tSYNC_INFO::srchFile};
using PathArray = char[TQ_PATH_SIZE];
constexpr PathArray tSYNC_INFO2::*kInfo2Strings[] = {
    &tSYNC_INFO2::fldFile, &tSYNC_INFO2::memberText, &tSYNC_INFO2::tmpFileO, &tSYNC_INFO2::tmpFileN,
    &tSYNC_INFO2::srchFile};
constexpr std::size_t kInfoStringCount = std::size(kInfoStrings);

struct GroupString {
  char* tSYNC_GRP::*string;
  std::size_t size;
};
constexpr GroupString kGroupStrings[] = {{&tSYNC_GRP::id, TQ_GRP_ID_SIZE},
                                         {&tSYNC_GRP::title, TQ_TITLE_SIZE},
                                         {&tSYNC_GRP::memo, TQ_TITLE_SIZE},
                                         {&tSYNC_GRP::grpPath, TQ_PATH_SIZE},
                                         {&tSYNC_GRP::filePath, TQ_PATH_SIZE}};

char* new_string(std::size_t size) { return static_cast<char*>(TblAlloc(size, 1)); }

}  // namespace

void alloc_strings(tSYNC_INFO* info) {
  if (info == nullptr) return;
  for (auto string : kInfoStrings) info->*string = new_string(TQ_PATH_SIZE);
}

void free_strings(tSYNC_INFO* info) {
  if (info == nullptr) return;
  for (auto string : kInfoStrings) {
    TblFree(info->*string);
    info->*string = nullptr;
  }
}

void alloc_strings(tSYNC_GRP* grp) {
  if (grp == nullptr) return;
  for (const auto& [string, size] : kGroupStrings) grp->*string = new_string(size);
}

void free_strings(tSYNC_GRP* grp) {
  if (grp == nullptr) return;
  for (const auto& [string, size] : kGroupStrings) TblFree(grp->*string);
}

void copy_record(const tSYNC_INFO* from, tSYNC_INFO2* to) {
  if (from == nullptr || to == nullptr) return;
  for (std::size_t i = 0; i < kInfoStringCount; ++i) {
    copy_text(to->*kInfo2Strings[i], view(from->*kInfoStrings[i]));
  }
  std::memcpy(to->sts, from->sts, sizeof to->sts);
  std::memcpy(to->trFlg, from->trFlg, sizeof to->trFlg);
  to->appType = from->appType;
  to->appType2 = from->appType2;
}

void copy_record(const tSYNC_INFO2* from, tSYNC_INFO* to) {
  if (from == nullptr || to == nullptr) return;
  for (std::size_t i = 0; i < kInfoStringCount; ++i) {
    copy_text(to->*kInfoStrings[i], TQ_PATH_SIZE, view(from->*kInfo2Strings[i]));
  }
  std::memcpy(to->sts, from->sts, sizeof to->sts);
  std::memcpy(to->trFlg, from->trFlg, sizeof to->trFlg);
  to->appType = from->appType;
  to->appType2 = from->appType2;
}

void copy_record(const tSYNC_GRP* from, tSYNC_GRP2* to) {
  if (from == nullptr || to == nullptr) return;
  copy_text(to->id, view(from->id));
  copy_text(to->title, view(from->title));
  copy_text(to->memo, view(from->memo));
  copy_text(to->grpPath, view(from->grpPath));
  copy_text(to->filePath, view(from->filePath));
  std::memcpy(to->syncFlg, from->syncFlg, sizeof to->syncFlg);
  to->syncType = from->syncType;
  to->fileCnt = from->fileCnt;
}

void copy_record(const tSYNC_GRP2* from, tSYNC_GRP* to) {
  if (from == nullptr || to == nullptr) return;
  copy_text(to->id, TQ_GRP_ID_SIZE, view(from->id));
  copy_text(to->title, TQ_TITLE_SIZE, view(from->title));
  copy_text(to->memo, TQ_TITLE_SIZE, view(from->memo));
  copy_text(to->grpPath, TQ_PATH_SIZE, view(from->grpPath));
  copy_text(to->filePath, TQ_PATH_SIZE, view(from->filePath));
  std::memcpy(to->syncFlg, from->syncFlg, sizeof to->syncFlg);
  to->syncType = from->syncType;
  to->fileCnt = from->fileCnt;
}

}  // namespace tq
