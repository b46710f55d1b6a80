// Decisions about candidate groups as a file: the table "decisions" that `tqsync --tsv pair`
// prints, of which scripts may leave out the columns that are only for people.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tqsync {

// A record of a person (`field` is empty), or a field whose value is taken from a record.
struct DecisionRow {
  std::size_t line;  // in the file, from 1
  std::string person, id, field;
};

// Lines of cells between tabs. The line that begins with "#decisions" names the columns: "person"
// and "id" must be there, "field" may be. Other lines that begin with "#", empty lines and rows of
// other tables are skipped. Throws Failure, naming `file` and the line, for text that is no UTF-8,
// a row before the columns are named, a missing column, and a row without person or id.
std::vector<DecisionRow> parse_decisions(const std::string& file, std::string_view text);

}  // namespace tqsync
