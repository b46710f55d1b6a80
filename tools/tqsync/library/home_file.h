// Files in the folders that the library keeps.
#pragma once

#include <filesystem>
#include <string>

namespace tqsync {

// The native path of a file in one of the library's folders (TQ_FOLDER_*). Throws Failure when
// there is no such folder.
std::filesystem::path home_file(short folder, const std::string& name);

}  // namespace tqsync
