// Files that are read or written as a whole.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tqsync {

// The bytes of a file of at most 256 MB, so that every position fits 32 bits, also after each byte
// has become three. Throws Failure when it is not there, is no file, too large or not readable;
// `kind` names what is to be given instead ("a CSV file").
std::string read_whole_file(const std::string& native_path, const std::string& kind);

// Writes a file and puts it in the place of an old one. False when it cannot be done; then the old
// file stands, or none, and nothing is left beside it.
bool save_whole_file(const std::filesystem::path& target, std::string_view bytes);

}  // namespace tqsync
