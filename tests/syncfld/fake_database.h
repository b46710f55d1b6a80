// A record database and field files in memory, put behind the library's sibling tables.
#pragma once

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "support/own_siblings.h"

namespace tq::test {

struct FakeField {
  short fldId = 0;
  std::string table;
  short kind = 0;
  short hidden = 0;
  short second = 0;  // answer to RecDbIsFldSync2Tbl
};

struct FakeRecord {
  short fldId;
  short dataId;
};

// Answers come from the members, which tests fill; asking for a field file that is not among
// `files` fails. Field ids need not be unique: the database answers for the first.
class FakeDatabase {
 public:
  FakeDatabase();

  const FakeField* find(short fldId) const {
    for (const FakeField& field : fields) {
      if (field.fldId == fldId) return &field;
    }
    return nullptr;
  }

  std::vector<FakeField> fields;
  std::map<std::string, std::vector<FakeRecord>> files;
  short yes = 1;                // answer of the membership test
  std::vector<short> asked_as;  // application numbers that were asked about
  int open = 0;                 // field files that are not closed

 private:
  struct Reader {
    const std::vector<FakeRecord>* records;
    std::size_t next = 0;
  };

  static FakeDatabase& self(void* context) { return *static_cast<FakeDatabase*>(context); }
  static void* open_file(void* context, const char* path) {
    const auto found = self(context).files.find(path);
    if (found == self(context).files.end()) return nullptr;
    ++self(context).open;
    return new Reader{&found->second};
  }
  static void close_file(void* context, void* file) {
    --self(context).open;
    delete static_cast<Reader*>(file);
  }
  static short has(void* context, short appNo, short master, short fldId, short side, void* file);

  OwnSiblings siblings_{this};
};

inline short FakeDatabase::has(void* context, short appNo, short master, short fldId, short side,
                               void* file) {
  if (master != 1000 || side != 1) return 0;
  self(context).asked_as.push_back(appNo);
  for (const FakeRecord& record : *static_cast<Reader*>(file)->records) {
    if (record.fldId == fldId) return self(context).yes;
  }
  return 0;
}

inline FakeDatabase::FakeDatabase() {
  tFLDCOM_API& fldcom = siblings_.fldcom;
  fldcom.FldComFldDataInInit = open_file;
  fldcom.FldComIsFldDataIn = has;
  fldcom.FldComFldDataInEnd = close_file;
  fldcom.FldComFldFileOpen = [](void* context, const char* path, const char* mode) {
    return std::strcmp(mode, "r") == 0 ? open_file(context, path) : nullptr;
  };
  fldcom.FldComFldFileRead = [](void*, void* file, tFLDCOM_FLDREC* record) -> short {
    Reader& reader = *static_cast<Reader*>(file);
    if (reader.next >= reader.records->size()) return 1;
    record->fldId = (*reader.records)[reader.next].fldId;
    record->dataId = (*reader.records)[reader.next++].dataId;
    return 0;
  };
  fldcom.FldComFldFileClose = close_file;

  tRECDB_API& recdb = siblings_.recdb;
  recdb.RecDbGetMstFldInfoCnt = [](void* context) {
    return static_cast<int32_t>(self(context).fields.size());
  };
  recdb.RecDbGetFldIdPair = [](void* context, int32_t index, short* fldId, char* table) -> short {
    const FakeField& field = self(context).fields[static_cast<std::size_t>(index)];
    *fldId = field.fldId;
    std::strcpy(table, field.table.c_str());
    return 0;
  };
  recdb.RecDbGetFldIdPair2 = [](void* context, short fldId, char*, char* table) -> short {
    const FakeField* field = self(context).find(fldId);
    std::strcpy(table, field == nullptr ? "" : field->table.c_str());
    return field == nullptr ? 1 : 0;
  };
  recdb.RecDbGetFldInfo = [](void* context, short fldId, tRECDB_FLDINFO* info) -> short {
    const FakeField* field = self(context).find(fldId);
    *info = {};
    if (field == nullptr) return 1;
    info->kind = field->kind;
    info->hidden = field->hidden;
    return 0;
  };
  recdb.RecDbIsFldSync2Tbl = [](void* context, short fldId) -> short {
    const FakeField* field = self(context).find(fldId);
    return field == nullptr ? short{0} : field->second;
  };

  siblings_.install();
}

}  // namespace tq::test
