// CCtdCtl: ids from text, the groups, ids to text.
#include "common/text.h"
#include "ctd/ctd_state.h"
#include "syncfile/sync_id.h"

namespace {

tSYNC_ID sync_id(const char* text) {
  tSYNC_ID id{};
  tq::parse_sync_id(text, id);
  return id;
}

tSYNC_ID rec_id(const char* text) {
  tSYNC_ID id{};
  tq::parse_rec_id(text, id);
  return id;
}

// What the walks have in common: `next(id)` gives the next id, `out` gets its text.
template <class Next>
short walk(char* out, const tSYNC_SCHINFO* cursor, Next next) {
  tSYNC_ID id{};
  if (out == nullptr || cursor == nullptr || !next(id)) return 1;
  tq::print_sync_id(id, out);
  return 0;
}

}  // namespace

CCtdCtl::CCtdCtl() : state_(std::make_unique<State>()) {}
CCtdCtl::~CCtdCtl() = default;

CCtdCtl::CCtdCtl(const CCtdCtl& other) {
  other.state_->table();  // so that there is something to share
  state_ = std::make_unique<State>(*other.state_);
}

CCtdCtl& CCtdCtl::operator=(const CCtdCtl& other) {
  other.state_->table();
  *state_ = *other.state_;
  return *this;
}

short CCtdCtl::AddCtdData(const char* orgId, int32_t score, const char* mstId,
                          const tSYNC_CTDTBL* fields) {
  return state_->guarded(short{-1}, [&](tq::CandidateGroups& groups) {
    groups.add_pair(sync_id(orgId), score, sync_id(mstId), fields);
    return short{0};
  });
}

short CCtdCtl::AddCtdData2(const tSYNC_ID* org, int32_t score, const char* mstId) {
  return state_->guarded(short{-1}, [&](tq::CandidateGroups& groups) {
    if (org == nullptr) return short{-1};
    groups.add_to_master(*org, score, sync_id(mstId));
    return short{0};
  });
}

int32_t CCtdCtl::SchMstSyncID(const char* mstId) {
  return state_->guarded(int32_t{-1}, [&](tq::CandidateGroups& groups) {
    return groups.index_of_master(sync_id(mstId));
  });
}

int32_t CCtdCtl::SchOrgSyncID(const char* orgId) {
  return state_->guarded(int32_t{-1}, [&](tq::CandidateGroups& groups) {
    return groups.index_of_origin(sync_id(orgId));
  });
}

int32_t CCtdCtl::GetCtdCnt() {
  return state_->guarded(int32_t{0}, [](tq::CandidateGroups& groups) { return groups.count(); });
}

int32_t CCtdCtl::GetCtdMstCnt(int32_t group) {
  return state_->guarded(int32_t{0}, [&](tq::CandidateGroups& groups) {
    const tq::tSYNC_CTDGRP* found = groups.group(group);
    return found == nullptr ? 0 : static_cast<int32_t>(found->mst.count);
  });
}

int32_t CCtdCtl::GetCtdOrgCnt(int32_t group) {
  return state_->guarded(int32_t{0}, [&](tq::CandidateGroups& groups) {
    const tq::tSYNC_CTDGRP* found = groups.group(group);
    return found == nullptr ? 0 : static_cast<int32_t>(found->org.count);
  });
}

void CCtdCtl::CtdSchInit() {
  state_->guarded(0, [](tq::CandidateGroups& groups) { return groups.clear_flags(), 0; });
}

int32_t CCtdCtl::CtdSchNext() {
  return state_->guarded(int32_t{-1},
                         [](tq::CandidateGroups& groups) { return groups.next_open(); });
}

void CCtdCtl::CtdSchFlgSet(int32_t group) {
  state_->guarded(0, [&](tq::CandidateGroups& groups) { return groups.set_flag(group), 0; });
}

short CCtdCtl::FindCtdMstSyncID(char* id, tSYNC_SCHINFO* cursor) {
  return state_->guarded(short{1}, [&](tq::CandidateGroups& groups) {
    return walk(id, cursor, [&](tSYNC_ID& next) { return groups.next_master(*cursor, next); });
  });
}

short CCtdCtl::FindCtdOrgSyncID(const char* recId, char* id, tSYNC_SCHINFO* cursor) {
  return state_->guarded(short{1}, [&](tq::CandidateGroups& groups) {
    return walk(id, cursor, [&](tSYNC_ID& next) {
      return groups.next_origin_of_file(rec_id(recId), *cursor, next);
    });
  });
}

short CCtdCtl::FindCtdOrgSyncID2(short group, char* id, tSYNC_SCHINFO* cursor) {
  return state_->guarded(short{1}, [&](tq::CandidateGroups& groups) {
    return walk(id, cursor,
                [&](tSYNC_ID& next) { return groups.next_origin(group, *cursor, next); });
  });
}

short CCtdCtl::FindCtdOrgSyncID3(short group, const char* recId, char* id, tSYNC_SCHINFO* cursor) {
  return state_->guarded(short{1}, [&](tq::CandidateGroups& groups) {
    return walk(id, cursor, [&](tSYNC_ID& next) {
      return groups.next_origin_of_number(group, rec_id(recId).file, *cursor, next);
    });
  });
}

short CCtdCtl::CopyData(CCtdCtl* source) {
  FreeData();
  if (source == nullptr) return 0;
  return state_->guarded(short{-1}, [&](tq::CandidateGroups& groups) {
    groups.reset(source->GetCtdCnt());
    return short{0};
  });
}

void CCtdCtl::FreeData() {
  state_->groups.reset();
  state_->set_table(0, 0, nullptr, 0, nullptr);
  state_->read.reset();
  state_->choices.clear();
  state_->has_buffers = false;
}

void CCtdCtl::SetCtdTitle(const char* title) {
  if (title != nullptr) tq::copy_text(state_->title, tq::view(title));
}

void CCtdCtl::GetCtdTitle(char* title) {
  tq::copy_text(title, sizeof state_->title, tq::view(state_->title));
}
