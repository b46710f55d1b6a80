// What a CCtdCtl object holds. Copying an object copies this: plain members are the copy's own,
// tables are shared. Shared by the files of this folder; nothing else includes it.
#pragma once

#include <memory>

#include "ctd/candidate_groups.h"
#include "tqutil/ctd.h"

struct CCtdCtl::State {
  // The groups; made again when they were given up.
  tq::CandidateGroups& table() {
    if (groups == nullptr) groups = std::make_shared<tq::CandidateGroups>();
    return *groups;
  }

  // Runs an operation on the groups; memory that runs out becomes the operation's failure value.
  template <class Result, class Body>
  Result guarded(Result failure, Body&& body) noexcept {
    try {
      return body(table());
    } catch (...) {
      return failure;
    }
  }

  std::shared_ptr<tq::CandidateGroups> groups = std::make_shared<tq::CandidateGroups>();
  char title[TQ_CTD_TITLE_SIZE] = {};
};
