// CBackUpCtl: making a backup and giving out the list of backups.
#include <cstdio>
#include <string>

#include "backup/backup_state.h"
#include "backup/history_file.h"
#include "backup/mail_store.h"
#include "backup/settings.h"
#include "common/text.h"
#include "platform/platform.h"
#include "siblings/siblings.h"

using tq::text_of;
using tq::view;

namespace {

void give(unsigned char* out, std::size_t size, std::string_view text) {
  tq::copy_text(reinterpret_cast<char*>(out), size, text);
}

template <class Value>
void give(Value* out, Value value) {
  if (out != nullptr) *out = value;
}

template <class Time>
void give_date(unsigned char* out, const Time& time) {
  char text[TQ_BKUP_DATE_SIZE];
  std::snprintf(text, sizeof text, "%u/%u/%u %02u:%02u", static_cast<unsigned>(time.year),
                static_cast<unsigned>(time.month), static_cast<unsigned>(time.day),
                static_cast<unsigned>(time.hour), static_cast<unsigned>(time.minute));
  give(out, sizeof text, text);
}

}  // namespace

CBackUpCtl::CBackUpCtl() : state_(std::make_unique<State>()) {}
CBackUpCtl::~CBackUpCtl() = default;

short CBackUpCtl::SetGenerationCnt(short count) {
  return state_->guarded(short{0}, [&] {
    state_->site.generations = count;
    // Whether it reached the disk is what the flat function tells.
    static_cast<void>(tq::Settings(state_->site.data_folder).set_generations(0, count));
    return short{0};
  });
}

short CBackUpCtl::GetGenerationCnt() {
  return state_->guarded(state_->site.generations, [this] {
    return state_->site.generations = tq::Settings(state_->site.data_folder).generations(0);
  });
}

short CBackUpCtl::CreateBackUp(short kind) {
  return state_->guarded(short{0}, [&] {
    state_->run.create(kind, state_->list);
    return short{0};
  });
}

short CBackUpCtl::SetBackUpInfo(const unsigned char* text) {
  return state_->guarded(short{0}, [&] {
    state_->run.set_info(text_of(text));
    return short{0};
  });
}

short CBackUpCtl::StartBackUpFileGrp(short type, const unsigned char* name) {
  return state_->guarded(
      short{1}, [&] { return state_->run.start_group(type, text_of(name)) ? short{0} : short{1}; });
}

short CBackUpCtl::AddBackUpFileGrp(const unsigned char* path, short fileKind) {
  return state_->guarded(short{1}, [&] {
    return state_->run.add_file(text_of(path), fileKind) ? short{0} : short{1};
  });
}

short CBackUpCtl::AddBackUpFileGrp(const unsigned char* path, const unsigned char* text) {
  short kind = 0;
  if (state_->run.last_type() == 0 && text != nullptr) {
    short second = 0;
    const tFLDCOM_API& api = tq::fldcom();
    if (api.FldComClassifyFile(api.context, reinterpret_cast<const char*>(text), &kind, nullptr,
                               nullptr, &second) != 0)
      kind = 0;
  }
  return AddBackUpFileGrp(path, kind);
}

short CBackUpCtl::StartBackUp() {
  return state_->guarded(short{-1}, [this] { return state_->run.copy(state_->list); });
}

short CBackUpCtl::RenewalBackUp() {
  return state_->guarded(short{1}, [this] { return state_->run.record(state_->list, {}); });
}

short CBackUpCtl::FreeBackUp() {
  state_->run.clear();
  return 0;
}

int32_t CBackUpCtl::ReadBackUpFileList(short kind) {
  return state_->guarded(int32_t{-1}, [&] {
    state_->next_backup = 0;
    const bool whole = state_->list.load(state_->site, kind);
    const bool sorted = state_->list.mSortBackUpFileList();
    return whole && sorted ? static_cast<int32_t>(state_->list.size()) : -1;
  });
}

short CBackUpCtl::GetBackUpFileListInit() {
  state_->next_backup = 0;
  return 0;
}

short CBackUpCtl::GetBackUpFileListNext(unsigned char* id, short* kind, unsigned char* dateText,
                                        unsigned char* infoText, int32_t* groupCount) {
  if (state_->next_backup >= state_->list.size()) return 1;
  const tBKUP_INFO& row = state_->list[state_->next_backup++];
  give(id, sizeof row.id, view(row.id));
  give(kind, row.kind);
  give_date(dateText, row.time);
  give(infoText, sizeof row.info, view(row.info));
  give(groupCount, row.groupCnt);
  return 0;
}

int32_t CBackUpCtl::GetBackUpFileGrpInit(const unsigned char* id) {
  return state_->guarded(int32_t{-1}, [&] {
    state_->next_group = 0;
    state_->selected = 0;
    state_->next_file = 0;
    const std::size_t index = state_->list.find(text_of(id));
    state_->groups.clear();
    if (index == state_->list.size()) return -1;
    const std::string_view history = view(state_->list[index].historyPath);
    const tq::Status read = tq::mGetFileGrpListS(history, state_->groups);
    // A damaged history shows what it still holds; restoring it is refused.
    if (read.ok() || read.code() == tq::Code::kCorrupt) {
      return static_cast<int32_t>(state_->groups.size());
    }
    state_->site.fail(TQ_BKUP_CAUSE_FILE, history);
    return -1;
  });
}

short CBackUpCtl::GetBackUpFileGrpNext(unsigned char* groupId, short* type, int32_t* fileCount) {
  if (state_->next_group >= state_->groups.size()) return 1;
  const tBKUP_FIELGRP& row = state_->groups[state_->next_group++];
  give(groupId, sizeof row.id, view(row.id));
  give(type, row.type);
  give(fileCount, row.fileCnt);
  return 0;
}

int32_t CBackUpCtl::GetBackUpFileInit(const unsigned char* groupId) {
  const std::size_t group = state_->groups.find(text_of(groupId));
  if (group == state_->groups.size()) return -1;
  state_->selected = group;
  state_->next_file = 0;
  return state_->groups[group].fileCnt;
}

short CBackUpCtl::GetBackUpFileNext(unsigned char* path, unsigned char* backupPath,
                                    unsigned char* dateText, uint32_t* size, short* fileKind) {
  if (state_->selected >= state_->groups.size()) return 1;
  const auto files = state_->groups.files(state_->selected);
  if (state_->next_file >= files.size()) return 1;
  const tBKUP_FILE& row = files[state_->next_file++];
  give(path, sizeof row.path, view(row.path));
  give(backupPath, sizeof row.backupPath, view(row.backupPath));
  tq::platform::DateTime local;
  const std::uint64_t written = std::uint64_t{row.written.high} << 32 | row.written.low;
  static_cast<void>(tq::platform::to_local(written, local));  // all 0 when it cannot be told
  give_date(dateText, local);
  give(size, row.size);
  give(fileKind, row.fileKind);
  return 0;
}

short CBackUpCtl::IsNeedOutlook(short kind) {
  return state_->guarded(
      short{0}, [&] { return tq::needs_mail_client(state_->site, kind) ? short{1} : short{0}; });
}

short CBackUpCtl::ErrorCause() const { return state_->site.cause; }

void CBackUpCtl::ErrorPath(char* path) const {
  tq::copy_text(path, TQ_PATH_SIZE, state_->site.cause_path);
}
