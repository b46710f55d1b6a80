// What the user of `tqsync pair --review` sees and types. It goes to standard error, so that the
// result can be redirected.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/review.h"

namespace tqsync {

// Records side by side, with the fields that at least one of them has.
struct ReviewSheet {
  std::string title;                 // which group of how many
  std::vector<std::string> records;  // the file of each
  std::vector<std::string> lines;    // where in it
  std::vector<std::string> state;    // linked or open, with the score
  std::vector<Field> fields;
  std::vector<Values> values;  // by record, one text for each of the fields
};

// Shows the records; "*" marks fields whose values differ, "+" those that only some have.
void show_sheet(const ReviewSheet& sheet);

// Asks which of the records are one person, until the answer is clear. The end of the input is
// kQuit.
Answer ask_who(const ReviewSheet& sheet);

// Asks for each field that differs between the records at `places` which one's value it gets, by
// its place among those; fields are those of the sheet. Nothing at the end of the input.
std::optional<FieldChoices> ask_values(const ReviewSheet& sheet,
                                       std::span<const std::size_t> places);

}  // namespace tqsync
