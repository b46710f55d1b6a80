// What a pairing leaves in the history of runs.
#pragma once

#include <span>
#include <string>

#include "commands/pair_report.h"
#include "commands/pair_review.h"
#include "files/address_file.h"
#include "library/groups.h"

namespace tqsync {

// Saves what was found and decided as the history of the last run. `files` are the run's files in
// its order; `write_fault` says why the result could not be written, empty when it was or was not
// wanted. Throws Failure when the history cannot be kept.
void save_history(const Group& group, const PairingRun& run, std::span<const AddressFile> files,
                  const ReviewOutcome& outcome, const std::string& write_fault);

}  // namespace tqsync
