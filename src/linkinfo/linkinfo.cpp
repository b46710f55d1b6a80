// CLinkInfoCtl: member files, masters with their origins, and the walk of a master's origins.
#include <algorithm>
#include <limits>
#include <utility>

#include "common/guarded.h"
#include "common/sorting.h"
#include "common/text.h"
#include "linkinfo/linkinfo_state.h"
#include "syncfile/sync_id.h"

namespace {

// Masters with fewer origins are looked through as they are.
constexpr std::size_t kManyOrigins = 32;

const char* chars(const unsigned char* text) { return reinterpret_cast<const char*>(text); }

tSYNC_ID sync_id(const unsigned char* text) {
  tSYNC_ID id{};
  tq::parse_sync_id(chars(text), id);
  return id;
}

std::uint32_t rec_file(const unsigned char* text) {
  tSYNC_ID id{};
  tq::parse_rec_id(chars(text), id);
  return tq::file_key(id);
}

// A master's array with its count; null and 0 without a master.
template <class Record>
Record* array_of(tq::RecordTable<Record>* table, int32_t* cnt) {
  if (cnt != nullptr) *cnt = table == nullptr ? 0 : static_cast<int32_t>(table->size());
  return table == nullptr ? nullptr : table->data();
}

}  // namespace

CLinkInfoCtl::CLinkInfoCtl() : state_(std::make_unique<State>()) {}
CLinkInfoCtl::~CLinkInfoCtl() = default;

short CLinkInfoCtl::SylkAddFileInfo(const unsigned char* fileKey, short recCnt) {
  return tq::guarded<short>(-1, [&]() -> short {
    const std::size_t index = state_->files.size();
    if (index > static_cast<std::size_t>(std::numeric_limits<short>::max())) return -1;
    tq::tSYLK_FILEINFO file{};
    tq::copy_text(file.fileKey, tq::view(chars(fileKey)));
    file.records.resize(static_cast<std::size_t>(std::max<short>(recCnt, 0)));
    state_->files.push_back(std::move(file));
    return static_cast<short>(index);
  });
}

short CLinkInfoCtl::SylkAddRecID(short file, int32_t recNo, const unsigned char* syncId) {
  const auto at = static_cast<std::size_t>(file);
  if (file < 0 || at >= state_->files.size()) return 1;
  auto& records = state_->files[at].records;
  const auto place = static_cast<std::size_t>(recNo);
  if (recNo < 0 || place >= records.size()) return 1;
  records[place].id = sync_id(syncId);
  return 0;
}

int32_t CLinkInfoCtl::SylkGetMstLinkNo() { return state_->lowest_free(); }

int32_t CLinkInfoCtl::SylkAddMstLinkInfo(int32_t linkNo, const unsigned char* mstSyncId) {
  return tq::guarded<int32_t>(-1, [&] { return state_->add_master(linkNo, sync_id(mstSyncId)); });
}

short CLinkInfoCtl::SylkAddOrgLinkInfo(const unsigned char* mstSyncId,
                                       const unsigned char* orgSyncId, int32_t value) {
  tq::tSYLK_LINKINFO* link = state_->link(mstSyncId);
  if (link == nullptr) return 1;
  const std::size_t needed = link->origins.size() + 1;
  if (!link->origins.reserve(needed) || !link->values.reserve(needed)) return 1;
  link->origins.append(sync_id(orgSyncId));
  link->values.append({value, 0});
  return 0;
}

tSYNC_ID* CLinkInfoCtl::SylkGetMstLinkOrgInfo(const unsigned char* mstSyncId, int32_t* cnt) {
  tq::tSYLK_LINKINFO* link = state_->link(mstSyncId);
  return array_of(link == nullptr ? nullptr : &link->origins, cnt);
}

tVAL_INFO* CLinkInfoCtl::SylkGetMstLinkValInfo(const unsigned char* mstSyncId, int32_t* cnt) {
  tq::tSYLK_LINKINFO* link = state_->link(mstSyncId);
  return array_of(link == nullptr ? nullptr : &link->values, cnt);
}

short CLinkInfoCtl::SylkSchLinkMst2Org(const unsigned char* mstSyncId, const unsigned char* recId) {
  const std::uint32_t link = state_->mSchMstID(sync_id(mstSyncId));
  if (link == tq::kNoRecord) return 0;
  return state_->find_origin(link, rec_file(recId), 0) < state_->links[link].origins.size() ? 1 : 0;
}

short CLinkInfoCtl::SylkGetLinkMst2OrgID(const unsigned char* mstSyncId, const unsigned char* recId,
                                         unsigned char* orgSyncId, int32_t* pos) {
  if (orgSyncId == nullptr || pos == nullptr) return 1;
  // The output may be the buffer of an argument.
  const std::uint32_t link = state_->mSchMstID(sync_id(mstSyncId));
  const std::uint32_t file = rec_file(recId);
  *orgSyncId = '\0';
  if (link == tq::kNoRecord) return 1;
  if (*pos == 0 && !tq::guarded(false, [&] { return state_->sort(link); })) return 1;
  const auto& origins = state_->links[link].origins;
  if (*pos < 0 || static_cast<std::size_t>(*pos) >= origins.size()) return 1;
  const std::size_t found = state_->find_origin(link, file, static_cast<std::size_t>(*pos));
  if (found >= origins.size()) return 1;
  tq::print_sync_id(origins[found], reinterpret_cast<char*>(orgSyncId));
  *pos = static_cast<int32_t>(found);
  return 0;
}

std::uint32_t CLinkInfoCtl::State::mSchMstID(const tSYNC_ID& id) const {
  return masters_.find(tq::record_key(id),
                       [&](std::uint32_t at) { return tq::same_record(links[at].mst, id); });
}

tq::tSYLK_LINKINFO* CLinkInfoCtl::State::link(const unsigned char* mstSyncId) {
  const std::uint32_t at = mSchMstID(sync_id(mstSyncId));
  return at == tq::kNoRecord ? nullptr : &links[at];
}

std::int32_t CLinkInfoCtl::State::add_master(std::int32_t linkNo, const tSYNC_ID& id) {
  const std::size_t index = links.size();
  if (index >= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) return -1;
  masters_.make_room(1);
  // The lowest free number is at most the count of masters, so only those need a mark.
  if (index + 1 >= taken_.size()) {
    std::vector<bool> taken(2 * (index + 1) + 64);
    for (const tq::tSYLK_LINKINFO& link : links) {
      if (link.mst.rec < taken.size()) taken[link.mst.rec] = true;
    }
    taken_.swap(taken);
  }
  links.push_back({linkNo, id, {}, {}});
  links.back().mst.cap = 0;
  if (id.rec < taken_.size()) taken_[id.rec] = true;
  if (mSchMstID(id) == tq::kNoRecord) {
    masters_.add(tq::record_key(id), static_cast<std::uint32_t>(index));
  }
  return static_cast<std::int32_t>(index);
}

// Masters never go, so that the answer only rises.
std::int32_t CLinkInfoCtl::State::lowest_free() {
  while (free_from_ < taken_.size() && taken_[free_from_]) ++free_from_;
  return static_cast<std::int32_t>(free_from_);
}

// Highest value first; equal values stand as an exchange sort leaves them.
bool CLinkInfoCtl::State::sort(std::uint32_t link) {
  tq::tSYLK_LINKINFO& master = links[link];
  const std::size_t count = master.origins.size();
  if (master.sorted == count) return true;
  const auto& values = master.values;
  auto order =
      tq::exchange_order(count, [&](auto a, auto b) { return values[a].value > values[b].value; });
  places_.erase(link);
  master.origins.rearrange([&] {
    master.values.rearrange([&] {
      tq::apply_order(order, [&](auto a, auto b) {
        std::swap(master.origins[a], master.origins[b]);
        std::swap(master.values[a], master.values[b]);
      });
    });
  });
  master.sorted = count;
  return true;
}

std::size_t CLinkInfoCtl::State::find_origin(std::uint32_t link, std::uint32_t file,
                                             std::size_t from) noexcept {
  const auto& origins = links[link].origins;
  if (origins.size() > kManyOrigins) {
    try {
      const auto& of_file = places(link).of_file;
      const auto found = of_file.find(file);
      if (found == of_file.end()) return origins.size();
      const auto at = std::lower_bound(found->second.begin(), found->second.end(), from);
      return at == found->second.end() ? origins.size() : *at;
    } catch (...) {
      places_.erase(link);  // no memory to be quick: look through them
    }
  }
  while (from < origins.size() && tq::file_key(origins[from]) != file) ++from;
  return from;
}

const tq::FilePlaces& CLinkInfoCtl::State::places(std::uint32_t link) {
  tq::FilePlaces& places = places_[link];
  const auto& origins = links[link].origins;
  for (; places.covered < origins.size(); ++places.covered) {
    const std::uint32_t file = tq::file_key(origins[places.covered]);
    places.of_file[file].push_back(static_cast<std::uint32_t>(places.covered));
  }
  return places;
}
