// The plan of a run: which records of the partner files are which records of the master, which of
// them the user must decide, and which are new on either side. Pure: it looks at people and says
// what it found with its reasons; nothing is changed anywhere.
//
// The partner files are taken in order. A record that no master record fits becomes a new master
// record, and the later files are compared with it too, so that a person whom two partners know and
// the master does not is new only once.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "engine/match.h"

namespace tqsync {

// One file: 0 is the master, the others are partners.
using Book = std::vector<Person>;

// A record of a file, by the places of both.
struct RecordRef {
  std::uint32_t book;
  std::uint32_t record;

  bool operator==(const RecordRef&) const = default;
  bool operator<(const RecordRef& other) const {
    return book != other.book ? book < other.book : record < other.record;
  }
};

enum class Verdict : std::uint8_t {
  kLink,  // the same person for certain; a partner record has at most one such pair
  kOpen,  // perhaps the same person: the user decides
  kNew    // the partner record itself becomes this master record
};

struct Pair {
  std::uint32_t master;  // master record: index into Plan::masters
  std::uint32_t record;  // partner record: index into its book
  Likeness likeness;
  Verdict verdict;
};

// A record that seems to repeat an earlier one of its own file.
struct Duplicate {
  std::uint32_t record;
  std::uint32_t earlier;
  Likeness likeness;
  bool copy;  // every cell is the same; copies take no further part
};

struct BookPlan {
  std::vector<Pair> pairs;             // by record, within it the best first; none for the master
  std::vector<Duplicate> duplicates;   // by record
  std::vector<std::uint32_t> missing;  // master records that the partner does not have; ascending
};

// The pairs of one partner record, the best first.
std::span<const Pair> pairs_of(const BookPlan& book, std::uint32_t record);

// A key that too many records share to find anybody by it.
struct CommonKey {
  std::string key;
  std::size_t holders;
};

struct Plan {
  // Master records by record number: those of the master file, then the new ones.
  std::vector<RecordRef> masters;
  std::vector<BookPlan> books;
  std::vector<CommonKey> common_keys;
};

// How pairs become links, candidates and new records, as told to people in the help.
extern const char* const kPairingRule;

Plan make_plan(std::span<const Book> books);

}  // namespace tqsync
