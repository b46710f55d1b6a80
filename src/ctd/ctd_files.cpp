// The candidate file: the record table with its values as they are shown.
#include <string>

#include "common/guarded.h"
#include "common/path.h"
#include "ctd/ctd_state.h"
#include "platform/platform.h"
#include "siblings/siblings.h"

namespace {

constexpr short kCannotRead = 1;
constexpr short kNoMemory = 2;

}  // namespace

CCtdCtl::State::State() {
  const std::string folder = tq::sibling_folder(&tFLDCOM_API::FldComGetWorkFolder);
  if (folder.empty()) return;
  ctd_path = folder + "~CTDINFO.TMP";
  mrg_path = folder + "~MRGINFO.TMP";
}

short CCtdCtl::State::write_table() {
  if (!has_buffers || ctd_path.empty()) return 1;
  std::string out;
  tq::append_line(out, tq::view(title));
  tq::append_line(out, std::to_string(fld_cnt));
  for (short i = 0; i < fld_cnt; ++i) tq::append_line(out, tq::text_of(names[i]));
  tq::append_line(out, std::to_string(rec_cnt));
  for (std::int32_t i = 0; i < rec_cnt; ++i) {
    const tSYNC_CTDRECINFO& of = records[i];
    tq::append_line(out, tq::view(of.title));
    tq::append_line(out, std::to_string(of.kind));
    tq::append_line(out, tq::view(of.description));
    for (short field = 0; field < fld_cnt; ++field) {
      const bool formatted = format(i, field);
      tq::append_line(out, formatted ? std::string_view(kept) : std::string_view());
    }
  }
  return tq::replace_content(ctd_path, out).ok() ? 0 : 1;
}

short CCtdCtl::State::read_table() {
  if (!has_buffers) return kNoMemory;
  auto table = std::make_shared<tq::CandidateRecords>();
  const short result =
      tq::guarded(kNoMemory, [&] { return table->read(ctd_path).ok() ? short{0} : kCannotRead; });
  if (result == kCannotRead) return result;
  // Without memory, what was read until then is the table.
  std::vector<std::uint16_t> none;
  if (result == 0) none.resize(static_cast<std::size_t>(table->fld_cnt()) + 1);
  choices = std::move(none);
  tq::copy_text(title, table->title());
  set_table(fld_map, table->rec_cnt(), table->records(), table->fld_cnt(), table->names());
  read = std::move(table);
  return result;
}

short CCtdCtl::SetCtdFilePath(int32_t, const char*, const char*) { return 0; }

short CCtdCtl::WriteCtdFile() {
  return state_->guarded(short{1}, [&](tq::CandidateGroups&) { return state_->write_table(); });
}

short CCtdCtl::ReadCtdFile() {
  return state_->guarded(kNoMemory, [&](tq::CandidateGroups&) { return state_->read_table(); });
}
