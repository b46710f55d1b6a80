// Lines of the application registry, "APPINFO.DAT": `label:number,type`.
#pragma once

#include <string_view>

#include "common/lines.h"

namespace tq {

inline constexpr std::string_view kAppListFile = "APPINFO.DAT";

struct AppLine {
  std::string_view label;  // good until the next line is read
  short number = 0;
  short type = 0;
};

enum class AppRead { kRow, kEnd, kBadLine };

// The next row of the registry; comment lines and empty lines are passed over. A line without
// label, number or type is bad; a read error too.
AppRead read_app_line(LineReader& lines, AppLine& row);

}  // namespace tq
