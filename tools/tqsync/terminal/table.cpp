#include "terminal/table.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "text/unicode.h"

namespace tqsync {
namespace {

struct Range {
  char32_t first, last;
};

// From the East Asian Width property of Unicode: classes W and F. Emoji blocks are taken whole.
constexpr Range kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},
    {0xA000, 0xA4CF}, {0xA960, 0xA97F}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
    {0xFF01, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
// Combining marks, joiners and variation selectors (which follow kanji of family registers).
constexpr Range kNoWidth[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0x3099, 0x309A},
                              {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF}};

template <std::size_t kCount>
bool in_any(const Range (&ranges)[kCount], char32_t code) {
  return std::ranges::any_of(ranges,
                             [code](const Range& r) { return code >= r.first && code <= r.last; });
}

std::size_t width_of(char32_t code) {
  if (code < 0x300) return 1;
  return in_any(kNoWidth, code) ? 0 : in_any(kWide, code) ? 2 : 1;
}

bool is_control(char32_t code) {
  return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0x2028 && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

}  // namespace

std::size_t display_width(std::string_view utf8) {
  std::size_t width = 0;
  for (const char32_t code : to_code_points(utf8)) width += width_of(code);
  return width;
}

std::string printable(std::string_view utf8) {
  std::string out;
  for (const char32_t code : to_code_points(utf8)) append_utf8(out, is_control(code) ? U' ' : code);
  return out;
}

std::string cut_to_width(std::string_view utf8, std::size_t width) {
  if (display_width(utf8) <= width) return std::string(utf8);
  std::string cut;
  std::size_t used = 1;  // of the mark
  for (const char32_t code : to_code_points(utf8)) {
    used += width_of(code);
    if (used > width) break;
    append_utf8(cut, code);
  }
  return cut + "…";
}

Table::Table(std::string name, std::vector<Column> columns)
    : name_(std::move(name)), columns_(std::move(columns)) {}

void Table::add(std::vector<std::string> cells) {
  std::ranges::transform(cells, cells.begin(), printable);
  rows_.push_back(std::move(cells));
}

void Table::print(std::ostream& out, Printing how) const {
  if (how.output == Output::kScript) {
    print_tabbed(out);
  } else if (rows_.empty() && how.when_empty != nullptr) {
    out << how.when_empty << '\n';
  } else {
    print_aligned(out, how.rows);
  }
}

void Table::print_aligned(std::ostream& out, std::size_t rows) const {
  const auto shown = std::span(rows_).first(std::min(rows, rows_.size()));
  std::vector<std::size_t> widths(columns_.size());
  const auto widen = [&](std::size_t i, const std::string& cell) {
    widths[i] = std::max(widths[i], display_width(cell));
  };
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    widen(i, columns_[i].heading);
    for (const auto& row : shown) widen(i, row[i]);
  }

  const auto print_row = [&](const auto& cell_at) {
    std::string line;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (columns_[i].kind == Kind::kScriptOnly) continue;
      const std::string& cell = cell_at(i);
      const std::string padding(widths[i] - display_width(cell), ' ');
      line += "  " + (columns_[i].kind == Kind::kNumber ? padding + cell : cell + padding);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  };
  print_row([&](std::size_t i) -> const std::string& { return columns_[i].heading; });
  for (const auto& row : shown) {
    print_row([&](std::size_t i) -> const std::string& { return row[i]; });
  }
  if (shown.size() < rows_.size()) out << "  ... and " << rows_.size() - shown.size() << " more\n";
}

void Table::print_tabbed(std::ostream& out) const {
  out << '#' << name_;
  for (const Column& column : columns_) out << '\t' << column.heading;
  out << '\n';
  for (const auto& row : rows_) {
    out << name_;
    for (const auto& cell : row) out << '\t' << cell;
    out << '\n';
  }
}

}  // namespace tqsync
