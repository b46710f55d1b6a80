// What main and the commands share. A command adds its subcommand with its flags to the parser and,
// when it is called, leaves in `action` what is to be done; main does it.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "files/encoding.h"
#include "terminal/table.h"

namespace tqsync {

struct Program {
  Output output = Output::kPeople;
  std::function<void()> action;
};

void add_apps_command(CLI::App& app, Program& program);
void add_fields_command(CLI::App& app, Program& program);
void add_formats_command(CLI::App& app, Program& program);
void add_init_command(CLI::App& app, Program& program);
void add_group_command(CLI::App& app, Program& program);
void add_history_command(CLI::App& app, Program& program);
void add_backup_command(CLI::App& app, Program& program);
void add_text_command(CLI::App& app, Program& program);
void add_pair_command(CLI::App& app, Program& program);

// The home folder's settings file must be there; throws Failure that tells how to get it.
void require_home();

// Adds a subcommand that needs the home folder: `action` is done when it is there.
CLI::App* add_home_command(CLI::App& parent, Program& program, const char* name, const char* help,
                           std::function<void()> action);

// Asks a person; true for yes. Where nobody can be asked it throws Failure: `what` with --yes.
bool confirmed(const std::string& question, const std::string& what);

// An option that takes the name of an encoding. `encoding` must live until the action is done.
CLI::Option* add_encoding_option(CLI::App& command, Encoding& encoding, const std::string& help);

}  // namespace tqsync
