// Candidate groups against the plain ones, step by step, and while memory runs out.
#include <cstdint>
#include <random>

#include "ctd/candidate_groups.h"
#include "ctd/literal_groups.h"
#include "support/short_memory.h"
#include "support/test.h"

namespace {

// What a run draws its ids from. Small numbers make every kind of meeting frequent.
struct World {
  const char* why;
  unsigned masters, origins, files;
  unsigned to_master;  // of 100 additions, those that never merge
  unsigned splits;     // of 100 steps
  unsigned steps;
  unsigned seeds = 40;
};

const World kWorlds[] = {
    {"pairs alone", 30, 50, 3, 0, 0, 300},
    {"origins in several groups, merged later", 12, 15, 2, 60, 0, 150},
    {"few ids, long groups", 4, 60, 4, 40, 1, 400},
    {"many groups, most of them shared", 60, 6, 1, 80, 1, 300},
    {"splits with repeated origins", 10, 10, 2, 50, 12, 500},
    {"long chains of merges", 300, 900, 1, 55, 0, 6000, 1},
};

class ModelRun {
 public:
  ModelRun(const World& world, unsigned seed) : world_(world), random_(seed) {}

  void step() {
    const unsigned dice = below(100);
    if (dice < world_.splits) return split();
    if (dice < 40) return add();
    if (dice < 50) return mark();
    walk();
  }

  // Everything that can be seen without sorting a group.
  void expect_same() {
    ASSERT_EQ(real.count(), static_cast<int>(plain.groups.size()));
    for (int g = -1; g <= real.count(); ++g) {
      const tq::tSYNC_CTDGRP* group = real.group(g);
      ASSERT_EQ(group != nullptr, g >= 0 && g < real.count());
      if (group == nullptr) continue;
      const auto& other = plain.groups[static_cast<std::size_t>(g)];
      ASSERT_EQ(group->mst.count, other.masters.size()) << "group " << g;
      ASSERT_EQ(group->org.count, other.origins.size()) << "group " << g;
      ASSERT_EQ(real.fields(g), other.fields) << "group " << g;
      for (std::size_t i = 1; i < other.origins.size(); ++i) {
        tSYNC_SCHINFO at{0, static_cast<std::int32_t>(i), 0, 0, 0};
        tSYNC_ID id{};
        ASSERT_TRUE(real.next_origin(g, at, id));
        ASSERT_TRUE(tq::same_record(id, other.origins[i].id)) << "group " << g << " place " << i;
      }
    }
    for (unsigned i = 0; i < world_.masters; ++i) {
      ASSERT_EQ(real.index_of_master(master(i)), plain.master_group(master(i))) << "master " << i;
    }
    for (unsigned i = 0; i < world_.origins; ++i) {
      ASSERT_EQ(real.index_of_origin(origin(i)), plain.origin_group(origin(i))) << "origin " << i;
    }
    ASSERT_EQ(real.next_open(), plain.next_open());
  }

  tq::CandidateGroups real;
  LiteralGroups plain;
  bool starve = false;  // every operation is short of memory first
  int failures = 0;

 private:
  // `keeps_order`: not even the order of a group changes when the operation fails.
  template <class Operation>
  void attempt(Operation operation, bool keeps_order = true) {
    if (!starve) return operation();
    tq::test::starve(operation, [&] {
      ++failures;
      if (keeps_order) expect_same();
    });
  }

  unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
  int some_group() { return static_cast<int>(below(static_cast<unsigned>(real.count()) + 2)) - 1; }

  static tSYNC_ID master(unsigned i) { return {1, 1, i, 77}; }
  tSYNC_ID origin(unsigned i) const {
    return {static_cast<std::uint16_t>(1 + i % 2), static_cast<std::uint16_t>(2 + i % world_.files),
            i, 0};
  }
  tSYNC_ID some_origin() { return origin(below(world_.origins)); }

  void add() {
    const tSYNC_ID org = some_origin(), mst = master(below(world_.masters));
    const auto score = static_cast<std::int32_t>(below(3)) - 1;
    if (below(100) < world_.to_master) {
      attempt([&] { real.add_to_master(org, score, mst); });
      plain.add_to_master(org, score, mst);
      return;
    }
    std::vector<short> fields(below(4));
    std::vector<tSYNC_CTDTBL> list;
    for (short& field : fields) {
      field = static_cast<short>(below(2) * 0x7FF8 + below(6));
      list.push_back({field, 9});
    }
    list.push_back({-1, 0});
    attempt([&] { real.add_pair(org, score, mst, list.data()); });
    plain.add_pair(org, score, mst, fields);
  }

  void mark() {
    if (below(8) == 0) {
      real.clear_flags();
      for (auto& group : plain.groups) group.handled = false;
      return;
    }
    const int g = below(2) == 0 ? real.next_open() : some_group();
    real.set_flag(g);
    if (g >= 0 && g < real.count()) plain.groups[static_cast<std::size_t>(g)].handled = true;
  }

  void split() {
    const int g = some_group();
    std::vector<tSYNC_ID> leaving(below(6));
    for (tSYNC_ID& id : leaving) id = some_origin();
    const bool there = g >= 0 && g < real.count();
    attempt([&] { ASSERT_EQ(real.split(g, leaving), there); });
    if (there) plain.split(g, leaving);
  }

  // A few calls with one of several cursors that live through all changes, or with a wild one.
  void walk() {
    const unsigned which = below(4);
    tSYNC_SCHINFO& at = cursors_[which];
    if (below(6) == 0) at = {};
    if (below(6) == 0) at = {wild(), wild(), 0, below(3), below(4)};
    tSYNC_SCHINFO other = at;
    const int g = some_group();
    const tSYNC_ID file = below(20) == 0 ? tSYNC_ID{} : some_origin();
    for (unsigned calls = below(6); calls > 0; --calls) {
      tSYNC_ID id{}, expected{};
      bool found = false, should = false;
      if (which == 0) {
        found = real.next_master(at, id);
        should = plain.next_master(other, expected);
      } else if (which == 1) {
        found = real.next_origin_of_file(file, at, id);
        should = plain.next_origin_of_file(file, other, expected);
      } else if (which == 2) {
        attempt([&] { found = real.next_origin(g, at, id); }, false);
        should = plain.next_origin(g, nullptr, other, expected);
      } else {
        attempt([&] { found = real.next_origin_of_number(g, file.file, at, id); }, false);
        should = plain.next_origin(g, &file.file, other, expected);
      }
      ASSERT_EQ(found, should) << "walk " << which << " group " << g;
      ASSERT_TRUE(tq::same_record(id, expected)) << "walk " << which << " group " << g;
      ASSERT_EQ(at.idPos, other.idPos) << "walk " << which;
      ASSERT_EQ(at.grpPos, other.grpPos) << "walk " << which;
    }
  }

  std::int32_t wild() {
    const std::int32_t values[] = {0, 1, 2, 17, 40, -1, INT32_MIN, INT32_MAX};
    return values[below(8)];
  }

  const World& world_;
  std::mt19937 random_;
  tSYNC_SCHINFO cursors_[4] = {};
};

TEST(CandidateGroups, AgreeWithThePlainOnes) {
  for (const World& world : kWorlds) {
    for (unsigned seed = 0; seed < world.seeds; ++seed) {
      SCOPED_TRACE(std::string(world.why) + ", seed " + std::to_string(seed));
      ModelRun run(world, seed);
      for (unsigned step = 0; step < world.steps; ++step) {
        run.step();
        if (step % (world.steps / 75) == 0) run.expect_same();
        if (HasFatalFailure()) return;
      }
    }
  }
}

// Whatever allocation fails, a step is done or has changed nothing.
TEST(CandidateGroups, OutOfMemoryChangesNothing) {
  int failures = 0;
  for (const World& world : kWorlds) {
    SCOPED_TRACE(world.why);
    ModelRun run(world, 1);
    run.starve = true;
    for (unsigned step = 0; step < world.steps && !HasFatalFailure(); ++step) run.step();
    run.expect_same();
    failures += run.failures;
  }
  EXPECT_GT(failures, 200);
}

}  // namespace
