// Speaking with the user: real dialogs on Windows, the terminal elsewhere. posix/ and win32/ are
// twins behind this header.
//
// All texts are Shift-JIS. Where there is nobody to ask (no terminal, no desktop) every question
// gets the answer that changes nothing, and progress stays silent. One thread.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tq::platform {

// A progress display that is open until it is destroyed.
class Progress {
 public:
  virtual ~Progress() = default;
  virtual void set_group(std::string_view text) = 0;
  virtual void set_file(std::string_view text) = 0;
  // 0-100.
  virtual void set_percent(int percent) = 0;
  // Whether the user asked to stop since the display was opened or `resume` was called. Also lets
  // the display react to the user, so ask often.
  virtual bool cancelled() = 0;
  virtual void resume() = 0;
};

// Null when nothing can be shown.
std::unique_ptr<Progress> open_progress(std::string_view caption, std::string_view heading,
                                        bool can_cancel);

enum class Buttons : unsigned char { kOk, kYesNo };
// True for OK and yes; false for no and when there is nobody to ask.
bool ask(std::string_view caption, std::string_view text, Buttons buttons);

enum class MissingFolder : unsigned char { kRecreate, kOther, kCancel };
// What to do about the missing `folder` of a file; with kOther `chosen` is the folder to use
// instead, in library form.
MissingFolder ask_missing_folder(std::string_view caption, std::string_view message,
                                 std::string_view folder, std::string_view file_name,
                                 std::string& chosen);

// A notice of one or two notes (`note2` empty: it is not shown and the dialog is smaller) with the
// buttons continue and stop, and one that opens `help_file`. True for continue.
bool show_notice(std::string_view caption, std::string_view note1, std::string_view note2,
                 std::string_view help_file);

}  // namespace tq::platform
