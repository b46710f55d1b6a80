#include "commands/review_screen.h"

#include <algorithm>
#include <iostream>

#include "terminal/table.h"

namespace tqsync {
namespace {

constexpr std::size_t kCellWidth = 24;  // of a value
constexpr std::size_t kAtOnce = 4;      // records beside each other

constexpr const char* kQuestion = "Which are the same person? [1 2.., a, f, n, s, q, ?] ";
constexpr const char* kHelp =
    "  1 3    these records are one person; the others are shown again\n"
    "  1 3 f  the same, and you choose the value of each field that differs\n"
    "  a      all of them are one person\n"
    "  f      all of them, field by field\n"
    "  n      only those that are linked; nobody else is the same\n"
    "  s      skip: nothing is decided (so does Enter)\n"
    "  q      skip this group and all that follow\n"
    "  a* f* n* s*  the same answer for all the rest\n";

const char* mark(Difference difference) {
  switch (difference) {
    case Difference::kDiffers:
      return "*";
    case Difference::kSomeEmpty:
      return "+";
    case Difference::kNone:
      break;
  }
  return "";
}

std::string number(std::size_t place) { return std::to_string(place + 1); }

// The records from `first` on, as many as fit beside each other.
void show_part(const ReviewSheet& sheet, std::size_t first) {
  const std::size_t end = std::min(first + kAtOnce, sheet.records.size());
  std::vector<Table::Column> columns = {{""}, {""}};
  for (std::size_t i = first; i < end; ++i) {
    columns.push_back({number(i) + "  " + cut_to_width(printable(sheet.records[i]), kCellWidth)});
  }
  Table table("review", std::move(columns));
  const auto add = [&](const char* marked, const std::string& name, const auto& text_of) {
    std::vector<std::string> row = {marked, cut_to_width(name, kCellWidth)};
    for (std::size_t i = first; i < end; ++i) row.push_back(cut_to_width(text_of(i), kCellWidth));
    table.add(std::move(row));
  };
  add("", "", [&](std::size_t i) { return sheet.lines[i]; });
  for (std::size_t field = 0; field < sheet.fields.size(); ++field) {
    const auto is_empty = [&](const Values& values) { return values[field].empty(); };
    if (std::ranges::all_of(sheet.values, is_empty)) continue;  // others of the group had it
    add(mark(difference(sheet.fields[field].column.kind, sheet.values, field)),
        sheet.fields[field].name, [&](std::size_t i) { return sheet.values[i][field]; });
  }
  add("", "", [&](std::size_t i) { return sheet.state[i]; });
  table.print(std::cerr, {});
}

// A line that was typed; nothing at the end of the input.
std::optional<std::string> typed_line(const std::string& prompt) {
  std::cerr << prompt << std::flush;
  std::string line;
  if (std::getline(std::cin, line)) return line;
  std::cerr << '\n';
  return std::nullopt;
}

}  // namespace

void show_sheet(const ReviewSheet& sheet) {
  std::cerr << '\n' << sheet.title << '\n';
  for (std::size_t first = 0; first < sheet.records.size(); first += kAtOnce) {
    show_part(sheet, first);
  }
}

Answer ask_who(const ReviewSheet& sheet) {
  for (;;) {
    const std::optional<std::string> line = typed_line(kQuestion);
    if (!line) return {Answer::Kind::kQuit};
    Answer answer = parse_answer(*line, sheet.records.size());
    if (answer.kind != Answer::Kind::kUnclear) return answer;
    std::cerr << kHelp;
  }
}

std::optional<FieldChoices> ask_values(const ReviewSheet& sheet,
                                       std::span<const std::size_t> places) {
  std::vector<Values> values;
  for (const std::size_t place : places) values.push_back(sheet.values[place]);
  FieldChoices chosen;
  for (std::size_t field = 0; field < sheet.fields.size(); ++field) {
    if (difference(sheet.fields[field].column.kind, values, field) != Difference::kDiffers)
      continue;
    std::string prompt = "  " + sheet.fields[field].name + ":";
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (!values[i][field].empty()) prompt += "  " + number(places[i]) + " " + values[i][field];
    }
    const std::size_t usual = first_with_value(values, field);
    prompt += "  [" + number(places[usual]) + "] ";
    for (;;) {
      const std::optional<std::string> line = typed_line(printable(prompt));
      if (!line) return std::nullopt;
      const std::size_t place = parse_place(*line, sheet.records.size(), places[usual]);
      const auto found = std::ranges::find(places, place);
      if (found == places.end()) continue;
      chosen[field] = static_cast<std::size_t>(found - places.begin());
      break;
    }
  }
  return chosen;
}

}  // namespace tqsync
