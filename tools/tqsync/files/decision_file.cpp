#include "files/decision_file.h"

#include <algorithm>

#include "files/place.h"
#include "text/unicode.h"

namespace tqsync {
namespace {

constexpr std::string_view kTable = "decisions";
constexpr std::string_view kColumns = "#decisions";
constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// Where the cells of a row stand.
struct ColumnPlaces {
  std::size_t person = kNowhere, id = kNowhere, field = kNowhere;
};

std::vector<std::string> split(std::string_view line) {
  std::vector<std::string> cells;
  for (;;) {
    const std::size_t tab = line.find('\t');
    cells.emplace_back(line.substr(0, tab));
    if (tab == std::string_view::npos) return cells;
    line.remove_prefix(tab + 1);
  }
}

std::string cell(const std::vector<std::string>& cells, std::size_t place) {
  return place < cells.size() ? cells[place] : std::string();
}

ColumnPlaces places_of(const std::string& file, std::size_t line,
                       const std::vector<std::string>& cells) {
  const auto place = [&](const char* name) {
    const auto found = std::ranges::find(cells, name);
    return found == cells.end() ? kNowhere : static_cast<std::size_t>(found - cells.begin());
  };
  const ColumnPlaces places{place("person"), place("id"), place("field")};
  if (places.person == kNowhere || places.id == kNowhere) {
    fail_at(file, line, "the columns \"person\" and \"id\" must be named here.");
  }
  return places;
}

}  // namespace

std::vector<DecisionRow> parse_decisions(const std::string& file, std::string_view text) {
  if (const std::size_t at = find_malformed(text); at != std::string_view::npos) {
    fail_at(file, line_of(text, at), "there is a character that is no UTF-8.");
  }
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::vector<DecisionRow> rows;
  ColumnPlaces places;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    const std::vector<std::string> cells = split(line);
    if (cells[0] == kColumns) places = places_of(file, number, cells);
    if (cells[0] != kTable) continue;
    if (places.id == kNowhere) {
      fail_at(file, number, "a line that begins with \"#decisions\" must name the columns first.");
    }
    DecisionRow row{number, cell(cells, places.person), cell(cells, places.id),
                    cell(cells, places.field)};
    if (row.person.empty() || row.id.empty()) {
      fail_at(file, number, "the person or the id is missing.");
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace tqsync
