// Adding pairs to candidate groups, finding ids, merging groups.
#include "ctd/candidate_groups.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

#include "syncfile/sync_id.h"

namespace tq {
namespace {

// Room for `extra` more entries; grows by doubling.
template <class T>
void grow_for(std::vector<T>& entries, std::size_t extra) {
  const std::size_t needed = entries.size() + extra;
  if (needed > entries.capacity()) entries.reserve(std::max(needed, entries.capacity() * 2));
}

std::size_t length(const tSYNC_CTDTBL* fields) {
  std::size_t count = 0;
  while (fields != nullptr && fields[count].fldNo >= 0) ++count;
  return count;
}

}  // namespace

void CandidateGroups::add_pair(const tSYNC_ID& org, std::int32_t score, const tSYNC_ID& mst,
                               const tSYNC_CTDTBL* fields) {
  make_room(2, false);
  grow_for(fields_, length(fields));
  const std::uint64_t master = record_key(mst);
  const std::uint64_t origin = record_key(org);
  origins_.prefetch(origin);
  std::uint32_t of_master = slot_of_master(master);
  const std::uint32_t of_origin = slot_of_origin(origin);
  if (of_master != kNoRecord && of_origin != kNoRecord) {
    if (of_master != of_origin) mMargCtd(of_master, of_origin);
    return;
  }
  if (of_origin != kNoRecord) {
    append_master(of_origin, master);
    add_fields(of_origin, fields);
    return;
  }
  if (of_master == kNoRecord) {
    of_master = append_group();
    append_master(of_master, master);
  }
  append_origin(of_master, origin, score);
  add_fields(of_master, fields);
}

void CandidateGroups::add_to_master(const tSYNC_ID& org, std::int32_t score, const tSYNC_ID& mst) {
  make_room(2, true);
  const std::uint64_t master = record_key(mst);
  const std::uint64_t origin = record_key(org);
  origins_.prefetch(origin);
  std::uint32_t slot = slot_of_master(master);
  if (slot == kNoRecord) {
    slot = append_group();
    append_master(slot, master);
  } else if (holds(slot, origin)) {
    return;
  }
  append_origin(slot, origin, score);
}

std::int32_t CandidateGroups::index_of_master(const tSYNC_ID& id) {
  return index_of(slot_of_master(record_key(id)));
}

std::int32_t CandidateGroups::index_of_origin(const tSYNC_ID& id) {
  return index_of(slot_of_origin(record_key(id)));
}

const tSYNC_CTDGRP* CandidateGroups::group(std::int32_t index) {
  const std::uint32_t slot = slot_at(index);
  return slot == kNoRecord ? nullptr : &groups_[slot];
}

std::vector<short> CandidateGroups::fields(std::int32_t index) {
  std::vector<short> numbers;
  const tSYNC_CTDGRP* group = this->group(index);
  if (group == nullptr) return numbers;
  for (std::uint32_t at = group->fields; at != kNoRecord; at = fields_[at].next) {
    numbers.push_back(fields_[at].number);
  }
  return numbers;
}

void CandidateGroups::clear_flags() noexcept {
  for (tSYNC_CTDGRP& group : groups_) group.schFlg = 0;
  open_from_ = 0;
}

void CandidateGroups::set_flag(std::int32_t index) noexcept {
  const std::uint32_t slot = slot_at(index);
  if (slot != kNoRecord) groups_[slot].schFlg = 1;
}

std::int32_t CandidateGroups::next_open() {
  const auto passed = [this](std::uint32_t slot) {
    return !is_live(slot) || groups_[slot].schFlg != 0;
  };
  while (open_from_ < groups_.size() && passed(open_from_)) ++open_from_;
  return open_from_ < groups_.size() ? index_of(open_from_) : -1;
}

void CandidateGroups::reset(std::int32_t count) {
  live_ = {};
  nodes_ = {};
  scores_ = {};
  ties_ = {};
  fields_ = {};
  groups_ = {};
  parent_ = {};
  count_ = 0;
  masters_.clear();
  origins_.clear();
  members_.clear();
  places_ = {};
  open_from_ = 0;
  last_index_ = 0;
  last_slot_ = 0;
  if (count <= 0) return;
  const auto groups = static_cast<std::uint32_t>(count);
  std::vector<tSYNC_CTDGRP> empty(groups);
  for (tSYNC_CTDGRP& group : empty) group.token = next_token_++;
  std::vector<std::uint32_t> parents(groups);
  std::iota(parents.begin(), parents.end(), 0U);
  live_ = CountTree(groups, 1);
  groups_.swap(empty);
  parent_.swap(parents);
  count_ = groups;
}

// ---- ids of a group ----

// The slot of the group that the group of `slot` has become.
std::uint32_t CandidateGroups::root(std::uint32_t slot) noexcept {
  while (parent_[slot] != slot) slot = parent_[slot] = parent_[parent_[slot]];
  return slot;
}

std::uint32_t CandidateGroups::home(std::uint32_t node) noexcept {
  return nodes_[node].slot = root(nodes_[node].slot);
}

// The first node at or behind a link of a chain that was not dropped. Unlinks those before it,
// except the last of the chain, to which the next id is going to be tied.
std::uint32_t CandidateGroups::pass_dropped(std::uint32_t& link) noexcept {
  while (link != kNoRecord && dropped(link)) {
    const std::uint32_t next = nodes_[link].next;
    if (next == kNoRecord) return kNoRecord;
    link = next;
  }
  return link;
}

// ---- growing ----

// For `nodes` more ids and one more group. `sharing`: the ids may be in other groups already.
void CandidateGroups::make_room(std::size_t nodes, bool sharing) {
  const std::size_t with_spare = 2 * nodes + kSpare;
  grow_for(nodes_, with_spare);
  grow_for(scores_, with_spare);
  grow_for(groups_, 1);
  grow_for(parent_, 1);
  live_.make_room();
  masters_.make_room(1);
  origins_.make_room(nodes);
  if (!sharing) return;
  ties_.reserve(nodes_.capacity());
  members_.make_room(2 * nodes);
}

std::uint32_t CandidateGroups::append_group() {
  const auto slot = static_cast<std::uint32_t>(groups_.size());
  groups_.push_back({});
  groups_.back().token = next_token_++;
  parent_.push_back(slot);
  live_.append(1);
  ++count_;
  return slot;
}

void CandidateGroups::append_unused(std::size_t nodes) noexcept {
  nodes_.resize(nodes_.size() + nodes, {0, 0, kNoRecord, kNoRecord});
  scores_.resize(nodes_.size());
}

// A new node at the end of a chain, `spare` being how many are kept for it behind its last one.
std::uint32_t CandidateGroups::append_node(IdChain& chain, std::uint32_t slot, std::uint64_t key,
                                           std::int32_t score, std::uint32_t& spare) noexcept {
  auto node = static_cast<std::uint32_t>(nodes_.size());
  if (spare > 0) {
    node = chain.tail + 1;
    --spare;
  } else {
    append_unused(1);
  }
  nodes_[node] = {static_cast<std::uint32_t>(key >> 32), static_cast<std::uint32_t>(key), slot,
                  kNoRecord};
  scores_[node] = score;
  link(chain, node);
  return node;
}

void CandidateGroups::link(IdChain& chain, std::uint32_t node) noexcept {
  nodes_[node].next = kNoRecord;
  join(chain, {node, node, 1});
}

void CandidateGroups::append_master(std::uint32_t slot, std::uint64_t key) noexcept {
  std::uint32_t spare = 0;
  masters_.add(key, append_node(groups_[slot].mst, slot, key, 0, spare));
}

void CandidateGroups::append_origin(std::uint32_t slot, std::uint64_t key,
                                    std::int32_t score) noexcept {
  const std::uint32_t first = first_occurrence(key);
  tSYNC_CTDGRP& group = groups_[slot];
  const bool keep_more = group.spare == 0;
  const std::uint32_t node = append_node(group.org, slot, key, score, group.spare);
  if (keep_more) {
    group.spare = kSpare;
    append_unused(group.spare);
  }
  group.files |= file_bit(static_cast<std::uint32_t>(key >> 32));
  group.sorted = false;
  if (first == kNoRecord) {
    origins_.add(key, node);
  } else {
    share(node, first);
  }
}

void CandidateGroups::add_fields(std::uint32_t slot, const tSYNC_CTDTBL* fields) noexcept {
  const std::size_t added = length(fields);
  if (added == 0) return;
  std::uint32_t* link = &groups_[slot].fields;
  for (; *link != kNoRecord; link = &fields_[*link].next) {
    has_field_.set(static_cast<std::size_t>(fields_[*link].number));
  }
  for (std::size_t i = 0; i < added; ++i) {
    const auto number = static_cast<std::size_t>(fields[i].fldNo);
    if (has_field_.test(number)) continue;
    has_field_.set(number);
    *link = static_cast<std::uint32_t>(fields_.size());
    fields_.push_back({fields[i].fldNo, kNoRecord});
    link = &fields_.back().next;
  }
  for (std::uint32_t at = groups_[slot].fields; at != kNoRecord; at = fields_[at].next) {
    has_field_.reset(static_cast<std::size_t>(fields_[at].number));
  }
}

// ---- where an id is ----

std::uint32_t CandidateGroups::slot_of_master(std::uint64_t key) noexcept {
  const std::uint32_t node =
      masters_.find(key, [&](std::uint32_t at) { return key_of(nodes_[at]) == key; });
  return node == kNoRecord ? kNoRecord : home(node);
}

std::uint32_t CandidateGroups::slot_of_origin(std::uint64_t key) noexcept {
  const std::uint32_t node = first_occurrence(key);
  return node == kNoRecord ? kNoRecord : home(node);
}

std::uint32_t CandidateGroups::slot_at(std::int32_t index) noexcept {
  if (index < 0 || index >= count()) return kNoRecord;
  if (index == last_index_) return last_slot_;
  // The next group mostly stands right behind; a long stretch of merged ones is left to the tree.
  constexpr std::uint32_t kFewSlots = 8;
  std::uint32_t slot = kNoRecord;
  if (index - 1 == last_index_) {
    slot = last_slot_ + 1;
    while (!is_live(slot) && slot < last_slot_ + kFewSlots) ++slot;
    if (!is_live(slot)) slot = kNoRecord;
  }
  if (slot == kNoRecord) {
    slot = static_cast<std::uint32_t>(live_.find(static_cast<std::uint32_t>(index)));
  }
  last_index_ = index;
  last_slot_ = slot;
  return slot;
}

std::int32_t CandidateGroups::index_of(std::uint32_t slot) const noexcept {
  return slot == kNoRecord ? -1 : static_cast<std::int32_t>(live_.before(slot));
}

// The occurrence of an origin in the first group that holds it. The index keeps it; only after a
// large group came down to a lower slot the occurrences have to be looked through again.
std::uint32_t CandidateGroups::first_occurrence(std::uint64_t key) noexcept {
  const std::uint32_t known = origin(key);
  if (known == kNoRecord || alone(known)) return known;
  if (ties_[known].since == relabelled_) return known;
  std::uint32_t first = known;
  for (std::uint32_t at = known;;) {
    std::uint32_t next = ties_[at].same;
    while (dropped(next)) next = ties_[next].same;
    ties_[at].same = next;
    if (next == known) break;
    if (home(next) < home(first)) first = next;
    at = next;
  }
  set_first(key, known, first);
  return first;
}

// What the index has for an origin: an occurrence, the first one while it is up to date.
std::uint32_t CandidateGroups::origin(std::uint64_t key) const noexcept {
  return origins_.find(key, [&](std::uint32_t at) { return key_of(nodes_[at]) == key; });
}

void CandidateGroups::set_first(std::uint64_t key, std::uint32_t from, std::uint32_t to) noexcept {
  if (from != to) origins_.replace(key, from, to);
  ties_[to].since = relabelled_;
}

// ---- origins of several groups ----

std::uint64_t CandidateGroups::member_key(std::uint32_t token, std::uint64_t key) noexcept {
  return key ^ (token + std::uint64_t{1}) * 0x9E3779B97F4A7C15U;
}

std::uint32_t CandidateGroups::member(std::uint32_t token, std::uint64_t key) noexcept {
  return members_.find(member_key(token, key), [&](std::uint32_t at) {
    return key_of(nodes_[at]) == key && groups_[home(at)].token == token;
  });
}

bool CandidateGroups::holds(std::uint32_t slot, std::uint64_t key) noexcept {
  const std::uint32_t node = origin(key);
  if (node == kNoRecord) return false;
  if (alone(node)) return home(node) == slot;
  return member(groups_[slot].token, key) != kNoRecord;
}

// Takes a new node in beside the other occurrences of its origin.
void CandidateGroups::share(std::uint32_t node, std::uint32_t first) noexcept {
  const std::uint64_t key = key_of(nodes_[node]);
  ties_.resize(nodes_.size());
  tSYNC_CTDGRP& there = groups_[home(first)];
  if (alone(first)) {
    ties_[first].same = first;
    ties_[first].since = relabelled_;
    there.shared = true;
    members_.add(member_key(there.token, key), first);
  }
  ties_[node].same = std::exchange(ties_[first].same, node);
  tSYNC_CTDGRP& here = groups_[home(node)];
  here.shared = true;
  if (member(here.token, key) == kNoRecord) {
    members_.add(member_key(here.token, key), node);
  } else {
    here.repeats = true;
  }
  if (home(node) < home(first)) set_first(key, first, node);
}

// Takes a node out of everything but its chain and its ring, which pass over it from now on.
// `instead` is another occurrence of the same origin.
void CandidateGroups::drop(std::uint32_t node, std::uint32_t instead) noexcept {
  const std::uint64_t key = key_of(nodes_[node]);
  if (origin(key) == node) origins_.replace(key, node, instead);
  nodes_[node].slot = kNoRecord;
}

// ---- merging ----

// Groups a and b become one, in the place of the first of them. Masters are not compared; an origin
// that both have stays with the score that it has in the first. Fields of the second are dropped.
void CandidateGroups::mMargCtd(std::uint32_t a, std::uint32_t b) noexcept {
  const auto [low, high] = std::minmax(a, b);
  merge_origins(low, high);
  tSYNC_CTDGRP& to = groups_[low];
  tSYNC_CTDGRP& from = groups_[high];
  join(to.mst, from.mst);
  join(to.org, from.org);
  to.files |= from.files;
  to.shared = to.shared || from.shared;
  to.sorted = false;
  if (from.org.head != kNoRecord) to.spare = from.spare;
  from = {};
  parent_[high] = low;
  live_.subtract(high, 1);
  --count_;
  if (last_slot_ >= high) last_index_ = last_slot_ = 0;  // the first group is never taken in
  if (places_.empty()) return;
  places_.erase(place_key(high, Kind::kMaster));
  places_.erase(place_key(high, Kind::kOrigin));
}

void CandidateGroups::join(IdChain& to, const IdChain& from) noexcept {
  if (from.head == kNoRecord) return;
  (to.head == kNoRecord ? to.head : nodes_[to.tail].next) = from.head;
  to.tail = from.tail;
  to.count += from.count;
}

// Drops the origins of `high` that `low` has, and enters the others as members of the group to
// come. Goes through the smaller group only, so that any sequence of merges stays near-linear.
void CandidateGroups::merge_origins(std::uint32_t low, std::uint32_t high) noexcept {
  tSYNC_CTDGRP& to = groups_[low];
  tSYNC_CTDGRP& from = groups_[high];
  if (from.repeats) drop_repeats(from);
  if (to.repeats || from.org.count <= to.org.count) {
    if (from.shared) enter_origins(low, from);
    return;
  }
  if (to.shared) replace_origins(to, from);
  if (from.shared) ++relabelled_;
  to.token = from.token;
}

// Each origin of `from` becomes a member of group `low` or is dropped.
void CandidateGroups::enter_origins(std::uint32_t low, tSYNC_CTDGRP& from) noexcept {
  const std::uint32_t token = groups_[low].token;
  for (std::uint32_t node = first_live(from.org); node != kNoRecord; node = next_live(node)) {
    if (alone(node)) continue;
    const std::uint64_t key = key_of(nodes_[node]);
    members_.remove(member_key(from.token, key), node);
    const std::uint32_t kept = member(token, key);
    if (kept != kNoRecord) {
      drop(node, kept);
      --from.org.count;
      continue;
    }
    members_.add(member_key(token, key), node);
    const std::uint32_t first = origin(key);
    if (ties_[first].since == relabelled_ && home(first) > low) set_first(key, first, node);
  }
}

// Each origin of `to` takes the place of its counterpart in `from`, whose token stays.
void CandidateGroups::replace_origins(tSYNC_CTDGRP& to, tSYNC_CTDGRP& from) noexcept {
  for (std::uint32_t node = first_live(to.org); node != kNoRecord; node = next_live(node)) {
    if (alone(node)) continue;
    const std::uint64_t key = key_of(nodes_[node]);
    members_.remove(member_key(to.token, key), node);
    const std::uint32_t counterpart = member(from.token, key);
    if (counterpart == kNoRecord) {
      members_.add(member_key(from.token, key), node);
    } else {
      members_.replace(member_key(from.token, key), counterpart, node);
      drop(counterpart, node);
      --from.org.count;
    }
  }
}

// Leaves only the first of each origin in a group that has some of them twice.
void CandidateGroups::drop_repeats(tSYNC_CTDGRP& group) noexcept {
  const std::uint32_t seen = ++relabelled_;
  for (std::uint32_t node = first_live(group.org); node != kNoRecord; node = next_live(node)) {
    if (alone(node)) continue;
    const std::uint64_t key = key_of(nodes_[node]);
    const std::uint32_t entry = member(group.token, key);
    if (ties_[entry].since == seen) {
      drop(node, entry);
      --group.org.count;
    } else {
      if (entry != node) members_.replace(member_key(group.token, key), entry, node);
      ties_[node].since = seen;
    }
  }
  ++relabelled_;
  group.repeats = false;
}

}  // namespace tq
