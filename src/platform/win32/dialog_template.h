// A dialog laid out in memory: the library needs no resources of its own, so the same code serves
// the DLL and programs that link it statically.
#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

namespace tq::platform::win32 {

// Sizes and places are dialog units, which grow with the font and so with the screen's resolution.
class DialogTemplate {
 public:
  // The classes that dialogs know by number, and the progress bar of the common controls.
  enum Class : WORD { kButton = 0x0080, kEdit = 0x0081, kStatic = 0x0082, kProgressBar = 0 };

  // A captioned dialog in 9 point ＭＳ Ｐゴシック.
  DialogTemplate(std::wstring_view caption, short width, short height);

  // Adds a visible control; `style` comes on top of that.
  void add(Class control, WORD id, std::wstring_view text, DWORD style, short x, short y,
           short width, short height);

  // Good until the next `add`.
  const DLGTEMPLATE* get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

 private:
  void put(DWORD value);
  void put_text(std::wstring_view text);

  std::vector<WORD> words_;
};

// The dialogs of one thread are sharp on every screen while this lives, whatever the process said.
class DpiAware {
 public:
  DpiAware();
  ~DpiAware();
  DpiAware(const DpiAware&) = delete;
  DpiAware& operator=(const DpiAware&) = delete;

 private:
  void* before_ = nullptr;
};

// The module that this code is in: the DLL, or the program that links it statically.
HINSTANCE this_module();

}  // namespace tq::platform::win32
