#include "backup/backup_host.h"

#include <gtest/gtest.h>

#include <cstring>

#include "common/text.h"

namespace tq::test {
namespace {

BackupHost& self(void* context) { return *static_cast<BackupHost*>(context); }

void put(void* context, char* out, const char* folder) {
  copy_text(out, TQ_PATH_SIZE, self(context).at(folder));
}

}  // namespace

BackupHost::BackupHost() {
  own_.fldcom.FldComGetDataFolder = [](void* context, char* out) { put(context, out, "data"); };
  own_.fldcom.FldComGetBackupFolder = [](void* context, char* out) { put(context, out, "backup"); };
  own_.fldcom.FldComGetCaption = [](void*, char* out) { std::strcpy(out, "caption"); };
  own_.fldcom.FldComGetGroupCaption = [](void*, short type, char* out) {
    std::strcpy(out, ("type " + std::to_string(type)).c_str());
  };
  own_.fldcom.FldComHasDataSet = [](void* context, short) {
    return self(context).has_mail_store ? short{1} : short{0};
  };
  own_.fldcom.FldComClassifyFile = [](void* context, const char*, short* number, char*, char*,
                                      short*) {
    *number = 99;
    if (self(context).classified < 0) return short{1};
    *number = self(context).classified;
    return short{0};
  };
  own_.fldcom.FldComRelatedFiles = [](void* context, short, const char* path, int32_t* count,
                                      const char* const** paths) {
    if (self(context).related_queries_left-- <= 0) return short{1};
    *paths = self(context).give_related(path, count);
    return short{0};
  };
  own_.fldcom.FldComRelatedFilesReset = [](void* context, short) {
    self(context).related_.clear();
  };
  own_.adrconv.AdrConvStartTransfer = [](void* context, short mode) {
    self(context).log.push_back("transfer " + std::to_string(mode));
    self(context).transfer();
  };
  own_.adrconv.AdrConvIsBusy = [](void* context) {
    return self(context).busy-- > 0 ? short{1} : short{0};
  };
  own_.errbox.ErrBoxSetMessage = [](void* context, short category, short number,
                                    const char* detail) {
    self(context).message_ = "message " + std::to_string(category) + "." + std::to_string(number) +
                             " " + self(context).relative(std::string(view(detail)));
  };
  own_.errbox.ErrBoxShow = [](void* context) {
    self(context).log.push_back(self(context).message_);
    return static_cast<short>(self(context).really_stop ? TQ_ANSWER_YES : TQ_ANSWER_NO);
  };
  own_.dialog.DlgProgressOpen = [](void* context, const char* caption, const char* heading,
                                   short cancel) -> void* {
    self(context).log.push_back("open " + std::string(caption) + "/" + heading + "/" +
                                std::to_string(cancel));
    self(context).files_done_ = 0;
    return context;
  };
  own_.dialog.DlgProgressGroup = [](void* context, void*, const char* text) {
    self(context).log.push_back("group " + std::string(text));
  };
  own_.dialog.DlgProgressFile = [](void* context, void*, const char* text) {
    if (*text != '\0') ++self(context).files_done_;
    self(context).log.push_back(self(context).relative("file " + std::string(text)));
  };
  own_.dialog.DlgProgressPos = [](void* context, void*, short shown) {
    self(context).percent = shown;
  };
  own_.dialog.DlgProgressCancelled = [](void* context, void*) {
    return self(context).files_done_ == self(context).cancel_after ? short{1} : short{0};
  };
  own_.dialog.DlgProgressResume = [](void* context, void*) { self(context).cancel_after = -1; };
  own_.dialog.DlgProgressClose = [](void* context, void*) { self(context).log.push_back("close"); };
  own_.dialog.DlgMissingFolder = [](void* context, const char*, const char*, const char* folder,
                                    const char* name, char* chosen) {
    auto& answers = self(context).folder_answers;
    self(context).log.push_back(self(context).relative("missing " + std::string(folder)) + "|" +
                                name);
    if (answers.empty()) return short{TQ_FOLDER_CANCEL};
    const auto [answer, other] = answers.front();
    answers.erase(answers.begin());
    copy_text(chosen, TQ_PATH_SIZE, other);
    return answer;
  };
  own_.install();
}

const char* const* BackupHost::give_related(const std::string& path, int32_t* count) {
  const auto found = related.find(path);
  related_ = found == related.end() ? std::vector<std::string>{path} : found->second;
  related_pointers_.clear();
  for (const std::string& name : related_) related_pointers_.push_back(name.c_str());
  *count = static_cast<int32_t>(related_.size());
  return related_pointers_.data();
}

short BackupHost::prepare(CBackUpCtl& run, short kind, const std::vector<Group>& groups) const {
  run.CreateBackUp(kind);
  for (const Group& group : groups) {
    if (run.StartBackUpFileGrp(group.type, bytes(group.name)) != 0) return 1;
    for (const std::string& file : group.files) {
      if (run.AddBackUpFileGrp(bytes(at(file)), short{7}) != 0) return 1;
    }
  }
  return 0;
}

short BackupHost::back_up(short kind, const std::vector<Group>& groups,
                          const std::string& info) const {
  CBackUpCtl run;
  short result = prepare(run, kind, groups);
  run.SetBackUpInfo(bytes(info));
  if (result == 0) result = run.StartBackUp();
  return result != 0 ? result : run.RenewalBackUp();
}

void BackupHost::set_time(const std::string& id, const std::string& time) const {
  const std::string name = "data\\" + id + ".BKH";
  std::string text = read(name);
  const std::size_t start = text.find('\n', text.find('\n') + 1) + 1;
  write(name, text.replace(start, text.find('\n', start) - start, time));
}

std::vector<std::string> BackupHost::listed(short kind) {
  int32_t groups = 0;
  const int32_t list = tqOpenBackUpFileList(kind, &groups);
  if (list == 0) return {"unreadable"};
  std::vector<std::string> rows;
  char id[TQ_BKUP_ID_SIZE];
  short of_kind = 0;
  while (tqGetBackUpFileListNext(list, id, &of_kind, nullptr, nullptr, &groups) == 0) {
    rows.push_back(id + (" " + std::to_string(of_kind)) + " " + std::to_string(groups));
  }
  tqCloseBackUpFileList(list);
  return rows;
}

std::vector<BackupHost::Listed> BackupHost::files() {
  std::vector<Listed> all;
  int32_t count = 0;
  const int32_t list = tqOpenBackUpFileList(-1, &count);
  EXPECT_NE(list, 0);
  char id[TQ_BKUP_ID_SIZE], group[TQ_BKUP_GRP_ID_SIZE], path[TQ_PATH_SIZE], copy[TQ_PATH_SIZE];
  uint32_t size = 0;
  short kind = 0;
  while (tqGetBackUpFileListNext(list, id, nullptr, nullptr, nullptr, nullptr) == 0) {
    tqGetBackUpFileGrpInit(list, id);
    while (tqGetBackUpFileGrpNext(list, group, nullptr, &count) == 0) {
      EXPECT_EQ(tqGetBackUpFileInit(list, group), count);
      while (tqGetBackUpFileNext(list, path, copy, nullptr, &size, &kind) == 0) {
        all.push_back({id, path, copy, size, kind});
      }
    }
  }
  tqCloseBackUpFileList(list);
  return all;
}

std::map<std::string, std::map<std::string, std::string>> BackupHost::restorable() const {
  std::map<std::string, std::map<std::string, std::string>> all;
  for (const Listed& file : files()) {
    if (file.copy == "dummy") continue;
    const std::string name = file.copy.substr(path().size() + 1);
    EXPECT_TRUE(exists(name)) << "backup " << file.id << " lost " << file.copy;
    if (!exists(name)) continue;
    EXPECT_EQ((all[file.id][file.path] = read(name)).size(), file.size) << file.copy;
  }
  return all;
}

std::string BackupHost::replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace tq::test
