// A caller's record table, built from strings.
#pragma once

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "tqutil/ctd.h"

namespace tq::test {

class RecordTable {
 public:
  // Field ids and names.
  explicit RecordTable(const std::vector<std::pair<int, std::string>>& fields) {
    for (const auto& [id, name] : fields) names_.push_back(field(id, name));
  }

  // Values in the order of the fields. The table must not be in use yet.
  void add(const std::string& sync_id, const std::string& title,
           const std::vector<std::string>& values) {
    tSYNC_CTDRECINFO record{};
    sync_id.copy(record.syncId, sizeof record.syncId - 1);
    title.copy(record.title, sizeof record.title - 1);
    std::vector<tSYNC_FLDTBL>& fields = values_.emplace_back();
    for (std::size_t i = 0; i < names_.size(); ++i) {
      fields.push_back(field(names_[i].fldId, i < values.size() ? values[i] : ""));
    }
    record.fields = fields.data();
    record.fldCnt = static_cast<short>(fields.size());
    records_.push_back(record);
  }

  void give_to(CCtdCtl& ctd, uint32_t field_map = 0) {
    ctd.SetCtdInfo(field_map, static_cast<int32_t>(records_.size()), records_.data(),
                   static_cast<short>(names_.size()), names_.data());
  }

  tSYNC_CTDRECINFO& record(std::size_t i) { return records_[i]; }
  tSYNC_FLDTBL& value(std::size_t i, std::size_t field) { return values_[i][field]; }

 private:
  tSYNC_FLDTBL field(int id, const std::string& text) {
    tSYNC_FLDTBL entry{};
    entry.fldId = static_cast<uint16_t>(id);
    entry.text = texts_.emplace_back(text).data();
    return entry;
  }

  std::deque<std::string> texts_;
  std::vector<tSYNC_FLDTBL> names_;
  std::vector<tSYNC_CTDRECINFO> records_;
  std::deque<std::vector<tSYNC_FLDTBL>> values_;
};

}  // namespace tq::test
