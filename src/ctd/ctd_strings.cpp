// Formatted texts of candidate records: joined, cut; the last one is kept.
#include <span>

#include "base/sjis.h"
#include "ctd/ctd_state.h"
#include "ctd/field_join.h"

namespace {

constexpr short kUsed = 1;
constexpr std::size_t kTextMax = TQ_CTD_TEXT_SIZE - 1;

// Long texts are shown by their beginning.
constexpr short kFirstLongText = 197;
constexpr short kLastLongText = 209;
constexpr std::size_t kLongTextMax = 250;

bool is_long_text(short fld_id) { return fld_id >= kFirstLongText && fld_id <= kLastLongText; }

}  // namespace

// A value without text is not kept, so that it is looked for again the next time.
bool CCtdCtl::State::format(std::int32_t index, std::int32_t field) {
  if (!has_buffers || record(index) == nullptr || name(field) == nullptr) return false;
  if (kept_record == index && kept_field == field) return true;
  const bool joined = join(index, field);
  kept_record = kept_field = -1;  // until the text is complete
  const auto fld_id = static_cast<short>(name(field)->fldId);
  if (is_long_text(fld_id) && kept.size() > kLongTextMax) {
    kept.resize(tq::sjis::cut_size(kept, kLongTextMax));
    kept += ".....";
  }
  if (joined) {
    kept_record = index;
    kept_field = field;
  }
  return true;
}

// The joined text becomes the kept one. False when there is none.
bool CCtdCtl::State::join(std::int32_t index, std::int32_t field) {
  const tSYNC_CTDRECINFO& of = *record(index);
  const bool has_fields = of.fields != nullptr && of.fldCnt > 0;
  const std::span fields(of.fields, has_fields ? static_cast<std::size_t>(of.fldCnt) : 0);
  kept_record = kept_field = -1;  // while memory may run out
  const bool joined = tq::join_field(static_cast<short>(name(field)->fldId), fields, kUsed, kept);
  kept.resize(tq::sjis::cut_size(kept, kTextMax));
  kept_record = index;
  kept_field = field;
  return joined;
}

short CCtdCtl::GetCtdFldStrS(int32_t record, int32_t field, char* text) {
  if (text == nullptr) return -1;
  return state_->guarded(short{-1}, [&](tq::CandidateGroups&) -> short {
    if (!state_->format(record, field)) return -1;
    tq::copy_text(text, TQ_CTD_TEXT_SIZE, state_->kept);
    return 0;
  });
}

short CCtdCtl::mGetCtdFldStrSize(int32_t record, int32_t field) {
  return state_->guarded(short{-1}, [&](tq::CandidateGroups&) -> short {
    const bool there =
        state_->has_buffers && state_->record(record) != nullptr && state_->name(field) != nullptr;
    if (!there) return -1;
    state_->join(record, field);
    return tq::length(state_->kept);
  });
}
