// Splitting a candidate group: what the user did not choose for merging becomes a group of its own.
#include "ctd/candidate_groups.h"
#include "syncfile/sync_id.h"

namespace tq {

bool CandidateGroups::split(std::int32_t index, std::span<const tSYNC_ID> leaving) {
  const std::uint32_t slot = slot_at(index);
  if (slot == kNoRecord) return false;
  LeavingOrigins origins;
  for (const tSYNC_ID& id : leaving) ++origins[record_key(id)].times;
  find_scores(slot, origins);
  make_room(leaving.size(), true);
  const std::uint32_t added = slot + 1;
  insert_group(added);
  for (const tSYNC_ID& id : leaving) {
    const std::uint64_t key = record_key(id);
    append_origin(added, key, origins.find(key)->second.score);
  }
  take_out(slot, origins);
  return true;
}

// The score of each leaving origin in the group; where it stands there twice, both have the same.
void CandidateGroups::find_scores(std::uint32_t slot, LeavingOrigins& leaving) noexcept {
  for (std::uint32_t at = first_live(groups_[slot].org); at != kNoRecord; at = next_live(at)) {
    const auto found = leaving.find(key_of(nodes_[at]));
    if (found != leaving.end()) found->second.score = scores_[at];
  }
}

// An empty group at `slot`; the slots from there on move up. Splits come one by one from a user's
// choice, so this may take the time of a look at every id.
void CandidateGroups::insert_group(std::uint32_t slot) {
  const auto move_up = [slot](std::uint32_t& other) {
    if (other >= slot && other != kNoRecord) ++other;
  };
  CountTree live;
  for (std::uint32_t at = 0; at <= groups_.size(); ++at) {
    const bool there = at == slot || is_live(at < slot ? at : at - 1);
    live.append(there ? 1 : 0);
  }
  live_ = std::move(live);
  for (Node& node : nodes_) move_up(node.slot);
  for (std::uint32_t& parent : parent_) move_up(parent);
  parent_.insert(parent_.begin() + slot, slot);
  groups_.insert(groups_.begin() + slot, tSYNC_CTDGRP{});
  groups_[slot].token = next_token_++;
  ++count_;
  places_.clear();
  if (open_from_ > slot) open_from_ = slot;
  last_index_ = 0;
  last_slot_ = 0;
}

// Takes each leaving origin out of a group as often as it leaves, from the front. All of them are
// in the group behind by now.
void CandidateGroups::take_out(std::uint32_t slot, LeavingOrigins& leaving) noexcept {
  tSYNC_CTDGRP& group = groups_[slot];
  const std::uint32_t behind = groups_[slot + 1].token;
  IdChain kept;
  for (std::uint32_t at = first_live(group.org), next = kNoRecord; at != kNoRecord; at = next) {
    next = next_live(at);
    const std::uint64_t key = key_of(nodes_[at]);
    const auto found = leaving.find(key);
    if (found == leaving.end() || found->second.times == 0) {
      link(kept, at);
      continue;
    }
    --found->second.times;
    if (member(group.token, key) == at) members_.remove(member_key(group.token, key), at);
    drop(at, member(behind, key));
  }
  group.org = kept;
  group.spare = 0;
  ++relabelled_;
  if (!group.repeats) return;
  for (std::uint32_t at = first_live(group.org); at != kNoRecord; at = next_live(at)) {
    const std::uint64_t key = key_of(nodes_[at]);
    if (!alone(at) && member(group.token, key) == kNoRecord) {
      members_.add(member_key(group.token, key), at);
    }
  }
}

}  // namespace tq
