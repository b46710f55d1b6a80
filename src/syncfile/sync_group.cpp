// One group in memory: its header and its members.
#include <algorithm>
#include <bitset>
#include <cstdio>
#include <cstring>

#include "base/sjis.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"
#include "siblings/siblings.h"
#include "syncfile/sync_file_state.h"
#include "syncfile/sync_records.h"

using tq::copy_text;
using tq::view;

namespace {

bool in_range(int n, int count) { return n >= 0 && n < count; }

using MemberText = char (tq::tSYNC_FILE::*)[TQ_PATH_SIZE];

// The strings and numbers of a caller's record; status words stay the member's own.
void fill(tq::tSYNC_FILE& member, const tSYNC_INFO& info) {
  if (view(member.tmpFileO) != view(info.tmpFileO)) member.tmpFileOFromFile = 0;
  copy_text(member.fldFile, view(info.fldFile));
  copy_text(member.memberText, view(info.memberText));
  copy_text(member.tmpFileO, view(info.tmpFileO));
  copy_text(member.tmpFileN, view(info.tmpFileN));
  copy_text(member.srchFile, view(info.srchFile));
  std::memcpy(member.trFlg, info.trFlg, sizeof member.trFlg);
  member.appType = info.appType;
  member.appType2 = info.appType2;
}

// The getters of title and memo answer with the length of what the caller's buffer held before.
template <std::size_t N>
short copy_out(const char (&from)[N], char* to) {
  if (to == nullptr) return 0;
  const void* end = std::memchr(to, '\0', N);
  const std::size_t before =
      end == nullptr ? N : static_cast<std::size_t>(static_cast<const char*>(end) - to);
  copy_text(to, N, view(from));
  return static_cast<short>(before);
}

}  // namespace

CSyncFileCtl::State::State()
    : group_folder(tq::sibling_folder(&tFLDCOM_API::FldComGetGroupFolder)),
      member_root(tq::sibling_folder(&tFLDCOM_API::FldComGetMemberFolder)),
      work_folder(tq::sibling_folder(&tFLDCOM_API::FldComGetWorkFolder)) {}

void CSyncFileCtl::State::start_group(std::string_view id) {
  csv_heads.clear();
  members.clear();
  mode = Mode::kNormal;
  group = {};
  copy_text(group.id, id);
  rebuild_paths(group);
}

tq::tSYNC_FILE* CSyncFileCtl::State::member(short i) {
  return in_range(i, static_cast<int>(members.size())) ? &members[static_cast<std::size_t>(i)]
                                                       : nullptr;
}

std::string CSyncFileCtl::State::new_file_id() const {
  const std::string_view prefix = view(group.id);
  std::bitset<tq::kIdCount> taken;
  for (const tq::tSYNC_FILE& member : members.records()) {
    const std::string_view id = view(member.fileId);
    if (id.size() != prefix.size() + 3 || id.substr(0, prefix.size()) != prefix) continue;
    const std::string_view digits = id.substr(prefix.size());
    if (digits.find_first_not_of("0123456789") != std::string_view::npos) continue;
    taken.set(static_cast<std::size_t>(tq::decimal(digits)));
  }
  for (std::size_t number = 0; number < taken.size(); ++number) {
    if (taken.test(number)) continue;
    char digits[8];
    std::snprintf(digits, sizeof digits, "%03u", static_cast<unsigned>(number));
    return std::string(prefix) + digits;
  }
  return {};
}

bool CSyncFileCtl::State::add_member(short i, const tSYNC_INFO* info) {
  tq::tSYNC_FILE added{};
  if (info != nullptr) {
    copy_text(added.fileId, new_file_id());
    fill(added, *info);
  }
  const int count = static_cast<int>(members.size());
  const std::size_t place = static_cast<std::size_t>(in_range(i, count - 1) ? i : count);
  if (!members.insert(place, added)) return false;
  if (place < csv_heads.size())
    csv_heads.insert(csv_heads.begin() + static_cast<std::ptrdiff_t>(place), "");
  return true;
}

void CSyncFileCtl::State::renumber_members() {
  // Ids of the old group must not count as taken while the new ones are given out.
  for (tq::tSYNC_FILE& member : members.records()) member.fileId[0] = '\0';
  std::size_t number = 0;
  for (tq::tSYNC_FILE& member : members.records()) {
    if (number == tq::kIdCount) break;
    std::snprintf(member.fileId, sizeof member.fileId, "%s%03u", group.id,
                  static_cast<unsigned>(number++));
  }
}

short CSyncFileCtl::State::delete_member(short i) {
  const tq::tSYNC_FILE* member = this->member(i);
  if (member == nullptr) return 1;
  const std::string_view old_file = view(member->tmpFileO);
  const bool trusted = member->tmpFileOFromFile == 0 || tq::lies_in(old_file, view(group.filePath));
  if (!old_file.empty() && trusted) tq::delete_matching(old_file);
  if (!view(member->tmpFileN).empty()) tq::delete_matching(view(member->tmpFileN));
  const auto place = static_cast<std::size_t>(i);
  members.erase(place);
  if (place < csv_heads.size()) {
    csv_heads.erase(csv_heads.begin() + static_cast<std::ptrdiff_t>(place));
  }
  return 0;
}

std::string CSyncFileCtl::State::csv_head(std::size_t place) {
  if (csv_heads.size() < members.size()) csv_heads.resize(members.size());
  std::string& head = csv_heads[place];
  if (!head.empty()) return head;
  if (!tq::make_unique_file(work_folder, "CSH", head).ok() &&
      !tq::count_unique_name(work_folder, "CSH", head)) {
    head.clear();
  }
  return head;
}

CSyncFileCtl::CSyncFileCtl() : state_(std::make_unique<State>()) {}
CSyncFileCtl::~CSyncFileCtl() = default;

short CSyncFileCtl::Create() {
  return state_->guarded(1, [this] {
    state_->start_group(state_->new_group_id());
    return short{0};
  });
}

short CSyncFileCtl::Create2() {
  return state_->guarded(1, [this] {
    state_->start_group(tq::kWorkingGroup);
    state_->group.syncFlg[tq::kWorkingFlag] = 1;
    return short{0};
  });
}

short CSyncFileCtl::Open(const char* path, const char* mode) {
  if (view(path).empty()) return state_->fail(tq::kErrorOpenArguments, 1);
  state_->csv_heads.clear();
  state_->members.clear();
  copy_text(state_->group.grpPath, path);
  switch (view(mode).substr(0, 1).empty() ? '\0' : tq::sjis::upper_ascii(*mode)) {
    case 'R':
      state_->mode = State::Mode::kReadOnly;
      break;
    case 'W':
      state_->mode = State::Mode::kWrite;
      break;
    default:
      state_->mode = State::Mode::kNormal;
      break;
  }
  return 0;
}

short CSyncFileCtl::Read() {
  return state_->guarded(-1, [this] { return state_->read(); });
}

short CSyncFileCtl::Write(short renumber) {
  return state_->guarded(1, [&] { return state_->write(renumber == 1); });
}

short CSyncFileCtl::GetSyncFileCnt() { return static_cast<short>(state_->members.size()); }

void CSyncFileCtl::SetSyncType(short type) { state_->group.syncType = type; }

short CSyncFileCtl::GetSyncType() { return state_->group.syncType; }

void CSyncFileCtl::SetTitle(const char* title) {
  if (title != nullptr) copy_text(state_->group.title, title);
}

short CSyncFileCtl::GetTitle(char* title) { return copy_out(state_->group.title, title); }

void CSyncFileCtl::SetMemo(const char* memo) {
  if (memo != nullptr) copy_text(state_->group.memo, memo);
}

short CSyncFileCtl::GetMemo(char* memo) { return copy_out(state_->group.memo, memo); }

short CSyncFileCtl::SetSyncFlg(short n, short value) {
  if (!in_range(n, TQ_FLG_COUNT)) return 1;
  state_->group.syncFlg[n] = value;
  return 0;
}

short CSyncFileCtl::GetSyncFlg(short n) {
  return in_range(n, TQ_FLG_COUNT) ? state_->group.syncFlg[n] : short{-1};
}

short CSyncFileCtl::SetSyncFileInfo(short i, tSYNC_INFO* info) {
  tq::tSYNC_FILE* member = state_->member(i);
  if (member == nullptr) return 1;
  if (info != nullptr) fill(*member, *info);
  return 0;
}

short CSyncFileCtl::AddSyncFileInfo(short i, tSYNC_INFO* info) {
  return state_->guarded(1, [&] {
    return state_->add_member(i, info) ? short{0} : state_->fail(tq::kErrorMemory, 1);
  });
}

short CSyncFileCtl::GetSyncFileInfo(short i, tSYNC_INFO* info) {
  const tq::tSYNC_FILE* member = state_->member(i);
  if (member == nullptr) return 1;
  if (info == nullptr) return 0;
  copy_text(info->fldFile, TQ_PATH_SIZE, view(member->fldFile));
  copy_text(info->memberText, TQ_PATH_SIZE, view(member->memberText));
  copy_text(info->tmpFileO, TQ_PATH_SIZE, view(member->tmpFileO));
  copy_text(info->tmpFileN, TQ_PATH_SIZE, view(member->tmpFileN));
  copy_text(info->srchFile, TQ_PATH_SIZE, view(member->srchFile));
  std::memcpy(info->sts, member->sts, sizeof info->sts);
  std::memcpy(info->trFlg, member->trFlg, sizeof info->trFlg);
  info->appType = member->appType;
  info->appType2 = member->appType2;
  return 0;
}

short CSyncFileCtl::GetSyncFileID(short i, char* id) {
  const tq::tSYNC_FILE* member = state_->member(i);
  if (member == nullptr) return 1;
  copy_text(id, TQ_FILE_ID_SIZE, view(member->fileId));
  return 0;
}

short CSyncFileCtl::DeleteSyncFileInfo(short i) {
  return state_->guarded(1, [&] { return state_->delete_member(i); });
}

short CSyncFileCtl::SetSyncTrFlg(short i, short n, short value) {
  tq::tSYNC_FILE* member = state_->member(i);
  if (member == nullptr || !in_range(n, TQ_FLG_COUNT)) return 1;
  member->trFlg[n] = value;
  return 0;
}

short CSyncFileCtl::GetSyncTrFlg(short i, short n) {
  const tq::tSYNC_FILE* member = state_->member(i);
  return member != nullptr && in_range(n, TQ_FLG_COUNT) ? member->trFlg[n] : short{-1};
}

short CSyncFileCtl::SetSyncFileSts(short i, short n, short value) {
  tq::tSYNC_FILE* member = state_->member(i);
  if (member == nullptr || !in_range(n, TQ_STS_COUNT)) return 1;
  member->sts[n] = value;
  return 0;
}

short CSyncFileCtl::GetSyncFileSts(short i, short n) {
  const tq::tSYNC_FILE* member = state_->member(i);
  return member != nullptr && in_range(n, TQ_STS_COUNT) ? static_cast<short>(member->sts[n])
                                                        : short{-1};
}

short CSyncFileCtl::GetSyncFileSts2(const char* fileId, short n) {
  return GetSyncFileSts(GetSyncFilePos(fileId), n);
}

short CSyncFileCtl::GetSyncFilePos(const char* fileId) {
  const auto members = state_->members.records();
  if (fileId == nullptr) return -1;
  const auto found =
      std::find_if(members.begin(), members.end(),
                   [&](const tq::tSYNC_FILE& member) { return view(member.fileId) == fileId; });
  return found == members.end() ? short{-1} : static_cast<short>(found - members.begin());
}

short CSyncFileCtl::AddSyncFileFldFile(short i, const char* source) {
  tq::tSYNC_FILE* member = state_->member(i);
  if (member == nullptr) return 1;
  return state_->guarded(0, [&] {
    std::string copy;
    if (!tq::make_unique_file(view(state_->group.filePath), "fld", copy).ok()) return short{0};
    if (copy.size() <= tq::kPathMax && tq::platform::copy_file(view(source), copy).ok()) {
      copy_text(member->fldFile, copy);
    } else {
      static_cast<void>(tq::platform::delete_file(copy));
    }
    return short{0};
  });
}

// The eight string accessors answer -1 whatever happens; callers have always ignored it.
template <MemberText kText>
static short set_text(tq::tSYNC_FILE* member, const char* text) {
  if (member != nullptr && text != nullptr) {
    if constexpr (kText == &tq::tSYNC_FILE::tmpFileO) {
      if (view(member->tmpFileO) != view(text)) member->tmpFileOFromFile = 0;
    }
    copy_text(member->*kText, view(text));
  }
  return -1;
}

template <MemberText kText>
static short get_text(const tq::tSYNC_FILE* member, char* text) {
  if (member != nullptr) copy_text(text, TQ_PATH_SIZE, view(member->*kText));
  return -1;
}

short CSyncFileCtl::SetSyncFileFldFile(short i, char* text) {
  return set_text<&tq::tSYNC_FILE::fldFile>(state_->member(i), text);
}

short CSyncFileCtl::GetSyncFileFldFile(short i, char* text) {
  return get_text<&tq::tSYNC_FILE::fldFile>(state_->member(i), text);
}

short CSyncFileCtl::SetSyncFileTmpFileN(short i, char* text) {
  return set_text<&tq::tSYNC_FILE::tmpFileN>(state_->member(i), text);
}

short CSyncFileCtl::GetSyncFileTmpFileN(short i, char* text) {
  return get_text<&tq::tSYNC_FILE::tmpFileN>(state_->member(i), text);
}

short CSyncFileCtl::SetSyncFileTmpFileO(short i, char* text) {
  return set_text<&tq::tSYNC_FILE::tmpFileO>(state_->member(i), text);
}

short CSyncFileCtl::GetSyncFileTmpFileO(short i, char* text) {
  return get_text<&tq::tSYNC_FILE::tmpFileO>(state_->member(i), text);
}

short CSyncFileCtl::SetSyncFileSrchFile(short i, char* text) {
  return set_text<&tq::tSYNC_FILE::srchFile>(state_->member(i), text);
}

short CSyncFileCtl::GetSyncFileSrchFile(short i, char* text) {
  return get_text<&tq::tSYNC_FILE::srchFile>(state_->member(i), text);
}

void CSyncFileCtl::GetSyncGrpID(char* id) {
  copy_text(id, sizeof state_->group.id, view(state_->group.id));
}

void CSyncFileCtl::GetSyncGrpPath(char* path) {
  copy_text(path, TQ_PATH_SIZE, view(state_->group.grpPath));
}

void CSyncFileCtl::GetSyncFilePath(char* path) {
  copy_text(path, TQ_PATH_SIZE, view(state_->group.filePath));
}

short CSyncFileCtl::GetSyncCsvHeadPath(short i, char* path) {
  if (state_->member(i) == nullptr) return -1;
  return state_->guarded(-1, [&] {
    const std::string head = state_->csv_head(static_cast<std::size_t>(i));
    if (head.empty()) return short{-1};
    copy_text(path, TQ_PATH_SIZE, head);
    return short{0};
  });
}

short CSyncFileCtl::LastError() const { return state_->last_error; }

short CSyncFileCtl::SyncInfoAlloc(tSYNC_INFO* info) {
  tq::alloc_strings(info);
  return 0;
}

short CSyncFileCtl::SyncInfoFree(tSYNC_INFO* info) {
  tq::free_strings(info);
  return 0;
}

short CSyncFileCtl::SyncInfoCopy(tSYNC_INFO* from, tSYNC_INFO2* to) {
  tq::copy_record(from, to);
  return 0;
}

short CSyncFileCtl::SyncInfoCopy2(tSYNC_INFO2* from, tSYNC_INFO* to) {
  tq::copy_record(from, to);
  return 0;
}

short CSyncFileCtl::SyncGrpAlloc(tSYNC_GRP* grp) {
  tq::alloc_strings(grp);
  return 0;
}

short CSyncFileCtl::SyncGrpFree(tSYNC_GRP* grp) {
  tq::free_strings(grp);
  return 0;
}

short CSyncFileCtl::SyncGrpCopy(tSYNC_GRP* from, tSYNC_GRP2* to) {
  tq::copy_record(from, to);
  return 0;
}

short CSyncFileCtl::SyncGrpCopy2(tSYNC_GRP2* from, tSYNC_GRP* to) {
  tq::copy_record(from, to);
  return 0;
}
