// Walking candidate groups with the caller's cursor, and the order of a group's origins.
#include <algorithm>
#include <span>

#include "common/sorting.h"
#include "ctd/candidate_groups.h"
#include "syncfile/sync_id.h"

namespace tq {
namespace {

// Groups up to this length are walked from their head for every place.
constexpr std::uint32_t kShortGroup = 16;

// Orders as mSortCtdData does: by rising file number, within a file by falling score.
std::uint64_t sort_key(std::uint32_t file, std::int32_t score) {
  const auto falling = static_cast<std::uint32_t>(0x7FFFFFFF - std::int64_t{score});
  return std::uint64_t{file & 0xFFFF} << 32 | falling;
}

}  // namespace

bool CandidateGroups::next_master(tSYNC_SCHINFO& cursor, tSYNC_ID& id) {
  if (cursor.grpPos < 0 || cursor.idPos < 0) return false;
  for (; cursor.grpPos < count(); ++cursor.grpPos, cursor.idPos = 0) {
    const std::uint32_t node = node_at(slot_at(cursor.grpPos), Kind::kMaster, cursor.idPos);
    if (node == kNoRecord) continue;
    ++cursor.idPos;
    id = id_of(node);
    return true;
  }
  return false;
}

bool CandidateGroups::next_origin_of_file(const tSYNC_ID& file, tSYNC_SCHINFO& cursor,
                                          tSYNC_ID& id) {
  if (cursor.recGrp != file.grp || cursor.recFile != file.file) {
    cursor.grpPos = cursor.idPos = 0;
    cursor.recGrp = file.grp;
    cursor.recFile = file.file;
  }
  if (cursor.grpPos < 0 || cursor.idPos < 0) return false;
  const std::uint32_t wanted = file_key(file);
  for (; cursor.grpPos < count(); ++cursor.grpPos, cursor.idPos = 0) {
    const std::uint32_t slot = slot_at(cursor.grpPos);
    look_ahead(slot, file_bit(wanted));
    if (groups_[slot].schFlg != 0 || (groups_[slot].files & file_bit(wanted)) == 0) continue;
    const bool is_long = groups_[slot].org.count > kShortGroup;
    const auto all = is_long ? places_of(slot, Kind::kOrigin) : std::span<const std::uint32_t>();
    std::uint32_t node = node_at(slot, Kind::kOrigin, cursor.idPos);
    while (node != kNoRecord) {
      const auto next = static_cast<std::size_t>(++cursor.idPos);
      if (nodes_[node].file == wanted && is_first(slot, node)) {
        id = id_of(node);
        return true;
      }
      if (all.empty()) {
        node = next_live(node);
      } else {
        node = next < all.size() ? all[next] : kNoRecord;
      }
    }
  }
  return false;
}

bool CandidateGroups::next_origin(std::int32_t index, tSYNC_SCHINFO& cursor, tSYNC_ID& id) {
  const std::uint32_t slot = slot_at(index);
  if (slot == kNoRecord || cursor.idPos < 0) return false;
  if (cursor.idPos == 0) mSortCtdData(slot);
  const std::uint32_t node = node_at(slot, Kind::kOrigin, cursor.idPos);
  if (node == kNoRecord) return false;
  ++cursor.idPos;
  id = id_of(node);
  return true;
}

bool CandidateGroups::next_origin_of_number(std::int32_t index, std::uint16_t file,
                                            tSYNC_SCHINFO& cursor, tSYNC_ID& id) {
  const std::uint32_t slot = slot_at(index);
  if (slot == kNoRecord || groups_[slot].schFlg != 0 || cursor.idPos < 0) return false;
  if (cursor.idPos == 0) mSortCtdData(slot);
  if (groups_[slot].sorted) skip_lower_numbers(slot, file, cursor.idPos);
  std::uint32_t node = node_at(slot, Kind::kOrigin, cursor.idPos);
  for (; node != kNoRecord; node = next_live(node)) {
    ++cursor.idPos;
    if ((nodes_[node].file & 0xFFFF) == file) {
      id = id_of(node);
      return true;
    }
    if (groups_[slot].sorted) break;
  }
  cursor.idPos = std::max(cursor.idPos, static_cast<std::int32_t>(groups_[slot].org.count));
  return false;
}

// The node at a place of a group's chain, kNoRecord behind its end.
std::uint32_t CandidateGroups::node_at(std::uint32_t slot, Kind kind, std::int32_t place) {
  IdChain& ids = chain(slot, kind);
  if (place >= static_cast<std::int32_t>(ids.count)) return kNoRecord;
  if (place < static_cast<std::int32_t>(kShortGroup)) {
    std::uint32_t node = first_live(ids);
    while (place-- > 0) node = next_live(node);
    return node;
  }
  std::vector<std::uint32_t>& nodes = places_[place_key(slot, kind)];
  const auto wanted = static_cast<std::size_t>(place);
  if (nodes.empty()) nodes.push_back(first_live(ids));
  while (nodes.size() <= wanted) nodes.push_back(next_live(nodes.back()));
  return nodes[wanted];
}

// Fetches the ends of groups with one of `files` that a walk is coming to: a group's origins lie in
// runs where they were added, and waiting for each of them is most of what a walk costs.
void CandidateGroups::look_ahead(std::uint32_t slot, std::uint32_t files) const noexcept {
  constexpr std::size_t kHeads = 12, kTails = 6;  // groups ahead; measured, not critical
  if (slot + kHeads >= groups_.size()) return;
  const tSYNC_CTDGRP& far = groups_[slot + kHeads];
  const tSYNC_CTDGRP& near = groups_[slot + kTails];
  if ((far.files & files) != 0) __builtin_prefetch(&nodes_[far.org.head]);
  if ((near.files & files) != 0) __builtin_prefetch(&nodes_[near.org.tail]);
}

// All nodes of a group by place.
std::span<const std::uint32_t> CandidateGroups::places_of(std::uint32_t slot, Kind kind) {
  const auto count = static_cast<std::int32_t>(chain(slot, kind).count);
  node_at(slot, kind, count - 1);
  return places_.find(place_key(slot, kind))->second;
}

// Whether an origin of group `slot` stands here for the first time in the whole table.
bool CandidateGroups::is_first(std::uint32_t slot, std::uint32_t node) noexcept {
  if (!groups_[slot].shared || alone(node)) return true;
  const std::uint64_t key = key_of(nodes_[node]);
  const std::uint32_t first = first_occurrence(key);
  if (home(first) != slot) return false;
  if (!groups_[slot].repeats) return true;
  std::uint32_t at = first_live(groups_[slot].org);
  while (key_of(nodes_[at]) != key) at = next_live(at);
  return at == node;
}

// Moves a position in a sorted group on to the first origin whose file number is not below `file`.
void CandidateGroups::skip_lower_numbers(std::uint32_t slot, std::uint16_t file,
                                         std::int32_t& place) {
  std::int32_t end = static_cast<std::int32_t>(groups_[slot].org.count);
  while (place < end) {
    const std::int32_t middle = place + (end - place) / 2;
    const Node& node = nodes_[node_at(slot, Kind::kOrigin, middle)];
    if ((node.file & 0xFFFF) < file) {
      place = middle + 1;
    } else {
      end = middle;
    }
  }
}

// Sorts a group's origins by file number, within a file by falling score; what is equal in both
// stands as an exchange sort leaves it.
void CandidateGroups::mSortCtdData(std::uint32_t slot) {
  tSYNC_CTDGRP& group = groups_[slot];
  if (group.sorted) return;
  std::vector<std::uint32_t> nodes;
  std::vector<std::uint64_t> keys;
  nodes.reserve(group.org.count);
  keys.reserve(group.org.count);
  for (std::uint32_t at = first_live(group.org); at != kNoRecord; at = next_live(at)) {
    nodes.push_back(at);
    keys.push_back(sort_key(nodes_[at].file, scores_[at]));
  }
  auto order = exchange_order(nodes.size(), [&](auto a, auto b) { return keys[a] < keys[b]; });
  apply_order(order, [&](auto a, auto b) { std::swap(nodes[a], nodes[b]); });
  places_.erase(place_key(slot, Kind::kOrigin));
  group.org = {};
  group.spare = 0;
  for (const std::uint32_t node : nodes) link(group.org, node);
  group.sorted = true;
}

tSYNC_ID CandidateGroups::id_of(std::uint32_t node) const noexcept {
  const Node& at = nodes_[node];
  return {static_cast<std::uint16_t>(at.file >> 16), static_cast<std::uint16_t>(at.file), at.rec,
          0};
}

}  // namespace tq
