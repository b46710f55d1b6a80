#include "engine/review.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tqsync {
namespace {

// Words of an answer, between blanks and commas.
std::vector<std::string_view> words_of(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r,";
  std::vector<std::string_view> words;
  for (std::size_t at = 0;;) {
    at = text.find_first_not_of(kBlanks, at);
    if (at == std::string_view::npos) return words;
    const std::size_t end = std::min(text.find_first_of(kBlanks, at), text.size());
    words.push_back(text.substr(at, end - at));
    at = end;
  }
}

// A number from 1 to `count`; 0 for anything else.
std::size_t number(std::string_view word, std::size_t count) {
  std::size_t value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  const bool whole = error == std::errc() && end == word.data() + word.size();
  return whole && value <= count ? value : 0;
}

struct Letter {
  std::string_view text;
  Answer::Kind kind;
  bool by_field;
};
constexpr Letter kLetters[] = {{"a", Answer::Kind::kAll, false},
                               {"f", Answer::Kind::kAll, true},
                               {"n", Answer::Kind::kLinked, false},
                               {"s", Answer::Kind::kSkip, false},
                               {"q", Answer::Kind::kQuit, false}};

// Adds one word to an answer; false when it makes no sense there.
bool add_word(Answer& answer, std::string_view word, std::size_t count) {
  const bool first = answer.kind == Answer::Kind::kUnclear;
  const bool numbers = answer.kind == Answer::Kind::kThese;
  if (const std::size_t place = number(word, count); place != 0) {
    answer.kind = Answer::Kind::kThese;
    answer.places.push_back(place - 1);
    return first || numbers;
  }
  const auto* letter = std::ranges::find(kLetters, word, &Letter::text);
  if (letter == std::end(kLetters)) return false;
  if (first) answer.kind = letter->kind;
  answer.by_field = letter->by_field;
  return first || (numbers && letter->by_field);
}

// The master record that a record is linked to, or is itself; nothing when it is only open.
constexpr std::uint32_t kUnlinked = static_cast<std::uint32_t>(-1);
std::uint32_t linked_master(const Plan& plan, RecordRef ref) {
  if (ref.book == 0) return ref.record;
  for (const Pair& pair : pairs_of(plan.books[ref.book], ref.record)) {
    if (pair.verdict != Verdict::kOpen) return pair.master;
  }
  return kUnlinked;
}

}  // namespace

// --- Groups --------------------------------------------------------------------------------------

std::vector<RecordRef> group_records(const Plan& plan, std::span<const RecordRef> origins) {
  std::vector<RecordRef> records;
  for (const RecordRef origin : origins) {
    for (const Pair& pair : pairs_of(plan.books[origin.book], origin.record)) {
      const RecordRef master = plan.masters[pair.master];
      if (master.book == 0) records.push_back(master);
    }
  }
  std::sort(records.begin(), records.end());
  records.erase(std::unique(records.begin(), records.end()), records.end());
  records.insert(records.end(), origins.begin(), origins.end());
  return records;
}

const Pair* best_pair(const Plan& plan, RecordRef ref) {
  if (ref.book == 0) return nullptr;
  const std::span<const Pair> pairs = pairs_of(plan.books[ref.book], ref.record);
  return pairs.empty() || pairs.front().verdict == Verdict::kNew ? nullptr : &pairs.front();
}

std::vector<std::size_t> linked_to_first(const Plan& plan, std::span<const RecordRef> records) {
  const std::uint32_t master = linked_master(plan, records[0]);
  std::vector<std::size_t> places = {0};
  for (std::size_t i = 1; i < records.size(); ++i) {
    const std::uint32_t other = linked_master(plan, records[i]);
    if (other == master && other != kUnlinked) places.push_back(i);
  }
  return places;
}

// --- Answers -------------------------------------------------------------------------------------

Answer parse_answer(std::string_view text, std::size_t count) {
  std::vector<std::string_view> words = words_of(text);
  if (words.empty()) return {Answer::Kind::kSkip};
  Answer answer;
  if (words.back().ends_with('*')) {
    answer.rest = true;
    words.back().remove_suffix(1);
    if (words.back().empty()) words.pop_back();
  }
  for (const std::string_view word : words) {
    if (!add_word(answer, word, count)) return {};
  }
  if (answer.rest && answer.kind == Answer::Kind::kThese) return {};  // means nothing elsewhere
  std::ranges::sort(answer.places);
  answer.places.erase(std::unique(answer.places.begin(), answer.places.end()), answer.places.end());
  return answer;
}

std::size_t parse_place(std::string_view text, std::size_t count, std::size_t usual) {
  const std::vector<std::string_view> words = words_of(text);
  if (words.empty()) return usual;
  const std::size_t place = words.size() == 1 ? number(words.front(), count) : 0;
  return place == 0 ? count : place - 1;
}

// --- Merging -------------------------------------------------------------------------------------

std::size_t first_with_value(std::span<const Values> records, std::size_t field) {
  const auto found =
      std::ranges::find_if(records, [&](const Values& values) { return !values[field].empty(); });
  return found == records.end() ? 0 : static_cast<std::size_t>(found - records.begin());
}

Values merge_values(std::span<const Values> records, const FieldChoices& chosen) {
  Values merged(records[0].size());
  for (std::size_t field = 0; field < merged.size(); ++field) {
    const auto choice = chosen.find(field);
    const std::size_t from =
        choice == chosen.end() ? first_with_value(records, field) : choice->second;
    merged[field] = records[from][field];
  }
  return merged;
}

MergedBook merge_book(const AddressFile& master, const std::vector<Field>& fields,
                      std::span<const DecidedPerson> persons) {
  MergedBook book{master.headings, {}};
  std::vector<bool> gone(master.rows.size());
  for (const CsvRow& row : master.rows) book.rows.push_back(row.cells);
  for (const DecidedPerson& person : persons) {
    const RecordRef first = person.records.front();
    if (first.book == 0) {
      book.rows[first.record] = person.values;
    } else {
      book.rows.push_back(person.values);
      gone.push_back(false);
    }
    for (const RecordRef other : std::span(person.records).subspan(1)) {
      if (other.book == 0) gone[other.record] = true;
    }
  }
  std::size_t place = 0;
  std::erase_if(book.rows, [&](const Values&) { return gone[place++]; });

  for (Values& row : book.rows) row.resize(fields.size());
  const std::size_t columns = master.headings.size();
  std::vector<std::size_t> kept;
  for (std::size_t i = columns; i < fields.size(); ++i) {
    if (std::ranges::any_of(book.rows, [&](const Values& row) { return !row[i].empty(); })) {
      kept.push_back(i);
      book.headings.push_back(fields[i].name);
    }
  }
  for (Values& row : book.rows) {
    for (std::size_t i = 0; i < kept.size(); ++i) std::swap(row[columns + i], row[kept[i]]);
    row.resize(columns + kept.size());
  }
  return book;
}

}  // namespace tqsync
