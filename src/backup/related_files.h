// The files that make up a group's data set, as `fldcom` lists them.
#pragma once

#include <string>
#include <vector>

namespace tq {

// Given a group's type and its first file. False when they cannot be told.
bool related_files(short type, const char* first_file, std::vector<std::string>& paths);

}  // namespace tq
