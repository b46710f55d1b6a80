// What of an address file is compared: its columns by the fields that they hold and the matching
// keys that these serve.
#pragma once

#include "engine/common_fields.h"
#include "engine/people.h"
#include "files/address_file.h"
#include "library/field_map.h"

namespace tqsync {

// Nothing when the file has no such columns. The application's keys say which form of a text leads,
// such as a name in parts or a whole one; the fields that the library looks up in its telephone and
// mail tables are all taken.
Layout layout_of(const FieldMap& map);

// What each of the columns of a file with these headings holds; see find_layout.
FileColumns find_columns(const std::vector<std::string>& headings, short application);

// The layout of a file by its headings; `application` is the number of the program that wrote it, 0
// when that is not known. Throws Failure when there is nothing to compare by; adds a warning when
// no heading is known and the columns are taken by their places.
Layout find_layout(AddressFile& file, short application);

}  // namespace tqsync
