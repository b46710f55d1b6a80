// The user's choice of what to merge: its states, the merge file, and what choosing whole records
// makes of the group that is being merged.
#include <string>
#include <vector>

#include "common/lines.h"
#include "common/path.h"
#include "ctd/ctd_state.h"
#include "syncfile/sync_id.h"

namespace {

constexpr std::size_t kLineSize = 20000;  // buffer of one line, terminator included

// A choice of 3 means the fields as well.
constexpr short kOtherFieldsState = 3;

short merge_state(short given) {
  return given == kOtherFieldsState ? short{TQ_MERGE_FIELDS} : given;
}

}  // namespace

// The choice as the merge file has it.
struct CCtdCtl::State::Choice {
  short state = TQ_MERGE_FIELDS;
  std::uint16_t sub_state = 0;
  std::vector<std::uint16_t> fields;  // for TQ_MERGE_FIELDS
  std::vector<bool> records;          // for TQ_MERGE_RECORDS: marked ones
};

std::string CCtdCtl::State::choice_lines() const {
  const auto line = [](int number) { return std::to_string(number) + '\n'; };
  std::string out = line(state) + line(sub_state);
  if (state == TQ_MERGE_FIELDS) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(fld_cnt); ++i) out += line(choices[i]);
  }
  if (state == TQ_MERGE_RECORDS) {
    for (std::int32_t i = 0; i < rec_cnt; ++i) {
      if (records[i].merge == 1) out += line(i);
    }
  }
  return out;
}

short CCtdCtl::State::write_choice() const {
  const bool needs_choices = state == TQ_MERGE_FIELDS && fld_cnt > 0;
  if (!has_buffers || mrg_path.empty()) return 1;
  if (needs_choices && choices.size() < static_cast<std::size_t>(fld_cnt)) return 1;
  return tq::replace_content(mrg_path, choice_lines()).ok() ? 0 : 1;
}

// False when the file cannot be read or lacks one of its first two lines. Indexes of fields and
// records that there are not lead nowhere.
bool CCtdCtl::State::parse_choice(Choice& choice) const {
  tq::LineReader lines(kLineSize);
  std::string_view line;
  if (!lines.open(mrg_path).ok() || !lines.next(line)) return false;
  choice.state = merge_state(tq::decimal16(line));
  if (!lines.next(line)) return false;
  choice.sub_state = static_cast<std::uint16_t>(tq::decimal(line));
  choice.fields.resize(static_cast<std::size_t>(fld_cnt) + 1);
  choice.records.resize(static_cast<std::size_t>(rec_cnt));
  for (std::size_t i = 0; lines.next(line); ++i) {
    const std::int32_t number = tq::decimal(line);
    if (choice.state == TQ_MERGE_FIELDS && i < choice.fields.size()) {
      choice.fields[i] = static_cast<std::uint16_t>(number);
    } else if (choice.state == TQ_MERGE_RECORDS && number >= 0 && number < rec_cnt) {
      choice.records[static_cast<std::size_t>(number)] = true;
    }
  }
  return lines.status().ok();
}

short CCtdCtl::State::read_choice() {
  Choice choice;
  if (!has_buffers || !parse_choice(choice)) return 1;
  if (choice.state == TQ_MERGE_RECORDS) {
    split_merged_group(choice.records);
    for (std::int32_t i = 0; i < rec_cnt; ++i) {
      records[i].merge = choice.records[static_cast<std::size_t>(i)] ? 1 : 0;
    }
  }
  state = choice.state;
  sub_state = choice.sub_state;
  if (state == TQ_MERGE_FIELDS) choices = std::move(choice.fields);
  return 0;
}

// mAjustPerRec: the records that were not chosen leave the group that is being merged and become a
// group of their own right behind it, which is offered next.
void CCtdCtl::State::split_merged_group(const std::vector<bool>& chosen) {
  tq::CandidateGroups& all = table();
  const std::int32_t merged = all.next_open();
  std::vector<tSYNC_ID> leaving;
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    if (chosen[i]) continue;
    tq::parse_sync_id(records[i].syncId, leaving.emplace_back());
  }
  if (merged >= 0 && leaving.size() != chosen.size()) all.split(merged, leaving);
}

void CCtdCtl::SetMargSts(short state, short subState) {
  state_->state = merge_state(state);
  state_->sub_state = static_cast<uint16_t>(subState);
  if (state != TQ_MERGE_RECORDS) return;
  for (int32_t i = 0; i < state_->rec_cnt; ++i) state_->records[i].merge = 0;
}

short CCtdCtl::GetMargSts1() { return state_->state; }
short CCtdCtl::GetMargSts2() { return static_cast<short>(state_->sub_state); }

void CCtdCtl::SetMargInfo(short field, short choice) {
  if (state_->has_choice(field)) {
    state_->choices[static_cast<std::size_t>(field)] = static_cast<uint16_t>(choice);
  }
}

short CCtdCtl::GetMargInfo(short field) {
  if (!state_->has_choice(field)) return -1;
  return static_cast<short>(state_->choices[static_cast<std::size_t>(field)]);
}

void CCtdCtl::SetMargPer(short record) {
  if (tSYNC_CTDRECINFO* found = state_->record(record)) found->merge = 1;
}

short CCtdCtl::WriteMargFile() {
  return state_->guarded(short{1}, [&](tq::CandidateGroups&) { return state_->write_choice(); });
}

short CCtdCtl::ReadMargFile() {
  return state_->guarded(short{1}, [&](tq::CandidateGroups&) { return state_->read_choice(); });
}
