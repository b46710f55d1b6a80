// The home folder of the built-in siblings and its settings file.
#pragma once

#include <string>
#include <string_view>

namespace tq {

// Without a trailing backslash: what TQUTIL_HOME names, else the per-user data folder; empty when
// there is neither.
std::string home_folder();

// The folder that `tqutil.ini` in the home folder gives for `key` in its section [folders], else
// `<home>\<fallback>`; made when it is missing. A relative value counts from the home folder; a
// native absolute path of a Linux system (`/srv/x`) is taken too. With a trailing backslash; empty
// when it cannot be made or does not fit a path buffer.
std::string configured_folder(std::string_view key, std::string_view fallback);

// The folder of files that ship with the library and that people may replace: what `tqutil.ini`
// names for `key`; else `<home>\<name>` when something in it matches `wanted` (a file name, `*` and
// `?` allowed); else the shipped one, `share\tqutil\<name>`, found beside or above the library's
// own folder; else `<home>\<name>`. Nothing is made. With a trailing backslash; empty when there is
// none.
std::string definition_folder(std::string_view key, std::string_view name, std::string_view wanted);

// A text of section [texts] of `tqutil.ini`.
std::string configured_text(std::string_view key, std::string_view fallback);

}  // namespace tq
