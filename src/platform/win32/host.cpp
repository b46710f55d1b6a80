// The process and its user: native paths, the environment, where things are kept.
#include <windows.h>

#include <algorithm>

#include "platform/names.h"
#include "platform/platform.h"
#include "platform/win32/paths.h"

namespace tq::platform {

using win32::utf8_from_wide;
using win32::wide_from_utf8;

namespace {

// Calls `fill(buffer, room)`, which answers a size, with more and more room until the text fits.
template <class Fill>
std::wstring text_of_unknown_size(Fill fill) {
  std::wstring text(MAX_PATH, L'\0');
  for (;;) {
    const DWORD size = fill(text.data(), static_cast<DWORD>(text.size()));
    const bool fits = size < text.size();
    text.resize(fits ? size : text.size() * 2);
    if (fits) return text;
  }
}

std::string in_library_form(std::wstring_view wide) {
  std::string path;
  return path_from_native(utf8_from_wide(wide), path).ok() ? path : "";
}

// Puts the names of a complete path into the case that they have on disk, as far as they are there.
void match_case(std::wstring& path) {
  std::size_t begin = 3;  // behind `X:\`
  while (begin < path.size()) {
    const std::size_t end = std::min(path.find(L'\\', begin), path.size());
    WIN32_FIND_DATAW entry;
    const HANDLE found = ::FindFirstFileW(path.substr(0, end).c_str(), &entry);
    if (found == INVALID_HANDLE_VALUE) return;
    ::FindClose(found);
    const std::wstring_view name = entry.cFileName;
    path.replace(begin, end - begin, name);
    begin += name.size() + 1;
  }
}

}  // namespace

Status path_from_native(std::string_view native_utf8, std::string& path) {
  path.clear();
  const auto refuse = [&](const char* why) {
    return Status(Code::kInvalid, "path " + std::string(native_utf8) + " " + why);
  };
  const std::wstring native = wide_from_utf8(native_utf8);
  if (native.empty() || native.find(L'\0') != std::wstring::npos) return refuse("is no path");
  const std::wstring complete = text_of_unknown_size([&](wchar_t* text, DWORD room) {
    return ::GetFullPathNameW(native.c_str(), room, text, nullptr);
  });
  std::string converted;
  if (!win32::narrow(complete, converted)) {
    return refuse("holds characters that Shift-JIS does not have");
  }
  ParsedPath parsed;
  if (Status status = parse_path(converted, parsed); !status.ok()) return status;
  if (parsed.names.empty()) parsed.names = "\\";
  path = parsed.share ? "\\" : std::string{parsed.drive, ':'};
  path += parsed.names;
  return {};
}

Status path_to_native(std::string_view path, std::string& native_utf8) {
  native_utf8.clear();
  const win32::WidePath wide(path);
  if (!wide.status().ok()) return wide.status();
  std::wstring native = wide.text();
  if (native[1] == L':')
    match_case(native);  // names of servers and shares have no case of their own
  native_utf8 = utf8_from_wide(native);
  return {};
}

std::string environment(const char* name) {
  const std::wstring wide_name = wide_from_utf8(name);
  return utf8_from_wide(text_of_unknown_size([&](wchar_t* text, DWORD room) {
    return ::GetEnvironmentVariableW(wide_name.c_str(), text, room);
  }));
}

std::string user_data_folder() {
  const std::string base = environment("APPDATA");
  return base.empty() ? "" : in_library_form(wide_from_utf8(base + "\\tqutil"));
}

std::string module_folder() {
  HMODULE module = nullptr;
  const DWORD how =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (!::GetModuleHandleExW(how, reinterpret_cast<const wchar_t*>(&module_folder), &module))
    return "";
  const std::wstring file = text_of_unknown_size(
      [&](wchar_t* text, DWORD room) { return ::GetModuleFileNameW(module, text, room); });
  return in_library_form(file.substr(0, file.find_last_of(L'\\')));
}

}  // namespace tq::platform
