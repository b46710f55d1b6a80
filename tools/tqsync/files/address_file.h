// An address file read whole: its headings and its rows, as they stand in the file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "files/csv.h"
#include "files/encoding.h"

namespace tqsync {

struct AddressFile {
  std::string name;   // without folders, for messages
  Encoding encoding;  // never kDetect
  std::vector<std::string> headings;
  std::vector<CsvRow> rows;           // as many cells each as there are headings
  std::vector<std::string> warnings;  // what was taken although it is odd, with its line
};

// Reads the file at a native path in UTF-8. Throws Failure with the file, the line, what is wrong
// and what to do: not there, not readable, too large, empty, not in the encoding, not CSV, a row
// with more cells than headings.
AddressFile read_address_file(const std::string& native_path, Encoding encoding);

// The same from bytes in memory.
AddressFile parse_address_file(const std::string& name, std::string bytes, Encoding encoding);

}  // namespace tqsync
