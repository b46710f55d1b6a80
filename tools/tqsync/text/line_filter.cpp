#include "text/line_filter.h"

#include <algorithm>
#include <cstdint>

#include "failure.h"
#include "text/library_text.h"
#include "text/unicode.h"

namespace tqsync {
namespace {

// The library counts in 32 bits, and a result may be five times as long as its text.
constexpr std::size_t kMostBytes = std::size_t{INT32_MAX} / 16;

}  // namespace

std::string LineFilter::feed(std::string_view bytes) {
  const std::size_t end = bytes.rfind('\n');
  if (end == std::string_view::npos) {
    unfinished_ += bytes;
    return "";
  }
  unfinished_ += bytes.substr(0, end + 1);
  std::string out = convert_lines(unfinished_);
  unfinished_ = bytes.substr(end + 1);
  return out;
}

std::string LineFilter::finish() {
  std::string out = convert_lines(unfinished_);
  unfinished_.clear();
  return out;
}

std::string LineFilter::convert_lines(std::string_view lines) {
  std::string out;
  if (at_start_ && !shift_jis_ && lines.starts_with(kByteOrderMark)) {
    out = kByteOrderMark;
    lines.remove_prefix(kByteOrderMark.size());
  }
  at_start_ = at_start_ && lines.empty();
  if (scope_ != Scope::kManyLines || !convert_at_once(lines, out)) convert_each(lines, out);
  return out;
}

// False, with `out` as it was, when one of the lines cannot be converted.
bool LineFilter::convert_at_once(std::string_view lines, std::string& out) {
  const std::size_t before = out.size();
  try {
    convert_text("lines", lines, out);
  } catch (const Failure&) {
    out.resize(before);
    return false;
  }
  lines_ += static_cast<std::size_t>(std::ranges::count(lines, '\n'));
  return true;
}

void LineFilter::convert_each(std::string_view lines, std::string& out) {
  while (!lines.empty()) {
    const std::size_t size = std::min(lines.find('\n'), lines.size() - 1) + 1;
    const std::string_view whole = lines.substr(0, size);
    std::string_view text = whole.substr(0, whole.ends_with('\n') ? size - 1 : size);
    if (text.size() < size && text.ends_with('\r')) text.remove_suffix(1);
    lines.remove_prefix(size);
    const std::size_t before = out.size();
    try {
      convert_text("line " + std::to_string(++lines_), text, out);
    } catch (const Failure& failure) {
      ++faults_;
      report_(failure.what());
      out.resize(before);
      out += text;
    }
    out += whole.substr(text.size());
  }
}

// Zero bytes end a text for the library, so what stands between them is converted piece by piece.
void LineFilter::convert_text(const std::string& what, std::string_view text,
                              std::string& out) const {
  if (text.size() > kMostBytes) throw Failure(what + ": the line is too long");
  while (true) {
    const std::size_t end = std::min(text.find('\0'), text.size());
    out += convert_piece(what, text.substr(0, end));
    if (end == text.size()) return;
    out += '\0';
    text.remove_prefix(end + 1);
  }
}

std::string LineFilter::convert_piece(const std::string& what, std::string_view text) const {
  if (shift_jis_) return convert_(std::string(text));
  std::string utf8 = from_sjis(convert_(to_sjis(what, text)));
  if (utf8.find(kReplacement) != std::string::npos) {
    throw Failure(what + ": taking out bytes would tear a character apart");
  }
  return utf8;
}

}  // namespace tqsync
