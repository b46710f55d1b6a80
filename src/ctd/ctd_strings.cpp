// Formatted texts of candidate records: joined, converted, cut; the last one is kept.
#include <algorithm>
#include <span>

#include "base/sjis.h"
#include "ctd/ctd_state.h"
#include "ctd/field_join.h"
#include "siblings/siblings.h"
#include "tqutil/syncfld.h"

namespace {

constexpr short kUsed = 1;
constexpr std::size_t kTextMax = TQ_CTD_TEXT_SIZE - 1;

// Long texts are shown by their beginning.
constexpr short kFirstLongText = 197;
constexpr short kLastLongText = 209;
constexpr std::size_t kLongTextMax = 250;

bool is_long_text(short fld_id) { return fld_id >= kFirstLongText && fld_id <= kLastLongText; }

// Through what a value is converted to the master's form.
struct Conversion {
  short cmp_grp, data_id, mst_data_id;

  // One item; as it is when it cannot be converted.
  std::string of(std::string_view item) const {
    const tADRCONV_API& api = tq::adrconv();
    const std::string from(item);
    std::string to(TQ_CTD_TEXT_SIZE, '\0');
    const short result = api.AdrConvConvert(api.context, from.c_str(), cmp_grp, data_id,
                                            mst_data_id, to.data(), TQ_CTD_TEXT_SIZE);
    if (result != 0) return from;
    to.resize(std::min(to.find('\0'), kTextMax));
    return to;
  }
};

// Every item of a list with ',' between the items.
std::string convert_items(const Conversion& conversion, std::string_view list) {
  std::string converted;
  for (;;) {
    const std::size_t comma = list.find(',');
    converted += conversion.of(list.substr(0, comma));
    if (comma == std::string_view::npos) return converted;
    converted += ',';
    list.remove_prefix(comma + 1);
  }
}

}  // namespace

// A value without text is not kept, so that it is looked for again the next time.
bool CCtdCtl::State::format(std::int32_t index, std::int32_t field) {
  if (!has_buffers || record(index) == nullptr || name(field) == nullptr) return false;
  if (kept_record == index && kept_field == field) return true;
  const bool joined = join(index, field);
  kept_record = kept_field = -1;  // until the text is complete
  const auto fld_id = static_cast<short>(name(field)->fldId);
  const tADRCONV_API& api = tq::adrconv();
  if (joined && api.AdrConvIsConvField(api.context, fld_id) != 0) convert(*record(index), fld_id);
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

void CCtdCtl::State::convert(const tSYNC_CTDRECINFO& of, short fld_id) {
  const auto map = static_cast<std::int32_t>(fld_map);
  const short cmp_grp = SykyGetCmpGrp(fld_id, map);
  const Conversion conversion{cmp_grp, SyflGetDataId(of.dataNo, fld_id, map),
                              SyflGetMstDataId(fld_id, cmp_grp, map)};
  std::string converted =
      SykyIsMugen(fld_id, map) > 0 ? convert_items(conversion, kept) : conversion.of(kept);
  converted.resize(tq::sjis::cut_size(converted, kTextMax));
  kept = std::move(converted);
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
