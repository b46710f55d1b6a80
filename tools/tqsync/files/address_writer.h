// Address files written: comma-separated text as csv.h reads it, in the encoding of other programs.
#pragma once

#include <string>
#include <vector>

#include "files/encoding.h"

namespace tqsync {

// Writes headings and rows to a native path, in place of what is there. A text with characters that
// Shift-JIS does not have is written in UTF-8 all the same; the encoding that was used comes back.
// UTF-8 gets a byte order mark, by which spreadsheets know it. Throws Failure when the file cannot
// be written; then what was there stands.
Encoding write_address_file(const std::string& native_path,
                            const std::vector<std::string>& headings,
                            const std::vector<std::vector<std::string>>& rows, Encoding encoding);

}  // namespace tqsync
