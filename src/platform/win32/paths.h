// Library paths as the wide functions take them.
#pragma once

#include <string>
#include <string_view>

#include "base/status.h"

namespace tq::platform::win32 {

// A library path, complete and converted. Nothing in it is left for Windows to interpret: it was
// taken apart by `parse_path`, and longer ones than the old limit get the prefix that lifts it.
class WidePath {
 public:
  explicit WidePath(std::string_view path);

  const Status& status() const { return status_; }
  const wchar_t* c_str() const { return text_.c_str(); }
  // Without that prefix.
  const std::wstring& text() const { return plain_; }

 private:
  std::wstring plain_;
  std::wstring text_;
  Status status_;
};

std::wstring wide(std::string_view sjis);
// False when a character has no Shift-JIS form.
bool narrow(std::wstring_view wide, std::string& sjis);

// UTF-8 as hosts speak it; malformed text becomes empty.
std::wstring wide_from_utf8(std::string_view utf8);
std::string utf8_from_wide(std::wstring_view wide);

}  // namespace tq::platform::win32
