// CBackUpCtl: restoring and deleting backups.
#include "backup/backup_state.h"
#include "backup/deletion.h"
#include "backup/history_file.h"
#include "backup/restore.h"
#include "common/text.h"

using tq::text_of;
using tq::view;

namespace {

constexpr short kAll = -1;  // kind that lists every backup
constexpr short kNotDone = 1;
constexpr short kFailed = -1;

}  // namespace

// The groups of a backup with no mark set. False when its history is not whole: half of a backup is
// not restored.
bool CBackUpCtl::State::load_for_restore(std::size_t index) {
  const std::string_view history = view(other_list[index].historyPath);
  restored_id = view(other_list[index].id);
  if (tq::mGetFileGrpListS(history, restored).ok()) return true;
  restored.clear();
  site.fail(TQ_BKUP_CAUSE_FILE, history);
  return false;
}

short CBackUpCtl::State::restore_all(std::size_t index, bool back_up_first) {
  if (!load_for_restore(index)) return kFailed;
  for (std::size_t group = 0; group < restored.size(); ++group) restored[group].restore = 1;
  return tq::Restore(site, other_list, restored_id, restored).marked(back_up_first, kNotDone);
}

short CBackUpCtl::AutoRestoreGrp(short kind, short generation) {
  return state_->guarded(kFailed, [&] {
    if (!state_->other_list.load_sorted(state_->site, kind)) return kFailed;
    const std::size_t index = state_->other_list.find(kind, generation);
    return index == state_->other_list.size() ? kNotDone : state_->restore_all(index, true);
  });
}

short CBackUpCtl::ErrRestoreGrp(short kind) {
  return state_->guarded(kFailed, [&] {
    if (!state_->other_list.load_sorted(state_->site, kind)) return kFailed;
    const std::size_t index = state_->other_list.find(kind, 1);
    return index == state_->other_list.size() ? kNotDone : state_->restore_all(index, false);
  });
}

short CBackUpCtl::RestoreGrp(const unsigned char* id) {
  return state_->guarded(kFailed, [&] {
    if (!state_->other_list.load_sorted(state_->site, kAll)) return kFailed;
    const std::size_t index = state_->other_list.find(text_of(id));
    return index == state_->other_list.size() ? kFailed : state_->restore_all(index, true);
  });
}

short CBackUpCtl::RestoreFile(const unsigned char* groupId) {
  return state_->guarded(kFailed, [&] {
    if (!state_->other_list.load_sorted(state_->site, kAll)) return kNotDone;
    for (std::size_t i = 0; i < state_->other_list.size(); ++i) {
      if (!state_->load_for_restore(i)) continue;
      const std::size_t group = state_->restored.find(text_of(groupId));
      if (group == state_->restored.size()) continue;
      return tq::Restore(state_->site, state_->other_list, state_->restored_id, state_->restored)
          .single(group);
    }
    return kNotDone;
  });
}

short CBackUpCtl::RestoreFileInit(const unsigned char* id) {
  return state_->guarded(kNotDone, [&] {
    state_->restored.clear();
    if (!state_->other_list.load_sorted(state_->site, kAll)) return kNotDone;
    const std::size_t index = state_->other_list.find(text_of(id));
    const bool loaded = index != state_->other_list.size() && state_->load_for_restore(index);
    return loaded ? short{0} : kNotDone;
  });
}

short CBackUpCtl::RestoreFileSet(const unsigned char* groupId) {
  const std::size_t group = state_->restored.find(text_of(groupId));
  if (group == state_->restored.size()) return kNotDone;
  state_->restored[group].restore = 1;
  return 0;
}

short CBackUpCtl::RestoreFileStart() {
  return state_->guarded(kFailed, [this] {
    return tq::Restore(state_->site, state_->other_list, state_->restored_id, state_->restored)
        .marked(true, kFailed);
  });
}

short CBackUpCtl::DeleteBkupAll() {
  return state_->guarded(kNotDone, [this] { return tq::delete_all_backups(state_->site); });
}

short CBackUpCtl::DeleteAutoBkupGrp(short kind, short generation) {
  return state_->guarded(kFailed, [&] {
    if (!state_->other_list.load_sorted(state_->site, kind)) return kNotDone;
    const std::size_t index = state_->other_list.find(kind, generation);
    if (index == state_->other_list.size()) return kNotDone;
    return tq::mDeleteBkupFileGrp(state_->site, view(state_->other_list[index].historyPath));
  });
}

short CBackUpCtl::DeleteBkupGrp(const unsigned char* id) {
  return state_->guarded(kFailed, [&] {
    if (!state_->other_list.load_sorted(state_->site, kAll)) return kNotDone;
    const std::size_t index = state_->other_list.find(text_of(id));
    if (index == state_->other_list.size()) return kNotDone;
    return tq::mDeleteBkupFileGrp(state_->site, view(state_->other_list[index].historyPath));
  });
}
