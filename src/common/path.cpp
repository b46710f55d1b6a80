#include "common/path.h"

#include <cstdio>
#include <vector>

#include "base/sjis.h"
#include "platform/platform.h"

namespace tq {

void AddBackslash(std::string& path) {
  if (!path.empty() && !sjis::ends_with(path, '\\')) path += '\\';
}

void RemoveBackslash(std::string& path) {
  if (sjis::ends_with(path, '\\')) path.pop_back();
  if (path.size() == 2 && path[1] == ':' && !sjis::is_lead(path[0])) path += '\\';
}

short MakeFolderTree(std::string_view path) {
  std::string folder(path);
  RemoveBackslash(folder);
  if (folder.size() < 3) return 1;
  if (folder.size() == 3) return 0;
  if (platform::exists(folder)) return platform::is_folder(folder) ? 0 : 1;
  for (std::size_t pos = 0; pos < folder.size(); pos += sjis::char_size(folder, pos)) {
    if (folder[pos] != '\\' || pos < 3) continue;
    // The earlier pieces usually exist; whether the last one does is looked at below.
    static_cast<void>(platform::create_folder(std::string_view(folder).substr(0, pos)));
  }
  static_cast<void>(platform::create_folder(folder));
  return platform::is_folder(folder) ? 0 : 1;
}

std::string_view PathFileName(std::string_view path) {
  const std::size_t separator = sjis::find_last(path, ":\\/");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::string PathFolder(std::string_view path) {
  std::string folder(path.substr(0, path.size() - PathFileName(path).size()));
  RemoveBackslash(folder);
  return folder;
}

std::size_t PathExtension(std::string_view path) {
  const std::string_view name = PathFileName(path);
  const std::size_t dot = sjis::find_last(name, ".");
  return dot == std::string_view::npos ? path.size() : path.size() - name.size() + dot;
}

bool lies_in(std::string_view path, std::string_view folder) {
  const std::string_view name = PathFileName(path);
  if (name.empty() || name == "." || name == ".." || name.size() == path.size()) return false;
  std::string wanted(folder);
  AddBackslash(wanted);
  const std::string_view has = path.substr(0, path.size() - name.size());
  if (has.size() != wanted.size()) return false;
  for (std::size_t pos = 0; pos < has.size();) {
    const std::size_t step = sjis::char_size(has, pos);
    const bool same = step == 1 ? sjis::upper_ascii(has[pos]) == sjis::upper_ascii(wanted[pos])
                                : has.substr(pos, 2) == std::string_view(wanted).substr(pos, 2);
    if (!same) return false;
    pos += step;
  }
  return true;
}

void delete_matching(std::string_view pattern) {
  std::vector<platform::FolderEntry> entries;
  if (!platform::list_folder(pattern, entries).ok()) return;
  std::string folder = PathFolder(pattern);
  AddBackslash(folder);
  for (const platform::FolderEntry& entry : entries) {
    if (entry.folder) continue;
    static_cast<void>(platform::delete_file(folder + entry.name));
  }
}

Status make_unique_file(std::string_view folder, std::string_view prefix, std::string& path) {
  constexpr int kTries = 3;
  constexpr unsigned kPauseMs = 10;
  Status status;
  for (int tried = 0; tried < kTries; ++tried) {
    status = platform::unique_file(folder, prefix, path);
    if (status.ok()) return status;
    platform::sleep_ms(kPauseMs);
  }
  return status;
}

bool count_free_name(std::string_view stem, int& number, std::string& path) {
  constexpr int kNumbers = 99999;
  while (number < kNumbers) {
    char tail[16];
    std::snprintf(tail, sizeof tail, "%05d.tmp", number++);
    path = std::string(stem) + tail;
    if (!platform::exists(path)) return true;
  }
  path.clear();
  return false;
}

bool count_unique_name(std::string_view folder, std::string_view prefix, std::string& path) {
  std::string stem(folder);
  AddBackslash(stem);
  stem += prefix;
  int number = 0;
  return count_free_name(stem, number, path);
}

namespace {

Status write_whole(std::string_view path, std::string_view bytes) {
  platform::File file;
  Status status = file.open(path, platform::OpenMode::kCreate);
  if (status.ok()) status = file.write(bytes);
  if (status.ok()) status = file.sync();
  Status closed = file.close();
  return status.ok() ? closed : status;
}

}  // namespace

Status replace_content(std::string_view path, std::string_view bytes) {
  std::string temporary;
  Status status = platform::unique_file(PathFolder(path), "~rp", temporary);
  if (!status.ok()) return status;
  status = write_whole(temporary, bytes);
  if (status.ok()) status = platform::replace_file(temporary, path);
  if (!status.ok()) static_cast<void>(platform::delete_file(temporary));
  return status;
}

}  // namespace tq
