// The built-in history store: a log of records in the work folder, made by the first record and
// deleted when the records are discarded or the library goes.
#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "common/guarded.h"
#include "platform/platform.h"
#include "siblings/builtins.h"
#include "siblings/siblings.h"

namespace tq {
namespace {

#pragma pack(push, 1)
// One row of the log: under what the record is filed, and the record.
struct LogRow {
  std::uint16_t number;
  std::uint16_t app_id;
  tHSTYTMP_REC record;
};
#pragma pack(pop)
static_assert(sizeof(tHSTYTMP_REC) == 518 && sizeof(LogRow) == 522);

class RecordLog {
 public:
  ~RecordLog() {
    guarded([this] { discard(); });
  }

  // Files a record under the numbers in force; false when it could not be kept.
  bool add(const tHSTYTMP_REC& record);
  // Ends the recording; reading starts over with the first record.
  void end();
  bool empty() const { return written_ + gathered_ == 0; }
  // The next record of a number; false when there is none. A change of number starts over.
  bool next(std::uint16_t number, tHSTYTMP_REC& record);
  void discard();

 private:
  bool write_gathered();
  bool fill();

  static constexpr std::size_t kRows = 64;  // moved between memory and disk in one go

  std::string path_;  // empty: no file
  platform::File file_;
  std::array<LogRow, kRows> rows_;  // gathered while recording, read while reading
  std::size_t gathered_ = 0;
  std::size_t written_ = 0;  // rows that reached the file
  // Reading.
  std::size_t unread_ = 0;  // rows of the file that were not read yet
  std::size_t filled_ = 0;
  std::size_t position_ = 0;
  std::uint16_t number_ = 0;
  bool reading_ = false;
};

bool RecordLog::add(const tHSTYTMP_REC& record) {
  if (reading_) end();
  if (path_.empty()) {
    const std::string folder = sibling_folder(&tFLDCOM_API::FldComGetWorkFolder);
    if (folder.empty() || !platform::unique_file(folder, "~HS", path_).ok()) return false;
  }
  if (!file_.is_open() && !file_.open(path_, platform::OpenMode::kUpdate).ok()) return false;
  rows_[gathered_++] = {history_filing().number, history_filing().app_id, record};
  return gathered_ < kRows || write_gathered();
}

// Rows that cannot be written are lost and do not count; the next ones go over what reached the
// file of them.
bool RecordLog::write_gathered() {
  const std::size_t count = gathered_;
  gathered_ = 0;
  if (count == 0) return true;
  const std::string_view bytes(reinterpret_cast<const char*>(rows_.data()), count * sizeof(LogRow));
  if (!file_.seek(written_ * sizeof(LogRow)).ok() || !file_.write(bytes).ok()) return false;
  written_ += count;
  return true;
}

void RecordLog::end() {
  write_gathered();
  static_cast<void>(file_.close());
  reading_ = false;
}

bool RecordLog::fill() {
  const std::size_t rows = std::min(unread_, kRows);
  const std::size_t wanted = rows * sizeof(LogRow);
  std::size_t have = 0;
  for (std::size_t got = 1; have < wanted && got != 0; have += got) {
    if (!file_.read(reinterpret_cast<char*>(rows_.data()) + have, wanted - have, got).ok()) break;
  }
  unread_ -= rows;
  position_ = 0;
  filled_ = have / sizeof(LogRow);
  return filled_ != 0;
}

bool RecordLog::next(std::uint16_t number, tHSTYTMP_REC& record) {
  if (!reading_ || number != number_) {
    end();
    if (path_.empty() || !file_.open(path_, platform::OpenMode::kRead).ok()) return false;
    reading_ = true;
    number_ = number;
    unread_ = written_;
    filled_ = position_ = 0;
  }
  while (position_ < filled_ || fill()) {
    const LogRow& row = rows_[position_++];
    if (row.number != number) continue;
    record = row.record;
    return true;
  }
  return false;
}

void RecordLog::discard() {
  gathered_ = 0;
  end();
  written_ = 0;
  if (path_.empty()) return;
  static_cast<void>(platform::delete_file(path_));
  path_.clear();
}

RecordLog& record_log() {
  static RecordLog log;
  return log;
}

void TQ_CALL remove(void*) {
  guarded([] { record_log().discard(); });
}

void TQ_CALL term(void*) {
  guarded([] { record_log().end(); });
}

short TQ_CALL exists(void*) { return record_log().empty() ? 0 : 1; }

short TQ_CALL read(void*, tHSTYTMP_REC* record, short number) {
  return guarded<short>(1, [=] {
    const bool found =
        record != nullptr && record_log().next(static_cast<std::uint16_t>(number), *record);
    return found ? 0 : 1;
  });
}

short TQ_CALL write(void*, const tHSTYTMP_REC* record) {
  return guarded<short>(1, [=] { return record != nullptr && record_log().add(*record) ? 0 : 1; });
}

}  // namespace

HistoryFiling& history_filing() {
  static HistoryFiling in_force;
  return in_force;
}

tHSTYTMP_API builtin_hstytmp() {
  return {sizeof(tHSTYTMP_API), nullptr, remove, term, exists, read, write};
}

}  // namespace tq
