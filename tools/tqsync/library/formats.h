// The formats that the library knows: its field files as values, in UTF-8 and native paths.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tqsync {

// A field that a format carries. A column with several headings stands several times.
struct FormatColumn {
  short field;
  std::size_t column;  // from 0
  std::string heading;
};

struct Format {
  enum class List { kPrograms, kGeneral, kMaster };

  List list = List::kGeneral;
  short application = 0, number = 0;  // as the file's header has them
  std::string name;                   // as a chooser shows it
  std::string path;                   // native
  std::string title, comment;
  std::vector<FormatColumn> fields;

  std::size_t columns() const;  // how many have a field
};

// The formats of programs, then the general ones and the user's own, then the master's.
std::vector<Format> known_formats();

// The field file at a native path. Throws Failure when it is none.
Format read_format(const std::string& native_path);

// What the record database calls a field; its id when there is no such field.
std::string field_name(short field);

}  // namespace tqsync
