#include "library/match_tables.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

#include "tqutil/ctd.h"
#include "tqutil/linkinfo.h"

namespace tqsync {
namespace {

// Field ids of the record database: what a sign is a sign of.
struct SignField {
  unsigned signs;
  short field;
};
constexpr SignField kFields[] = {
    {kSameName | kSameCommonName | kSameReading, 593}, {kSamePhone, 512}, {kSameMail, 595}};
constexpr short kEndOfFields = -1;

// The link table takes its texts as unsigned bytes.
const unsigned char* bytes(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.c_str());
}

std::uint32_t record_of(const char* sync_id) {
  tSYNC_ID id{};
  tqSyncIdStr2Val(sync_id, &id);
  return id.rec;
}

void require(bool done) {
  if (!done) throw std::bad_alloc();
}

}  // namespace

MatchTables::MatchTables(std::vector<std::string> file_ids, std::span<const std::size_t> sizes,
                         const Plan& plan)
    : file_ids_(std::move(file_ids)), links_(CreateSylkCtl()), candidates_(CreateSyncCtdCtl()) {
  require(links_ != 0 && candidates_ != 0);
  add_files(sizes);
  add_masters(sizes[0], plan.masters.size());
  add_pairs(plan);
  mark_settled(plan);
}

MatchTables::~MatchTables() {
  FreeSyncCtdCtl(candidates_);
  FreeSylkCtl(links_);
}

std::string MatchTables::sync_id(std::uint32_t book, std::uint32_t record) const {
  tSYNC_ID id{};
  tqRecIdStr2Val(file_ids_[book].c_str(), &id);
  id.rec = record;
  char text[TQ_SYNC_ID_SIZE];
  tqSyncIdVal2Str(&id, nullptr, nullptr, text);
  return text;
}

// A file of the link table holds as many records as 16 bits can count; a longer one takes several
// in a row under the same key.
void MatchTables::add_files(std::span<const std::size_t> sizes) {
  constexpr std::size_t kMost = std::numeric_limits<short>::max();
  for (std::uint32_t book = 0; book < file_ids_.size(); ++book) {
    for (std::size_t first = 0; first < sizes[book]; first += kMost) {
      const auto count = static_cast<short>(std::min(sizes[book] - first, kMost));
      const short file = SylkAddFileInfo(bytes(file_ids_[book]), count, links_);
      require(file >= 0);
      for (short i = 0; i < count; ++i) {
        const std::string id = sync_id(book, static_cast<std::uint32_t>(first) + i);
        require(SylkAddRecID(file, i, bytes(id), links_) == 0);
      }
    }
  }
}

// The records of the master file keep their places as numbers; new ones get what the table gives.
void MatchTables::add_masters(std::size_t in_file, std::size_t all) {
  for (std::size_t i = 0; i < all; ++i) {
    const auto number = i < in_file ? static_cast<std::int32_t>(i) : SylkGetMstLinkNo(links_);
    const std::string id = master_id(static_cast<std::uint32_t>(number));
    require(SylkAddMstLinkInfo(number, bytes(id), links_) >= 0);
  }
}

void MatchTables::add_pairs(const Plan& plan) {
  for (std::uint32_t book = 1; book < plan.books.size(); ++book) {
    for (const Pair& pair : plan.books[book].pairs) {
      const std::string master = master_id(pair.master), origin = sync_id(book, pair.record);
      tSYNC_CTDTBL fields[std::size(kFields) + 1];
      tSYNC_CTDTBL* end = fields;
      for (const SignField& sign : kFields) {
        if (pair.likeness.signs & sign.signs) *end++ = {sign.field, 0};
      }
      *end = {kEndOfFields, 0};
      AddCtdData(origin.c_str(), pair.likeness.score, master.c_str(), fields, candidates_);
      if (pair.verdict == Verdict::kOpen) continue;
      require(SylkAddOrgLinkInfo(bytes(master), bytes(origin), pair.likeness.score, links_) == 0);
    }
  }
}

// Groups without an open pair are marked as handled, so that only the others are walked.
void MatchTables::mark_settled(const Plan& plan) {
  CtdSchInit(candidates_);
  std::vector<bool> open(static_cast<std::size_t>(std::max(GetCtdCnt(candidates_), 0)));
  for (std::uint32_t book = 1; book < plan.books.size(); ++book) {
    for (const Pair& pair : plan.books[book].pairs) {
      if (pair.verdict != Verdict::kOpen) continue;
      const auto group = SchOrgSyncID(sync_id(book, pair.record).c_str(), candidates_);
      require(group >= 0);
      open[static_cast<std::size_t>(group)] = true;
    }
  }
  for (std::size_t group = 0; group < open.size(); ++group) {
    if (!open[group]) CtdSchFlgSet(static_cast<std::int32_t>(group), candidates_);
  }
}

std::vector<LinkedRecord> MatchTables::links(std::uint32_t master, std::uint32_t book) const {
  const std::string id = master_id(master);
  std::int32_t count = 0;
  const tVAL_INFO* values = SylkGetMstLinkValInfo(bytes(id), &count, links_);
  std::vector<LinkedRecord> linked;
  unsigned char origin[TQ_SYNC_ID_SIZE] = "";
  for (std::int32_t pos = 0;
       SylkGetLinkMst2OrgID(bytes(id), bytes(file_ids_[book]), origin, &pos, links_) == 0; ++pos) {
    linked.push_back({record_of(reinterpret_cast<const char*>(origin)), values[pos].value});
  }
  return linked;
}

std::vector<std::vector<RecordRef>> MatchTables::open_groups() const {
  std::vector<std::vector<RecordRef>> members(
      static_cast<std::size_t>(std::max(GetCtdCnt(candidates_), 0)));
  for (std::uint32_t book = 1; book < file_ids_.size(); ++book) {
    tSYNC_SCHINFO cursor{};
    char origin[TQ_SYNC_ID_SIZE] = "";
    while (FindCtdOrgSyncID(file_ids_[book].c_str(), origin, &cursor, candidates_) == 0) {
      const std::int32_t group = SchOrgSyncID(origin, candidates_);
      members[static_cast<std::size_t>(group)].push_back({book, record_of(origin)});
    }
  }
  std::erase_if(members, [](const auto& group) { return group.empty(); });
  for (auto& group : members)
    std::ranges::sort(group, {}, [](const RecordRef& r) { return std::pair(r.book, r.record); });
  return members;
}

}  // namespace tqsync
