#include "commands/pair_history.h"

#include <cstdint>
#include <set>

#include "library/run_history.h"
#include "text/numbers.h"

namespace tqsync {
namespace {

// Records about which the user decided; what was found about them counts no more.
using Decided = std::set<RecordRef>;

std::string place(const Person& person) {
  return "line " + std::to_string(person.line) + " " + person.name;
}

class Writer {
 public:
  Writer(const PairingRun& run, const ReviewOutcome& outcome, RunHistory& history)
      : run_(run), outcome_(outcome), history_(history) {
    for (const DecidedPerson& person : outcome.persons) {
      decided_.insert(person.records.begin(), person.records.end());
    }
  }

  // The records of one file that are master records for certain.
  void add_links(std::uint32_t book) {
    for (const Pair& pair : run_.plan.books[book].pairs) {
      const RecordRef ref{book, pair.record};
      if (pair.verdict != Verdict::kLink || decided_.contains(ref)) continue;
      add_same(ref, run_.plan.masters[pair.master], "");
    }
  }

  void add_new() {
    for (const RecordRef master : run_.plan.masters) {
      if (master.book == 0 || decided_.contains(master)) continue;
      add(master.book, HistoryCategory::kAddNew, place(run_.person(master)));
    }
  }

  void add_decisions() {
    for (const DecidedPerson& decided : outcome_.persons) {
      const RecordRef first = decided.records.front();
      if (first.book != 0) {
        add(first.book, HistoryCategory::kAddNew, place(run_.person(first)) + ", decided");
      }
      for (const RecordRef other : std::span(decided.records).subspan(1)) {
        add_same(other, first, ", decided");
      }
    }
    if (outcome_.groups == 0) return;
    history_.add(-1, HistoryCategory::kHead,
                 std::to_string(outcome_.groups - outcome_.open) + " of " +
                     std::to_string(outcome_.groups) + " groups decided");
  }

 private:
  void add(std::uint32_t book, HistoryCategory category, const std::string& text) {
    history_.add(static_cast<std::int32_t>(book), category, text);
  }

  void add_same(RecordRef ref, RecordRef as, const char* how) {
    add(ref.book, HistoryCategory::kReNew,
        place(run_.person(ref)) + " is " + run_.names[as.book] + ", " + place(run_.person(as)) +
            how);
  }

  const PairingRun& run_;
  const ReviewOutcome& outcome_;
  RunHistory& history_;
  Decided decided_;
};

}  // namespace

void save_history(const Group& group, const PairingRun& run, std::span<const AddressFile> files,
                  const ReviewOutcome& outcome, const std::string& write_fault) {
  RunHistory history(run.names);
  Writer writer(run, outcome, history);
  history.add(-1, HistoryCategory::kHead, "pairing of group " + group.id + " " + group.title);
  for (std::uint32_t book = 0; book < run.books.size(); ++book) {
    const auto file = static_cast<std::int32_t>(book);
    history.add(file, HistoryCategory::kHead, counted(run.books[book].size(), "record") + " read");
    for (const std::string& warning : files[book].warnings) {
      history.add(file, HistoryCategory::kRead, warning);
    }
    writer.add_links(book);
  }
  writer.add_new();
  writer.add_decisions();
  if (!write_fault.empty()) history.add(-1, HistoryCategory::kWrite, write_fault);
  history.save();
}

}  // namespace tqsync
