#include "engine/plan.h"

#include <algorithm>
#include <optional>

namespace tqsync {

// In lines of at most 80 characters.
const char* const kPairingRule =
    "Two records that score 75 or more are the same person: they are linked. A\n"
    "partner record is linked to at most one master record: the one with the highest\n"
    "score, of equal ones the first. What else scores 75 or more with it is left to\n"
    "you. Pairs from 30 to 74 are left to you too, unless both records are linked\n"
    "elsewhere, or one is and the names differ (a family's telephone).\n"
    "A partner record without any pair is new; a master record without any pair in a\n"
    "partner file is missing there. The partner files are taken in order, and what is\n"
    "new in one counts as a master record for the next. A record that repeats an\n"
    "earlier one of its own file goes where that one goes; if every cell is the same\n"
    "it is only reported.\n";

namespace {

std::vector<Duplicate> find_duplicates(const Book& book) {
  std::vector<Duplicate> duplicates;
  Finder finder;
  for (std::uint32_t record = 0; record < book.size(); ++record) {
    const Person& person = book[record];
    if (person.copy_of) {
      duplicates.push_back({record, *person.copy_of, compare(person, person), true});
    }
    if (!person.takes_part()) continue;
    std::optional<Duplicate> best;
    for (const std::uint32_t earlier : finder.find(person)) {
      const Likeness likeness = compare(person, book[earlier]);
      if (likeness.certain() && (!best || likeness.score > best->likeness.score)) {
        best = {record, earlier, likeness, false};
      }
    }
    if (best) duplicates.push_back(*best);
    finder.add(record, person);
  }
  return duplicates;
}

// Works through one partner file after the other.
class Planner {
 public:
  explicit Planner(std::span<const Book> books) : books_(books) {}

  Plan plan() {
    plan_.books.resize(books_.size());
    for (std::uint32_t book = 0; book < books_.size(); ++book) {
      plan_.books[book].duplicates = find_duplicates(books_[book]);
    }
    add_master_file();
    for (std::uint32_t book = 1; book < books_.size(); ++book) pair_partner(book);
    for (std::uint32_t book = 1; book < books_.size(); ++book) find_missing(book);
    for (const auto& [key, holders] : finder_.common_keys()) {
      plan_.common_keys.push_back({std::string(key), holders});
    }
    return std::move(plan_);
  }

 private:
  const Person& master(std::uint32_t index) const {
    const RecordRef& ref = plan_.masters[index];
    return books_[ref.book][ref.record];
  }

  void add_master_file() {
    for (std::uint32_t record = 0; record < books_[0].size(); ++record) {
      plan_.masters.push_back({0, record});
      if (books_[0][record].takes_part()) finder_.add(record, books_[0][record]);
    }
  }

  void pair_partner(std::uint32_t book) {
    std::vector<Pair> pairs = possible_pairs(books_[book]);
    link_best(pairs);
    drop_settled(pairs);
    add_new(book, pairs);
    plan_.books[book].pairs = std::move(pairs);
  }

  // All pairs worth a look, by record, within a record the best first, of equal ones the first
  // master.
  std::vector<Pair> possible_pairs(const Book& book) {
    std::vector<Pair> pairs;
    for (std::uint32_t record = 0; record < book.size(); ++record) {
      if (!book[record].takes_part()) continue;
      const std::size_t first = pairs.size();
      for (const std::uint32_t index : finder_.find(book[record])) {
        const Likeness likeness = compare(master(index), book[record]);
        if (likeness.score < kPossible) continue;
        pairs.push_back({index, record, likeness, Verdict::kOpen});
      }
      std::stable_sort(
          pairs.begin() + static_cast<std::ptrdiff_t>(first), pairs.end(),
          [](const Pair& a, const Pair& b) { return a.likeness.score > b.likeness.score; });
    }
    return pairs;
  }

  static void link_best(std::vector<Pair>& pairs) {
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      const bool best = i == 0 || pairs[i - 1].record != pairs[i].record;
      if (best && pairs[i].likeness.certain()) pairs[i].verdict = Verdict::kLink;
    }
  }

  // Weaker pairs are no question any more where the records have found their counterparts.
  void drop_settled(std::vector<Pair>& pairs) const {
    std::vector<bool> master_linked(plan_.masters.size()), record_linked;
    for (const Pair& pair : pairs) {
      record_linked.resize(std::max<std::size_t>(record_linked.size(), pair.record + 1u));
      if (pair.verdict != Verdict::kLink) continue;
      master_linked[pair.master] = true;
      record_linked[pair.record] = true;
    }
    std::erase_if(pairs, [&](const Pair& pair) {
      if (pair.likeness.certain()) return false;
      const int linked = master_linked[pair.master] + record_linked[pair.record];
      return linked == 2 || (linked == 1 && !pair.likeness.same_name());
    });
  }

  // Gives every record that is left without a pair a new master record, and those that repeat an
  // earlier record of the file the master record of that one.
  void add_new(std::uint32_t book, std::vector<Pair>& pairs) {
    const Book& people = books_[book];
    std::vector<std::optional<Pair>> best(people.size());
    for (const Pair& pair : pairs) {
      if (!best[pair.record]) best[pair.record] = pair;
    }
    std::vector<const Duplicate*> duplicates(people.size());
    for (const Duplicate& duplicate : plan_.books[book].duplicates) {
      duplicates[duplicate.record] = &duplicate;
    }

    const auto first_new = static_cast<std::uint32_t>(plan_.masters.size());
    for (std::uint32_t record = 0; record < people.size(); ++record) {
      if (!people[record].takes_part() || best[record]) continue;
      const Duplicate* repeats = duplicates[record];
      best[record] = repeats ? follow(best[repeats->earlier]->master, first_new, *repeats)
                             : new_master(book, record);
      pairs.push_back(*best[record]);
    }
    std::ranges::stable_sort(pairs, {}, &Pair::record);
    for (std::uint32_t index = first_new; index < plan_.masters.size(); ++index) {
      finder_.add(index, master(index));
    }
  }

  // The record goes where the earlier one goes: for certain when that one is new, since then both
  // are the same new person; else it is for the user to say.
  static Pair follow(std::uint32_t master, std::uint32_t first_new, const Duplicate& duplicate) {
    return {master, duplicate.record, duplicate.likeness,
            master >= first_new ? Verdict::kLink : Verdict::kOpen};
  }

  Pair new_master(std::uint32_t book, std::uint32_t record) {
    const auto index = static_cast<std::uint32_t>(plan_.masters.size());
    plan_.masters.push_back({book, record});
    const Person& person = books_[book][record];
    return {index, record, compare(person, person), Verdict::kNew};
  }

  // A master record that repeats an earlier one is no loss where that one is.
  void find_missing(std::uint32_t book) {
    std::vector<bool> there(plan_.masters.size());
    for (const Duplicate& duplicate : plan_.books[0].duplicates) there[duplicate.record] = true;
    for (const Pair& pair : plan_.books[book].pairs) there[pair.master] = true;
    for (std::uint32_t index = 0; index < plan_.masters.size(); ++index) {
      if (!there[index] && master(index).takes_part()) plan_.books[book].missing.push_back(index);
    }
  }

  std::span<const Book> books_;
  Finder finder_;
  Plan plan_;
};

}  // namespace

std::span<const Pair> pairs_of(const BookPlan& book, std::uint32_t record) {
  return {std::ranges::lower_bound(book.pairs, record, {}, &Pair::record),
          std::ranges::upper_bound(book.pairs, record, {}, &Pair::record)};
}

Plan make_plan(std::span<const Book> books) { return Planner(books).plan(); }

}  // namespace tqsync
