#include "files/address_file.h"

#include <algorithm>
#include <utility>

#include "files/place.h"
#include "files/whole_file.h"
#include "text/native_path.h"
#include "text/numbers.h"

namespace tqsync {
namespace {

bool is_empty(const std::string& cell) { return cell.empty(); }

// Makes a row as long as the headings. What is beyond them must be empty; what is missing becomes
// empty, with a warning.
void fit_row(AddressFile& file, CsvRow& row) {
  const std::size_t columns = file.headings.size();
  if (row.cells.size() < columns) {
    file.warnings.push_back(at_line(file.name, row.line,
                                    "only " + counted(row.cells.size(), "cell") + " under " +
                                        counted(columns, "heading") + ", the rest is empty"));
  } else if (!std::all_of(row.cells.begin() + static_cast<std::ptrdiff_t>(columns), row.cells.end(),
                          is_empty)) {
    fail_at(file.name, row.line,
            counted(row.cells.size(), "cell") + " under " + counted(columns, "heading") +
                ". Put cells that hold a comma in double quotes.");
  }
  row.cells.resize(columns);
}

}  // namespace

AddressFile read_address_file(const std::string& native_path, Encoding encoding) {
  return parse_address_file(file_name(native_path), read_whole_file(native_path, "a CSV file"),
                            encoding);
}

AddressFile parse_address_file(const std::string& name, std::string bytes, Encoding encoding) {
  const DecodedText text = decode(name, std::move(bytes), encoding);
  std::vector<CsvRow> rows = parse_csv(name, text.utf8);
  if (rows.empty()) {
    throw Failure(name + ": the file is empty. Its first line must hold the headings.");
  }
  AddressFile file{name, text.encoding, std::move(rows.front().cells), {}, {}};
  for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
    // Spreadsheets write lines of nothing but commas behind the last record.
    if (std::all_of(row->cells.begin(), row->cells.end(), is_empty)) continue;
    fit_row(file, *row);
    file.rows.push_back(std::move(*row));
  }
  return file;
}

}  // namespace tqsync
