// Records of different files side by side: whatever the files call their columns, values of one
// kind stand in one field. The fields are the master's columns in their order; behind them stand
// those that only a partner has. No value is left out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/plan.h"
#include "files/address_file.h"

namespace tqsync {

enum class ValueKind : std::uint8_t {
  kOther,
  kFamilyName,
  kGivenName,
  kName,
  kFamilyReading,
  kGivenReading,
  kReading,
  kCompany,
  kPhone,
  kMail
};

// What a column of a file holds.
inline constexpr short kUnknownField = -1;
struct FileColumn {
  short field = kUnknownField;  // field id of the address book
  ValueKind kind = ValueKind::kOther;
};
using FileColumns = std::vector<FileColumn>;

struct Field {
  std::string name;  // the heading
  FileColumn column;
};

// One text for each field of the layout, empty ones included.
using Values = std::vector<std::string>;

class CommonFields {
 public:
  // The files of a run, the master's first, and what their columns hold, one for each heading. Both
  // must stay where they are.
  CommonFields(std::span<const AddressFile> files, std::span<const FileColumns> columns);

  // Grows when a record has more telephones or mail addresses than there are fields for.
  const std::vector<Field>& fields() const { return fields_; }

  // The values of some records that are looked at together. A partner's name goes into the master's
  // columns, in parts where it keeps parts, and so do readings and companies; a telephone goes
  // where an earlier one of the records has the same number, else to the first free field of its
  // kind, and so does a mail address. Other columns are matched by their headings and their field
  // ids.
  std::vector<Values> place(std::span<const RecordRef> records);

 private:
  class Placing;

  std::size_t find_field(const std::string& heading, const FileColumn& column) const;
  std::size_t find_field(ValueKind kind) const;
  std::size_t add_field(const std::string& heading, const FileColumn& column);
  void find_homes(std::size_t book);

  std::span<const AddressFile> files_;
  std::span<const FileColumns> columns_;
  std::vector<Field> fields_;
  // By file and column: the field to which the column belongs whatever it holds; nothing for names,
  // telephones and mail addresses, which are placed record by record.
  std::vector<std::vector<std::optional<std::size_t>>> homes_;
};

// Whether two values of a kind say the same: names, readings, telephones and mail addresses as they
// are compared, everything else to the letter.
bool same_value(ValueKind kind, const std::string& a, const std::string& b);

// How the values of one field differ between some records.
enum class Difference : std::uint8_t { kNone, kSomeEmpty, kDiffers };
Difference difference(ValueKind kind, std::span<const Values> records, std::size_t field);

}  // namespace tqsync
