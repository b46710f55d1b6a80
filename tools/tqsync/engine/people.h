// The people of an address file: what of a row is compared, in the form in which it is compared.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "files/address_file.h"

namespace tqsync {

// What a column holds, as far as pairing is concerned.
enum class Column : std::uint8_t {
  kOther,
  kName,
  kFamilyName,
  kGivenName,
  kReading,
  kFamilyReading,
  kGivenReading,
  kCompany,  // stands for the name where there is none
  kPhone,    // any number but fax
  kMail
};

// The column that a heading names, in the Japanese or English of common programs.
Column column_of(const std::string& heading);

struct Person {
  std::size_t line = 0;             // in the file, from 1
  std::string name;                 // for people
  std::string name_key;             // see name_key; empty when there is no name
  std::string common_key;           // the same in common kanji
  std::string reading;              // see reading_key
  std::vector<std::string> phones;  // keys, each once
  std::vector<std::string> mails;
  // The earlier record of the file (by its index) whose cells are all the same.
  std::optional<std::uint32_t> copy_of;

  // Whether there is anything by which the record can be told from others.
  bool comparable() const {
    return !(name_key.empty() && reading.empty() && phones.empty() && mails.empty());
  }
  // Copies and records without anything to compare are left out of pairing.
  bool takes_part() const { return !copy_of && comparable(); }
};

// One for each row, in the file's order. Throws Failure when no heading names a column that can be
// compared; adds a warning for each row that has nothing to compare.
std::vector<Person> people_of(AddressFile& file);

}  // namespace tqsync
