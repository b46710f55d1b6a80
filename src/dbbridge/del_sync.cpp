#include "dbbridge/del_sync.h"

#include <string>

#include "base/sjis_literal.h"
#include "common/text.h"
#include "tqutil/syncfile.h"

namespace tq {
namespace {

constexpr const char* kWorkingId = "999";
constexpr const char* kTitle = "削除シンクロ作業用ファイル"_sjis;
constexpr short kDelSyncType = 5;
constexpr short kAppend = -1;

// Closes what a step opened, whatever way it ends.
class Handle {
 public:
  explicit Handle(int32_t handle) : handle_(handle) {}
  ~Handle() { static_cast<void>(close()); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  int32_t get() const { return handle_; }
  explicit operator bool() const { return handle_ != 0; }
  bool close() {
    const bool closed = handle_ == 0 || CloseSyncFile(handle_) == 0;
    handle_ = 0;
    return closed;
  }

 private:
  int32_t handle_;
};

struct Group : tSYNC_GRP {
  Group() : tSYNC_GRP{} { SyncGrpAlloc(this); }
  ~Group() { SyncGrpFree(this); }
  Group(const Group&) = delete;
  Group& operator=(const Group&) = delete;
};

struct Member : tSYNC_INFO {
  Member() : tSYNC_INFO{} { SyncInfoAlloc(this); }
  ~Member() { SyncInfoFree(this); }
  Member(const Member&) = delete;
  Member& operator=(const Member&) = delete;
};

// The index of the first member with that text, and of that application type unless `any_type`; -1
// if none.
short find_member(int32_t handle, std::string_view text, bool any_type) {
  Member member;
  const short count = GetSyncFileCnt(handle);
  for (short i = 0; i < count; ++i) {
    if (GetSyncFileInfo(i, &member, handle) != 0) continue;
    if ((any_type || member.appType == TQ_APP_MASTER) && view(member.memberText) == text) return i;
  }
  return -1;
}

bool remove_previous() {
  short count = 0;
  Handle listing(GetSyncGrpInit(&count));
  if (!listing) return false;
  Group group;
  short pos = 0;
  while (GetSyncGrpNext(&pos, &group, listing.get()) == 0) {
    if (view(group.id) != kWorkingId) continue;
    if (DeleteSyncGrpInfo(pos, listing.get()) != 0) return false;
    break;
  }
  return listing.close();
}

bool create_empty(std::string& path) {
  Handle working(CreateSyncFile2());
  if (!working) return false;
  char buffer[TQ_PATH_SIZE] = {};
  GetSyncGrpPath(buffer, working.get());
  path = buffer;
  SetSyncType(kDelSyncType, working.get());
  SetSyncTitle(kTitle, working.get());
  return WriteSyncFile(1, working.get()) == 0 && working.close();
}

// Groups that cannot be opened or read have no master.
bool has_master(const char* path, std::string_view key) {
  Handle group(OpenSyncFile(path, "r"));
  return group && ReadSyncFile(group.get()) >= 0 && find_member(group.get(), key, false) >= 0;
}

// The working group is opened and saved for each member, so that it is whole after every step.
bool add_to_working(const std::string& path, Member& member) {
  Handle working(OpenSyncFile(path.c_str(), "a"));
  if (!working || ReadSyncFile(working.get()) < 0) return false;
  if (find_member(working.get(), view(member.memberText), true) < 0 &&
      AddSyncFileInfo(kAppend, &member, working.get()) != 0) {
    return false;
  }
  return WriteSyncFile(0, working.get()) == 0 && working.close();
}

bool copy_members(const char* from, const std::string& working_path) {
  Handle group(OpenSyncFile(from, "r"));
  if (!group || ReadSyncFile(group.get()) < 0) return false;
  Member member;
  const short count = GetSyncFileCnt(group.get());
  for (short i = 0; i < count; ++i) {
    if (GetSyncFileInfo(i, &member, group.get()) != 0) return false;
    if (!add_to_working(working_path, member)) return false;
  }
  return group.close();
}

}  // namespace

short create_del_sync_file(const char* key, char* out_path) {
  std::string working_path;
  if (!remove_previous() || !create_empty(working_path)) return -1;
  short count = 0;
  Handle listing(GetSyncGrpInit(&count));
  if (!listing) return -1;
  const std::string wanted(view(key));
  Group group;
  short pos = 0;
  int copied = 0;
  while (GetSyncGrpNext(&pos, &group, listing.get()) == 0) {
    if (view(group.id) == kWorkingId || !has_master(group.grpPath, wanted)) continue;
    if (!copy_members(group.grpPath, working_path)) return -1;
    ++copied;
  }
  if (!listing.close()) return -1;
  if (copied == 0) return 1;
  copy_text(out_path, TQ_PATH_SIZE, working_path);
  return 0;
}

}  // namespace tq
