// The user at a terminal: questions on standard error, answers from standard input.
#include "platform/dialogs.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "base/cp932.h"
#include "base/sjis.h"
#include "base/sjis_literal.h"
#include "platform/platform.h"

namespace tq::platform {
namespace {

using namespace literals;

bool has_terminal() { return ::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1; }

void put_bytes(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(STDERR_FILENO, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;  // the terminal is gone: there is nobody left to tell
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

// File names and file contents come from outside, so control characters other than the line feed
// are not sent to the terminal.
void put(std::string_view sjis) {
  std::string shown(sjis);
  for (std::size_t pos = 0; pos < shown.size(); pos += sjis::char_size(shown, pos)) {
    const auto byte = static_cast<unsigned char>(shown[pos]);
    if ((byte < 0x20 && byte != '\n') || byte == 0x7F) shown[pos] = '?';
  }
  put_bytes(cp932::to_utf8(shown));
}

// One line from the user without its end; false at the end of the input.
bool read_answer(std::string& utf8) {
  utf8.clear();
  char byte = 0;
  for (;;) {
    const ssize_t got = ::read(STDIN_FILENO, &byte, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    if (byte == '\n') return true;
    utf8 += byte;
  }
}

std::size_t columns() {
  winsize size{};
  constexpr std::size_t kUsual = 80;
  return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsual;
}

volatile std::sig_atomic_t interrupted = 0;

extern "C" void note_interrupt(int) { interrupted = 1; }

// A bar on one line. Ctrl-C is the cancel button while it is shown.
class TerminalProgress : public Progress {
 public:
  TerminalProgress(std::string_view heading, bool can_cancel) {
    interrupted = 0;
    if (can_cancel) {
      struct sigaction action {};
      action.sa_handler = note_interrupt;
      catches_ = ::sigaction(SIGINT, &action, &before_) == 0;
    }
    put(heading);
    put(can_cancel ? " (Ctrl-C: 中止)\n"_sjis : "\n");
  }
  ~TerminalProgress() override {
    if (catches_) ::sigaction(SIGINT, &before_, nullptr);
    put_bytes("\r\x1B[K");
  }
  TerminalProgress(const TerminalProgress&) = delete;
  TerminalProgress& operator=(const TerminalProgress&) = delete;

  void set_group(std::string_view text) override {
    if (text.empty() || text == group_) return;
    group_ = text;
    put_bytes("\r\x1B[K");
    put(text);
    put("\n");
  }
  void set_file(std::string_view text) override {
    file_ = text;
    draw();
  }
  void set_percent(int percent) override {
    percent_ = std::clamp(percent, 0, 100);
    draw();
  }
  bool cancelled() override { return catches_ && interrupted != 0; }
  void resume() override { interrupted = 0; }

 private:
  void draw() {
    constexpr int kBar = 20;
    const int filled = percent_ * kBar / 100;
    std::string line = "[" + std::string(static_cast<std::size_t>(filled), '#') +
                       std::string(static_cast<std::size_t>(kBar - filled), '.') + "] ";
    std::string number = std::to_string(percent_) + "% ";
    line += std::string(number.size() < 5 ? 5 - number.size() : 0, ' ') + number;
    // Shift-JIS takes as many bytes as columns. The last column stays free, so that nothing wraps.
    const std::size_t room = columns() > line.size() + 1 ? columns() - line.size() - 1 : 0;
    line += sjis::cut(file_, room);
    put_bytes("\r");
    put(line);
    put_bytes("\x1B[K");
  }

  std::string group_;
  std::string file_;
  int percent_ = 0;
  bool catches_ = false;
  struct sigaction before_ {};
};

// Asks until the answer is one of the letters (lower case); `otherwise` when the input ends or the
// line is empty.
char ask_letter(std::string_view prompt, std::string_view letters, char otherwise) {
  std::string answer;
  for (;;) {
    put(prompt);
    if (!read_answer(answer) || answer.empty()) return otherwise;
    const char letter = answer.front() >= 'A' && answer.front() <= 'Z'
                            ? static_cast<char>(answer.front() - 'A' + 'a')
                            : answer.front();
    if (answer.size() == 1 && letters.find(letter) != std::string_view::npos) return letter;
  }
}

bool ask_other_folder(std::string& chosen) {
  std::string answer;
  for (;;) {
    put("戻し先のフォルダ: "_sjis);
    if (!read_answer(answer) || answer.empty()) return false;
    if (path_from_native(answer, chosen).ok()) return true;
    put("このフォルダ名は使えません.\n"_sjis);
  }
}

void show_text_file(std::string_view path) {
  constexpr std::size_t kMost = 64 * 1024;  // a help text, not a book
  File file;
  std::string text(kMost, '\0');
  std::size_t got = 0;
  if (file.open(path, OpenMode::kReadShared).ok() &&
      file.read(text.data(), text.size(), got).ok()) {
    text.resize(got);
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    put(text + "\n");
  } else {
    put(std::string("ファイルを開けません: "_sjis) + std::string(path) + "\n");
  }
}

}  // namespace

std::unique_ptr<Progress> open_progress(std::string_view, std::string_view heading,
                                        bool can_cancel) {
  // Only the output matters here: a bar needs a terminal to be drawn on, not one to be answered
  // from.
  if (::isatty(STDERR_FILENO) != 1) return nullptr;
  return std::make_unique<TerminalProgress>(heading, can_cancel);
}

bool ask(std::string_view, std::string_view text, Buttons buttons) {
  if (buttons == Buttons::kOk) {
    // A message is worth having in a log too.
    put(std::string(text) + "\n");
    return true;
  }
  if (!has_terminal()) return false;
  return ask_letter(std::string(text) + " [y/N] ", "yn", 'n') == 'y';
}

MissingFolder ask_missing_folder(std::string_view, std::string_view message,
                                 std::string_view folder, std::string_view file_name,
                                 std::string& chosen) {
  if (!has_terminal()) return MissingFolder::kCancel;
  put(std::string(message) + "\n  " + std::string(folder) + "\n  " + std::string(file_name) + "\n");
  for (;;) {
    switch (ask_letter("r) 元のフォルダを作成する  o) 別のフォルダに戻す  c) 中止 [r/o/C] "_sjis,
                       "roc", 'c')) {
      case 'r':
        return MissingFolder::kRecreate;
      case 'o':
        if (ask_other_folder(chosen)) return MissingFolder::kOther;
        break;
      default:
        return MissingFolder::kCancel;
    }
  }
}

bool show_notice(std::string_view, std::string_view note1, std::string_view note2,
                 std::string_view help_file) {
  if (!has_terminal()) return false;
  put(std::string(note1) + "\n\n");
  if (!note2.empty()) put(std::string(note2) + "\n\n");
  for (;;) {
    switch (ask_letter("y) 続行  n) 中止  h) Outlookの設定方法 [y/N/h] "_sjis, "ynh", 'n')) {
      case 'y':
        return true;
      case 'h':
        show_text_file(help_file);
        break;
      default:
        return false;
    }
  }
}

}  // namespace tq::platform
