// Which fields the headings of an address file name, by the headings of the known formats.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "library/formats.h"

namespace tqsync {

struct HeadingMatch {
  const Format* format = nullptr;    // null when no heading is known
  bool by_place = false;             // no heading is known, but the application is
  std::vector<FormatColumn> fields;  // each column and each field at most once, by column
};

// The format that knows most of the headings, of several the one with the fewest columns; of those
// of `application` when that is not 0 and has any. Columns that it does not know get a field of
// another format, the formats in their order. Headings compare as heading_key has them; of the
// fields that one heading may name, a column gets the first that no earlier column has.
HeadingMatch match_headings(const std::vector<std::string>& headings,
                            std::span<const Format> formats, short application);

}  // namespace tqsync
