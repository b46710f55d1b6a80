// What a pairing leaves in the history of runs.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "commands/pair_report.h"
#include "library/groups.h"

namespace tqsync {

// Saves what was found as the history of the last run; `warnings` of each file, in the order of the
// run's files. Throws Failure when it cannot be kept.
void save_history(const Group& group, const PairingRun& run,
                  std::span<const std::vector<std::string>> warnings);

}  // namespace tqsync
