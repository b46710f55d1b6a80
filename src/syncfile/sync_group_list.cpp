// The group folder: listing its groups, finding one, deleting one with its files, giving out ids.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "base/sjis.h"
#include "common/path.h"
#include "common/sorting.h"
#include "common/text.h"
#include "platform/platform.h"
#include "syncfile/sync_file_state.h"
#include "syncfile/sync_records.h"

using tq::view;

namespace tq {
namespace {

constexpr std::size_t kFirstCapacity = 10;

// Work files that a group's partner applications leave in its member folder.
constexpr std::string_view kMemberPatterns[] = {"*.tmp", "*.adw", "*.ldb"};

bool is_device_name(std::string_view id) {
  constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL"};
  std::string upper(id);
  std::transform(upper.begin(), upper.end(), upper.begin(), sjis::upper_ascii);
  return std::find(std::begin(kDevices), std::end(kDevices), upper) != std::end(kDevices);
}

std::string upper_case(std::string_view text) {
  std::string upper;
  upper.reserve(text.size());
  for (std::size_t pos = 0; pos < text.size();) {
    const std::size_t step = sjis::char_size(text, pos);
    if (step == 1) {
      upper += sjis::upper_ascii(text[pos]);
    } else {
      upper.append(text.substr(pos, step));
    }
    pos += step;
  }
  return upper;
}

}  // namespace

bool is_safe_group_id(std::string_view id) {
  const auto safe = [](char c) {
    const char upper = sjis::upper_ascii(c);
    return (upper >= 'A' && upper <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
  };
  return !id.empty() && id.size() <= 3 && std::all_of(id.begin(), id.end(), safe) &&
         !is_device_name(id);
}

}  // namespace tq

std::string CSyncFileCtl::State::new_group_id() const {
  for (int number = 0; number < tq::kIdCount; ++number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%03d", number);
    const std::string id = digits;
    // A group lives where its member folder is. The second name is the one that has always been
    // asked for, though no group file is called so.
    if (!tq::platform::exists(member_root + id) &&
        !tq::platform::exists(group_folder + id + '\\' + std::string(tq::kGroupExtension))) {
      return id;
    }
  }
  return {};
}

// A group whose id cannot be part of a path has no paths, so nothing can be written or deleted for
// it.
void CSyncFileCtl::State::rebuild_paths(tSYNC_GRP2& of) const {
  const std::string id(view(of.id));
  const std::string file = group_folder + id + std::string(tq::kGroupExtension);
  const std::string folder = member_root + id;
  const bool usable = tq::is_safe_group_id(id) && !group_folder.empty() && !member_root.empty() &&
                      file.size() <= tq::kPathMax && folder.size() <= tq::kPathMax;
  tq::copy_text(of.grpPath, usable ? std::string_view(file) : std::string_view());
  tq::copy_text(of.filePath, usable ? std::string_view(folder) : std::string_view());
}

short CSyncFileCtl::State::delete_group(const tSYNC_GRP2& of) const {
  if (view(of.filePath).empty()) return 1;
  const std::string folder(view(of.filePath));
  for (const std::string_view pattern : tq::kMemberPatterns) {
    tq::delete_matching(folder + '\\' + std::string(pattern));
  }
  static_cast<void>(tq::platform::delete_file(view(of.grpPath)));
  // Fails, as it should, while anything else lies in the folder.
  if (view(of.id) != tq::kWorkingGroup) static_cast<void>(tq::platform::remove_folder(folder));
  return 0;
}

short CSyncFileCtl::State::list_groups() {
  cursor = 0;
  listing.clear();
  std::vector<tq::platform::FolderEntry> entries;
  // A folder that cannot be searched holds no groups.
  static_cast<void>(
      tq::platform::list_folder(group_folder + "*" + std::string(tq::kGroupExtension), entries));
  if (!listing.allocate(tq::kFirstCapacity)) return fail(tq::kErrorMemory, -1);
  for (const tq::platform::FolderEntry& entry : entries) {
    if (entry.folder) continue;
    tq::LineReader lines;
    if (!lines.open(group_folder + entry.name).ok()) return fail(tq::kErrorRead, -1);
    tSYNC_GRP2 found{};
    std::int32_t count = 0;
    static_cast<void>(tq::read_group_header(lines, found, count));
    found.fileCnt = static_cast<short>(count);
    found.pos = static_cast<short>(listing.size());
    rebuild_paths(found);
    if (!listing.append(found)) return fail(tq::kErrorMemory, -1);
  }
  std::vector<std::string> titles;
  for (const tSYNC_GRP2& listed : listing.records())
    titles.push_back(tq::upper_case(view(listed.title)));
  const auto order = tq::selection_order(
      titles.size(), [&](std::size_t a, std::size_t b) { return titles[a] < titles[b]; });
  if (!listing.permute(order)) return fail(tq::kErrorMemory, -1);
  return static_cast<short>(listing.size());
}

std::size_t CSyncFileCtl::State::listed(short pos) const {
  const auto records = listing.records();
  const auto found = std::find_if(records.begin(), records.end(),
                                  [&](const tSYNC_GRP2& record) { return record.pos == pos; });
  return static_cast<std::size_t>(found - records.begin());
}

short CSyncFileCtl::GetSyncGrpInit() {
  return state_->guarded(-1, [this] { return state_->list_groups(); });
}

short CSyncFileCtl::GetSyncGrpNext(short* pos, tSYNC_GRP* grp) {
  if (state_->cursor >= state_->listing.size()) return 1;
  const tSYNC_GRP2& next = state_->listing[state_->cursor++];
  if (pos != nullptr) *pos = next.pos;
  tq::copy_record(&next, grp);
  return 0;
}

short CSyncFileCtl::GetSyncGrpInfo(short pos, tSYNC_GRP* grp) {
  const std::size_t place = state_->listed(pos);
  if (place == state_->listing.size()) return 1;
  tq::copy_record(&state_->listing[place], grp);
  return 0;
}

short CSyncFileCtl::DeleteSyncGrp(short pos) {
  return state_->guarded(1, [&] {
    const std::size_t place = state_->listed(pos);
    if (place == state_->listing.size() || state_->delete_group(state_->listing[place]) != 0)
      return short{1};
    state_->listing.erase(place);
    // The next group to be handed out has moved down with the rest.
    if (place < state_->cursor) --state_->cursor;
    return short{0};
  });
}
