// Folder and file names in Shift-JIS Windows paths. The second half of a two-byte character is
// never taken for a separator or a dot.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/status.h"

namespace tq {

// Longest path that a 262-byte buffer holds.
inline constexpr std::size_t kPathMax = 261;

// Appends `\` unless the text is empty or ends in a single-byte one.
void AddBackslash(std::string& path);

// Removes one trailing single-byte `\`; a bare drive ("X:") gets it back.
void RemoveBackslash(std::string& path);

// Creates a folder with all missing parents: 0 when the folder exists afterwards, 1 otherwise. A
// drive root succeeds without a look.
short MakeFolderTree(std::string_view path);

// The part after the last `:`, `\` or `/`.
std::string_view PathFileName(std::string_view path);

// The part before the file name, without its trailing `\` (a drive root keeps it).
std::string PathFolder(std::string_view path);

// Within the file-name part, the position of the last `.` in the path, or the path's end when there
// is none.
std::size_t PathExtension(std::string_view path);

// Whether the file that `path` names lies directly in `folder` (trailing `\` or not; ASCII case
// ignored). A path that climbs ("..") does not.
bool lies_in(std::string_view path, std::string_view folder);

// Deletes every file that matches a pattern such as `Z:\work\*.tmp`; folders stay and failures are
// ignored.
void delete_matching(std::string_view pattern);

// A new, unique, empty file `<prefix>….tmp` in the folder: up to three tries, 10 ms apart.
Status make_unique_file(std::string_view folder, std::string_view prefix, std::string& path);

// The first of "<stem><5 digits>.tmp", numbers `number` to 99998, under which nothing exists;
// `number` becomes the one after it. False with an empty path when all are taken. Creates nothing.
bool count_free_name(std::string_view stem, int& number, std::string& path);

// The same for "<folder>\<prefix><5 digits>.tmp" from number 0 on.
bool count_unique_name(std::string_view folder, std::string_view prefix, std::string& path);

// The target's old content or all of `bytes`, never half: a temporary file beside it is written,
// brought to the medium and renamed over it. On failure the target is as before and the temporary
// file is gone.
Status replace_content(std::string_view path, std::string_view bytes);

}  // namespace tq
