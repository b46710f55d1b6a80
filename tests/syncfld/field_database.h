// A record database and field files of a test's own: definition files in a home folder.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/definitions.h"

namespace tq::test {

struct DatabaseField {
  short fldId = 0;
  std::string table;
  short kind = 0;
  short hidden = 0;
  short second = 0;  // whether it belongs to the second list
};

struct FieldRecord {
  short fldId;
  short dataId;
};

struct FieldDatabase : DefinitionHome {
  const DatabaseField* find(short fldId) const {
    for (const DatabaseField& field : fields) {
      if (field.fldId == fldId) return &field;
    }
    return nullptr;
  }

  // Writes the files, of which the library then knows.
  void save() const {
    const auto row = [](auto... cells) { return ((std::to_string(cells) + ',') + ...); };
    std::string text;
    for (const DatabaseField& field : fields) {
      text += row(field.fldId, field.kind, field.hidden, field.second) + field.table + ",x\n";
    }
    write("definition\\RECDB.DAT", text);
    for (const auto& [name, records] : files) {
      text = "FLD:1,2\nt\nc\n";
      for (const FieldRecord& record : records) text += row(record.fldId, record.dataId) + "x\n";
      write(name, text);
    }
    read_again();
  }

  std::vector<DatabaseField> fields;  // of different ids
  std::map<std::string, std::vector<FieldRecord>> files;
};

}  // namespace tq::test
