// What a CCtdCtl object holds. Copying an object copies this: plain members are the copy's own,
// tables are shared. Shared by the files of this folder; nothing else includes it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "common/guarded.h"
#include "common/text.h"
#include "ctd/candidate_groups.h"
#include "ctd/candidate_records.h"
#include "tqutil/ctd.h"

namespace tq {

// A text of the record table; null reads as empty.
// (By value: nothing refers to a member of a packed record.)
inline std::string_view text_of(const tSYNC_FLDTBL& field) { return view(+field.text); }

// A length as the getters give it.
short length(std::string_view text);

}  // namespace tq

struct CCtdCtl::State {
  State();

  // The groups; made again when they were given up.
  tq::CandidateGroups& table() {
    if (groups == nullptr) groups = std::make_shared<tq::CandidateGroups>();
    return *groups;
  }

  // Runs an operation on the groups; memory that runs out becomes the operation's failure value.
  template <class Result, class Body>
  Result guarded(Result failure, Body&& body) noexcept {
    return tq::guarded(failure, [&] { return body(table()); });
  }

  std::shared_ptr<tq::CandidateGroups> groups = std::make_shared<tq::CandidateGroups>();
  char title[TQ_CTD_TITLE_SIZE] = {};

  // The record table (ctd_records.cpp). `set_table` forgets the text that is kept.
  void set_table(std::uint32_t map, std::int32_t rec_count, tSYNC_CTDRECINFO* recs, short fld_count,
                 tSYNC_FLDTBL* fld_names);
  // Null for an index out of range and where the array is missing.
  tSYNC_CTDRECINFO* record(std::int32_t index) const;
  const tSYNC_FLDTBL* name(std::int32_t field) const;
  const tSYNC_FLDTBL* value(std::int32_t index, std::int32_t field) const;

  std::uint32_t fld_map = 0;
  std::int32_t rec_cnt = 0;
  tSYNC_CTDRECINFO* records = nullptr;
  short fld_cnt = 0;
  tSYNC_FLDTBL* names = nullptr;
  // What was read from a file; `records` and `names` may point into it or not.
  std::shared_ptr<tq::CandidateRecords> read;

  // Formatted texts (ctd_strings.cpp): makes the text of a value the kept one.
  bool format(std::int32_t index, std::int32_t field);
  bool join(std::int32_t index, std::int32_t field);
  void convert(const tSYNC_CTDRECINFO& of, short fld_id);

  std::string kept;  // the text last formatted, of this value
  std::int32_t kept_record = -1;
  std::int32_t kept_field = -1;

  // The work files (ctd_files.cpp, ctd_merge.cpp).
  short write_table();
  short read_table();
  short write_choice() const;
  short read_choice();
  bool has_choice(short field) const {
    return field >= 0 && field < fld_cnt && static_cast<std::size_t>(field) < choices.size();
  }

  std::string ctd_path;  // empty without a work folder
  std::string mrg_path;
  bool has_buffers = true;  // false once the data was given up: no files and no formatted texts
  short state = TQ_MERGE_FIELDS;
  std::uint16_t sub_state = 0;
  std::vector<std::uint16_t> choices;  // one a field and one more; empty before a file was read

 private:
  struct Choice;
  std::string choice_lines() const;
  bool parse_choice(Choice& choice) const;
  void split_merged_group(const std::vector<bool>& chosen);
};
