// The user at a desktop: the library's dialogs.
#include "platform/dialogs.h"

#include <windows.h>
// Behind windows.h, which they need.
#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>

#include "platform/platform.h"
#include "platform/win32/dialog_template.h"
#include "platform/win32/paths.h"

namespace tq::platform {
namespace {

using win32::DialogTemplate;
using win32::wide;

constexpr WORD kNoId = 0xFFFF;

// A text for a static control: '&' is a letter there, not an access key.
constexpr DWORD kPlainText = SS_NOPREFIX;

HWND owner_window() { return ::GetActiveWindow(); }

// A line feed alone is no line end to the controls.
std::wstring wide_lines(std::string_view sjis) {
  std::wstring text;
  for (const wchar_t unit : wide(sjis)) {
    if (unit == L'\n') text += L'\r';
    text += unit;
  }
  return text;
}

// --- Progress
// --------------------------------------------------------------------------------------

constexpr int kProgressGroup = 1001;
constexpr int kProgressFile = 1002;
constexpr int kProgressBar = 1003;

class ProgressDialog : public Progress {
 public:
  ProgressDialog(std::string_view caption, std::string_view heading, bool can_cancel);
  ~ProgressDialog() override;
  ProgressDialog(const ProgressDialog&) = delete;
  ProgressDialog& operator=(const ProgressDialog&) = delete;

  bool is_open() const { return window_ != nullptr; }
  void set_group(std::string_view text) override { set_line(kProgressGroup, text); }
  void set_file(std::string_view text) override { set_line(kProgressFile, text); }
  void set_percent(int percent) override {
    ::SendDlgItemMessageW(window_, kProgressBar, PBM_SETPOS,
                          static_cast<WPARAM>(std::clamp(percent, 0, 100)), 0);
    pump();
  }
  bool cancelled() override {
    pump();
    return cancelled_;
  }
  void resume() override { cancelled_ = false; }

 private:
  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void set_line(int control, std::string_view text) {
    ::SetDlgItemTextW(window_, control, wide(text).c_str());
    pump();
  }
  // The thread is busy copying, so the dialog lives by what is handed on here.
  void pump();

  win32::DpiAware dpi_aware_;
  HWND owner_ = owner_window();
  HWND window_ = nullptr;
  bool can_cancel_;
  bool cancelled_ = false;
};

ProgressDialog::ProgressDialog(std::string_view caption, std::string_view heading, bool can_cancel)
    : can_cancel_(can_cancel) {
  const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_PROGRESS_CLASS};
  ::InitCommonControlsEx(&controls);
  constexpr short kWidth = 260;
  DialogTemplate layout(wide(caption), kWidth, 88);
  layout.add(DialogTemplate::kStatic, kNoId, wide(heading), kPlainText, 8, 7, kWidth - 16, 10);
  layout.add(DialogTemplate::kStatic, kProgressGroup, L"", kPlainText, 8, 21, kWidth - 16, 10);
  layout.add(DialogTemplate::kStatic, kProgressFile, L"", kPlainText | SS_PATHELLIPSIS, 8, 34,
             kWidth - 16, 10);
  layout.add(DialogTemplate::kProgressBar, kProgressBar, L"", 0, 8, 48, kWidth - 16, 11);
  layout.add(DialogTemplate::kButton, IDCANCEL, L"キャンセル", WS_TABSTOP | BS_PUSHBUTTON,
             kWidth / 2 - 28, 67, 56, 14);
  window_ = ::CreateDialogIndirectParamW(win32::this_module(), layout.get(), owner_, procedure,
                                         reinterpret_cast<LPARAM>(this));
  if (window_ == nullptr) return;
  if (owner_ != nullptr) ::EnableWindow(owner_, FALSE);
  if (!can_cancel) ::EnableWindow(::GetDlgItem(window_, IDCANCEL), FALSE);
  pump();
}

ProgressDialog::~ProgressDialog() {
  if (window_ == nullptr) return;
  // The owner first: a disabled one would hand the focus to another program.
  if (owner_ != nullptr) ::EnableWindow(owner_, TRUE);
  ::DestroyWindow(window_);
}

INT_PTR CALLBACK ProgressDialog::procedure(HWND window, UINT message, WPARAM wparam,
                                           LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(window, DWLP_USER, lparam);
    return TRUE;
  }
  if (message != WM_COMMAND || LOWORD(wparam) != IDCANCEL) return FALSE;
  // Escape and the closing box come as IDCANCEL too, also while the button is disabled.
  auto* self = reinterpret_cast<ProgressDialog*>(::GetWindowLongPtrW(window, DWLP_USER));
  self->cancelled_ = self->can_cancel_;
  return TRUE;
}

void ProgressDialog::pump() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) {  // the application's own loop must see it
      ::PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    if (::IsDialogMessageW(window_, &message) != 0) continue;
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

// --- Missing folder
// ----------------------------------------------------------------------------------

constexpr int kRecreateChoice = 1010;
constexpr int kOtherChoice = 1011;
constexpr int kFolderEdit = 1012;
constexpr int kBrowse = 1013;

struct MissingFolderDialog {
  std::string chosen;

  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  static void browse(HWND window);
  bool take(HWND window);
};

// The edit field and its browser serve the second choice only.
void follow_choice(HWND window) {
  const BOOL other = ::IsDlgButtonChecked(window, kOtherChoice) == BST_CHECKED;
  ::EnableWindow(::GetDlgItem(window, kFolderEdit), other);
  ::EnableWindow(::GetDlgItem(window, kBrowse), other);
}

void MissingFolderDialog::browse(HWND window) {
  const bool com = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  BROWSEINFOW info{};
  info.hwndOwner = window;
  info.lpszTitle = L"戻し先のフォルダを選んでください.";
  info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  if (PIDLIST_ABSOLUTE picked = ::SHBrowseForFolderW(&info)) {
    wchar_t path[MAX_PATH] = {};
    if (::SHGetPathFromIDListW(picked, path) != 0) ::SetDlgItemTextW(window, kFolderEdit, path);
    ::CoTaskMemFree(picked);
  }
  if (com) ::CoUninitialize();
}

// The folder of the edit field; false when it is no usable name, and the dialog stays.
bool MissingFolderDialog::take(HWND window) {
  wchar_t text[1024] = {};
  ::GetDlgItemTextW(window, kFolderEdit, text, static_cast<int>(std::size(text)));
  if (text[0] != L'\0' && path_from_native(win32::utf8_from_wide(text), chosen).ok()) return true;
  ::MessageBeep(MB_ICONWARNING);
  ::SetFocus(::GetDlgItem(window, kFolderEdit));
  return false;
}

INT_PTR CALLBACK MissingFolderDialog::procedure(HWND window, UINT message, WPARAM wparam,
                                                LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(window, DWLP_USER, lparam);
    ::CheckRadioButton(window, kRecreateChoice, kOtherChoice, kRecreateChoice);
    follow_choice(window);
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  auto* self = reinterpret_cast<MissingFolderDialog*>(::GetWindowLongPtrW(window, DWLP_USER));
  switch (LOWORD(wparam)) {
    case kRecreateChoice:
    case kOtherChoice:
      follow_choice(window);
      return TRUE;
    case kBrowse:
      browse(window);
      return TRUE;
    case IDOK:
      if (::IsDlgButtonChecked(window, kOtherChoice) != BST_CHECKED) {
        ::EndDialog(window, kRecreateChoice);
      } else if (self->take(window)) {
        ::EndDialog(window, kOtherChoice);
      }
      return TRUE;
    case IDCANCEL:
      ::EndDialog(window, IDCANCEL);
      return TRUE;
    default:
      return FALSE;
  }
}

// --- Notice
// --------------------------------------------------------------------------------------------

constexpr int kNote1 = 1000;
constexpr int kNote2 = 1001;
constexpr int kWarningIcon = 2012;
constexpr int kHelp = 1002;

struct NoticeDialog {
  std::wstring note1;
  std::wstring note2;
  std::wstring help_file;
  HFONT note_font = nullptr;

  ~NoticeDialog() {
    if (note_font != nullptr) ::DeleteObject(note_font);
  }
  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void start(HWND window);
};

RECT place_in(HWND dialog, HWND control) {
  RECT place{};
  ::GetWindowRect(control, &place);
  ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

// Takes the second note away: the buttons move up by its height and the dialog shrinks by the same.
void hide_second_note(HWND window) {
  const HWND note = ::GetDlgItem(window, kNote2);
  const RECT hidden = place_in(window, note);
  const int height = hidden.bottom - hidden.top;
  ::ShowWindow(note, SW_HIDE);
  for (const int id : {IDOK, IDCANCEL, kHelp}) {
    const HWND button = ::GetDlgItem(window, id);
    const RECT place = place_in(window, button);
    ::SetWindowPos(button, nullptr, place.left, place.top - height, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER);
  }
  RECT whole{};
  ::GetWindowRect(window, &whole);
  ::SetWindowPos(window, nullptr, 0, 0, whole.right - whole.left, whole.bottom - whole.top - height,
                 SWP_NOMOVE | SWP_NOZORDER);
}

void NoticeDialog::start(HWND window) {
  ::SetDlgItemTextW(window, kNote1, note1.c_str());
  // The first note concerns everybody, so it stands out.
  LOGFONTW font{};
  const auto current = reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0));
  if (current != nullptr && ::GetObjectW(current, sizeof font, &font) != 0) {
    font.lfWeight = FW_BOLD;
    note_font = ::CreateFontIndirectW(&font);
    ::SendDlgItemMessageW(window, kNote1, WM_SETFONT, reinterpret_cast<WPARAM>(note_font), TRUE);
  }
  ::SendDlgItemMessageW(window, kWarningIcon, STM_SETICON,
                        reinterpret_cast<WPARAM>(::LoadIconW(nullptr, MAKEINTRESOURCEW(32515))), 0);
  if (note2.empty()) {
    hide_second_note(window);
  } else {
    ::SetDlgItemTextW(window, kNote2, note2.c_str());
  }
}

INT_PTR CALLBACK NoticeDialog::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(window, DWLP_USER, lparam);
    reinterpret_cast<NoticeDialog*>(lparam)->start(window);
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  switch (LOWORD(wparam)) {
    case kHelp: {
      auto* self = reinterpret_cast<NoticeDialog*>(::GetWindowLongPtrW(window, DWLP_USER));
      ::ShellExecuteW(window, L"open", self->help_file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
      return TRUE;
    }
    case IDOK:
    case IDCANCEL:
      ::EndDialog(window, LOWORD(wparam));
      return TRUE;
    default:
      return FALSE;
  }
}

INT_PTR run_modal(const DialogTemplate& layout, DLGPROC procedure, void* self) {
  const win32::DpiAware dpi_aware;
  return ::DialogBoxIndirectParamW(win32::this_module(), layout.get(), owner_window(), procedure,
                                   reinterpret_cast<LPARAM>(self));
}

}  // namespace

std::unique_ptr<Progress> open_progress(std::string_view caption, std::string_view heading,
                                        bool can_cancel) {
  auto progress = std::make_unique<ProgressDialog>(caption, heading, can_cancel);
  if (!progress->is_open()) return nullptr;
  return progress;
}

bool ask(std::string_view caption, std::string_view text, Buttons buttons) {
  const win32::DpiAware dpi_aware;
  const UINT style = buttons == Buttons::kYesNo ? MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2
                                                : MB_OK | MB_ICONWARNING;
  const int answer =
      ::MessageBoxW(owner_window(), wide_lines(text).c_str(), wide(caption).c_str(), style);
  return answer == IDYES || answer == IDOK;
}

MissingFolder ask_missing_folder(std::string_view caption, std::string_view message,
                                 std::string_view folder, std::string_view file_name,
                                 std::string& chosen) {
  constexpr short kWidth = 270;
  constexpr short kText = kWidth - 16;
  DialogTemplate layout(wide(caption), kWidth, 134);
  layout.add(DialogTemplate::kStatic, kNoId, wide_lines(message), kPlainText, 8, 7, kText, 20);
  layout.add(DialogTemplate::kStatic, kNoId, wide(folder), kPlainText | SS_PATHELLIPSIS, 16, 32,
             kText - 8, 10);
  layout.add(DialogTemplate::kStatic, kNoId, wide(file_name), kPlainText | SS_ENDELLIPSIS, 16, 44,
             kText - 8, 10);
  layout.add(DialogTemplate::kButton, kRecreateChoice, L"元のフォルダを作成する(&R)",
             WS_TABSTOP | WS_GROUP | BS_AUTORADIOBUTTON, 8, 60, kText, 11);
  layout.add(DialogTemplate::kButton, kOtherChoice, L"別のフォルダにリストアする(&O)",
             BS_AUTORADIOBUTTON, 8, 74, kText, 11);
  layout.add(DialogTemplate::kEdit, kFolderEdit, L"",
             WS_TABSTOP | WS_GROUP | WS_BORDER | ES_AUTOHSCROLL, 18, 88, kText - 70, 13);
  layout.add(DialogTemplate::kButton, kBrowse, L"参照(&B)...", WS_TABSTOP | BS_PUSHBUTTON,
             kWidth - 58, 87, 50, 14);
  layout.add(DialogTemplate::kButton, IDOK, L"OK", WS_TABSTOP | WS_GROUP | BS_DEFPUSHBUTTON,
             kWidth - 124, 112, 56, 14);
  layout.add(DialogTemplate::kButton, IDCANCEL, L"キャンセル", WS_TABSTOP | BS_PUSHBUTTON,
             kWidth - 64, 112, 56, 14);
  MissingFolderDialog dialog;
  switch (run_modal(layout, MissingFolderDialog::procedure, &dialog)) {
    case kRecreateChoice:
      return MissingFolder::kRecreate;
    case kOtherChoice:
      chosen = dialog.chosen;
      return MissingFolder::kOther;
    default:
      return MissingFolder::kCancel;
  }
}

bool show_notice(std::string_view caption, std::string_view note1, std::string_view note2,
                 std::string_view help_file) {
  constexpr short kWidth = 340;
  constexpr short kNoteHeight = 72;
  constexpr short kTop = 8;
  constexpr short kButtons = kTop + 2 * kNoteHeight + 6;
  DialogTemplate layout(wide(caption), kWidth, kButtons + 22);
  layout.add(DialogTemplate::kStatic, kWarningIcon, L"", SS_ICON, 8, kTop, 21, 20);
  layout.add(DialogTemplate::kStatic, kNote1, L"", kPlainText, 36, kTop, kWidth - 44, kNoteHeight);
  layout.add(DialogTemplate::kStatic, kNote2, L"", kPlainText, 36, kTop + kNoteHeight, kWidth - 44,
             kNoteHeight);
  layout.add(DialogTemplate::kButton, kHelp, L"Outlookの設定方法(&H)", WS_TABSTOP | BS_PUSHBUTTON,
             8, kButtons, 96, 14);
  layout.add(DialogTemplate::kButton, IDOK, L"続行", WS_TABSTOP | BS_DEFPUSHBUTTON, kWidth - 128,
             kButtons, 56, 14);
  layout.add(DialogTemplate::kButton, IDCANCEL, L"中止", WS_TABSTOP | BS_PUSHBUTTON, kWidth - 64,
             kButtons, 56, 14);
  NoticeDialog dialog{wide_lines(note1), wide_lines(note2), win32::WidePath(help_file).text()};
  return run_modal(layout, NoticeDialog::procedure, &dialog) == IDOK;
}

}  // namespace tq::platform
