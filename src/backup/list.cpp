#include "backup/list.h"

#include <array>
#include <string>
#include <vector>

#include "backup/history_file.h"
#include "backup/site.h"
#include "common/path.h"
#include "common/sorting.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {
namespace {

std::array<std::uint16_t, 6> key(const tBKUP_TIME& time) {
  return {time.year, time.month, time.day, time.hour, time.minute, time.second};
}

}  // namespace

short mCompareBkupTime(const tBKUP_TIME& first, const tBKUP_TIME& second) {
  if (key(first) == key(second)) return 0;
  return key(first) < key(second) ? 2 : 1;
}

bool BackupList::load(Site& site, short kind) {
  rows_.clear();
  if (site.data_folder.empty()) return true;
  std::vector<platform::FolderEntry> entries;
  const std::string pattern = site.data_folder + "*" + std::string(kHistoryExtension);
  const Status listed = platform::list_folder(pattern, entries);
  if (listed.code() == Code::kNotFound) return true;
  if (!listed.ok()) {
    site.fail(TQ_BKUP_CAUSE_FILE, site.data_folder);
    return false;
  }
  for (const platform::FolderEntry& entry : entries) {
    const std::string path = site.data_folder + entry.name;
    if (entry.folder || path.size() > kPathMax) continue;
    tBKUP_INFO row{};
    const Status read = mGetListInfo(path, row);
    // A damaged history is listed with what it holds, so that it can be deleted.
    if (!read.ok() && read.code() != Code::kCorrupt) {
      site.fail(TQ_BKUP_CAUSE_FILE, path);
      return false;
    }
    if (kind >= 0 && row.kind != kind) continue;
    if (append(row)) continue;
    site.fail(TQ_BKUP_CAUSE_MEMORY, path);
    return false;
  }
  return true;
}

bool BackupList::mSortBackUpFileList() {
  const std::size_t n = size();
  std::vector<std::uint32_t> order = selection_order(
      n, [&](std::size_t a, std::size_t b) { return rows_[a].kind < rows_[b].kind; });
  for (std::size_t begin = 0; begin < n;) {
    std::size_t end = begin;
    while (end < n && rows_[order[end]].kind == rows_[order[begin]].kind) ++end;
    const std::vector<std::uint32_t> run(order.begin() + static_cast<std::ptrdiff_t>(begin),
                                         order.begin() + static_cast<std::ptrdiff_t>(end));
    const auto newest_first = selection_order(run.size(), [&](std::size_t a, std::size_t b) {
      return mCompareBkupTime(rows_[run[a]].time, rows_[run[b]].time) == 1;
    });
    for (std::size_t i = 0; i < run.size(); ++i) order[begin + i] = run[newest_first[i]];
    begin = end;
  }
  if (!rows_.permute(order)) return false;
  for (std::size_t i = 0; i < n; ++i) {
    const bool first_of_kind = i == 0 || rows_[i].kind != rows_[i - 1].kind;
    rows_[i].generation = first_of_kind ? 1 : rows_[i - 1].generation + 1;
  }
  return true;
}

std::size_t BackupList::find(std::string_view id) const {
  std::size_t index = 0;
  while (index < size() && view(rows_[index].id) != id) ++index;
  return index;
}

std::size_t BackupList::find(short kind, short generation) const {
  std::size_t index = 0;
  while (index < size() && (rows_[index].kind != kind || rows_[index].generation != generation)) {
    ++index;
  }
  return index;
}

}  // namespace tq
