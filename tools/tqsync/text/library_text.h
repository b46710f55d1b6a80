// Texts on their way into the library and out of it: tqsync speaks UTF-8, the library Shift-JIS.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tqsync {

// A text for the library. Throws Failure, which names `what` and the character, when Shift-JIS does
// not have it.
std::string to_sjis(const std::string& what, std::string_view utf8);
// The same for texts that people read: such a character becomes "?".
std::string to_sjis_or_mark(std::string_view utf8);
// At most 700 MB, so that three bytes for each can be counted.
std::string from_sjis(std::string_view sjis);

// One of the library's text functions (`tqStrToZen` and its kind) over a text in UTF-8. What
// Shift-JIS does not have stays as it is.
using TextFunction = std::int32_t (*)(const char* from, char* to);
std::string convert_text(TextFunction function, std::string_view utf8);

// Paths: library form <-> the system's own, in UTF-8. to_library_path throws Failure for a path
// that has no library form.
std::string to_library_path(const std::string& native);
std::string to_native_path(const std::string& path);  // the path itself when it has no native form

}  // namespace tqsync
