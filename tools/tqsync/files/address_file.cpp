#include "files/address_file.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "files/place.h"

namespace tqsync {
namespace {

// Keeps every position within 32 bits, also after each byte has become three.
constexpr std::uintmax_t kLargestFile = 256u << 20;

std::filesystem::path to_path(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string read_bytes(const std::string& native_path) {
  namespace fs = std::filesystem;
  const fs::path path = to_path(native_path);
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    throw Failure(native_path + ": there is no such file. Put it back, or give another one.");
  }
  if (status.type() != fs::file_type::regular) {
    throw Failure(native_path + ": this is no file. Give a CSV file.");
  }
  if (fs::file_size(path, error) > kLargestFile) {
    throw Failure(native_path + ": the file is larger than 256 MB. Split it into several files.");
  }
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file || bytes.size() > kLargestFile) {
    throw Failure(native_path + ": the file cannot be read. Check that it is not open elsewhere " +
                  "and that you may read it.");
  }
  return bytes;
}

bool is_empty(const std::string& cell) { return cell.empty(); }

// Makes a row as long as the headings. What is beyond them must be empty; what is missing becomes
// empty, with a warning.
void fit_row(AddressFile& file, CsvRow& row) {
  const std::size_t columns = file.headings.size();
  const auto count = [](std::size_t n, const char* what) {
    return std::to_string(n) + what + (n == 1 ? "" : "s");
  };
  if (row.cells.size() < columns) {
    file.warnings.push_back(at_line(file.name, row.line,
                                    "only " + count(row.cells.size(), " cell") + " under " +
                                        count(columns, " heading") + ", the rest is empty"));
  } else if (!std::all_of(row.cells.begin() + static_cast<std::ptrdiff_t>(columns), row.cells.end(),
                          is_empty)) {
    fail_at(file.name, row.line,
            count(row.cells.size(), " cell") + " under " + count(columns, " heading") +
                ". Put cells that hold a comma in double quotes.");
  }
  row.cells.resize(columns);
}

}  // namespace

AddressFile read_address_file(const std::string& native_path, Encoding encoding) {
  return parse_address_file(file_name(native_path), read_bytes(native_path), encoding);
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

std::string file_name(const std::string& native_path) {
  const std::u8string name = to_path(native_path).filename().u8string();
  return {name.begin(), name.end()};
}

}  // namespace tqsync
