// tqsync fields: how the columns of an address file, or of a field file, stand to the fields of the
// master.
#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "commands/command.h"
#include "failure.h"
#include "files/address_file.h"
#include "library/applications.h"
#include "library/field_map.h"
#include "terminal/table.h"
#include "text/native_path.h"

namespace tqsync {
namespace {

struct Flags {
  std::string file;
  short application = 0;
  Encoding encoding = Encoding::kDetect;
};

// A file whose fields are shown.
struct Shown {
  std::string name;
  std::vector<std::string> headings;  // of a CSV file
  std::unique_ptr<FieldMap> map;

  // The heading of a column, as the file has it.
  std::string heading(std::size_t column) const {
    if (column < headings.size()) return headings[column];
    const auto& fields = map->fields();
    const auto found = std::ranges::find(fields, column, &FormatColumn::column);
    return found == fields.end() ? "" : found->heading;
  }
};

bool is_field_file(const std::string& path) {
  constexpr std::size_t kExtension = 4;
  if (path.size() < kExtension) return false;
  std::string end = path.substr(path.size() - kExtension);
  for (char& c : end) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
  return end == ".FLD";
}

Shown read(const Flags& flags) {
  Shown shown;
  shown.name = file_name(flags.file);
  if (is_field_file(flags.file)) {
    shown.map = std::make_unique<FieldMap>(read_format(flags.file));
  } else {
    shown.headings = read_address_file(flags.file, flags.encoding).headings;
    shown.map = std::make_unique<FieldMap>(shown.headings, flags.application);
  }
  return shown;
}

// What a column is called for people, who count from 1.
std::string number(std::size_t column) { return std::to_string(column + 1); }

std::string column_number(const FieldMap& map, short field) {
  const auto column = map.column(field);
  return column ? number(*column) : "";
}

Table::Column right(const char* heading) { return {heading, Table::Kind::kNumber}; }

// Every column with its field; what the field is for.
Table columns_table(const Shown& shown) {
  const FieldMap& map = *shown.map;
  Table table("column", {right("column"), {"heading"}, right("id"), {"field"}, {"use"}});
  std::size_t next = 0;
  const auto skip_to = [&](std::size_t column) {
    for (; next < column; ++next) {
      if (next < shown.headings.size())
        table.add({number(next), shown.headings[next], "", "", "unknown"});
    }
  };
  for (const FormatColumn& field : map.fields()) {
    skip_to(field.column);
    next = std::max(next, field.column + 1);
    std::string use = map.search_table(field.field);
    if (map.repeats(field.field)) use += use.empty() ? "repeats" : ", repeats";
    if (!map.column(field.field)) use = "not synchronised";
    table.add({number(field.column), shown.heading(field.column), std::to_string(field.field),
               field_name(field.field), use});
  }
  skip_to(shown.headings.size());
  return table;
}

// The fields by which the file's records can be matched with the master's.
Table keys_table(const Shown& shown) {
  const FieldMap& map = *shown.map;
  Table table("key", {right("key"), {"master field"}, right("id"), {"field"}, right("column")});
  for (short key = 0; key < kKeys; ++key) {
    const short master = map.master_key_field(key);
    const short field = map.key_field(key);
    if (master < 0 && field < 0) continue;
    const std::string name = master < 0 ? "" : field_name(master);
    if (field < 0) {
      table.add({std::to_string(key), name, "", "missing", ""});
    } else {
      table.add({std::to_string(key), name, std::to_string(field), field_name(field),
                 column_number(map, field)});
    }
  }
  return table;
}

Table added_table(const FieldMap& map) {
  Table table("added", {right("id"), {"field"}, {"special"}});
  for (const AddedField& added : map.added()) {
    table.add({std::to_string(added.field), field_name(added.field), added.special ? "yes" : "no"});
  }
  return table;
}

// The master's main fields that the file has no column for, with what serves instead.
Table missing_table(const FieldMap& map) {
  constexpr short kSecondRank = 2;
  Table table("missing", {right("id"), {"field"}, {"instead"}, right("column")});
  for (const short field : map.master_fields()) {
    if (map.column(field) || map.rank(field) > kSecondRank) continue;
    const short instead = map.stand_in(field);
    table.add({std::to_string(field), field_name(field),
               instead == kNoField ? "" : field_name(instead), column_number(map, instead)});
  }
  return table;
}

void print(const char* title, const Table& table, Output output) {
  if (output == Output::kPeople) {
    if (table.size() == 0) return;
    std::cout << '\n' << title << '\n';
  }
  table.print(std::cout, {output});
}

void fields(const Flags& flags, Output output) {
  const Shown shown = read(flags);
  const FieldMap& map = *shown.map;
  if (!map.format()) {
    throw Failure(
        shown.name +
        ": no heading is known. \"tqsync formats\" shows the known formats; a field file "
        "in the folder fields/2b of the home folder adds one, and --app takes the columns "
        "by their places.");
  }
  if (output == Output::kPeople) {
    std::cout << shown.name << ": " << printable(map.format()->title) << " (application "
              << map.application() << ", type " << map.application_type() << ")\n";
    if (map.by_place())
      std::cout << "No heading is known; the columns are taken by their places.\n";
  }
  print("Columns", columns_table(shown), output);
  print("Matching keys", keys_table(shown), output);
  print("Added by the library", added_table(map), output);
  print("Main fields of the master that have no column", missing_table(map), output);
}

}  // namespace

void add_fields_command(CLI::App& app, Program& program) {
  CLI::App* command = app.add_subcommand(
      "fields", "Show how the columns of an address file map onto the master's fields");
  const auto flags = std::make_shared<Flags>();
  command
      ->add_option("file", flags->file, "A CSV file with a heading line, or a field file (*.FLD)")
      ->required();
  command->add_option("--app", flags->application, "Number of the application that wrote the file")
      ->check(CLI::Range(0, 32767));
  add_encoding_option(*command, flags->encoding, "Encoding of the file, instead of the detected");
  command->footer("Columns are counted from 1. The fields are those of docs/fields.md.");
  command->callback([flags, &program] {
    program.action = [flags, &program] { fields(*flags, program.output); };
  });
}

}  // namespace tqsync
