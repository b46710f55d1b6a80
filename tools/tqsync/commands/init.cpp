// tqsync init: makes the home folder with its settings file and its folders.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "commands/command.h"
#include "failure.h"
#include "library/home_file.h"
#include "text/native_path.h"
#include "tqutil/host.h"

namespace tqsync {
namespace {

// The library's own defaults, written out so that they can be changed.
constexpr char kSettings[] =
    "; Settings of tqutil (Shift-JIS). Folders count from the one in which this file stands,\n"
    "; unless they are given whole.\n"
    "\n"
    "[folders]\n"
    "data=data\n"
    "work=work\n"
    "backup=backup\n"
    "group=group\n"
    "member=member\n"
    "; Folders of definition files: program, definition, fields1, fields2a, fields2b, fields3.\n"
    "; Without an entry what stands beside this file serves (program, definition, fields\\1 and\n"
    "; so on), else what ships with tqutil.\n";

constexpr short kFolders[] = {TQ_FOLDER_DATA, TQ_FOLDER_WORK, TQ_FOLDER_BACKUP, TQ_FOLDER_GROUP,
                              TQ_FOLDER_MEMBER};

// An existing settings file is left alone: it may have been edited.
bool write_settings(const std::filesystem::path& path) {
  if (std::filesystem::exists(path)) return false;
  std::error_code error;
  std::filesystem::create_directories(path.parent_path(), error);
  std::ofstream file(path);
  file << kSettings;
  file.close();
  if (!file) {
    throw Failure(from_path(path) +
                  ": this file cannot be written. Check that you may write there, or name "
                  "another home folder with --home.");
  }
  return true;
}

void init() {
  const std::filesystem::path settings = settings_file();
  const bool made = write_settings(settings);
  // The library makes a folder when it is asked for it.
  for (const short folder : kFolders) static_cast<void>(home_file(folder, ""));
  std::cout << (made ? "made " : "already there: ") << from_path(settings) << '\n';
}

}  // namespace

void add_init_command(CLI::App& app, Program& program) {
  CLI::App* command = app.add_subcommand("init", "Make the home folder, its settings and folders");
  command->footer("What is there already stays as it is.");
  command->callback([&program] { program.action = init; });
}

}  // namespace tqsync
