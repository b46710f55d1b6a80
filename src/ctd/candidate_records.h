// A record table that was read from a candidate file, with all that it owns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "base/status.h"
#include "siblings/siblings.h"
#include "tqutil/ctd.h"

namespace tq {

class CandidateRecords {
 public:
  CandidateRecords() = default;
  ~CandidateRecords();
  CandidateRecords(const CandidateRecords&) = delete;
  CandidateRecords& operator=(const CandidateRecords&) = delete;

  // Reads a file, as far as it goes; the counts that it announces are believed only as far as its
  // length bears them out. Not ok: it cannot be read. Throws std::bad_alloc; what is here then is
  // whole and stands for what was read until then.
  Status read(std::string_view path);

  std::string_view title() const { return title_; }
  std::int32_t rec_cnt() const { return rec_cnt_; }
  tSYNC_CTDRECINFO* records() { return records_; }
  short fld_cnt() const { return fld_cnt_; }
  tSYNC_FLDTBL* names() { return names_; }

 private:
  class Lines;

  void read_names(Lines& lines);
  void make_records(std::int32_t announced, std::uint64_t bytes_left);
  bool read_record(Lines& lines, tSYNC_CTDRECINFO& record);
  char* new_name(std::string_view text);
  char* new_value(std::string_view text);

  char title_[TQ_CTD_TITLE_SIZE] = {};
  std::int32_t rec_cnt_ = 0;
  short fld_cnt_ = 0;
  tSYNC_FLDTBL* names_ = nullptr;
  tSYNC_CTDRECINFO* records_ = nullptr;
  tSYNC_FLDTBL* values_ = nullptr;  // the field tables of all records, one behind the other
  // Names come from the database's allocator and go back to it, whatever is installed by then.
  const tRECDB_API allocator_ = recdb();
  // Values, in blocks: there are as many as the table has cells.
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::span<char> room_;  // what the last block has left
};

}  // namespace tq
