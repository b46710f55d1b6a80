// tqsync formats: the formats of address files that are known.
#include <iostream>
#include <string>

#include "commands/command.h"
#include "library/formats.h"

namespace tqsync {
namespace {

const char* list_name(Format::List list) {
  switch (list) {
    case Format::List::kPrograms:
      return "program";
    case Format::List::kMaster:
      return "master";
    default:
      return "general";
  }
}

void formats(Output output) {
  Table table("format", {{"list"},
                         {"app", Table::Kind::kNumber},
                         {"no", Table::Kind::kNumber},
                         {"columns", Table::Kind::kNumber},
                         {"name"},
                         {"title"},
                         {"comment"},
                         {"file", Table::Kind::kScriptOnly}});
  for (const Format& format : known_formats()) {
    table.add({list_name(format.list), std::to_string(format.application),
               std::to_string(format.number), std::to_string(format.columns()), format.name,
               format.title, format.comment, format.path});
  }
  table.print(std::cout, {.output = output,
                          .when_empty = "There are no formats. Check the folders \"fields1\" to "
                                        "\"fields3\" of tqutil.ini."});
}

}  // namespace

void add_formats_command(CLI::App& app, Program& program) {
  CLI::App* command = app.add_subcommand("formats", "Show the known formats of address files");
  command->footer(
      "A format is a field file (*.FLD, docs/formats.md). One of your own goes into the folder\n"
      "fields/2b of the home folder.");
  command->callback([&program] { program.action = [&program] { formats(program.output); }; });
}

}  // namespace tqsync
