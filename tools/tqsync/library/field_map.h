// How the columns of one file stand to the fields of the address book: its format, and what the
// library's field tables make of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "library/formats.h"

namespace tqsync {

// Stands where there is no field.
inline constexpr short kNoField = -1;

// A field that the library added to a file's list.
struct AddedField {
  short field;
  bool special;  // carries what the file's own fields cannot
};

class FieldMap {
 public:
  // A CSV file with these headings, see match_headings. Throws Failure when the library has no
  // room.
  FieldMap(const std::vector<std::string>& headings, short application);
  // A field file, whose columns are its own.
  explicit FieldMap(const Format& format);

  // Nothing when no heading is known.
  const std::optional<Format>& format() const { return format_; }
  bool by_place() const { return by_place_; }  // the columns were told by their places alone
  short application() const { return format_ ? format_->application : short{0}; }
  short application_type() const;  // 0 when it is not registered

  // The fields of the file, each once and with its column, in the order of the columns.
  const std::vector<FormatColumn>& fields() const { return fields_; }
  // What the library added for the application.
  std::vector<AddedField> added() const;
  // The column of a field; nothing when the file does not have it.
  std::optional<std::size_t> column(short field) const;
  // The field of the file that serves for this one: itself or the first of the same key. kNoField
  // when there is none.
  short stand_in(short field) const;
  // The field of the file that serves a matching key: the application's key field (the master's
  // when the application has none) or what stands in for it.
  short key_field(short key) const;

  // The master's visible fields in their order, and the field that serves a key there.
  std::vector<short> master_fields() const;
  short master_key_field(short key) const;

  // What the library knows about a field.
  short rank(short field) const;
  bool repeats(short field) const;              // belongs to an unlimited type
  std::string search_table(short field) const;  // "" for none

 private:
  // An object of the library.
  struct Table {
    Table();
    ~Table();
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    std::int32_t handle;
  };

  void set_master(std::span<const Format> formats);
  void add_file(std::string field_file);

  Table table_;
  std::optional<Format> format_;
  bool by_place_ = false;
  std::vector<FormatColumn> fields_;
};

}  // namespace tqsync
