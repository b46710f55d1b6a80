#include "platform/win32/dialog_template.h"

namespace tq::platform::win32 {
namespace {

constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE | DS_MODALFRAME |
                               DS_CENTER | DS_SETFONT | DS_NOFAILCREATE;
constexpr WORD kPointSize = 9;
constexpr const wchar_t* kFont = L"ＭＳ Ｐゴシック";
constexpr WORD kByNumber = 0xFFFF;
// Place of the number of controls among the words: style, extended style, then this.
constexpr std::size_t kCountAt = 4;

// SetThreadDpiAwarenessContext, from Windows 10 on.
using SetContext = void*(WINAPI*)(void*);
constexpr INT_PTR kPerMonitor = -4;  // DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2

SetContext set_context() {
  const HMODULE user = ::GetModuleHandleW(L"user32.dll");
  if (user == nullptr) return nullptr;
  return reinterpret_cast<SetContext>(
      reinterpret_cast<void*>(::GetProcAddress(user, "SetThreadDpiAwarenessContext")));
}

}  // namespace

DialogTemplate::DialogTemplate(std::wstring_view caption, short width, short height) {
  put(kDialogStyle);
  put(0);
  words_.push_back(0);
  for (const short place : {short{0}, short{0}, width, height})
    words_.push_back(static_cast<WORD>(place));
  words_.push_back(0);  // no menu
  words_.push_back(0);  // the usual window class
  put_text(caption);
  words_.push_back(kPointSize);
  put_text(kFont);
}

void DialogTemplate::add(Class control, WORD id, std::wstring_view text, DWORD style, short x,
                         short y, short width, short height) {
  if (words_.size() % 2 != 0) words_.push_back(0);  // controls begin at four-byte boundaries
  put(style | WS_CHILD | WS_VISIBLE);
  put(0);
  for (const short place : {x, y, width, height}) words_.push_back(static_cast<WORD>(place));
  words_.push_back(id);
  if (control == kProgressBar) {
    put_text(L"msctls_progress32");
  } else {
    words_.push_back(kByNumber);
    words_.push_back(control);
  }
  put_text(text);
  words_.push_back(0);  // no creation data
  ++words_[kCountAt];
}

void DialogTemplate::put(DWORD value) {
  words_.push_back(LOWORD(value));
  words_.push_back(HIWORD(value));
}

void DialogTemplate::put_text(std::wstring_view text) {
  for (const wchar_t unit : text) words_.push_back(static_cast<WORD>(unit));
  words_.push_back(0);
}

DpiAware::DpiAware() {
  if (const SetContext set = set_context()) before_ = set(reinterpret_cast<void*>(kPerMonitor));
}

DpiAware::~DpiAware() {
  if (before_ == nullptr) return;
  if (const SetContext set = set_context()) set(before_);
}

HINSTANCE this_module() {
  HMODULE module = nullptr;
  ::GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<const wchar_t*>(&this_module), &module);
  return module;
}

}  // namespace tq::platform::win32
