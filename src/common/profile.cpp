#include "common/profile.h"

#include "base/sjis.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {
namespace {

// A settings file holds a few dozen lines; what is larger is not one.
constexpr std::uint64_t kMaxBytes = 1 << 20;

std::string_view trim(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

bool same_name(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t pos = 0; pos < a.size(); pos += sjis::char_size(a, pos)) {
    if (sjis::char_size(a, pos) == 2) {
      if (a.substr(pos, 2) != b.substr(pos, 2)) return false;
    } else if (sjis::upper_ascii(a[pos]) != sjis::upper_ascii(b[pos])) {
      return false;
    }
  }
  return true;
}

bool is_section(std::string_view line) {
  line = trim(line);
  return !line.empty() && line.front() == '[';
}

std::string_view section_name(std::string_view line) {
  line = trim(line).substr(1);
  return trim(line.substr(0, line.find(']')));
}

// The key of a `key=value` line; empty for every other line.
std::string_view key_of(std::string_view line) {
  line = trim(line);
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos || line.front() == ';' || line.front() == '[') return {};
  return trim(line.substr(0, equals));
}

std::string_view value_of(std::string_view line) {
  std::string_view value = trim(line.substr(line.find('=') + 1));
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
      value.back() == value.front()) {
    value = value.substr(1, value.size() - 2);
  }
  return value;
}

Status read_whole(std::string_view path, std::string& bytes) {
  platform::File file;
  Status status = file.open(path, platform::OpenMode::kReadShared);
  std::uint64_t size = 0;
  if (status.ok()) status = file.size(size);
  if (status.ok() && size > kMaxBytes) status = {Code::kCorrupt, "settings file is too large"};
  if (!status.ok()) return status;
  bytes.resize(static_cast<std::size_t>(size));
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    std::size_t got = 0;
    status = file.read(bytes.data() + filled, bytes.size() - filled, got);
    if (!status.ok()) return status;
    if (got == 0) break;
    filled += got;
  }
  bytes.resize(filled);
  return file.close();
}

}  // namespace

Status Profile::load(std::string_view path) {
  path_ = path;
  lines_.clear();
  std::string bytes;
  Status status = read_whole(path, bytes);
  if (status.code() == Code::kNotFound) return {};
  if (!status.ok()) return status;
  line_end_ = bytes.empty() || bytes.find("\r\n") != std::string::npos ? "\r\n" : "\n";
  std::string_view rest = bytes;
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines_.emplace_back(line);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  }
  return {};
}

const std::string* Profile::find(std::string_view section, std::string_view key) const {
  bool inside = false;
  for (const std::string& line : lines_) {
    if (is_section(line)) {
      inside = same_name(section_name(line), section);
    } else if (inside && same_name(key_of(line), key)) {
      return &line;
    }
  }
  return nullptr;
}

std::string Profile::text(std::string_view section, std::string_view key,
                          std::string_view fallback) const {
  const std::string* line = find(section, key);
  return std::string(line == nullptr ? fallback : value_of(*line));
}

std::int32_t Profile::number(std::string_view section, std::string_view key,
                             std::int32_t fallback) const {
  const std::string* line = find(section, key);
  return line == nullptr ? fallback : decimal(value_of(*line));
}

Status Profile::set(std::string_view section, std::string_view key, std::string_view value) {
  if (value.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos) {
    return {Code::kInvalid, "a settings value cannot hold a line break"};
  }
  const std::string line = std::string(key) + "=" + std::string(value);
  if (const std::string* old = find(section, key)) {
    lines_[static_cast<std::size_t>(old - lines_.data())] = line;
    return {};
  }
  std::size_t place = lines_.size();
  bool inside = false;
  bool known = false;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (is_section(lines_[i])) {
      inside = !known && same_name(section_name(lines_[i]), section);
      known = known || inside;
    }
    if (inside && !trim(lines_[i]).empty()) place = i + 1;
  }
  if (!known) {
    lines_.push_back("[" + std::string(section) + "]");
    place = lines_.size();
  }
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place), line);
  return {};
}

Status Profile::save() const {
  std::string bytes;
  for (const std::string& line : lines_) bytes += line + line_end_;
  return replace_content(path_, bytes);
}

}  // namespace tq
