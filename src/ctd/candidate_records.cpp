#include "ctd/candidate_records.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "common/lines.h"
#include "common/table_memory.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {
namespace {

constexpr std::size_t kLineSize = 20000;      // buffer of one line, terminator included
constexpr std::size_t kBlockSize = 65536;     // values are kept in blocks of at least this
constexpr std::size_t kRecordLines = 3;       // of a record, besides its values
constexpr std::uint64_t kSmallTable = 16384;  // so many announced lines are believed of any file

// A zeroed table of at least one row.
template <class T>
T* new_table(std::size_t count) {
  void* block = TblAlloc(std::max<std::size_t>(count, 1), sizeof(T));
  if (block == nullptr) throw std::bad_alloc();
  return static_cast<T*>(block);
}

}  // namespace

// The lines of the file, and how much of it is left.
class CandidateRecords::Lines {
 public:
  Status open(std::string_view path) {
    Status status = reader_.open(path);
    return status.ok() ? platform::file_size(path, size_) : status;
  }
  bool next(std::string_view& line) {
    if (!reader_.next(line)) return false;
    used_ += line.size() + 1;
    return true;
  }
  std::uint64_t left() const { return size_ - std::min(size_, used_); }
  const Status& status() const { return reader_.status(); }

 private:
  LineReader reader_{kLineSize};
  std::uint64_t size_ = 0;
  std::uint64_t used_ = 0;
};

CandidateRecords::~CandidateRecords() {
  for (short i = 0; names_ != nullptr && i < std::max<short>(fld_cnt_, 1); ++i) {
    char* name = names_[i].text;
    if (name != nullptr) allocator_.RecDbFreeData(allocator_.context, name);
  }
  TblFree(names_);
  TblFree(values_);
  TblFree(records_);
}

Status CandidateRecords::read(std::string_view path) {
  Lines lines;
  if (Status status = lines.open(path); !status.ok()) return status;
  std::string_view line;
  if (lines.next(line)) copy_text(title_, line);
  if (lines.next(line)) {
    constexpr std::int32_t kMost = std::numeric_limits<short>::max();
    fld_cnt_ = static_cast<short>(std::clamp(decimal(line), 0, kMost));
  }
  read_names(lines);
  if (lines.next(line)) {
    make_records(decimal(line), lines.left());
    for (std::int32_t i = 0; i < rec_cnt_ && read_record(lines, records_[i]); ++i) {
    }
  }
  return lines.status();
}

// A table without fields has the name of a field 0 all the same: it takes a line.
void CandidateRecords::read_names(Lines& lines) {
  names_ = new_table<tSYNC_FLDTBL>(static_cast<std::size_t>(fld_cnt_));
  names_->cap = static_cast<std::uint16_t>(fld_cnt_);
  std::string_view line;
  short i = 0;
  while (lines.next(line)) {
    names_[i].text = new_name(line);
    if (++i >= fld_cnt_) break;
  }
}

void CandidateRecords::make_records(std::int32_t announced, std::uint64_t bytes_left) {
  if (announced <= 0) return;
  const auto fields = static_cast<std::uint64_t>(fld_cnt_);
  const std::uint64_t lines = kRecordLines + fields;  // a byte each, at least
  const std::uint64_t most = std::max(bytes_left / lines + 1, kSmallTable / lines);
  const auto count = static_cast<std::size_t>(
      std::min<std::uint64_t>(static_cast<std::uint64_t>(announced), most));
  if (fields != 0 &&
      count > std::numeric_limits<std::size_t>::max() / sizeof(tSYNC_FLDTBL) / fields)
    throw std::bad_alloc();
  values_ = new_table<tSYNC_FLDTBL>(count * static_cast<std::size_t>(fields));
  records_ = new_table<tSYNC_CTDRECINFO>(count);
  rec_cnt_ = static_cast<std::int32_t>(count);
  records_->cap = static_cast<std::uint32_t>(count);
  for (std::size_t i = 0; i < count; ++i) {
    records_[i].fields = values_ + i * static_cast<std::size_t>(fields);
    if (fields != 0) records_[i].fields->cap = static_cast<std::uint16_t>(fld_cnt_);
  }
}

// False at the end of the file; what a last, incomplete record has stays.
bool CandidateRecords::read_record(Lines& lines, tSYNC_CTDRECINFO& record) {
  std::string_view line;
  if (!lines.next(line)) return false;
  copy_text(record.title, line);
  if (!lines.next(line)) return false;
  record.kind = decimal16(line);
  if (!lines.next(line)) return false;
  copy_text(record.description, line);
  for (short i = 0; i < fld_cnt_; ++i) {
    if (!lines.next(line)) return false;
    record.fields[i].text = new_value(line);
  }
  return true;
}

char* CandidateRecords::new_name(std::string_view text) {
  const auto size = static_cast<std::uint32_t>(text.size() + 2);
  char* name = static_cast<char*>(allocator_.RecDbAllocData(allocator_.context, size));
  if (name == nullptr) throw std::bad_alloc();
  std::memcpy(name, text.data(), text.size());
  std::memset(name + text.size(), 0, 2);
  return name;
}

// With room for four times the text, so that whoever shows it can format it in place.
char* CandidateRecords::new_value(std::string_view text) {
  const std::size_t size = (text.size() + 2) * 4;
  if (size > room_.size()) {
    const std::size_t block = std::max(size, kBlockSize);
    blocks_.push_back(std::make_unique<char[]>(block));
    room_ = {blocks_.back().get(), block};
  }
  char* value = room_.data();
  room_ = room_.subspan(size);
  std::memcpy(value, text.data(), text.size());  // the block is zero behind it
  return value;
}

}  // namespace tq
