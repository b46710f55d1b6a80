#include "library/groups.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <new>

#include "failure.h"
#include "text/library_text.h"
#include "text/native_path.h"
#include "text/numbers.h"
#include "tqutil/syncfile.h"

namespace tqsync {
namespace {

// The transfer flag of a member that keeps its encoding (the number of an Encoding). The library
// stores the flags for its host and uses only 0 and 19 itself.
constexpr int kEncodingFlag = 10;

// A group that is open in the library.
class OpenGroup {
 public:
  explicit OpenGroup(std::int32_t handle) : handle_(handle) {
    if (handle == 0) throw Failure("the library cannot open another group");
  }
  ~OpenGroup() { CloseSyncFile(handle_); }
  OpenGroup(const OpenGroup&) = delete;
  OpenGroup& operator=(const OpenGroup&) = delete;

  std::int32_t handle() const { return handle_; }

  void read(const std::string& id) {
    if (ReadSyncFile(handle_) < 0) {
      throw Failure("group " + id + ": its file cannot be read. Check that you may read it.");
    }
  }
  void write(short renumber) {
    if (WriteSyncFile(renumber, handle_) != 0) {
      throw Failure(
          "the group file cannot be written. Check that the disk is not full and that you "
          "may write to the group folder.");
    }
  }

 private:
  std::int32_t handle_;
};

// A listing of all groups.
class Listing {
 public:
  Listing() : handle_(GetSyncGrpInit(&count_)) {
    if (handle_ == 0) {
      throw Failure(
          "the groups cannot be listed. Check the home folder (--home, TQUTIL_HOME) and "
          "that you may read it; \"tqsync init\" makes one.");
    }
  }
  ~Listing() { GetSyncGrpClose(handle_); }
  Listing(const Listing&) = delete;
  Listing& operator=(const Listing&) = delete;

  std::int32_t handle() const { return handle_; }

 private:
  short count_ = 0;
  std::int32_t handle_;
};

// Whether all buffers could be allocated.
bool complete(const tSYNC_INFO& info) {
  return info.fldFile && info.memberText && info.tmpFileO && info.tmpFileN && info.srchFile;
}
bool complete(const tSYNC_GRP& group) {
  return group.id && group.title && group.memo && group.grpPath && group.filePath;
}

// One of the exchanged records with its buffers.
template <class Record, auto kAllocate, auto kRelease>
class Exchanged {
 public:
  Exchanged() {
    kAllocate(&record_);
    if (complete(record_)) return;
    kRelease(&record_);
    throw std::bad_alloc();
  }
  ~Exchanged() { kRelease(&record_); }
  Exchanged(const Exchanged&) = delete;
  Exchanged& operator=(const Exchanged&) = delete;

  Record& operator*() { return record_; }
  Record* operator->() { return &record_; }

 private:
  Record record_{};
};
using MemberRecord = Exchanged<tSYNC_INFO, SyncInfoAlloc, SyncInfoFree>;
using GroupRecord = Exchanged<tSYNC_GRP, SyncGrpAlloc, SyncGrpFree>;

// The library keeps a blank where there is no text.
std::string text_of(const char* sjis) {
  const std::string text = from_sjis(sjis);
  return text == " " ? "" : text;
}

// A title or memo for a group file, which has room for 128 bytes, is read by lines and takes lines
// that begin with a semicolon for comments.
std::string group_text(const std::string& what, const std::string& utf8) {
  const std::string sjis = to_sjis(what, utf8);
  constexpr std::size_t kMost = 128;
  if (sjis.size() > kMost) {
    throw Failure(what + ": the text is too long; 64 kanji or 128 letters are the most.");
  }
  if (sjis.starts_with(';') || sjis.find_first_of("\r\n") != std::string::npos) {
    throw Failure(what + ": the text must be one line and must not begin with a semicolon.");
  }
  return sjis;
}

Encoding encoding_of(short flag) {
  const bool known = flag == static_cast<short>(Encoding::kUtf8) ||
                     flag == static_cast<short>(Encoding::kShiftJis);
  return known ? static_cast<Encoding>(flag) : Encoding::kDetect;
}

std::vector<Member> members_of(OpenGroup& group) {
  std::vector<Member> members;
  MemberRecord record;
  const short count = GetSyncFileCnt(group.handle());
  for (short i = 0; i < count; ++i) {
    char file_id[TQ_FILE_ID_SIZE] = "";
    if (GetSyncFileInfo(i, &*record, group.handle()) != 0) continue;
    GetSyncFileID(i, file_id, group.handle());
    members.push_back({to_native_path(record->memberText), record->appType,
                       encoding_of(record->trFlg[kEncodingFlag]), file_id});
  }
  return members;
}

// Whether two paths lead to the same file, also through links and different spellings.
bool same_file(const std::string& a, const std::string& b) {
  std::error_code error;
  return a == b || std::filesystem::equivalent(to_path(a), to_path(b), error);
}

void refuse_wrong_member(const std::vector<Member>& members, const Member& added) {
  for (const Member& member : members) {
    if (same_file(member.path, added.path)) {
      throw Failure(added.path + ": the group has this file already.");
    }
    if (member.is_master() && added.is_master()) {
      throw Failure(added.path + ": the group has a master already, " + member.path +
                    ". Remove that one first, or add this file as a partner.");
    }
  }
}

void add_member(OpenGroup& group, const Member& member) {
  refuse_wrong_member(members_of(group), member);
  const std::string path = to_library_path(member.path);
  MemberRecord record;
  path.copy(record->memberText, TQ_PATH_SIZE - 1);  // the buffer is zeroed
  record->appType = member.application;
  record->trFlg[kEncodingFlag] = static_cast<short>(member.encoding);
  constexpr short kAtTheEnd = -1;
  if (AddSyncFileInfo(kAtTheEnd, &*record, group.handle()) != 0) throw std::bad_alloc();
}

// Calls `visit(position, record)` for each listed group, in the order of the titles.
template <class Visit>
void for_each_group(const Listing& listing, Visit visit) {
  GroupRecord record;
  for (short pos = 0; GetSyncGrpNext(&pos, &*record, listing.handle()) == 0;) {
    visit(pos, *record);
  }
}

}  // namespace

std::vector<GroupSummary> list_groups() {
  std::vector<GroupSummary> groups;
  for_each_group(Listing(), [&](short, const tSYNC_GRP& group) {
    groups.push_back({group.id, text_of(group.title), text_of(group.memo), group.fileCnt});
  });
  return groups;
}

Group open_group(const std::string& name) {
  std::vector<Group> by_id, by_title;
  for_each_group(Listing(), [&](short, const tSYNC_GRP& record) {
    Group group{record.id, text_of(record.title), text_of(record.memo), record.grpPath, {}};
    if (group.id == name || group.id == with_zeros(name, 3)) {
      by_id.push_back(group);
    } else if (group.title == name) {
      by_title.push_back(group);
    }
  });
  const std::vector<Group>& found = by_id.empty() ? by_title : by_id;
  if (found.empty()) {
    throw Failure("there is no group \"" + name + "\". \"tqsync group list\" shows the groups.");
  }
  if (found.size() > 1) {
    throw Failure("there are " + std::to_string(found.size()) + " groups \"" + name +
                  "\". Name the one you mean by its number; \"tqsync group list\" shows them.");
  }
  Group group = found.front();
  if (group.group_file.empty()) {
    throw Failure("group \"" + name +
                  "\" has no usable id in the second line of its file. Mend or delete the file.");
  }
  OpenGroup open(OpenSyncFile(group.group_file.c_str(), "R"));
  open.read(group.id);
  group.members = members_of(open);
  return group;
}

Group create_group(const std::string& title, const std::string& memo,
                   const std::vector<Member>& members) {
  const std::string sjis_title = group_text("title", title);
  const std::string sjis_memo = group_text("memo", memo);
  OpenGroup open(CreateSyncFile());
  SetSyncTitle(sjis_title.c_str(), open.handle());
  SetSyncMemo(sjis_memo.c_str(), open.handle());
  for (const Member& member : members) add_member(open, member);
  constexpr short kNewNumber = 1;
  open.write(kNewNumber);

  char id[TQ_GRP_ID_SIZE] = "", path[TQ_PATH_SIZE] = "";
  GetSyncGrpID(id, open.handle());
  GetSyncGrpPath(path, open.handle());
  return {id, title, memo, path, members_of(open)};
}

void add_members(const Group& group, const std::vector<Member>& members) {
  OpenGroup open(OpenSyncFile(group.group_file.c_str(), ""));
  open.read(group.id);
  for (const Member& member : members) add_member(open, member);
  open.write(0);
}

void remove_member(const Group& group, std::size_t member) {
  OpenGroup open(OpenSyncFile(group.group_file.c_str(), ""));
  open.read(group.id);
  const std::string& file_id = group.members.at(member).file_id;
  if (DeleteSyncFileInfo(GetSyncFilePos(file_id.c_str(), open.handle()), open.handle()) != 0) {
    throw Failure("group " + group.id + " has been changed meanwhile. Try again.");
  }
  open.write(0);
}

void delete_group(const Group& group) {
  const Listing listing;
  short position = -1;
  for_each_group(listing, [&](short pos, const tSYNC_GRP& record) {
    if (record.id == group.id) position = pos;
  });
  if (DeleteSyncGrpInfo(position, listing.handle()) != 0) {
    throw Failure("group " + group.id +
                  " cannot be deleted. Check that you may write to the group "
                  "folder.");
  }
}

}  // namespace tqsync
