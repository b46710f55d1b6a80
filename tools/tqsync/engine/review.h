// The user's decisions about candidate groups: what an answer means, which records of a group are
// one person then, and what the merged record holds. Pure: nothing is asked or written here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/common_fields.h"
#include "engine/plan.h"

namespace tqsync {

// The records of a group: those of the master file, then the partners' (`origins`).
std::vector<RecordRef> group_records(const Plan& plan, std::span<const RecordRef> origins);

// The pair that ties a partner record best to the master records; null for a record of the master
// file, and for one that is new itself.
const Pair* best_pair(const Plan& plan, RecordRef ref);

// Those of `records` that are the same person as the first one without asking: linked to the same
// master record. Places, ascending, 0 among them.
std::vector<std::size_t> linked_to_first(const Plan& plan, std::span<const RecordRef> records);

// What was typed when a group was shown.
struct Answer {
  enum class Kind : std::uint8_t {
    kUnclear,
    kThese,   // the records at `places` are one person
    kAll,     // all of them are
    kLinked,  // only those that are linked for certain
    kSkip,    // left open
    kQuit     // left open, with all that follow
  };
  Kind kind = Kind::kUnclear;
  std::vector<std::size_t> places = {};  // from 0, ascending
  bool by_field = false;                 // choose the value of every field that differs
  bool rest = false;                     // the same answer for all that follow
};
// `count` is the number of records shown; they are called 1, 2, 3 and so on.
Answer parse_answer(std::string_view text, std::size_t count);

// The place from 1 to `count` that was typed, counted from 0; `usual` for an empty text, `count`
// for anything else.
std::size_t parse_place(std::string_view text, std::size_t count, std::size_t usual);

// Fields whose value was chosen: the record, by its place, from which each is taken.
using FieldChoices = std::map<std::size_t, std::size_t>;

// The place of the first record that has a value in the field; 0 when none has.
std::size_t first_with_value(std::span<const Values> records, std::size_t field);
// The merged record: for each field the chosen value, else the first that is not empty.
Values merge_values(std::span<const Values> records, const FieldChoices& chosen);

// One person of a group that was decided.
struct DecidedPerson {
  std::size_t group;               // from 1
  std::vector<RecordRef> records;  // the one that stays first
  Values values;                   // merged; fields that came later are missing
  FieldChoices chosen;
};

// An address file in the master's form with the decisions applied: the master's records, merged
// where they were merged; those that went into another one are gone, and persons whom the master
// does not have stand at the end. Its columns are the master's, and those further fields that
// hold something.
struct MergedBook {
  std::vector<std::string> headings;
  std::vector<Values> rows;  // as many cells each as there are headings
};
MergedBook merge_book(const AddressFile& master, const std::vector<Field>& fields,
                      std::span<const DecidedPerson> persons);

}  // namespace tqsync
