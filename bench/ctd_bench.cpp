// Candidate groups beside std::unordered_map with union-find, which parses and keeps the same ids,
// and beside the linear searches that they answer like.
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ctd/literal_groups.h"
#include "side_by_side.h"
#include "syncfile/sync_id.h"
#include "tqutil/ctd.h"

namespace {

using Text = char[TQ_SYNC_ID_SIZE];

struct Pair {
  tSYNC_ID org, mst;
  Text org_text, mst_text;
};
using Pairs = std::vector<Pair>;

constexpr std::uint16_t kFiles = 4;

void append(Pairs& pairs, std::uint32_t org, std::uint32_t mst) {
  Pair pair{{1, static_cast<std::uint16_t>(2 + org % kFiles), org, 0}, {1, 1, mst, 0}, {}, {}};
  tq::print_sync_id(pair.org, pair.org_text);
  tq::print_sync_id(pair.mst, pair.mst_text);
  pairs.push_back(pair);
}

// Of ten pairs seven bring a new origin, for three of which the master is new as well; half a pair
// joins two groups, the others are known. 1,000,000 pairs: 300,000 masters, 700,000 origins.
Pairs address_book(std::int64_t count) {
  Pairs pairs;
  std::mt19937 engine(1);
  const auto below = [&](std::uint32_t limit) {
    return static_cast<std::uint32_t>(engine() % limit);
  };
  std::vector<std::uint32_t> master_of;
  std::uint32_t masters = 0;
  while (pairs.size() < static_cast<std::size_t>(count)) {
    const auto origins = static_cast<std::uint32_t>(master_of.size());
    const unsigned dice = below(1000);
    if (origins > 0 && dice >= 700) {
      const std::uint32_t org = below(origins);
      append(pairs, org, dice >= 950 ? below(masters) : master_of[org]);
      continue;
    }
    master_of.push_back(masters == 0 || dice < 300 ? masters++ : below(masters));
    append(pairs, origins, master_of.back());
  }
  return pairs;
}

// Groups of one pair each, then each joined to its neighbour, from the oldest on or towards it.
Pairs chain(std::int64_t groups, bool backward) {
  Pairs pairs;
  const auto n = static_cast<std::uint32_t>(groups);
  for (std::uint32_t i = 0; i < n; ++i) append(pairs, i, i);
  for (std::uint32_t i = 1; i < n; ++i)
    append(pairs, backward ? n - i : i, (backward ? n - i : i) - 1);
  return pairs;
}

// The peer. A join adds the shorter lists to the longer ones, which keeps no order.
class HashedGroups {
 public:
  void add_pair(const char* org_text, std::int32_t score, const char* mst_text) {
    tSYNC_ID org{}, mst{};
    tq::parse_sync_id(org_text, org);
    tq::parse_sync_id(mst_text, mst);
    const auto master = masters_.find(tq::record_key(mst));
    const auto origin = origins_.find(tq::record_key(org));
    const bool known_master = master != masters_.end(), known_origin = origin != origins_.end();
    if (known_master && known_origin) return join(root(master->second), root(origin->second));
    const std::uint32_t group = known_master   ? root(master->second)
                                : known_origin ? root(origin->second)
                                               : new_group();
    if (!known_master) add_master(mst, group);
    if (!known_origin) add_origin(org, score, group);
  }

  void add_to_master(const tSYNC_ID& org, std::int32_t score, const char* mst_text) {
    tSYNC_ID mst{};
    tq::parse_sync_id(mst_text, mst);
    const auto master = masters_.find(tq::record_key(mst));
    std::uint32_t group = 0;
    if (master == masters_.end()) {
      add_master(mst, group = new_group());
    } else {
      group = root(master->second);
      for (const auto& origin : groups[group].origins) {
        if (tq::same_record(origin.id, org)) return;
      }
    }
    add_origin(org, score, group);
  }

  std::vector<tq::test::LiteralGroups::Group> groups;

 private:
  std::uint32_t new_group() {
    parent_.push_back(static_cast<std::uint32_t>(parent_.size()));
    groups.emplace_back();
    return parent_.back();
  }
  void add_master(const tSYNC_ID& id, std::uint32_t group) {
    masters_.emplace(tq::record_key(id), group);
    groups[group].masters.push_back(id);
  }
  void add_origin(const tSYNC_ID& id, std::int32_t score, std::uint32_t group) {
    origins_.emplace(tq::record_key(id), group);
    groups[group].origins.push_back({id, score});
  }
  std::uint32_t root(std::uint32_t at) {
    while (parent_[at] != at) at = parent_[at] = parent_[parent_[at]];
    return at;
  }
  void join(std::uint32_t a, std::uint32_t b) {
    if (a == b) return;
    if (groups[a].origins.size() < groups[b].origins.size()) std::swap(a, b);
    const auto move_all = [](auto& to, auto& from) {
      to.insert(to.end(), from.begin(), from.end());
      from = {};
    };
    move_all(groups[a].masters, groups[b].masters);
    move_all(groups[a].origins, groups[b].origins);
    parent_[b] = a;
  }

  std::unordered_map<std::uint64_t, std::uint32_t> masters_, origins_;
  std::vector<std::uint32_t> parent_;
};

std::unique_ptr<CCtdCtl> ours(const Pairs& pairs) {
  auto ctd = std::make_unique<CCtdCtl>();
  for (const Pair& pair : pairs) ctd->AddCtdData(pair.org_text, 1, pair.mst_text, nullptr);
  return ctd;
}

std::unique_ptr<HashedGroups> hashed(const Pairs& pairs) {
  auto groups = std::make_unique<HashedGroups>();
  for (const Pair& pair : pairs) groups->add_pair(pair.org_text, 1, pair.mst_text);
  return groups;
}

// Both sides must have come to the same groups.
struct SameGroups {
  benchmark::State& state;
  std::int64_t first = -1;
  void operator()(std::int64_t count) {
    if (first >= 0 && first != count) state.SkipWithError("the sides disagree");
    first = count;
  }
  void operator()(const std::unique_ptr<CCtdCtl>& ctd) { (*this)(ctd->GetCtdCnt()); }
  void operator()(const std::unique_ptr<HashedGroups>& groups) {
    std::int64_t count = 0;
    for (const auto& group : groups->groups) count += group.masters.empty() ? 0 : 1;
    (*this)(count);
  }
};

void compare_building(benchmark::State& state, const Pairs& pairs) {
  tq::bench::side_by_side(
      state, [&] { return ours(pairs); }, [&] { return hashed(pairs); }, SameGroups{state});
}

void AddPairs(benchmark::State& state) { compare_building(state, address_book(state.range(0))); }
void JoinForward(benchmark::State& state) { compare_building(state, chain(state.range(0), false)); }
void JoinBackward(benchmark::State& state) { compare_building(state, chain(state.range(0), true)); }

void AddToMasters(benchmark::State& state) {
  const Pairs pairs = address_book(state.range(0));
  tq::bench::side_by_side(
      state,
      [&] {
        auto ctd = std::make_unique<CCtdCtl>();
        for (const Pair& pair : pairs) ctd->AddCtdData2(&pair.org, 1, pair.mst_text);
        return ctd;
      },
      [&] {
        auto groups = std::make_unique<HashedGroups>();
        for (const Pair& pair : pairs) groups->add_to_master(pair.org, 1, pair.mst_text);
        return groups;
      },
      SameGroups{state});
}

void WalkMasters(benchmark::State& state) {
  const Pairs pairs = address_book(state.range(0));
  const auto ctd = ours(pairs);
  const auto groups = hashed(pairs);
  tq::bench::side_by_side(
      state,
      [&] {
        std::int64_t count = 0;
        tSYNC_SCHINFO cursor{};
        for (Text text; ctd->FindCtdMstSyncID(text, &cursor) == 0; ++count) {
          benchmark::DoNotOptimize(text);
        }
        return count;
      },
      [&] {
        std::int64_t count = 0;
        Text text;
        for (const auto& group : groups->groups) {
          for (const tSYNC_ID& id : group.masters) {
            tq::print_sync_id(id, text);
            benchmark::DoNotOptimize(text);
            ++count;
          }
        }
        return count;
      },
      SameGroups{state});
}

void WalkOrigins(benchmark::State& state) {
  const Pairs pairs = address_book(state.range(0));
  const auto ctd = ours(pairs);
  const auto groups = hashed(pairs);
  const auto walk_all = [](auto walk) {
    std::int64_t count = 0;
    for (std::uint16_t file = 2; file < 2 + kFiles; ++file) count += walk(file);
    return count;
  };
  const auto with_cursor = [&](std::uint16_t file) {
    std::int64_t count = 0;
    Text wanted, text;
    tq::print_file_id({1, file, 0, 0}, wanted);
    tSYNC_SCHINFO cursor{};
    for (; ctd->FindCtdOrgSyncID(wanted, text, &cursor) == 0; ++count) {
      benchmark::DoNotOptimize(text);
    }
    return count;
  };
  const auto by_hand = [&](std::uint16_t file) {
    std::int64_t count = 0;
    Text text;
    for (const auto& group : groups->groups) {
      for (const auto& origin : group.origins) {
        if (origin.id.grp != 1 || origin.id.file != file) continue;
        tq::print_sync_id(origin.id, text);
        benchmark::DoNotOptimize(text);
        ++count;
      }
    }
    return count;
  };
  tq::bench::side_by_side(
      state, [&] { return walk_all(with_cursor); }, [&] { return walk_all(by_hand); },
      SameGroups{state});
}

// The linear searches, on as few pairs as they can take.
void AddPairsLinear(benchmark::State& state) {
  const Pairs pairs = address_book(state.range(0));
  tq::bench::side_by_side(
      state, [&] { return ours(pairs); },
      [&] {
        tq::test::LiteralGroups groups;
        for (const Pair& pair : pairs) groups.add_pair(pair.org, 1, pair.mst, {});
        return static_cast<std::int64_t>(groups.groups.size());
      },
      SameGroups{state});
}

#define TQ_BENCH(name) BENCHMARK(name)->UseManualTime()->Unit(benchmark::kMillisecond)
TQ_BENCH(AddPairs)->Arg(500'000)->Arg(1'000'000)->Iterations(5);
TQ_BENCH(AddToMasters)->Arg(500'000)->Arg(1'000'000)->Iterations(5);
TQ_BENCH(JoinForward)->Arg(250'000)->Arg(500'000)->Iterations(5);
TQ_BENCH(JoinBackward)->Arg(250'000)->Arg(500'000)->Iterations(5);
TQ_BENCH(WalkMasters)->Arg(500'000)->Arg(1'000'000)->Iterations(5);
TQ_BENCH(WalkOrigins)->Arg(500'000)->Arg(1'000'000)->Iterations(5);
TQ_BENCH(AddPairsLinear)->Arg(4'000)->Iterations(3);

}  // namespace
