// The people of an address file: what of a row is compared, in the form in which it is compared.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "files/address_file.h"

namespace tqsync {

// A text that stands in several cells: those that are not empty, with `between` between two.
struct Joined {
  std::vector<std::size_t> columns;
  const char* between = "";
};

// Which columns of a file hold what is compared. Of the forms of one text, the first that is not
// empty counts.
struct Layout {
  std::vector<Joined> name, reading;
  std::vector<Joined> company;  // stands for the name where there is none
  std::vector<std::vector<Joined>> addresses;
  std::vector<std::size_t> phones;  // any number but fax
  std::vector<std::size_t> mails;

  // Whether records can be told apart by it.
  bool usable() const {
    return !(name.empty() && reading.empty() && phones.empty() && mails.empty());
  }
};

struct Person {
  std::size_t line = 0;             // in the file, from 1
  std::string name;                 // for people
  std::string name_key;             // see name_key; empty when there is no name
  std::string common_key;           // the same in common kanji
  std::string reading;              // see reading_key
  std::vector<std::string> phones;  // keys, each once
  std::vector<std::string> mails;
  std::vector<std::string> addresses;  // they only confirm what else says
  // The earlier record of the file (by its index) whose cells are all the same.
  std::optional<std::uint32_t> copy_of;

  // Whether there is anything by which the record can be told from others.
  bool comparable() const {
    return !(name_key.empty() && reading.empty() && phones.empty() && mails.empty());
  }
  // Copies and records without anything to compare are left out of pairing.
  bool takes_part() const { return !copy_of && comparable(); }
};

// One for each row, in the file's order. Adds a warning for each row that has nothing to compare.
std::vector<Person> people_of(AddressFile& file, const Layout& layout);

}  // namespace tqsync
