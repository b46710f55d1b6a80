// Comma-separated text (RFC 4180) taken apart into rows.
//
// Cells may stand in double quotes, a quote inside them is written twice, and line breaks inside
// them belong to the cell. Lines end in LF, CR LF or CR. Empty lines count as no row.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tqsync {

struct CsvRow {
  std::size_t line;  // in which it begins, from 1
  std::vector<std::string> cells;
};

// Throws Failure, naming `file` and the line, for a quote that is never closed and for text behind
// a closing quote.
std::vector<CsvRow> parse_csv(const std::string& file, std::string_view text);

}  // namespace tqsync
