#include "siblings/field_file.h"

#include "common/text.h"

namespace tq {
namespace {

constexpr std::string_view kMark = "FLD:";

// The text up to the next ',', which is taken off `rest` with it; false when there is none.
bool take(std::string_view& rest, std::string_view& text) {
  const std::size_t comma = rest.find(',');
  if (comma == std::string_view::npos) return false;
  text = rest.substr(0, comma);
  rest.remove_prefix(comma + 1);
  return true;
}

// A field id or a place: nothing but digits, 0 to 32767.
bool parse_number(std::string_view text, short& number) {
  constexpr std::int32_t kMax = 32767;
  if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) return false;
  const std::int32_t value = decimal(text);
  number = static_cast<short>(value);
  return value <= kMax;
}

}  // namespace

bool FieldFile::open(std::string_view path) {
  header_ = {};
  return lines_.open(path).ok() && read_header();
}

bool FieldFile::read_header() {
  std::string_view line;
  if (!lines_.next_data(line) || !line.starts_with(kMark)) return false;
  line.remove_prefix(kMark.size());
  std::string_view number;
  if (!take(line, number) || !parse_number(number, header_.number) ||
      !parse_number(line, header_.number2)) {
    return false;
  }
  if (!lines_.next_data(line) || line.empty()) return false;
  copy_text(header_.title, line);
  if (lines_.next_data(line)) copy_text(header_.comment, line);
  return true;
}

bool FieldFile::next(tFLDCOM_FLDREC& record) {
  std::string_view line;
  while (lines_.next_data(line)) {
    std::string_view fldId;
    std::string_view dataId;
    short field = 0;
    short place = 0;
    if (!take(line, fldId) || !take(line, dataId)) continue;
    if (!parse_number(fldId, field) || !parse_number(dataId, place)) continue;
    record = {};
    record.fldId = field;
    record.dataId = place;
    copy_text(record.heading, line);
    return true;
  }
  return false;
}

}  // namespace tq
