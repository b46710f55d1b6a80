// Files in the folders that the library keeps.
#pragma once

#include <filesystem>
#include <string>

namespace tqsync {

// The native path of a file in one of the library's folders (TQ_FOLDER_*). Throws Failure when
// there is no such folder.
std::filesystem::path home_file(short folder, const std::string& name);

// The settings of the home folder, there or not. Throws Failure when no home folder is named.
std::filesystem::path settings_file();

}  // namespace tqsync
