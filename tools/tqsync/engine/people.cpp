#include "engine/people.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "engine/normalize.h"
#include "files/place.h"

namespace tqsync {
namespace {

// The first form that is not empty.
std::string text_of(const std::vector<Joined>& forms, const CsvRow& row) {
  std::string text;
  for (const Joined& form : forms) {
    for (const std::size_t column : form.columns) {
      const std::string& cell = row.cells[column];
      if (!text.empty() && !cell.empty()) text += form.between;
      text += cell;
    }
    if (!text.empty()) break;
  }
  return text;
}

void append(std::vector<std::string>& keys, std::vector<std::string> more) {
  for (std::string& key : more) {
    if (std::ranges::find(keys, key) == keys.end()) keys.push_back(std::move(key));
  }
}

Person person_of(const Layout& layout, const CsvRow& row) {
  Person person;
  person.line = row.line;
  for (const std::size_t column : layout.phones) {
    append(person.phones, phone_keys(row.cells[column]));
  }
  for (const std::size_t column : layout.mails) append(person.mails, mail_keys(row.cells[column]));
  for (const auto& address : layout.addresses) {
    std::string key = address_key(text_of(address, row));
    if (!key.empty()) append(person.addresses, {std::move(key)});
  }

  const std::string reading = text_of(layout.reading, row);
  person.name = text_of(layout.name, row);
  if (person.name.empty()) person.name = text_of(layout.company, row);
  person.name_key = name_key(person.name);
  person.common_key = common_spelling(person.name_key);
  person.reading = reading_key(reading);
  if (person.reading.empty() && is_kana(person.name_key)) {
    person.reading = reading_key(person.name_key);
  }
  if (person.name.empty()) person.name = reading;
  return person;
}

// Marks the rows whose cells are those of an earlier row.
void mark_copies(const AddressFile& file, std::vector<Person>& people) {
  struct SameCells {
    bool operator()(const std::vector<std::string>* a, const std::vector<std::string>* b) const {
      return *a == *b;
    }
  };
  struct HashCells {
    std::size_t operator()(const std::vector<std::string>* cells) const {
      std::size_t hash = 0;
      for (const auto& cell : *cells) hash = hash * 31 + std::hash<std::string>()(cell);
      return hash;
    }
  };
  std::unordered_map<const std::vector<std::string>*, std::uint32_t, HashCells, SameCells> first;
  first.reserve(people.size());
  for (std::uint32_t i = 0; i < people.size(); ++i) {
    const auto [found, added] = first.try_emplace(&file.rows[i].cells, i);
    if (!added) people[i].copy_of = found->second;
  }
}

}  // namespace

std::vector<Person> people_of(AddressFile& file, const Layout& layout) {
  std::vector<Person> people;
  people.reserve(file.rows.size());
  for (const CsvRow& row : file.rows) {
    people.push_back(person_of(layout, row));
    if (!people.back().comparable()) {
      file.warnings.push_back(at_line(
          file.name, row.line, "there is no name, telephone or mail; the record is left out"));
    }
  }
  mark_copies(file, people);
  return people;
}

}  // namespace tqsync
