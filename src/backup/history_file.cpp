#include "backup/history_file.h"

#include <string>

#include "base/sjis.h"
#include "common/lines.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"

namespace tq {
namespace {

constexpr int kHeaderLines = 5;

Status cut_short(std::string_view path) {
  return {Code::kCorrupt, "the backup history " + std::string(PathFileName(path)) + " is damaged"};
}

// A read error, else a damaged file.
Status end_of(const LineReader& lines, std::string_view path) {
  return lines.status().ok() ? cut_short(path) : lines.status();
}

void read_time(std::string_view line, tBKUP_TIME& time) {
  std::uint16_t* const fields[] = {&time.year, &time.month,  &time.dayOfWeek, &time.day,
                                   &time.hour, &time.minute, &time.second};
  Tokens tokens(line);
  std::string_view token;
  for (std::uint16_t* field : fields) {
    if (!tokens.next(',', token)) return;
    *field = static_cast<std::uint16_t>(decimal(token));
  }
}

tBKUP_FILETIME read_moment(std::string_view line) {
  Tokens tokens(line);
  std::string_view low, high;
  tokens.next(',', low);
  tokens.next(',', high);
  return {static_cast<std::uint32_t>(decimal(low)), static_cast<std::uint32_t>(decimal(high))};
}

// Groups and their files, behind the header.
class GroupReader {
 public:
  GroupReader(LineReader& lines, FileGroups& groups) : lines_(lines), groups_(groups) {}

  // Groups seen, or false when the file ends inside one.
  bool read(std::int32_t& seen) {
    tBKUP_FIELGRP group{};
    std::string_view line;
    for (seen = 0; lines_.next_data(line); ++seen) {
      group = {};
      copy_text(group.id, line);
      if (!lines_.next_data(line)) return false;
      group.type = decimal16(line);
      if (!lines_.next_data(line) || !read_files(group, line)) return false;
    }
    return true;
  }
  // Whether a path did not fit or memory ran out.
  const Status& fault() const { return fault_; }

 private:
  bool read_files(tBKUP_FIELGRP& group, std::string_view count_line) {
    Tokens tokens(count_line);
    std::string_view count, name;
    tokens.next(',', count);
    tokens.next(',', name);
    take_path(group.name, name);
    std::int32_t left = decimal(count);
    if (left > 0 && !groups_.add_group(group)) return out_of_memory();
    for (; left > 0; --left) {
      tBKUP_FILE file{};
      file.type = group.type;
      if (!read_file(file)) return false;
      if (!groups_.add_file(file)) return out_of_memory();
    }
    return true;
  }

  bool read_file(tBKUP_FILE& file) {
    std::string_view line;
    if (!lines_.next_data(line)) return false;
    take_path(file.path, line);
    if (!lines_.next_data(line)) return false;
    take_path(file.backupPath, line);
    for (tBKUP_FILETIME* moment : {&file.created, &file.accessed, &file.written}) {
      if (!lines_.next_data(line)) return false;
      *moment = read_moment(line);
    }
    for (std::uint32_t* number : {&file.attributes, &file.size}) {
      if (!lines_.next_data(line)) return false;
      *number = static_cast<std::uint32_t>(decimal(line));
    }
    if (!lines_.next_data(line)) return false;
    file.fileKind = decimal16(line);
    return true;
  }

  // A path that is cut names another file, so it spoils the history.
  void take_path(char (&to)[TQ_PATH_SIZE], std::string_view line) {
    if (line.size() > kPathMax) fault_ = {Code::kCorrupt, "a path in a backup history is too long"};
    copy_text(to, line);
  }

  bool out_of_memory() {
    fault_ = {Code::kNoMemory, "the groups of a backup do not fit into memory"};
    return false;
  }

  LineReader& lines_;
  FileGroups& groups_;
  Status fault_;
};

void append_line(std::string& text, std::string_view line) {
  text += line;
  text += '\n';
}

// 32-bit words are written with their sign.
std::string number(std::uint32_t word) { return std::to_string(static_cast<std::int32_t>(word)); }

std::string moment(const tBKUP_FILETIME& time) {
  return number(time.low) + "," + number(time.high);
}

void append_header(std::string& text, const tBKUP_INFO& info, std::size_t groups) {
  append_line(text, view(info.id));
  append_line(text, std::to_string(info.kind));
  const tBKUP_TIME& t = info.time;
  std::string time;
  for (const std::uint16_t field : {t.year, t.month, t.dayOfWeek, t.day, t.hour, t.minute}) {
    time += std::to_string(field) + ",";
  }
  append_line(text, time + std::to_string(t.second));
  const std::string_view description = sjis::cut(view(info.info), kInfoMax);
  append_line(text, description.empty() ? " " : description);
  append_line(text, std::to_string(groups));
}

void append_file(std::string& text, const tBKUP_FILE& file) {
  append_line(text, view(file.path));
  append_line(text, view(file.backupPath));
  append_line(text, moment(file.created));
  append_line(text, moment(file.accessed));
  append_line(text, moment(file.written));
  append_line(text, number(file.attributes));
  append_line(text, number(file.size));
  append_line(text, std::to_string(file.fileKind));
}

void append_group(std::string& text, const FileGroups& groups, std::size_t place) {
  const tBKUP_FIELGRP& group = groups[place];
  const std::string_view name = view(group.name);
  append_line(text, view(group.id));
  append_line(text, std::to_string(group.type));
  std::string count = std::to_string(groups.files(place).size());
  if (!name.empty()) count.append(",").append(name);
  append_line(text, count);
  for (const tBKUP_FILE& file : groups.files(place)) append_file(text, file);
}

}  // namespace

Status mGetListInfo(std::string_view path, tBKUP_INFO& info) {
  info = {};
  copy_text(info.historyPath, path);
  LineReader lines;
  if (Status status = lines.open(path); !status.ok()) return status;
  std::string_view line;
  for (int field = 0; field < kHeaderLines; ++field) {
    if (!lines.next_data(line)) return end_of(lines, path);
    if (field == 0) copy_text(info.id, line);
    if (field == 1) info.kind = decimal16(line);
    if (field == 2) read_time(line, info.time);
    if (field == 3) copy_text(info.info, sjis::cut(line, kInfoMax));
    if (field == 4) info.groupCnt = decimal(line);
  }
  return {};
}

Status mGetFileGrpListS(std::string_view path, FileGroups& groups) {
  groups.clear();
  LineReader lines;
  if (Status status = lines.open(path); !status.ok()) return status;
  std::string_view line;
  for (int field = 0; field < kHeaderLines; ++field) {
    if (!lines.next_data(line)) return end_of(lines, path);
  }
  const std::int32_t announced = decimal(line);
  std::int32_t seen = 0;
  GroupReader reader(lines, groups);
  const bool whole = reader.read(seen);
  if (!reader.fault().ok()) return reader.fault();
  return whole && lines.status().ok() && seen >= announced ? Status() : end_of(lines, path);
}

Status mSaveNowHistory(const tBKUP_INFO& info, const FileGroups& groups) {
  std::string text;
  append_header(text, info, groups.size());
  for (std::size_t group = 0; group < groups.size(); ++group) append_group(text, groups, group);
  const std::string_view path = view(info.historyPath);
  if (Status status = replace_content(path, text); !status.ok()) return status;
  return platform::sync_folder(PathFolder(path));
}

}  // namespace tq
