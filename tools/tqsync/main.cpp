// tqsync: brings address files together from the command line, with nothing but the library's
// public interface.
#include <algorithm>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "commands/command.h"
#include "terminal/console.h"
#include "terminal/table.h"
#include "tqutil/host.h"
#include "tqutil/siblings.h"

namespace tqsync {
namespace {

constexpr int kDone = 0, kFailed = 1, kWrongUsage = 2;

// Every command; each adds itself to the parser.
constexpr void (*kCommands[])(CLI::App&, Program&) = {
    add_init_command,    add_group_command,  add_pair_command,
    add_history_command, add_backup_command, add_apps_command,
    add_formats_command, add_fields_command, add_text_command};

constexpr char kFooter[] =
    "Address files are CSV files with a heading line, in Shift-JIS or UTF-8.\n"
    "Exit status: 0 done, 1 failed (the message says what to do), 2 wrong usage.";

int do_action(const Program& program) {
  try {
    program.action();
    std::cout.flush();
    if (!std::cout) throw std::runtime_error("the output could not be written");
    return kDone;
  } catch (const std::bad_alloc&) {
    std::cerr << "tqsync: there is not enough memory for these files\n";
  } catch (const std::exception& failure) {
    std::cerr << "tqsync: " << printable(failure.what()) << '\n';
  }
  return kFailed;
}

int run(std::vector<std::string> arguments) {
  CLI::App app("Brings the address files of a sync group together.", "tqsync");
  Program program;
  std::string home;
  app.add_option("--home", home, "Home folder, instead of TQUTIL_HOME or the user's data folder");
  app.add_flag_callback(
      "--tsv", [&program] { program.output = Output::kScript; },
      "Tables for scripts: tabs between cells, \"#\" before headings");
  app.set_version_flag("--version", std::string("tqsync ") + tqVersion());
  app.footer(kFooter);
  app.require_subcommand(1);
  app.allow_windows_style_options(false);  // a path may begin with "/"
  app.fallthrough();
  for (const auto add_command : kCommands) add_command(app, program);
  for (CLI::App* command : app.get_subcommands({})) command->fallthrough();

  std::ranges::reverse(arguments);  // the parser takes them from the end
  try {
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kDone : kWrongUsage;
  }
  if (!home.empty()) {
    set_environment("TQUTIL_HOME", home);
    tqSetSiblings(nullptr);  // the keys were read before the home folder was known
  }
  return do_action(program);
}

}  // namespace
}  // namespace tqsync

int main(int argc, char** argv) {
  const unsigned code_page = tqsync::use_utf8_output();
  const int status = tqsync::run(tqsync::utf8_arguments(argc, argv));
  tqsync::use_output_code_page(code_page);
  return status;
}
