// A plan told to the library: its link table, which keeps which partner records stand behind each
// master record, and its candidate table, which gathers what hangs together into groups. Reports
// are written from what the tables give back.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/plan.h"
#include "tqutil/records.h"

namespace tqsync {

// A partner record that the link table holds for a master record.
struct LinkedRecord {
  std::uint32_t record;
  std::int32_t value;  // the score
};

class MatchTables {
 public:
  // `file_ids` are the members' ids, the master's first, in the order of the plan's books; `sizes`
  // their numbers of records. Throws std::bad_alloc when the library has no room.
  MatchTables(std::vector<std::string> file_ids, std::span<const std::size_t> sizes,
              const Plan& plan);
  ~MatchTables();
  MatchTables(const MatchTables&) = delete;
  MatchTables& operator=(const MatchTables&) = delete;

  // The records of a partner file that are linked to a master record, the best first.
  std::vector<LinkedRecord> links(std::uint32_t master, std::uint32_t book) const;

  // The candidate groups that hold a pair for the user to decide, in the order in which they came
  // up: their partner records, by file and record.
  std::vector<std::vector<RecordRef>> open_groups() const;

  // The sync id, fifteen digits, of a record.
  std::string master_id(std::uint32_t master) const { return sync_id(0, master); }
  std::string sync_id(std::uint32_t book, std::uint32_t record) const;

 private:
  void add_files(std::span<const std::size_t> sizes);
  void add_masters(std::size_t in_file, std::size_t all);
  void add_pairs(const Plan& plan);
  void mark_settled(const Plan& plan);

  std::vector<std::string> file_ids_;
  std::int32_t links_ = 0;
  std::int32_t candidates_ = 0;
};

}  // namespace tqsync
