// Paths and patterns of any bytes: what a path is taken apart into leads nowhere else, means the
// same when it is taken apart again, and every name in it finds itself.
#include "platform/names.h"

#include <string>
#include <string_view>

#include "base/sjis.h"
#include "target.h"

namespace {

using tq::platform::ParsedPath;

void check_names(std::string_view names) {
  while (!names.empty()) {
    const std::size_t last = tq::sjis::find_last(names, "\\");
    require(last != std::string_view::npos);
    const std::string_view name = names.substr(last + 1);
    require(tq::platform::is_plain_name(name));
    require(tq::platform::Pattern(name).matches(tq::platform::upper_name(name)));
    names = names.substr(0, last);
  }
}

void check_path(std::string_view path) {
  ParsedPath parsed;
  if (!tq::platform::parse_path(path, parsed).ok()) {
    require(parsed.names.empty());
    return;
  }
  require(parsed.drive != 0 || parsed.share || path.starts_with('\\') || path.starts_with('/'));
  check_names(parsed.names);
  std::string plain = parsed.share ? "\\" : "";
  if (parsed.drive != 0) plain = {parsed.drive, ':'};
  plain += parsed.names.empty() ? "\\" : parsed.names;
  ParsedPath again;
  require(tq::platform::parse_path(plain, again).ok());
  require(again.names == parsed.names && again.share == parsed.share);
}

}  // namespace

void try_input(std::string_view input) {
  check_path("Z:\\" + std::string(input));
  check_path("\\\\" + std::string(input));
  const tq::platform::Pattern pattern(input.substr(0, input.size() / 2));
  const std::string_view name = input.substr(input.size() / 2);
  const std::string upper = tq::platform::upper_name(name);
  require(upper.size() == name.size() && tq::platform::upper_name(upper) == upper);
  require(pattern.matches(name) == pattern.matches(upper));
}
