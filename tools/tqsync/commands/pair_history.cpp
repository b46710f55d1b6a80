#include "commands/pair_history.h"

#include <cstdint>

#include "library/run_history.h"

namespace tqsync {
namespace {

std::string place(const Person& person) {
  return "line " + std::to_string(person.line) + " " + person.name;
}

// The records of one file that are master records for certain.
void add_links(const PairingRun& run, std::uint32_t book, RunHistory& history) {
  for (const Pair& pair : run.plan.books[book].pairs) {
    if (pair.verdict != Verdict::kLink) continue;
    const RecordRef master = run.plan.masters[pair.master];
    history.add(static_cast<std::int32_t>(book), HistoryCategory::kReNew,
                place(run.books[book][pair.record]) + " is " + run.names[master.book] + ", " +
                    place(run.books[master.book][master.record]));
  }
}

}  // namespace

void save_history(const Group& group, const PairingRun& run,
                  std::span<const std::vector<std::string>> warnings) {
  RunHistory history(run.names);
  history.add(-1, HistoryCategory::kHead, "pairing of group " + group.id + " " + group.title);
  for (std::uint32_t book = 0; book < run.books.size(); ++book) {
    const auto file = static_cast<std::int32_t>(book);
    history.add(file, HistoryCategory::kHead,
                std::to_string(run.books[book].size()) + " records read");
    for (const std::string& warning : warnings[book]) {
      history.add(file, HistoryCategory::kRead, warning);
    }
    add_links(run, book, history);
  }
  for (const RecordRef& master : run.plan.masters) {
    if (master.book == 0) continue;  // stands in the master file already
    history.add(static_cast<std::int32_t>(master.book), HistoryCategory::kAddNew,
                place(run.books[master.book][master.record]));
  }
  history.save();
}

}  // namespace tqsync
