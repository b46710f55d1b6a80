#include <filesystem>
#include <utility>

#include "commands/command.h"
#include "failure.h"
#include "library/home_file.h"
#include "text/native_path.h"

namespace tqsync {

void require_home() {
  const std::filesystem::path settings = settings_file();
  if (!std::filesystem::exists(settings)) {
    throw Failure("the home folder has no " + from_path(settings) +
                  ". \"tqsync init\" makes it; --home or TQUTIL_HOME name another home folder.");
  }
}

CLI::App* add_home_command(CLI::App& parent, Program& program, const char* name, const char* help,
                           std::function<void()> action) {
  CLI::App* command = parent.add_subcommand(name, help);
  command->callback([&program, action = std::move(action)] {
    program.action = [action] {
      require_home();
      action();
    };
  });
  return command;
}

}  // namespace tqsync
