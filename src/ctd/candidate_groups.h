// Candidate groups: connected sets of master and origin ids, in the order of their creation.
//
// Callers know a group by its index, its place among the groups that are left. In here it has a
// slot for life: the group that is taken in by another leaves its slot behind, so that nothing
// moves, and a tree of counts turns index into slot and back. Ids are nodes of one pool, chained
// group by group; a merge joins chains. Everything that may allocate throws std::bad_alloc before
// it has changed anything. Cursors and indexes may hold any values. One thread at a time.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "common/count_tree.h"
#include "common/hash_index.h"
#include "tqutil/ctd.h"

namespace tq {

// The ids of one kind in a group, from first to last. Nodes that were dropped may still hang in
// between; `count` leaves them out.
struct IdChain {
  std::uint32_t head = kNoRecord;
  std::uint32_t tail = kNoRecord;
  std::uint32_t count = 0;
};

// One group.
struct tSYNC_CTDGRP {
  IdChain mst;
  IdChain org;                       // each with its score
  std::uint32_t fields = kNoRecord;  // field numbers, first entry of a chain
  std::uint32_t token = 0;           // its name in the index of members
  std::uint32_t spare = 0;           // unused nodes right behind the last origin
  std::uint32_t files = 0;           // file_bit of every origin, and perhaps of some that left
  std::uint16_t schFlg = 0;          // 1: handled
  bool shared = false;               // some origin is, or was, in another group as well
  bool repeats = false;              // an origin may be in here twice
  bool sorted = false;               // origins are in the order of mSortCtdData
};

class CandidateGroups {
 public:
  CandidateGroups() = default;
  CandidateGroups(const CandidateGroups&) = delete;
  CandidateGroups& operator=(const CandidateGroups&) = delete;

  // Adding, as AddCtdData and AddCtdData2 tell it. `fields` ends at a negative number or is null.
  void add_pair(const tSYNC_ID& org, std::int32_t score, const tSYNC_ID& mst,
                const tSYNC_CTDTBL* fields);
  void add_to_master(const tSYNC_ID& org, std::int32_t score, const tSYNC_ID& mst);

  // Groups, by index. -1 or null when there is no such group.
  std::int32_t count() const { return static_cast<std::int32_t>(count_); }
  std::int32_t index_of_master(const tSYNC_ID& id);
  std::int32_t index_of_origin(const tSYNC_ID& id);
  const tSYNC_CTDGRP* group(std::int32_t index);
  std::vector<short> fields(std::int32_t index);

  // The marks of handled groups.
  void clear_flags() noexcept;
  void set_flag(std::int32_t index) noexcept;
  std::int32_t next_open();

  // Walks (candidate_walks.cpp): true with the next id. A cursor with a negative position finds
  // nothing.
  bool next_master(tSYNC_SCHINFO& cursor, tSYNC_ID& id);
  bool next_origin_of_file(const tSYNC_ID& file, tSYNC_SCHINFO& cursor, tSYNC_ID& id);
  bool next_origin(std::int32_t index, tSYNC_SCHINFO& cursor, tSYNC_ID& id);
  bool next_origin_of_number(std::int32_t index, std::uint16_t file, tSYNC_SCHINFO& cursor,
                             tSYNC_ID& id);

  // Makes a new group right behind group `index`, without masters, out of these origins, repeated
  // ones included, with the scores that they have there (0 for strangers), and takes each of them
  // out of group `index` once. False: no such group.
  bool split(std::int32_t index, std::span<const tSYNC_ID> leaving);

  // Forgets everything; then `count` groups without ids or marks.
  void reset(std::int32_t count);

 private:
  struct Node {
    std::uint32_t file;  // group and file number of the id
    std::uint32_t rec;   // its record number
    std::uint32_t slot;  // group that it came into, see home(); kNoRecord once dropped
    std::uint32_t next;  // in the group
  };
  // What only an origin of several groups has.
  struct Tie {
    std::uint32_t same = kNoRecord;  // ring of its occurrences; kNoRecord while it is alone
    std::uint32_t since = 0;  // on the first one: `relabelled_` when it was found to be the first
  };
  // Origins of a group are mostly asked for together, so nodes are kept for a group in runs: this
  // many more than the one that is needed.
  static constexpr std::uint32_t kSpare = 5;
  struct Field {
    short number;
    std::uint32_t next;
  };
  enum class Kind : std::uint8_t { kMaster, kOrigin };

  // Ids of a group.
  static std::uint64_t key_of(const Node& node) {
    return static_cast<std::uint64_t>(node.file) << 32 | node.rec;
  }
  // Member files share 32 bits: a group without its bit has no origin of a file.
  static std::uint32_t file_bit(std::uint32_t file) { return 1U << file % 32; }
  bool alone(std::uint32_t node) const {
    return node >= ties_.size() || ties_[node].same == kNoRecord;
  }
  bool dropped(std::uint32_t node) const { return nodes_[node].slot == kNoRecord; }
  bool is_live(std::uint32_t slot) const { return parent_[slot] == slot; }
  std::uint32_t root(std::uint32_t slot) noexcept;
  std::uint32_t home(std::uint32_t node) noexcept;
  std::uint32_t live(std::uint32_t& link) noexcept {
    return link == kNoRecord || !dropped(link) ? link : pass_dropped(link);
  }
  std::uint32_t pass_dropped(std::uint32_t& link) noexcept;
  std::uint32_t first_live(IdChain& chain) noexcept { return live(chain.head); }
  std::uint32_t next_live(std::uint32_t node) noexcept { return live(nodes_[node].next); }
  IdChain& chain(std::uint32_t slot, Kind kind) {
    return kind == Kind::kMaster ? groups_[slot].mst : groups_[slot].org;
  }

  // Growing.
  void make_room(std::size_t nodes, bool sharing);
  std::uint32_t append_group();
  void link(IdChain& chain, std::uint32_t node) noexcept;
  void append_unused(std::size_t nodes) noexcept;
  std::uint32_t append_node(IdChain& chain, std::uint32_t slot, std::uint64_t key,
                            std::int32_t score, std::uint32_t& spare) noexcept;
  void append_master(std::uint32_t slot, std::uint64_t key) noexcept;
  void append_origin(std::uint32_t slot, std::uint64_t key, std::int32_t score) noexcept;
  void add_fields(std::uint32_t slot, const tSYNC_CTDTBL* fields) noexcept;

  // Where an id is: nodes, slots, or kNoRecord.
  std::uint32_t slot_of_master(std::uint64_t key) noexcept;
  std::uint32_t slot_of_origin(std::uint64_t key) noexcept;
  std::uint32_t slot_at(std::int32_t index) noexcept;
  std::int32_t index_of(std::uint32_t slot) const noexcept;
  std::uint32_t first_occurrence(std::uint64_t key) noexcept;
  std::uint32_t origin(std::uint64_t key) const noexcept;
  void set_first(std::uint64_t key, std::uint32_t from, std::uint32_t to) noexcept;

  // Origins of several groups.
  static std::uint64_t member_key(std::uint32_t token, std::uint64_t key) noexcept;
  std::uint32_t member(std::uint32_t token, std::uint64_t key) noexcept;
  bool holds(std::uint32_t slot, std::uint64_t key) noexcept;
  void share(std::uint32_t node, std::uint32_t first) noexcept;
  void drop(std::uint32_t node, std::uint32_t instead) noexcept;

  // Merging.
  void mMargCtd(std::uint32_t a, std::uint32_t b) noexcept;
  void join(IdChain& to, const IdChain& from) noexcept;
  void merge_origins(std::uint32_t low, std::uint32_t high) noexcept;
  void enter_origins(std::uint32_t low, tSYNC_CTDGRP& from) noexcept;
  void replace_origins(tSYNC_CTDGRP& to, tSYNC_CTDGRP& from) noexcept;
  void drop_repeats(tSYNC_CTDGRP& group) noexcept;

  // Walking (candidate_walks.cpp).
  static std::uint64_t place_key(std::uint32_t slot, Kind kind) noexcept {
    return std::uint64_t{slot} * 2 + (kind == Kind::kOrigin ? 1 : 0);
  }
  std::uint32_t node_at(std::uint32_t slot, Kind kind, std::int32_t place);
  void look_ahead(std::uint32_t slot, std::uint32_t files) const noexcept;
  std::span<const std::uint32_t> places_of(std::uint32_t slot, Kind kind);
  bool is_first(std::uint32_t slot, std::uint32_t node) noexcept;
  void skip_lower_numbers(std::uint32_t slot, std::uint16_t file, std::int32_t& place);
  void mSortCtdData(std::uint32_t slot);
  tSYNC_ID id_of(std::uint32_t node) const noexcept;

  // Splitting (candidate_split.cpp).
  struct Leaving {
    std::uint32_t times = 0;  // how often the origin still has to be taken out
    std::int32_t score = 0;
  };
  using LeavingOrigins = std::unordered_map<std::uint64_t, Leaving>;
  void find_scores(std::uint32_t slot, LeavingOrigins& leaving) noexcept;
  void insert_group(std::uint32_t slot);
  void take_out(std::uint32_t slot, LeavingOrigins& leaving) noexcept;

  std::vector<Node> nodes_;
  std::vector<std::int32_t> scores_;  // of the node with the same number
  std::vector<Tie> ties_;             // likewise; short while no origin is in several groups
  std::vector<Field> fields_;
  std::vector<tSYNC_CTDGRP> groups_;   // by slot
  std::vector<std::uint32_t> parent_;  // by slot: itself, or a group on the way to where it went
  CountTree live_;                     // by slot: 1 while the group is there
  std::uint32_t count_ = 0;            // groups that are there
  std::uint32_t next_token_ = 0;

  HashIndex masters_;             // a master's node
  HashIndex origins_;             // an origin's first occurrence, see first_occurrence
  HashIndex members_;             // occurrences of the others, by group and id
  std::uint32_t relabelled_ = 0;  // raised when a group with shared origins got a lower slot
  std::uint32_t open_from_ = 0;   // no slot below is without a mark
  std::int32_t last_index_ = 0;   // the group looked up last
  std::uint32_t last_slot_ = 0;
  std::bitset<0x8000> has_field_;  // scratch of add_fields, all clear between calls
  // Nodes by place, of groups that are too long to walk from their head for every place; what is
  // there stays right when ids are added behind. By slot and kind.
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> places_;
};

}  // namespace tq
