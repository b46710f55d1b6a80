// The growable tables: the growth rule, the capacity word through every kind of move, and the
// orders of the two documented sorts.
#include "common/record_table.h"

#include <cstdint>
#include <random>

#include "common/sorting.h"
#include "support/test.h"

namespace {

struct Row {
  int value;
  std::int16_t spare;
};

}  // namespace

template <>
struct tq::RecordTraits<Row> {
  static constexpr std::size_t kBlock = 10;
  static std::int16_t& capacity(Row& first) { return first.spare; }
};

namespace {

using Table = tq::RecordTable<Row>;

std::vector<int> values(const Table& table) {
  std::vector<int> out;
  for (const Row& row : table.records()) out.push_back(row.value);
  return out;
}

TEST(RecordTable, GrowsByTheRule) {
  Table table;
  ASSERT_TRUE(table.append({0, 0}));
  EXPECT_EQ(table.capacity(), 20U) << "((1 + 9) / 10 + 1) * 10";
  for (int i = 1; i < 19; ++i) ASSERT_TRUE(table.append({i, 77}));
  EXPECT_EQ(table.capacity(), 20U) << "room for 19 while the capacity is 20";
  ASSERT_TRUE(table.append({19, 77}));
  EXPECT_EQ(table.capacity(), 30U) << "a capacity must exceed what is needed";
  ASSERT_TRUE(table.allocate(10));
  EXPECT_EQ(table.capacity(), 10U);
  EXPECT_TRUE(table.empty());
}

TEST(RecordTable, StopsWhereTheCapacityWordEnds) {
  Table table;
  int added = 0;
  while (table.append({added, 0})) ++added;
  EXPECT_EQ(added, 32766) << "a 16-bit capacity must exceed the count";
  EXPECT_EQ(values(table).back(), added - 1);
  EXPECT_EQ(table.capacity(), 32767U);
}

TEST(RecordTable, AgreesWithAVectorThroughEveryMove) {
  std::mt19937 random(20261121);
  Table table;
  std::vector<int> model;
  for (int step = 0; step < 4000; ++step) {
    // Often the first place, where the capacity word is.
    const std::size_t place = random() % 2 == 0 ? 0 : random() % (model.size() + 1);
    const auto at = model.begin() + static_cast<std::ptrdiff_t>(place);
    if (random() % 5 < 3) {
      ASSERT_TRUE(table.insert(place, {step, 99}));
      model.insert(at, step);
    } else {
      ASSERT_EQ(table.erase(place), place < model.size());
      if (place < model.size()) model.erase(at);
    }
    ASSERT_EQ(values(table), model);
    ASSERT_TRUE(table.empty() || table.capacity() > table.size());
    for (std::size_t i = 1; i < table.size(); ++i)
      ASSERT_EQ(table[i].spare, 0) << "one capacity only";
  }
}

// The sorts as they are told, on the keys themselves.
std::vector<int> literal(std::vector<int> keys, bool exchange) {
  for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
    std::size_t smallest = i;
    for (std::size_t j = i + 1; j < keys.size(); ++j) {
      // The thousands are the key; the rest tells equal keys apart.
      if (exchange && keys[j] / 1000 < keys[i] / 1000) std::swap(keys[i], keys[j]);
      if (!exchange && keys[j] / 1000 < keys[smallest] / 1000) smallest = j;
    }
    if (!exchange) std::swap(keys[i], keys[smallest]);
  }
  return keys;
}

TEST(Sorting, GivesTheLiteralOrderWithAndWithoutTies) {
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    std::vector<int> keys(random() % (round % 50 == 0 ? 300 : 12));
    const unsigned range = round % 3 == 0 ? 200 : 4;  // mostly distinct, or mostly ties
    for (std::size_t i = 0; i < keys.size(); ++i) {
      keys[i] = static_cast<int>(random() % range * 1000 + i);
    }
    const auto before = [&](std::size_t a, std::size_t b) {
      return keys[a] / 1000 < keys[b] / 1000;
    };
    for (const bool exchange : {true, false}) {
      std::vector<int> sorted;
      auto order = exchange ? tq::exchange_order(keys.size(), before)
                            : tq::selection_order(keys.size(), before);
      for (const auto place : order) sorted.push_back(keys[place]);
      ASSERT_EQ(sorted, literal(keys, exchange)) << "round " << round << " exchange " << exchange;
      std::vector<int> moved = keys;
      tq::apply_order(order, [&](auto a, auto b) { std::swap(moved[a], moved[b]); });
      ASSERT_EQ(moved, sorted) << "round " << round;
    }
  }
}

TEST(Sorting, ExchangeOrderOfManyTiesIsQuick) {
  constexpr std::uint32_t kCount = 200000;  // as the sort itself this takes a minute
  const auto key = [](std::uint32_t i) { return (i * 7919U) % 10; };
  const auto order = tq::exchange_order(kCount, [&](auto a, auto b) { return key(a) < key(b); });
  for (std::uint32_t i = 1; i < kCount; ++i) ASSERT_LE(key(order[i - 1]), key(order[i]));
}

}  // namespace
