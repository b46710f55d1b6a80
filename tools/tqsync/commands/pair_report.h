// What `tqsync pair` prints.
#pragma once

#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "engine/plan.h"
#include "library/match_tables.h"
#include "terminal/table.h"

namespace tqsync {

// The tables of the report, in the order in which they are printed.
inline constexpr const char* kReportSections[] = {"links",   "decide",     "new",
                                                  "missing", "duplicates", "summary"};

// A run to report on. All of it must outlive the report.
struct PairingRun {
  std::vector<std::string> names;  // of the files, the master's first, each different
  std::span<const Book> books;
  const Plan& plan;
  const MatchTables& tables;

  const Person& person(RecordRef ref) const { return books[ref.book][ref.record]; }
};

class PairReport {
 public:
  PairReport(const PairingRun& run, Printing printing, std::ostream& out);

  // One of kReportSections.
  void print(const std::string& section);

 private:
  // The one that a partner file's plan has for a record and a master record; there must be one.
  const Pair& pair_of(std::uint32_t book, std::uint32_t record, std::uint32_t master) const;
  // The file's line of a master record, or where it is new from.
  std::string master_place(std::uint32_t master) const;
  std::string master_name(std::uint32_t master) const;
  std::string line(RecordRef ref) const { return std::to_string(run_.person(ref).line); }

  void print_links();
  void print_open_groups();
  void print_new();
  void print_missing();
  void print_duplicates();
  void print_summary();
  void print_table(const std::string& title, const Table& table);

  const PairingRun& run_;
  Printing printing_;
  std::ostream& out_;
};

}  // namespace tqsync
