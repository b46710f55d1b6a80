// The levels of a history and their temporary files; writing lines and reading them back.
#include <algorithm>

#include "common/guarded.h"
#include "common/path.h"
#include "common/text.h"
#include "history/history_state.h"
#include "platform/platform.h"
#include "siblings/siblings.h"

using tq::Category;
using tq::HistoryFile;
using tq::tSYFL_HSTYINFO;

namespace {

HistoryFile& file_of(tSYFL_HSTYINFO& level, Category category) {
  return level.categories[static_cast<std::size_t>(category)];
}

bool kept_open(Category category) {
  return tq::kCategories[static_cast<std::size_t>(category)].kept_open;
}

}  // namespace

// --- Levels and their temporary files ------------------------------------------------------------

short CHistoryCtl::State::create(short count) {
  if (count < 0) return -1;
  discard();
  files = std::vector<tSYFL_HSTYINFO>(static_cast<std::size_t>(count));
  registered = 0;
  work_folder_ = tq::sibling_folder(&tFLDCOM_API::FldComGetWorkFolder);
  name_files(run, &tq::CategoryTraits::run_prefix);
  for (tSYFL_HSTYINFO& level : files) name_files(level, &tq::CategoryTraits::file_prefix);
  return 0;
}

void CHistoryCtl::State::name_files(tSYFL_HSTYINFO& level,
                                    std::string_view tq::CategoryTraits::*prefix) {
  for (std::size_t i = 0; i < tq::kCategories.size(); ++i) {
    level.categories[i].path = new_path(tq::kCategories[i].*prefix);
  }
}

std::string CHistoryCtl::State::new_path(std::string_view prefix) {
  std::string path;
  if (work_folder_.empty() || tq::platform::unique_file(work_folder_, prefix, path).ok()) {
    return path;
  }
  std::string folder = work_folder_;
  tq::RemoveBackslash(folder);
  if (tq::make_unique_file(folder, prefix, path).ok()) return path;
  // No separator between folder and name: where the folder is gone, the names lie beside it.
  static_cast<void>(tq::count_free_name(folder.append(prefix), next_numbers_[prefix], path));
  return path;
}

void CHistoryCtl::State::discard() {
  close_all();
  const auto remove = [](tSYFL_HSTYINFO& level) {
    for (HistoryFile& file : level.categories) {
      // A file that cannot be deleted stays.
      if (!file.path.empty()) static_cast<void>(tq::platform::delete_file(file.path));
    }
    level = {};
  };
  remove(run);
  std::for_each(files.begin(), files.end(), remove);
}

CHistoryCtl::State::~State() {
  tq::guarded([this] { discard(); });
}

void CHistoryCtl::State::add_file(const char* file_id, tSYNC_INFO* info) {
  if (registered >= files.size()) return;
  tSYFL_HSTYINFO& level = files[registered++];
  tq::copy_text(level.fileId, tq::view(file_id));
  if (info != nullptr) {
    level.appId = static_cast<std::uint16_t>(info->appType != 0 ? info->appType : info->appType2);
  }
}

short CHistoryCtl::State::close_all() {
  const auto close = [this](tSYFL_HSTYINFO& level) {
    for (HistoryFile& file : level.categories) result(file.close());
  };
  close(run);
  std::for_each(files.begin(), files.end(), close);
  return 0;
}

tSYFL_HSTYINFO* CHistoryCtl::State::level(short index) {
  if (index < 0) return &run;
  const auto place = static_cast<std::size_t>(index);
  return place < files.size() ? &files[place] : nullptr;
}

tSYFL_HSTYINFO* CHistoryCtl::State::level(const char* file_id) {
  if (file_id == nullptr) return &run;
  const auto end = files.begin() + static_cast<std::ptrdiff_t>(registered);
  const auto found = std::find_if(files.begin(), end, [&](const tSYFL_HSTYINFO& level) {
    return tq::view(level.fileId) == file_id;
  });
  return found == end ? nullptr : &*found;
}

// --- Lines ---------------------------------------------------------------------------------------

short CHistoryCtl::State::write(tSYFL_HSTYINFO* level, Category category, const char* text) {
  if (level == nullptr || text == nullptr) return -1;
  return result(file_of(*level, category).append(text, kept_open(category)));
}

short CHistoryCtl::State::start_reading(short index, Category category) {
  tSYFL_HSTYINFO* found = level(index);
  if (found == nullptr) return -1;
  HistoryFile& file = file_of(*found, category);
  result(file.start_reading());
  return file.is_reading() ? 0 : -1;
}

short CHistoryCtl::State::next_line(short index, Category category, char* text) {
  tSYFL_HSTYINFO* found = level(index);
  if (found == nullptr || text == nullptr) return -1;
  std::string_view line;
  const bool more = file_of(*found, category).next(line);
  tq::copy_text(text, TQ_HISTORY_LINE_SIZE, more ? line : std::string_view());
  return more ? 0 : -1;
}

short CHistoryCtl::State::end_reading(short index, Category category) {
  tSYFL_HSTYINFO* found = level(index);
  if (found == nullptr) return -1;
  result(file_of(*found, category).close());
  return 0;
}

std::int32_t CHistoryCtl::State::count(short index, Category category) {
  tSYFL_HSTYINFO* found = level(index);
  return found == nullptr ? -1 : file_of(*found, category).lines();
}

short CHistoryCtl::State::result(tq::HistoryFault fault) {
  if (fault == tq::kNoFault) return 0;
  last_error = fault == TQ_HISTORY_DETAIL_OPEN ? TQ_HISTORY_OPEN : TQ_HISTORY_WRITE;
  last_detail = fault;
  return -1;
}

// --- The class -----------------------------------------------------------------------------------

CHistoryCtl::CHistoryCtl() : state_(std::make_unique<State>()) {}
CHistoryCtl::~CHistoryCtl() = default;

short CHistoryCtl::CreateHistory(short count) {
  return state_->guarded([&] { return state_->create(count); });
}

short CHistoryCtl::AddFileInfo(const char* fileId, tSYNC_INFO* info) {
  state_->add_file(fileId, info);
  return 0;
}

short CHistoryCtl::AllFileClose() {
  state_->guarded([&] { return state_->close_all(); });
  return 0;
}

short CHistoryCtl::LastError() const { return state_->last_error; }
short CHistoryCtl::LastErrorDetail() const { return state_->last_detail; }

// The operations of one category. The first argument names its writers, which are called unlike the
// readers.
#define TQ_HISTORY_CATEGORY(writer, category)                                                  \
  short CHistoryCtl::writer(const char* fileId, const char* text) {                            \
    return state_->guarded(                                                                    \
        [&] { return state_->write(state_->level(fileId), Category::k##category, text); });    \
  }                                                                                            \
  short CHistoryCtl::writer##2(short i, const char* text) {                                    \
    return state_->guarded(                                                                    \
        [&] { return state_->write(state_->level(i), Category::k##category, text); });         \
  }                                                                                            \
  short CHistoryCtl::GetInfo4##category##Init(short i) {                                       \
    return state_->guarded([&] { return state_->start_reading(i, Category::k##category); });   \
  }                                                                                            \
  short CHistoryCtl::GetInfo4##category##Next(short i, char* text) {                           \
    return state_->guarded([&] { return state_->next_line(i, Category::k##category, text); }); \
  }                                                                                            \
  short CHistoryCtl::GetInfo4##category##End(short i) {                                        \
    return state_->guarded([&] { return state_->end_reading(i, Category::k##category); });     \
  }                                                                                            \
  int32_t CHistoryCtl::GetInfo4##category##Cnt(short i) {                                      \
    return state_->count(i, Category::k##category);                                            \
  }
TQ_HISTORY_CATEGORY(WriteErrInfo4Read, Read)
TQ_HISTORY_CATEGORY(WriteErrInfo4Write, Write)
TQ_HISTORY_CATEGORY(WriteErrInfo4Tran, Tran)
TQ_HISTORY_CATEGORY(WriteReNewInfo, ReNew)
TQ_HISTORY_CATEGORY(WriteAddNewInfo, AddNew)
TQ_HISTORY_CATEGORY(WriteHeadInfo, Head)
#undef TQ_HISTORY_CATEGORY
