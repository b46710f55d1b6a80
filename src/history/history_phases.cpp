// The phases of a run: what the history store records while one goes on becomes lines of a
// category.
#include <string>

#include "base/sjis_literal.h"
#include "common/text.h"
#include "history/history_state.h"
#include "siblings/siblings.h"

using namespace tq::literals;
using tq::Category;

namespace {

constexpr short kMasterNumber = 0;  // the store's number of the master phase
constexpr short kRun = -1;          // index of the run as a whole

std::string line_of(const tHSTYTMP_REC& record) {
  std::string line = std::to_string(record.recordNo);
  line += " レコード - "_sjis;
  line += tq::view(record.name);
  line += " [ ";
  line += tq::view(record.detail);
  line += " ]";
  return line;
}

short end_recording() {
  tq::hstytmp().HstyTmpTerm(tq::hstytmp().context);
  return 0;
}

}  // namespace

short CHistoryCtl::State::begin_phase(short index, std::uint16_t app_id) {
  const tHSTYTMP_API& store = tq::hstytmp();
  const tFLDCOM_API& fields = tq::fldcom();
  store.HstyTmpDelete(store.context);
  fields.FldComSetHistoryNo(fields.context, static_cast<std::uint16_t>(index));
  fields.FldComSetHistoryAppId(fields.context, app_id);
  return 0;
}

short CHistoryCtl::State::begin_file_phase(short index) {
  const tq::tSYFL_HSTYINFO* file = index < 0 ? nullptr : level(index);
  return file == nullptr ? short{-1} : begin_phase(index, file->appId);
}

short CHistoryCtl::State::end_phase(short number, short index, Category category) {
  const tHSTYTMP_API& store = tq::hstytmp();
  tHSTYTMP_REC record{};
  end_recording();
  if (store.HstyTmpExists(store.context) == 0) return 0;
  while (store.HstyTmpRead(store.context, &record, number) == 0) {
    if (write(level(index), category, line_of(record).c_str()) != 0) {
      return result(TQ_HISTORY_DETAIL_COPY);
    }
  }
  return 0;
}

short CHistoryCtl::HstyBeforMst() {
  return state_->guarded([&] { return state_->begin_phase(kMasterNumber, TQ_APP_MASTER); });
}

short CHistoryCtl::HstyGetMst() {
  return state_->guarded([&] { return state_->end_phase(kMasterNumber, kRun, Category::kTran); });
}

// The phases of one file. The store's number of a file is its index.
#define TQ_HISTORY_PHASE(name)                                           \
  short CHistoryCtl::HstyBefor##name(short i) {                          \
    return state_->guarded([&] { return state_->begin_file_phase(i); }); \
  }
#define TQ_HISTORY_PHASE_END(name, category)                                                \
  short CHistoryCtl::HstyGet##name(short i) {                                               \
    return state_->guarded([&] { return state_->end_phase(i, i, Category::k##category); }); \
  }
TQ_HISTORY_PHASE(App2Xdb)
TQ_HISTORY_PHASE_END(App2Xdb, Read)
TQ_HISTORY_PHASE(Xdb2App)
TQ_HISTORY_PHASE_END(Xdb2App, Write)
TQ_HISTORY_PHASE(WriteXdb)
TQ_HISTORY_PHASE_END(WriteXdb, Tran)
TQ_HISTORY_PHASE(WriteXdbDmy)
#undef TQ_HISTORY_PHASE
#undef TQ_HISTORY_PHASE_END

short CHistoryCtl::HstyGetWriteXdbDmy(short) { return end_recording(); }
