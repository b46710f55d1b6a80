// The decisions of a run: taken from a file, asked for at the terminal, applied through the
// library.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "commands/pair_report.h"
#include "engine/review.h"
#include "files/address_file.h"
#include "library/groups.h"

namespace tqsync {

struct ReviewOutcome {
  std::size_t groups = 0;  // in which there was something to decide
  std::size_t open = 0;    // of them, those that were left open, wholly or in part
  std::vector<DecidedPerson> persons;
  std::vector<Field> fields;  // of the persons' values
};

// Where the decisions come from: first what a file says, then whoever sits at the terminal.
struct ReviewSource {
  std::string name;       // of the file, for messages
  std::string decisions;  // its text; see files/decision_file.h
  bool ask = false;
};

// Goes through the candidate groups one by one. `files` are the members' files, in the order of the
// run, with what their columns hold. Throws Failure when the decisions do not fit the run: a record
// that no group has, records of different groups as one person, a record twice, a field that there
// is not.
ReviewOutcome review(const PairingRun& run, std::span<const AddressFile> files,
                     std::span<const FileColumns> columns, const ReviewSource& source);

// Prints the decisions; for scripts in the form that is read as decisions again.
void print_decisions(const ReviewOutcome& outcome, const PairingRun& run, Printing printing);

}  // namespace tqsync
