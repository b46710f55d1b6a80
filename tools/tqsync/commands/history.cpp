// tqsync history: prints what the last run wrote down.
#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "commands/command.h"
#include "library/run_history.h"
#include "text/numbers.h"

namespace tqsync {
namespace {

struct Flags {
  std::vector<std::string> only;
};

void history(const Flags& flags, Output output) {
  Table table("history", {{"file"}, {"category"}, {"text"}});
  const SavedHistory saved = last_history();
  for (const HistoryLine& line : saved.lines) {
    const bool wanted = flags.only.empty() || std::ranges::count(flags.only, line.category) > 0;
    if (wanted) table.add({line.level.empty() ? "(run)" : line.level, line.category, line.text});
  }
  table.print(std::cout, {output});
  if (saved.damaged > 0) {
    std::cerr << "tqsync: note: the saved history is damaged; " << counted(saved.damaged, "line")
              << " of it cannot be shown\n";
  }
}

}  // namespace

void add_history_command(CLI::App& app, Program& program) {
  const auto flags = std::make_shared<Flags>();
  CLI::App* command =
      add_home_command(app, program, "history", "Print the history of the last run, file by file",
                       [flags, &program] { history(*flags, program.output); });
  command->add_option("--only", flags->only, "Print only this category; may be repeated")
      ->allow_extra_args(false)
      ->check(CLI::IsMember(
          std::vector<std::string>(std::begin(kHistoryCategories), std::end(kHistoryCategories))));
}

}  // namespace tqsync
