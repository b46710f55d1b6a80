// Native paths: UTF-8 texts in tqsync, std::filesystem's own form where files are touched.
#pragma once

#include <filesystem>
#include <string>

namespace tqsync {

// The path that a UTF-8 text names, whatever the system's code page is.
std::filesystem::path to_path(const std::string& utf8);

// A path as UTF-8 text.
std::string from_path(const std::filesystem::path& path);

// The path from the root on, without "." and "..".
std::string whole_path(const std::string& utf8);

// The last name of a path.
std::string file_name(const std::string& utf8);

}  // namespace tqsync
