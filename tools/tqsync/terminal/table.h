// Tables on the terminal and for scripts.
//
// For people the columns are aligned, with characters that take two cells (kanji, kana, full-width
// forms) counted as two. For scripts every row is one line of cells separated by tabs, led by the
// table's name, under a line that begins with "#". Control characters, which could move the cursor
// or break a line, are shown as blanks in both.
#pragma once

#include <cstddef>
#include <limits>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tqsync {

enum class Output { kPeople, kScript };

// For people a long table may be cut, with a line that says so, and a sentence may stand for a
// table without rows.
struct Printing {
  Output output = Output::kPeople;
  std::size_t rows = std::numeric_limits<std::size_t>::max();
  const char* when_empty = nullptr;
};

// How many cells of a terminal the text takes.
std::size_t display_width(std::string_view utf8);
// The text with blanks for control characters.
std::string printable(std::string_view utf8);
// The text itself, or as much of its beginning as fits `width` cells with "…" behind it.
std::string cut_to_width(std::string_view utf8, std::size_t width);

class Table {
 public:
  enum class Kind {
    kText,       // on the left
    kNumber,     // on the right
    kScriptOnly  // shown to scripts alone
  };
  struct Column {
    std::string heading;
    Kind kind = Kind::kText;
  };

  // `name` is one word; scripts tell the tables apart by it.
  Table(std::string name, std::vector<Column> columns);
  // As many cells as there are columns.
  void add(std::vector<std::string> cells);
  std::size_t size() const { return rows_.size(); }

  void print(std::ostream& out, Printing how) const;

 private:
  void print_aligned(std::ostream& out, std::size_t rows) const;
  void print_tabbed(std::ostream& out) const;

  std::string name_;
  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace tqsync
