// Links: walks against plain arrays with the sort as it is told, the arrays that callers see,
// numbers, handles, and what happens past the limits.
#include "tqutil/linkinfo.h"

#include <array>
#include <cstdint>
#include <random>
#include <utility>

#include "common/table_memory.h"
#include "support/short_memory.h"
#include "support/test.h"
#include "support/zeros.h"
#include "syncfile/sync_id.h"

namespace {

// A sync id as the text that the functions take.
struct Text {
  Text(unsigned grp, unsigned file, unsigned rec) {
    const tSYNC_ID id{static_cast<std::uint16_t>(grp), static_cast<std::uint16_t>(file), rec, 0};
    tq::print_sync_id(id, reinterpret_cast<char*>(bytes.data()));
  }
  operator const unsigned char*() const { return bytes.data(); }
  std::array<unsigned char, TQ_SYNC_ID_SIZE> bytes{};
};

Text master(unsigned rec) { return {1, 1, rec}; }

struct Origin {
  unsigned file, rec;
  std::int32_t value;
};

void sort(std::vector<Origin>& origins) {
  for (std::size_t i = 0; i + 1 < origins.size(); ++i) {
    for (std::size_t j = i + 1; j < origins.size(); ++j) {
      if (origins[i].value < origins[j].value) std::swap(origins[i], origins[j]);
    }
  }
}

// The arrays of a master hold these origins, and the first elements the size of the blocks.
void expect_arrays(CLinkInfoCtl& links, unsigned mst, const std::vector<Origin>& expected) {
  std::int32_t count = -1, values = -1;
  const tSYNC_ID* ids = links.SylkGetMstLinkOrgInfo(master(mst), &count);
  const tVAL_INFO* weights = links.SylkGetMstLinkValInfo(master(mst), &values);
  ASSERT_EQ(count, static_cast<std::int32_t>(expected.size()));
  ASSERT_EQ(values, count);
  const std::uint32_t n = static_cast<std::uint32_t>(count);
  for (std::uint32_t i = 0; i < n; ++i) {
    ASSERT_EQ(ids[i].file, expected[i].file) << "place " << i;
    ASSERT_EQ(ids[i].rec, expected[i].rec) << "place " << i;
    ASSERT_EQ(weights[i].value, expected[i].value) << "place " << i;
    ASSERT_EQ(ids[i].cap != 0 || weights[i].cap != 0, i == 0) << "one capacity only";
  }
  if (n == 0) return;
  ASSERT_GT(ids[0].cap, n);
  ASSERT_EQ(ids[0].cap % 20, 0U);
  ASSERT_EQ(weights[0].cap, ids[0].cap);
}

TEST(LinkInfo, AgreesWithPlainArrays) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    const unsigned masters = 1 + below(4), files = 1 + below(8), values = 2 + below(40);
    CLinkInfoCtl links;
    std::vector<std::vector<Origin>> plain(masters);
    for (unsigned m = 0; m < masters; ++m)
      ASSERT_EQ(links.SylkAddMstLinkInfo(7, master(m)), int(m));
    ASSERT_EQ(links.SylkAddMstLinkInfo(8, master(0)), int(masters)) << "an id again";
    for (unsigned step = 0; step < 600; ++step) {
      const unsigned m = below(masters + 1), file = below(files + 1);
      if (m == masters) {
        ASSERT_EQ(links.SylkAddOrgLinkInfo(master(99), Text(1, 2, 3), 1), 1) << "no such master";
        continue;
      }
      auto& origins = plain[m];
      if (below(3) > 0) {
        const Origin origin{below(files), step, static_cast<std::int32_t>(below(values)) - 1};
        ASSERT_EQ(links.SylkAddOrgLinkInfo(master(m), Text(1, origin.file, step), origin.value), 0);
        origins.push_back(origin);
        continue;
      }
      // One call, from the start, from where another walk may stand, or from anywhere.
      const std::int32_t wild[] = {0, 0, -1, INT32_MAX, static_cast<std::int32_t>(origins.size())};
      const std::int32_t from =
          below(2) == 0 ? wild[below(5)] : static_cast<std::int32_t>(below(200));
      if (from == 0) sort(origins);
      std::size_t found = from < 0 ? origins.size() : static_cast<std::size_t>(from);
      while (found < origins.size() && origins[found].file != file) ++found;
      std::int32_t pos = from;
      std::array<unsigned char, TQ_SYNC_ID_SIZE> text{'x'};
      const short result =
          links.SylkGetLinkMst2OrgID(master(m), Text(1, file, 0), text.data(), &pos);
      ASSERT_EQ(result, found < origins.size() ? 0 : 1) << "from " << from;
      ASSERT_EQ(pos, result == 0 ? static_cast<std::int32_t>(found) : from);
      const auto expected =
          result == 0 ? Text(1, file, origins[found].rec).bytes : decltype(text){};
      ASSERT_EQ(text, expected);
      bool any = false;
      for (const Origin& origin : origins) any = any || origin.file == file;
      ASSERT_EQ(links.SylkSchLinkMst2Org(master(m), Text(1, file, 5)), any ? 1 : 0);
      ASSERT_EQ(links.SylkSchLinkMst2Org(master(m), Text(2, file, 5)), 0) << "another group";
      if (below(4) == 0) expect_arrays(links, m, origins);
    }
  }
}

TEST(LinkInfo, NextNumberIsTheLowestThatNoMasterHas) {
  struct {
    const char* why;
    std::vector<unsigned> records;
    std::int32_t next;
  } const cases[] = {
      {"no master", {}, 0},
      {"a gap", {0, 1, 3}, 2},
      {"in any order, repeated, far off", {4000000000U, 2, 0, 0, 1}, 3},
      {"only above", {5, 6}, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    CLinkInfoCtl links;
    for (const unsigned rec : c.records) links.SylkAddMstLinkInfo(0, master(rec));
    EXPECT_EQ(links.SylkGetMstLinkNo(), c.next);
  }
  CLinkInfoCtl links;  // numbers that were too high to matter when they came
  for (unsigned rec = 500; rec > 1; --rec) links.SylkAddMstLinkInfo(0, master(rec));
  links.SylkAddMstLinkInfo(0, Text(9, 9, 0));
  EXPECT_EQ(links.SylkGetMstLinkNo(), 1);
  links.SylkAddMstLinkInfo(0, master(1));
  EXPECT_EQ(links.SylkGetMstLinkNo(), 501);
}

TEST(LinkInfo, FilesAndTheirRecords) {
  CLinkInfoCtl links;
  const auto* key = reinterpret_cast<const unsigned char*>("a key that is too long");
  EXPECT_EQ(links.SylkAddFileInfo(key, 3), 0);
  EXPECT_EQ(links.SylkAddFileInfo(nullptr, -5), 1);
  struct {
    const char* why;
    short file;
    std::int32_t record;
    short result;
  } const cases[] = {
      {"the last record", 0, 2, 0},      {"past the end", 0, 3, 1}, {"negative record", 0, -1, 1},
      {"negative count: none", 1, 0, 1}, {"no such file", 2, 0, 1}, {"negative file", -1, 0, 1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(links.SylkAddRecID(c.file, c.record, Text(1, 2, 3)), c.result) << c.why;
  }
  for (int i = 2; i <= INT16_MAX; ++i) ASSERT_EQ(links.SylkAddFileInfo(key, 0), i);
  EXPECT_EQ(links.SylkAddFileInfo(key, 0), -1) << "no index left";
}

// A system may run out of movable blocks long before it runs out of memory.
TEST(LinkInfo, MoreMastersThanHandlesOfMemory) {
  constexpr unsigned kMasters = 40000;  // two blocks each
  const std::int32_t before = tq::live_tables();
  {
    CLinkInfoCtl links;
    for (unsigned m = 0; m < kMasters; ++m) {
      ASSERT_EQ(links.SylkAddMstLinkInfo(0, master(m)), int(m));
      ASSERT_EQ(links.SylkAddOrgLinkInfo(master(m), Text(1, 2, m), 1), 0) << m;
    }
    expect_arrays(links, kMasters - 1, {{2, kMasters - 1, 1}});
  }
  EXPECT_EQ(tq::live_tables(), before);
}

TEST(LinkInfo, OutOfMemoryIsAnAnswer) {
  CLinkInfoCtl links;
  for (unsigned m = 0; m < 3; ++m) ASSERT_EQ(links.SylkAddMstLinkInfo(0, master(m)), int(m));
  for (unsigned i = 0; i < 100; ++i) {
    ASSERT_EQ(links.SylkAddOrgLinkInfo(master(1), Text(1, i % 3, i), int(i % 7)), 0);
  }
  std::array<unsigned char, TQ_SYNC_ID_SIZE> text{};
  std::int32_t pos = 0;
  allocations_left = 0;
  const short file = links.SylkAddFileInfo(master(0), 5);
  const short walked = links.SylkGetLinkMst2OrgID(master(1), Text(1, 2, 0), text.data(), &pos);
  const short there = links.SylkSchLinkMst2Org(master(1), Text(1, 2, 0));
  const short missing = links.SylkSchLinkMst2Org(master(1), Text(1, 3, 0));
  allocations_left = -1;
  EXPECT_EQ(file, -1);
  EXPECT_EQ(walked, 1) << "cannot be sorted";
  EXPECT_EQ(there, 1) << "needs no memory to be right";
  EXPECT_EQ(missing, 0);
  EXPECT_EQ(links.SylkGetLinkMst2OrgID(master(1), Text(1, 2, 0), text.data(), &pos), 0);
}

TEST(LinkInfo, Handles) {
  std::vector<std::int32_t> handles;
  while (const std::int32_t handle = CreateSylkCtl()) handles.push_back(handle);
  ASSERT_EQ(handles.size(), 10U);
  EXPECT_EQ(SylkAddMstLinkInfo(1, master(0), handles[9]), 0);
  EXPECT_EQ(SylkAddOrgLinkInfo(master(0), Text(1, 2, 3), 4, handles[9]), 0);
  std::int32_t count = 9;
  EXPECT_EQ(SylkGetMstLinkValInfo(master(0), &count, handles[9])->value, 4);
  EXPECT_EQ(SylkGetMstLinkNo(handles[9]), 1);
  for (const std::int32_t handle : handles) EXPECT_EQ(FreeSylkCtl(handle), 0);
  EXPECT_EQ(FreeSylkCtl(0), -1);
  for (const std::int32_t dead : {0, 10, 11, -1}) {
    expect_answers(dead, -1, SylkAddFileInfo, SylkAddRecID, SylkGetMstLinkNo, SylkSchLinkMst2Org,
                   SylkGetLinkMst2OrgID);
    count = 9;
    EXPECT_EQ(SylkGetMstLinkOrgInfo(master(0), &count, dead), nullptr);
    EXPECT_EQ(count, 0);
  }
}

}  // namespace
