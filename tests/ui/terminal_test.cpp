// The dialogs at a terminal, driven from the other end of a pseudo terminal; and without one, where
// every question takes the answer that changes nothing.
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <functional>

#include "platform/dialogs.h"
#include "support/test.h"

namespace {

namespace platform = tq::platform;

struct Outcome {
  int status = -1;     // what the body returned
  std::string screen;  // what it wrote, in UTF-8
};

// Runs the body in a process of its own at a new terminal and types `keys` at it.
Outcome at_terminal(const std::string& keys, const std::function<int()>& body) {
  int master = -1;
  const pid_t child = ::forkpty(&master, nullptr, nullptr, nullptr);
  if (child == 0) ::_exit(body());
  EXPECT_GT(child, 0);
  Outcome outcome;
  std::size_t typed = 0;
  char buffer[4096];
  for (;;) {
    pollfd wait = {master, POLLIN, 0};
    if (::poll(&wait, 1, 5000) <= 0) break;
    const ssize_t got = ::read(master, buffer, sizeof buffer);
    if (got <= 0) break;  // the other side is gone
    outcome.screen.append(buffer, static_cast<std::size_t>(got));
    // One line for each prompt, as a person would.
    if (typed < keys.size() && outcome.screen.size() > 2 && outcome.screen.back() == ' ') {
      const std::size_t end = keys.find('\n', typed) + 1;
      EXPECT_EQ(::write(master, keys.data() + typed, end - typed),
                static_cast<ssize_t>(end - typed));
      typed = end;
    }
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  ::close(master);
  if (WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
  return outcome;
}

TEST(Terminal, QuestionsTakeOnlyClearAnswers) {
  const std::tuple<const char*, std::string, int> cases[] = {
      {"yes", "y\n", 1},
      {"no", "n\n", 0},
      {"enter alone is no", "\n", 0},
      {"asked again until clear", "yes\nx\nY\n", 1},
  };
  for (const auto& [why, keys, status] : cases) {
    SCOPED_TRACE(why);
    const Outcome outcome = at_terminal(keys, [] {
      return platform::ask("", "中止しますか？"_sjis, platform::Buttons::kYesNo) ? 1 : 0;
    });
    EXPECT_EQ(outcome.status, status) << outcome.screen;
    EXPECT_NE(outcome.screen.find("中止しますか？ [y/N]"), std::string::npos) << outcome.screen;
  }
}

TEST(Terminal, MissingFolder) {
  TestFolder folder;
  const std::string other = folder.native().string();
  const auto body = [&] {
    std::string chosen;
    switch (platform::ask_missing_folder("", "以下のファイル"_sjis, "Z:\\gone", "a\x1B[31m.csv",
                                         chosen)) {
      case platform::MissingFolder::kRecreate:
        return 1;
      case platform::MissingFolder::kOther:
        return chosen == folder.path() ? 2 : 9;
      case platform::MissingFolder::kCancel:
        return 3;
    }
    return 8;
  };
  EXPECT_EQ(at_terminal("r\n", body).status, 1);
  EXPECT_EQ(at_terminal("o\n" + other + "\n", body).status, 2);
  EXPECT_EQ(at_terminal("o\n\nc\n", body).status, 3) << "no folder named: back to the choice";
  const Outcome outcome = at_terminal("\n", body);
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.screen.find('\x1B'), std::string::npos)
      << "a file name cannot drive the terminal";
}

TEST(Terminal, NoticeShowsTheHelpFileOnDemand) {
  TestFolder folder;
  folder.write("help.txt", "設定\r\n方法"_sjis);
  const auto body = [&] {
    return platform::show_notice("", "one", "two", folder.at("help.txt")) ? 1 : 0;
  };
  const Outcome outcome = at_terminal("h\ny\n", body);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.screen.find("方法"), std::string::npos) << outcome.screen;
  EXPECT_EQ(at_terminal("n\n", body).status, 0);
}

TEST(Terminal, ProgressDrawsOneLineAndTakesCtrlC) {
  const Outcome outcome = at_terminal("", [] {
    auto progress = platform::open_progress("", "コピー中"_sjis, true);
    if (progress == nullptr) return 9;
    progress->set_group("グループ"_sjis);
    progress->set_percent(50);
    progress->set_file(std::string(300, 'x'));
    if (progress->cancelled()) return 8;
    ::raise(SIGINT);
    if (!progress->cancelled()) return 7;
    progress->resume();
    return progress->cancelled() ? 6 : 1;
  });
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.screen.find("[##########..........]  50%"), std::string::npos)
      << outcome.screen;
  EXPECT_EQ(outcome.screen.find(std::string(80, 'x')), std::string::npos) << "cut to the line";
}

TEST(Terminal, WithoutOneNothingIsAskedOrDrawn) {
  const int null = ::open("/dev/null", O_RDWR);
  const int input = ::dup(STDIN_FILENO);
  const int error = ::dup(STDERR_FILENO);
  ::dup2(null, STDIN_FILENO);
  ::dup2(null, STDERR_FILENO);
  std::string chosen;
  const bool asked = platform::ask("", "?", platform::Buttons::kYesNo);
  const bool went_on = platform::show_notice("", "1", "2", "");
  const auto missing = platform::ask_missing_folder("", "", "", "", chosen);
  const bool drawn = platform::open_progress("", "", true) != nullptr;
  ::dup2(input, STDIN_FILENO);
  ::dup2(error, STDERR_FILENO);
  for (const int fd : {null, input, error}) ::close(fd);
  EXPECT_FALSE(asked);
  EXPECT_FALSE(went_on);
  EXPECT_EQ(missing, platform::MissingFolder::kCancel);
  EXPECT_FALSE(drawn);
}

}  // namespace
