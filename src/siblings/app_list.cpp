#include "siblings/app_list.h"

#include "common/text.h"

namespace tq {

AppRead read_app_line(LineReader& lines, AppLine& row) {
  std::string_view line;
  do {
    if (!lines.next_data(line)) return lines.status().ok() ? AppRead::kEnd : AppRead::kBadLine;
  } while (line.empty());
  Tokens tokens(line);
  std::string_view number;
  std::string_view type;
  if (!tokens.next(':', row.label) || !tokens.next(',', number) || !tokens.next(',', type)) {
    return AppRead::kBadLine;
  }
  row.number = decimal16(number);
  row.type = decimal16(type);
  return AppRead::kRow;
}

}  // namespace tq
