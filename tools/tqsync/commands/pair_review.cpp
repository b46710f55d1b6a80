#include "commands/pair_review.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <optional>
#include <utility>

#include "commands/review_screen.h"
#include "files/decision_file.h"
#include "files/place.h"
#include "library/merge_desk.h"
#include "text/numbers.h"

namespace tqsync {
namespace {

// One person as a file has it.
struct Prepared {
  std::size_t line = 0;  // where the person begins
  std::vector<RecordRef> records;
  std::vector<std::pair<std::string, RecordRef>>
      fields;  // name of a field, record it is taken from
};

// The decisions of a file, by their records.
class PreparedDecisions {
 public:
  PreparedDecisions(const PairingRun& run, const ReviewSource& source,
                    std::span<const std::vector<RecordRef>> groups)
      : run_(run), file_(source.name) {
    for (std::size_t i = 0; i < groups.size(); ++i) {
      for (const RecordRef ref : groups[i]) group_of_[ref] = i;
    }
    for (std::size_t book = 0; book < run.books.size(); ++book) {
      books_[run.tables.sync_id(static_cast<std::uint32_t>(book), 0).substr(0, 6)] =
          static_cast<std::uint32_t>(book);
    }
    for (const DecisionRow& row : parse_decisions(file_, source.decisions)) add(row);
  }

  // The person of which a record is part; null when nothing is decided about it.
  const Prepared* find(RecordRef ref) const {
    const auto person = person_of_.find(ref);
    return person == person_of_.end() ? nullptr : &persons_.at(person->second);
  }
  const std::string& file() const { return file_; }

 private:
  void add(const DecisionRow& row) {
    const RecordRef ref = record_of(row);
    Prepared& person = persons_[row.person];
    if (!row.field.empty()) {
      if (std::ranges::find(person.records, ref) == person.records.end()) {
        fail_at(file_, row.line, "the person's record must stand above the fields taken from it.");
      }
      person.fields.emplace_back(row.field, ref);
      return;
    }
    if (person.records.empty()) person.line = row.line;
    if (!person_of_.emplace(ref, row.person).second) {
      fail_at(file_, row.line, "record " + row.id + " stands in the file twice.");
    }
    if (!person.records.empty() && group_of_.at(person.records[0]) != group_of_.at(ref)) {
      fail_at(file_, row.line,
              "record " + row.id + " is no candidate for the records of the same person above.");
    }
    person.records.push_back(ref);
  }

  // A record by its sync id; the id of a new master record means the record that becomes it.
  RecordRef record_of(const DecisionRow& row) const {
    const auto book = books_.find(row.id.substr(0, 6));
    if (row.id.size() == 15 && is_number(row.id) && book != books_.end()) {
      RecordRef ref{book->second, static_cast<std::uint32_t>(std::stoul(row.id.substr(6)))};
      if (ref.book == 0 && ref.record < run_.plan.masters.size()) {
        ref = run_.plan.masters[ref.record];
      }
      if (group_of_.contains(ref)) return ref;
    }
    fail_at(file_, row.line,
            "there is nothing to decide about a record " + row.id +
                ". \"tqsync --tsv pair\" shows the records with their ids.");
  }

  const PairingRun& run_;
  std::string file_;
  std::map<RecordRef, std::size_t> group_of_;
  std::map<std::string, std::uint32_t> books_;  // by group and file number
  std::map<std::string, Prepared> persons_;
  std::map<RecordRef, std::string> person_of_;
};

// What becomes of some records of a group: which are one person, and the values that were chosen.
struct Choice {
  std::vector<std::size_t> places;
  std::optional<FieldChoices> fields;  // by field of the sheet, place among `places`
};

class Review {
 public:
  Review(const PairingRun& run, std::span<const AddressFile> files,
         std::span<const FileColumns> columns, const ReviewSource& source)
      : run_(run),
        fields_(files, columns),
        ask_(source.ask),
        groups_(groups_of(run)),
        prepared_(run, source, groups_) {}

  ReviewOutcome outcome() {
    outcome_.groups = groups_.size();
    for (std::size_t i = 0; i < groups_.size(); ++i) review_group(i);
    // In the order of the groups' records, whichever were decided first.
    std::ranges::stable_sort(outcome_.persons, [](const DecidedPerson& a, const DecidedPerson& b) {
      return a.group != b.group ? a.group < b.group : a.records.front() < b.records.front();
    });
    outcome_.fields = fields_.fields();
    return std::move(outcome_);
  }

 private:
  static std::vector<std::vector<RecordRef>> groups_of(const PairingRun& run) {
    std::vector<std::vector<RecordRef>> groups = run.tables.open_groups();
    for (auto& group : groups) group = group_records(run.plan, group);
    return groups;
  }

  // The group that is on the desk.
  struct Group {
    std::size_t number;  // from 0
    const std::vector<RecordRef>& records;
    std::vector<Values> values;      // by record, by common field
    std::vector<std::size_t> shown;  // common fields that some record has
    std::vector<std::string> names;  // of those
  };

  Group lay_group(std::size_t number) {
    Group group{number, groups_[number], fields_.place(groups_[number]), {}, {}};
    for (std::size_t field = 0; field < fields_.fields().size(); ++field) {
      const auto has_value = [&](const Values& values) { return !values[field].empty(); };
      if (std::ranges::none_of(group.values, has_value)) continue;
      group.shown.push_back(field);
      group.names.push_back(fields_.fields()[field].name);
    }
    return group;
  }

  std::vector<DeskRecord> desk_records(const Group& group) const {
    std::vector<DeskRecord> records;
    for (std::size_t i = 0; i < group.records.size(); ++i) {
      const RecordRef ref = group.records[i];
      const Pair* pair = best_pair(run_.plan, ref);
      DeskRecord record{run_.tables.sync_id(ref.book, ref.record),
                        pair == nullptr ? 100 : pair->likeness.score,
                        static_cast<short>(ref.book),
                        run_.names[ref.book],
                        "line " + std::to_string(run_.person(ref).line),
                        {}};
      for (const std::size_t field : group.shown) record.texts.push_back(group.values[i][field]);
      records.push_back(std::move(record));
    }
    return records;
  }

  // Whether anything can come of a group, so that it is worth laying out.
  bool may_be_decided(std::size_t number) const {
    const auto& records = groups_[number];
    if (std::ranges::any_of(records, [&](RecordRef ref) { return prepared_.find(ref) != nullptr; }))
      return true;
    return rest_ ? rest_->kind == Answer::Kind::kAll || rest_->kind == Answer::Kind::kLinked : ask_;
  }

  void review_group(std::size_t number) {
    if (!may_be_decided(number)) {
      ++outcome_.open;
      return;
    }
    const Group group = lay_group(number);
    const RecordRef first = group.records.front();
    const std::string title =
        "Group " + std::to_string(number + 1) + " of " + std::to_string(groups_.size());
    MergeDesk desk(desk_records(group), title, run_.tables.sync_id(first.book, first.record));
    for (auto open = desk.open_records(); !open.empty(); open = desk.open_records()) {
      const std::optional<Choice> choice = choose(desk.lay_out(open, group.names), group, open);
      if (!choice) {
        ++outcome_.open;
        return;
      }
      apply(desk, group, open, *choice);
      desk.settle();
    }
  }

  // Nothing when the records stay as they are.
  std::optional<Choice> choose(DeskSheet read, const Group& group,
                               const std::vector<std::size_t>& open) {
    std::vector<RecordRef> records;
    for (const std::size_t i : open) records.push_back(group.records[i]);
    for (const RecordRef ref : records) {
      if (const Prepared* found = prepared_.find(ref)) return prepared(*found, group, records);
    }
    if (records.size() == 1) return Choice{{0}, {}};  // all others were decided
    const ReviewSheet sheet = sheet_of(std::move(read), group, records);
    bool shown = false;
    const auto show = [&] {
      if (!std::exchange(shown, true)) show_sheet(sheet);
    };
    Answer answer = rest_.value_or(Answer{Answer::Kind::kQuit});
    if (!rest_ && ask_) {
      show();
      answer = ask_who(sheet);
      if (answer.kind == Answer::Kind::kQuit) answer.rest = true;
      if (answer.rest) rest_ = answer;
    }
    Choice choice{places_of(answer, records), {}};
    if (choice.places.empty()) return std::nullopt;
    if (answer.by_field) {
      show();
      choice.fields = ask_values(sheet, choice.places);
      if (!choice.fields) {
        rest_ = Answer{Answer::Kind::kQuit};
        return std::nullopt;
      }
    }
    return choice;
  }

  std::vector<std::size_t> places_of(const Answer& answer,
                                     const std::vector<RecordRef>& records) const {
    if (answer.kind == Answer::Kind::kThese) return answer.places;
    if (answer.kind == Answer::Kind::kLinked) return linked_to_first(run_.plan, records);
    std::vector<std::size_t> places;
    for (std::size_t i = 0; answer.kind == Answer::Kind::kAll && i < records.size(); ++i) {
      places.push_back(i);
    }
    return places;
  }

  Choice prepared(const Prepared& person, const Group& group,
                  const std::vector<RecordRef>& records) const {
    Choice choice;
    for (std::size_t i = 0; i < records.size(); ++i) {
      const bool part = std::ranges::find(person.records, records[i]) != person.records.end();
      if (part) choice.places.push_back(i);
    }
    for (const auto& [name, ref] : person.fields) {
      const auto field = std::ranges::find(group.names, name);
      if (field == group.names.end()) {
        fail_at(prepared_.file(), person.line,
                "the records of this person have no field \"" + name + "\".");
      }
      std::size_t place = 0;
      while (records[choice.places[place]] != ref) ++place;
      if (!choice.fields) choice.fields.emplace();
      (*choice.fields)[static_cast<std::size_t>(field - group.names.begin())] = place;
    }
    return choice;
  }

  ReviewSheet sheet_of(DeskSheet read, const Group& group,
                       const std::vector<RecordRef>& records) const {
    ReviewSheet sheet{
        std::move(read.title), std::move(read.titles), std::move(read.descriptions), {}, {},
        std::move(read.texts)};
    for (const std::size_t field : group.shown) sheet.fields.push_back(fields_.fields()[field]);
    for (const RecordRef ref : records) {
      const Pair* pair = best_pair(run_.plan, ref);
      std::string state = pair == nullptr                   ? ""
                          : pair->verdict == Verdict::kLink ? "linked "
                                                            : "open ";
      if (pair != nullptr) state += std::to_string(pair->likeness.score);
      sheet.state.push_back(std::move(state));
    }
    return sheet;
  }

  // Takes the choice to the library and keeps what it made of it.
  void apply(MergeDesk& desk, const Group& group, const std::vector<std::size_t>& open,
             const Choice& choice) {
    desk.choose_records(choice.places);
    std::vector<std::size_t> one_person;
    for (const std::size_t place : choice.places) one_person.push_back(open[place]);
    DecidedPerson decided{group.number + 1, {}, {}, {}};
    std::vector<Values> values;
    for (const std::size_t i : one_person) {
      decided.records.push_back(group.records[i]);
      values.push_back(group.values[i]);
    }
    if (choice.fields)
      decided.chosen = choose_fields(desk, group, one_person, values, *choice.fields);
    decided.values = merge_values(values, decided.chosen);
    outcome_.persons.push_back(std::move(decided));
  }

  // Every field gets a choice, as the merge file has it; those that were made by hand come back.
  static FieldChoices choose_fields(MergeDesk& desk, const Group& group,
                                    const std::vector<std::size_t>& records,
                                    const std::vector<Values>& values, const FieldChoices& made) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < group.shown.size(); ++i) {
      const auto chosen = made.find(i);
      places.push_back(chosen == made.end() ? first_with_value(values, group.shown[i])
                                            : chosen->second);
    }
    desk.lay_out(records, group.names);
    const std::vector<std::size_t> read = desk.choose_fields(places);
    FieldChoices by_common_field;
    for (const auto& [field, place] : made) by_common_field[group.shown[field]] = read[field];
    return by_common_field;
  }

  const PairingRun& run_;
  CommonFields fields_;
  bool ask_;
  std::vector<std::vector<RecordRef>> groups_;
  PreparedDecisions prepared_;
  std::optional<Answer> rest_;  // the answer for all that follow
  ReviewOutcome outcome_;
};

}  // namespace

ReviewOutcome review(const PairingRun& run, std::span<const AddressFile> files,
                     std::span<const FileColumns> columns, const ReviewSource& source) {
  return Review(run, files, columns, source).outcome();
}

void print_decisions(const ReviewOutcome& outcome, const PairingRun& run, Printing printing) {
  constexpr auto kNumber = Table::Kind::kNumber;
  Table table("decisions", {{"group", kNumber},
                            {"person", kNumber},
                            {"file"},
                            {"line", kNumber},
                            {"name"},
                            {"field"},
                            {"id", Table::Kind::kScriptOnly}});
  for (std::size_t i = 0; i < outcome.persons.size(); ++i) {
    const DecidedPerson& decided = outcome.persons[i];
    const auto add = [&](RecordRef ref, const std::string& field) {
      const Person& person = run.person(ref);
      table.add({std::to_string(decided.group), std::to_string(i + 1), run.names[ref.book],
                 std::to_string(person.line), person.name, field,
                 run.tables.sync_id(ref.book, ref.record)});
    };
    for (const RecordRef ref : decided.records) add(ref, "");
    for (const auto& [field, place] : decided.chosen) {
      add(decided.records[place], outcome.fields[field].name);
    }
  }
  if (printing.output == Output::kPeople) {
    std::cout << "\nDecided: " << outcome.groups - outcome.open << " of " << outcome.groups
              << " groups\n";
    if (table.size() == 0) return;
  }
  table.print(std::cout, printing);
}

}  // namespace tqsync
