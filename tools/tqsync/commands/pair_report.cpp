#include "commands/pair_report.h"

#include <algorithm>
#include <utility>

#include "text/numbers.h"

namespace tqsync {
namespace {

constexpr auto kNumber = Table::Kind::kNumber;
constexpr auto kScriptOnly = Table::Kind::kScriptOnly;

std::string count_of(const std::vector<Pair>& pairs, Verdict verdict) {
  return std::to_string(std::ranges::count(pairs, verdict, &Pair::verdict));
}

// Records that have no certain counterpart but a possible one.
std::size_t undecided(const std::vector<Pair>& pairs) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const bool best = i == 0 || pairs[i - 1].record != pairs[i].record;
    if (best && pairs[i].verdict == Verdict::kOpen) ++count;
  }
  return count;
}

}  // namespace

PairReport::PairReport(const PairingRun& run, Printing printing, std::ostream& out)
    : run_(run), printing_(printing), out_(out) {
  printing_.when_empty = "  none";
}

void PairReport::print(const std::string& section) {
  constexpr std::pair<const char*, void (PairReport::*)()> kPrinters[] = {
      {"links", &PairReport::print_links},
      {"decide", &PairReport::print_open_groups},
      {"new", &PairReport::print_new},
      {"missing", &PairReport::print_missing},
      {"duplicates", &PairReport::print_duplicates},
      {"summary", &PairReport::print_summary}};
  for (const auto& [name, printer] : kPrinters) {
    if (section == name) (this->*printer)();
  }
}

const Pair& PairReport::pair_of(std::uint32_t book, std::uint32_t record,
                                std::uint32_t master) const {
  const auto of_record = pairs_of(run_.plan.books[book], record);
  return *std::ranges::find(of_record, master, &Pair::master);
}

std::string PairReport::master_place(std::uint32_t master) const {
  const RecordRef ref = run_.plan.masters[master];
  return ref.book == 0 ? line(ref) : "new";
}

std::string PairReport::master_name(std::uint32_t master) const {
  return run_.person(run_.plan.masters[master]).name;
}

void PairReport::print_table(const std::string& title, const Table& table) {
  if (printing_.output == Output::kPeople) out_ << '\n' << title << '\n';
  table.print(out_, printing_);
}

void PairReport::print_links() {
  Table table("links", {{"score", kNumber},
                        {"line", kNumber},
                        {"master"},
                        {"partner"},
                        {"line", kNumber},
                        {"name"},
                        {"same"},
                        {"master id", kScriptOnly},
                        {"partner id", kScriptOnly}});
  for (std::uint32_t master = 0; master < run_.plan.masters.size(); ++master) {
    for (std::uint32_t book = 1; book < run_.books.size(); ++book) {
      for (const LinkedRecord& linked : run_.tables.links(master, book)) {
        const Pair& pair = pair_of(book, linked.record, master);
        if (pair.verdict == Verdict::kNew) continue;  // shown among the new records
        const RecordRef ref{book, linked.record};
        table.add({std::to_string(linked.value), master_place(master), master_name(master),
                   run_.names[book], line(ref), run_.person(ref).name,
                   reason_text(pair.likeness.signs), run_.tables.master_id(master),
                   run_.tables.sync_id(book, linked.record)});
      }
    }
  }
  print_table("Links (the same person for certain): " + std::to_string(table.size()), table);
}

void PairReport::print_open_groups() {
  Table table("decide", {{"group", kNumber},
                         {"score", kNumber},
                         {"line", kNumber},
                         {"master"},
                         {"partner"},
                         {"line", kNumber},
                         {"name"},
                         {"same"},
                         {"now"},
                         {"master id", kScriptOnly},
                         {"partner id", kScriptOnly}});
  const auto groups = run_.tables.open_groups();
  for (std::size_t i = 0; i < groups.size(); ++i) {
    for (const RecordRef ref : groups[i]) {
      for (const Pair& pair : pairs_of(run_.plan.books[ref.book], ref.record)) {
        if (pair.verdict == Verdict::kNew) continue;
        table.add({std::to_string(i + 1), std::to_string(pair.likeness.score),
                   master_place(pair.master), master_name(pair.master), run_.names[ref.book],
                   line(ref), run_.person(ref).name, reason_text(pair.likeness.signs),
                   pair.verdict == Verdict::kLink ? "linked" : "open",
                   run_.tables.master_id(pair.master), run_.tables.sync_id(ref.book, ref.record)});
      }
    }
  }
  print_table(
      "To decide: " + counted(table.size(), "pair") + " in " + counted(groups.size(), "group"),
      table);
}

void PairReport::print_new() {
  Table table("new", {{"partner"},
                      {"line", kNumber},
                      {"name"},
                      {"master id", kScriptOnly},
                      {"partner id", kScriptOnly}});
  for (std::uint32_t book = 1; book < run_.books.size(); ++book) {
    for (const Pair& pair : run_.plan.books[book].pairs) {
      if (pair.verdict != Verdict::kNew) continue;
      const RecordRef ref{book, pair.record};
      table.add({run_.names[book], line(ref), run_.person(ref).name,
                 run_.tables.master_id(pair.master), run_.tables.sync_id(book, pair.record)});
    }
  }
  print_table(
      "New in the partner files (the master does not have them): " + std::to_string(table.size()),
      table);
}

void PairReport::print_missing() {
  Table table(
      "missing",
      {{"missing in"}, {"line", kNumber}, {"master"}, {"from"}, {"master id", kScriptOnly}});
  for (std::uint32_t book = 1; book < run_.books.size(); ++book) {
    for (const std::uint32_t master : run_.plan.books[book].missing) {
      const RecordRef ref = run_.plan.masters[master];
      table.add({run_.names[book], line(ref), run_.person(ref).name, run_.names[ref.book],
                 run_.tables.master_id(master)});
    }
  }
  print_table("Missing in the partner files: " + std::to_string(table.size()), table);
}

void PairReport::print_duplicates() {
  Table table("duplicates",
              {{"file"}, {"line", kNumber}, {"name"}, {"of line", kNumber}, {"name"}, {"same"}});
  for (std::uint32_t book = 0; book < run_.books.size(); ++book) {
    for (const Duplicate& duplicate : run_.plan.books[book].duplicates) {
      const RecordRef later{book, duplicate.record}, earlier{book, duplicate.earlier};
      table.add({run_.names[book], line(later), run_.person(later).name, line(earlier),
                 run_.person(earlier).name,
                 duplicate.copy ? "every cell" : reason_text(duplicate.likeness.signs)});
    }
  }
  print_table("Twice in one file: " + std::to_string(table.size()), table);
}

void PairReport::print_summary() {
  Table table("summary", {{"file"},
                          {"role"},
                          {"records", kNumber},
                          {"linked", kNumber},
                          {"to decide", kNumber},
                          {"new", kNumber},
                          {"missing", kNumber},
                          {"twice", kNumber}});
  for (std::uint32_t book = 0; book < run_.books.size(); ++book) {
    const BookPlan& plan = run_.plan.books[book];
    const bool master = book == 0;
    const auto figure = [master](const std::string& text) { return master ? "" : text; };
    table.add(
        {run_.names[book], master ? "master" : "partner", std::to_string(run_.books[book].size()),
         figure(count_of(plan.pairs, Verdict::kLink)),
         figure(std::to_string(undecided(plan.pairs))), figure(count_of(plan.pairs, Verdict::kNew)),
         figure(std::to_string(plan.missing.size())), std::to_string(plan.duplicates.size())});
  }
  print_table("Summary", table);
}

}  // namespace tqsync
