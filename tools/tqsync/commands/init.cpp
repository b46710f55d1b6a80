// tqsync init: makes the home folder with its settings file and its folders.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "commands/command.h"
#include "failure.h"
#include "text/library_text.h"
#include "text/native_path.h"
#include "tqutil/host.h"
#include "tqutil/records.h"

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

std::string settings_file() {
  char home[TQ_PATH_SIZE];
  if (tqGetFolder(TQ_FOLDER_HOME, home) != 0) {
    throw Failure("there is no home folder. Name one with --home or in TQUTIL_HOME.");
  }
  return to_native_path(std::string(home) + "tqutil.ini");
}

// An existing settings file is left alone: it may have been edited.
bool write_settings(const std::string& path) {
  if (std::filesystem::exists(to_path(path))) return false;
  std::error_code error;
  std::filesystem::create_directories(to_path(path).parent_path(), error);
  std::ofstream file(to_path(path));
  file << kSettings;
  file.close();
  if (!file) {
    throw Failure(path +
                  ": this file cannot be written. Check that you may write there, or name "
                  "another home folder with --home.");
  }
  return true;
}

void init() {
  const std::string settings = settings_file();
  const bool made = write_settings(settings);
  for (const short which : kFolders) {
    char folder[TQ_PATH_SIZE];
    if (tqGetFolder(which, folder) != 0) {
      throw Failure("a folder that " + settings + " names cannot be made. Check its entries.");
    }
  }
  std::cout << (made ? "made " : "already there: ") << settings << '\n';
}

}  // namespace

void require_home() {
  const std::string settings = settings_file();
  if (!std::filesystem::exists(to_path(settings))) {
    throw Failure("the home folder has no " + settings +
                  ". \"tqsync init\" makes it; --home or TQUTIL_HOME name another home folder.");
  }
}

void add_init_command(CLI::App& app, Program& program) {
  CLI::App* command = app.add_subcommand("init", "Make the home folder, its settings and folders");
  command->footer("What is there already stays as it is.");
  command->callback([&program] { program.action = init; });
}

}  // namespace tqsync
