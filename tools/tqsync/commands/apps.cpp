// tqsync apps: the partner applications that are registered.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "commands/command.h"
#include "library/applications.h"
#include "library/formats.h"

namespace tqsync {
namespace {

std::string join(const std::vector<short>& numbers) {
  std::string text;
  for (const short number : numbers) text += (text.empty() ? "" : " ") + std::to_string(number);
  return text;
}

void apps(Output output) {
  const std::vector<Format> formats = known_formats();
  Table table("app", {{"app", Table::Kind::kNumber},
                      {"type", Table::Kind::kNumber},
                      {"formats", Table::Kind::kNumber},
                      {"name"},
                      {"keys"}});
  for (const Application& app : registered_applications()) {
    const auto count = std::ranges::count(formats, app.number, &Format::application);
    table.add({std::to_string(app.number), std::to_string(app.type), std::to_string(count),
               app.name, join(app.keys)});
  }
  table.print(std::cout, {output});
}

}  // namespace

void add_apps_command(CLI::App& app, Program& program) {
  CLI::App* command = app.add_subcommand(
      "apps", "Show the partner applications with the keys that their records are matched by");
  command->footer("The numbers of the keys are those of docs/fields.md.");
  command->callback([&program] { program.action = [&program] { apps(program.output); }; });
}

}  // namespace tqsync
