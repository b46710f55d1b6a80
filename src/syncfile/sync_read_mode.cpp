// Read mode: the working group "999" around one data file, and its way into an ordinary group.
#include <string>

#include "base/sjis.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"
#include "syncfile/sync_file_state.h"

using tq::copy_text;
using tq::view;

namespace {

// A new name in the member folder under which nothing exists: making it reserves it, and the caller
// creates the file himself.
std::string adjust_file_name(std::string_view folder) {
  std::string path;
  if (!tq::make_unique_file(folder, "Ads", path).ok()) return {};
  static_cast<void>(tq::platform::delete_file(path));
  return path.size() <= tq::kPathMax ? path : std::string();
}

// Copies a member's old temporary file into the folder and renames it there; without a copy the
// member has none.
void take_along(tq::tSYNC_FILE& member, std::string_view folder) {
  const std::string from(view(member.tmpFileO));
  if (tq::sjis::find_last(from, "\\") == std::string::npos) return;
  std::string to(folder);
  tq::AddBackslash(to);
  to += tq::PathFileName(from);
  const bool copied = to.size() <= tq::kPathMax && tq::lies_in(to, folder) &&
                      tq::platform::copy_file(from, to).ok();
  copy_text(member.tmpFileO, copied ? std::string_view(to) : std::string_view());
}

}  // namespace

short CSyncFileCtl::SetReadMode(char* groupPath, char* adjustPath) {
  return state_->guarded(1, [&] {
    State& state = *state_;
    state.mode = State::Mode::kNormal;
    state.group.syncFlg[tq::kWorkingFlag] = 1;
    copy_text(state.group.id, tq::kWorkingGroup);
    state.rebuild_paths(state.group);
    static_cast<void>(tq::MakeFolderTree(view(state.group.filePath)));
    copy_text(groupPath, TQ_PATH_SIZE, view(state.group.grpPath));
    static_cast<void>(state.delete_group(state.group));
    const std::string adjust = adjust_file_name(view(state.group.filePath));
    copy_text(adjustPath, TQ_PATH_SIZE, adjust);
    tq::tSYNC_FILE member{};
    copy_text(member.fileId, state.new_file_id());
    copy_text(member.memberText, adjust);
    member.appType = TQ_APP_MASTER;
    member.trFlg[tq::kFirstReadFlag] = 1;
    member.trFlg[tq::kAdjustFlag] = 1;
    if (!state.members.append(member)) return state.fail(tq::kErrorMemory, 1);
    return short{0};
  });
}

short CSyncFileCtl::ReSaveRead2Normal(const char* title, const char* memo, const char* dataPath) {
  return state_->guarded(1, [&] {
    State& state = *state_;
    state.group.syncFlg[tq::kWorkingFlag] = 0;
    SetTitle(title);
    SetMemo(memo);
    copy_text(state.group.id, state.new_group_id());
    state.rebuild_paths(state.group);
    state.renumber_members();
    static_cast<void>(tq::MakeFolderTree(view(state.group.filePath)));
    for (tq::tSYNC_FILE& member : state.members.records()) {
      if (member.trFlg[tq::kAdjustFlag] != 1) continue;
      copy_text(member.memberText, view(dataPath));
      member.trFlg[tq::kAdjustFlag] = 0;
      break;
    }
    for (tq::tSYNC_FILE& member : state.members.records())
      take_along(member, view(state.group.filePath));
    return state.write(false);
  });
}
