// Links beside std::unordered_map with a vector of origins a master, which parses and keeps the
// same ids.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "side_by_side.h"
#include "syncfile/sync_id.h"
#include "tqutil/linkinfo.h"

namespace {

constexpr std::uint16_t kFiles = 4;
constexpr int kOriginsAMaster = 10;

struct IdText {
  char text[TQ_SYNC_ID_SIZE];
  const unsigned char* bytes() const { return reinterpret_cast<const unsigned char*>(text); }
};

IdText id_text(std::uint16_t file, std::uint32_t rec) {
  IdText id{};
  tq::print_sync_id({1, file, rec, 0}, id.text);
  return id;
}

struct Link {
  IdText mst, org;
  std::int32_t value;
};

// Ten origins a master, in no order: an address book of `count / 10` people in four partner files.
struct Book {
  std::vector<IdText> masters;
  std::vector<Link> links;
};

Book book(std::int64_t count) {
  Book made;
  std::mt19937 engine(1);
  for (std::int64_t i = 0; i < count / kOriginsAMaster; ++i) {
    made.masters.push_back(id_text(1, static_cast<std::uint32_t>(i)));
  }
  for (std::int64_t i = 0; i < count; ++i) {
    const auto rec = static_cast<std::uint32_t>(i);
    made.links.push_back({made.masters[engine() % made.masters.size()],
                          id_text(static_cast<std::uint16_t>(2 + i % kFiles), rec),
                          static_cast<std::int32_t>(engine() % 100)});
  }
  return made;
}

// The peer.
class HashedLinks {
 public:
  struct Origin {
    tSYNC_ID id;
    std::int32_t value;
  };

  void add_master(const char* text) {
    tSYNC_ID id{};
    tq::parse_sync_id(text, id);
    if (by_id_.emplace(tq::record_key(id), origins.size()).second) origins.emplace_back();
    taken_[id.rec] = true;
  }
  void add_origin(const char* mst_text, const char* org_text, std::int32_t value) {
    tSYNC_ID mst{}, org{};
    tq::parse_sync_id(mst_text, mst);
    tq::parse_sync_id(org_text, org);
    const auto found = by_id_.find(tq::record_key(mst));
    if (found != by_id_.end()) origins[found->second].push_back({org, value});
  }
  // Record numbers never go, so that the lowest free one only rises.
  std::int32_t free_number() {
    while (taken_.contains(free_)) ++free_;
    return static_cast<std::int32_t>(free_);
  }
  std::vector<Origin>* of(const char* mst_text) {
    tSYNC_ID mst{};
    tq::parse_sync_id(mst_text, mst);
    const auto found = by_id_.find(tq::record_key(mst));
    return found == by_id_.end() ? nullptr : &origins[found->second];
  }

  std::vector<std::vector<Origin>> origins;

 private:
  std::unordered_map<std::uint64_t, std::size_t> by_id_;
  std::unordered_map<std::uint32_t, bool> taken_;
  std::uint32_t free_ = 0;
};

std::unique_ptr<CLinkInfoCtl> our_masters(const Book& book) {
  auto links = std::make_unique<CLinkInfoCtl>();
  for (const IdText& id : book.masters) links->SylkAddMstLinkInfo(0, id.bytes());
  return links;
}

std::unique_ptr<CLinkInfoCtl> ours(const Book& book) {
  auto links = our_masters(book);
  for (const Link& link : book.links) {
    links->SylkAddOrgLinkInfo(link.mst.bytes(), link.org.bytes(), link.value);
  }
  return links;
}

std::unique_ptr<HashedLinks> hashed_masters(const Book& book) {
  auto links = std::make_unique<HashedLinks>();
  for (const IdText& id : book.masters) links->add_master(id.text);
  return links;
}

std::unique_ptr<HashedLinks> hashed(const Book& book) {
  auto links = hashed_masters(book);
  for (const Link& link : book.links) links->add_origin(link.mst.text, link.org.text, link.value);
  return links;
}

// Both sides must have come to the same sum.
struct SameSum {
  benchmark::State& state;
  const Book& book;
  std::int64_t first = -1;
  void operator()(std::int64_t sum) {
    if (first >= 0 && first != sum) state.SkipWithError("the sides disagree");
    first = sum;
  }
  void operator()(const std::unique_ptr<CLinkInfoCtl>& links) {
    std::int64_t sum = 0;
    for (const IdText& id : book.masters) {
      std::int32_t count = 0;
      links->SylkGetMstLinkOrgInfo(id.bytes(), &count);
      sum = sum * 31 + count;
      sum &= 0xFFFFFFFF;
    }
    (*this)(sum);
  }
  void operator()(const std::unique_ptr<HashedLinks>& links) {
    std::int64_t sum = 0;
    for (const auto& origins : links->origins) {
      sum = sum * 31 + static_cast<std::int64_t>(origins.size());
      sum &= 0xFFFFFFFF;
    }
    (*this)(sum);
  }
};

void AddOrigins(benchmark::State& state) {
  const Book made = book(state.range(0));
  tq::bench::side_by_side(
      state, [&] { return ours(made); }, [&] { return hashed(made); }, SameSum{state, made});
}

// A number is asked for and taken, as a host does for each new master record.
void MasterNumbers(benchmark::State& state) {
  const std::int64_t count = state.range(0);
  const Book none;
  tq::bench::side_by_side(
      state,
      [&] {
        CLinkInfoCtl links;
        std::int64_t sum = 0;
        for (std::int64_t i = 0; i < count; ++i) {
          const std::int32_t number = links.SylkGetMstLinkNo();
          sum += number;
          links.SylkAddMstLinkInfo(number, id_text(1, static_cast<std::uint32_t>(number)).bytes());
        }
        return sum;
      },
      [&] {
        HashedLinks links;
        std::int64_t sum = 0;
        for (std::int64_t i = 0; i < count; ++i) {
          const std::int32_t number = links.free_number();
          sum += number;
          links.add_master(id_text(1, static_cast<std::uint32_t>(number)).text);
        }
        return sum;
      },
      SameSum{state, none});
}

// Every origin of every master, file by file, highest value first; the first walk sorts.
void WalkOrigins(benchmark::State& state) {
  const Book made = book(state.range(0));
  std::vector<IdText> files;
  for (std::uint16_t file = 2; file < 2 + kFiles; ++file) files.push_back(id_text(file, 0));
  std::unique_ptr<CLinkInfoCtl> links;
  std::unique_ptr<HashedLinks> peer;
  tq::bench::side_by_side(
      state,
      [&] {
        links = ours(made);
        std::int64_t count = 0;
        for (const IdText& mst : made.masters) {
          for (const IdText& file : files) {
            unsigned char text[TQ_SYNC_ID_SIZE];
            for (std::int32_t at = 0;
                 links->SylkGetLinkMst2OrgID(mst.bytes(), file.bytes(), text, &at) == 0; ++at) {
              benchmark::DoNotOptimize(text);
              ++count;
            }
          }
        }
        return count;
      },
      [&] {
        peer = hashed(made);
        std::int64_t count = 0;
        for (const IdText& mst : made.masters) {
          auto& origins = *peer->of(mst.text);
          std::ranges::stable_sort(origins, std::ranges::greater{}, &HashedLinks::Origin::value);
          for (const IdText& file : files) {
            tSYNC_ID wanted{};
            tq::parse_sync_id(file.text, wanted);
            for (const auto& origin : origins) {
              if (tq::file_key(origin.id) != tq::file_key(wanted)) continue;
              char text[TQ_SYNC_ID_SIZE];
              tq::print_sync_id(origin.id, text);
              benchmark::DoNotOptimize(text);
              ++count;
            }
          }
        }
        return count;
      },
      SameSum{state, made});
}

#define TQ_BENCH(name) BENCHMARK(name)->UseManualTime()->Unit(benchmark::kMillisecond)
TQ_BENCH(AddOrigins)->Arg(500'000)->Arg(1'000'000)->Iterations(5);
TQ_BENCH(MasterNumbers)->Arg(100'000)->Iterations(5);
TQ_BENCH(WalkOrigins)->Arg(500'000)->Arg(1'000'000)->Iterations(3);

}  // namespace
