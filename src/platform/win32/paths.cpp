#include "platform/win32/paths.h"

#include <windows.h>

#include "base/cp932.h"
#include "platform/names.h"
#include "platform/platform.h"

namespace tq::platform::win32 {
namespace {

// Folders must leave room for an 8.3 name, so theirs is the shorter limit; it serves for all.
constexpr std::size_t kOldLimit = MAX_PATH - 12;

// Drive and colon, which a path without a drive gets from the current folder.
std::wstring drive_of(char letter) {
  if (letter != 0) return {static_cast<wchar_t>(letter), L':'};
  std::string current;
  const bool has_drive = path_from_native(".", current).ok() && current[1] == ':';
  return has_drive ? wide(current.substr(0, 2)) : L"C:";
}

}  // namespace

WidePath::WidePath(std::string_view path) {
  ParsedPath parsed;
  status_ = parse_path(path, parsed);
  if (!status_.ok()) return;
  const std::wstring names = wide(parsed.names);
  if (parsed.share) {
    plain_ = L"\\" + names;
    text_ = plain_.size() < kOldLimit ? plain_ : L"\\\\?\\UNC" + names;
    return;
  }
  plain_ = drive_of(parsed.drive) + (names.empty() ? L"\\" : names);
  text_ = plain_.size() < kOldLimit ? plain_ : L"\\\\?\\" + plain_;
}

std::wstring wide(std::string_view sjis) {
  const std::u16string units = cp932::to_utf16(sjis);
  return {units.begin(), units.end()};
}

bool narrow(std::wstring_view wide, std::string& sjis) {
  return cp932::from_utf16(std::u16string(wide.begin(), wide.end()), sjis);
}

std::wstring wide_from_utf8(std::string_view utf8) {
  const auto size = static_cast<int>(utf8.size());
  const auto convert = [&](wchar_t* out, int room) {
    return ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), size, out, room);
  };
  std::wstring text(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
  convert(text.data(), static_cast<int>(text.size()));
  return text;
}

std::string utf8_from_wide(std::wstring_view wide) {
  const auto size = static_cast<int>(wide.size());
  const auto convert = [&](char* out, int room) {
    return ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, out, room, nullptr, nullptr);
  };
  std::string text(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(text.data(), static_cast<int>(text.size()));
  return text;
}

}  // namespace tq::platform::win32
