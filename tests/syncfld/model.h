// Field tables as plain vectors and linear searches, step by step as docs/fields.md and the public
// header tell them; slow and obvious.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "base/sjis_literal.h"
#include "syncfld/field_database.h"
#include "syncfld/field_tables.h"

namespace tq::test {

using namespace literals;

struct ModelField {
  short fldId;
  std::string table;
  short special = 0;
  short mugenType = 0;
  short dataId = 0;
  short schFld = 0;
  short hidden = 0;
  short dataType = 0;
};

using Ids = std::vector<short>;
using ModelList = std::vector<ModelField>;

inline const FieldAttributes* model_row(short fldId) {
  for (const FieldAttributes& row : s_fldAttrTbl) {
    if (row.fldId == fldId) return &row;
  }
  return nullptr;
}

inline short model_type(short fldId) {
  const FieldAttributes* row = model_row(fldId);
  return row == nullptr ? short{0} : row->mugenType;
}

inline short model_search(short fldId) {
  const FieldAttributes* row = model_row(fldId);
  return fldId == 970 ? short{9} : row == nullptr ? short{-1} : row->schFld;
}

inline const ModelField* model_find(const ModelList& list, short fldId) {
  for (const ModelField& field : list) {
    if (field.fldId == fldId) return &field;
  }
  return nullptr;
}

inline bool is_system(short fldId) { return (fldId >= 970 && fldId <= 974) || fldId == 999; }

struct ModelFile {
  const FieldDatabase& db;
  short mode;  // in which it is built
  ModelList main, second;

  bool carries(short fldId) const {
    return model_find(mode == 0 ? main : second, fldId) != nullptr;
  }

  void add(short fldId, short special, bool both) {
    const DatabaseField* definition = db.find(fldId);
    const std::string table = definition == nullptr ? "" : definition->table;
    main.push_back({fldId, table, special, model_type(fldId)});
    if (both) second.push_back({fldId, "シンクロ２"_sjis, special, model_type(fldId)});
  }

  void add_mail_names() {
    if (carries(242) && !carries(244)) add(244, 1, true);
    if (carries(243) && !carries(245)) add(245, 1, true);
    for (const short head : Ids{242, 243}) {
      for (const FieldAttributes& row : s_fldAttrTbl) {
        if (row.mugenType != model_type(head) || row.isMugen != 0 || !carries(row.fldId)) continue;
        short name = static_cast<short>(row.fldId + 20);
        if (row.fldId == 255) name = 266;
        if (row.fldId == 259) name = 280;
        if (!carries(name)) add(name, 1, true);
      }
    }
  }

  static bool present(ModelList& list, short target, bool takes_4) {
    for (ModelField& field : list) {
      if (field.fldId == target) return true;
      if (takes_4 && field.fldId == 4) {
        field.fldId = target;
        return true;
      }
    }
    return false;
  }

  void add_readings() {
    for (const short target : Ids{0, 2}) {
      if (present(main, target, target == 0)) continue;
      add(target, 0, false);
      if (!present(second, target, target == 0)) {
        second.push_back({target, "シンクロ２"_sjis, 0, model_type(target)});
      }
    }
  }

  void build(const std::string& path, short appNo) {
    const auto file = db.files.find(path);
    if (file == db.files.end()) return;
    const auto listed = [&](short fldId) {
      return std::any_of(file->second.begin(), file->second.end(),
                         [&](const FieldRecord& record) { return record.fldId == fldId; });
    };
    for (const DatabaseField& field : db.fields) {
      const bool ours = field.table.find("住所録"_sjis) != std::string::npos && field.hidden == 0;
      if (!is_system(field.fldId) && !(listed(field.fldId) && ours)) continue;
      main.push_back({field.fldId, field.table, 0, model_type(field.fldId)});
      if (field.second != 0) {
        second.push_back({field.fldId, "シンクロ２"_sjis, 0, model_type(field.fldId)});
      }
    }
    const short app = db.fields.empty() ? short{0} : appNo;
    add_mail_names();
    if (app == 44 || app == 1 || app == 57 || app == 79) {
      for (const short fldId : Ids{242, 244, 243, 245}) add(fldId, 0, true);
    }
    if (app == 12) add(588, 1, true);
    if (app == 7 || app == 77) {
      add(286, 0, false);
      add(287, 0, false);
    }
    if (app == 47 || app == 46) add_readings();
    for (ModelList* list : {&main, &second}) {
      for (ModelField& field : *list) {
        for (const FieldRecord& record : file->second) {
          if (record.fldId != field.fldId) continue;
          field.dataId = record.dataId;
          break;
        }
        field.schFld = model_search(field.fldId);
      }
    }
  }
};

inline short model_replacement(const ModelList& list, short fldId) {
  if (model_find(list, fldId) != nullptr) return fldId;
  for (const KeyField& row : s_keyFldTbl) {
    if (row.fldId != fldId) continue;
    for (const KeyField& other : s_keyFldTbl) {
      if (other.keyNo == row.keyNo && model_find(list, other.fldId)) return other.fldId;
    }
    break;
  }
  return fldId;
}

inline short model_data_id(const ModelList& list, short fldId) {
  const auto direct = [&](short id) {
    const ModelField* field = model_find(list, id);
    return field == nullptr ? short{-1} : field->dataId;
  };
  const short found = direct(fldId);
  if (found >= 0) return found;
  const short other = model_replacement(list, fldId);
  return other >= 0 ? direct(other) : found;
}

// The master's lists: visible fields first, hidden ones behind them.
inline void model_master(const FieldDatabase& db, const std::string& path, ModelList& main,
                         ModelList& second) {
  const auto file = db.files.find(path);
  if (file == db.files.end()) return;
  for (const FieldRecord& record : file->second) {
    const DatabaseField* field = db.find(record.fldId);
    const DatabaseField none;
    const DatabaseField& known = field == nullptr ? none : *field;
    const bool shown = is_system(record.fldId) ||
                       (known.table.find("住所録"_sjis) != std::string::npos && known.hidden == 0);
    ModelField added{record.fldId, known.table, 0, model_type(record.fldId)};
    added.hidden = shown ? 0 : 1;
    added.dataType = known.kind == 10 ? 2 : added.mugenType == 0 ? 0 : 1;
    added.schFld = model_search(record.fldId);
    main.push_back(added);
    if (known.second != 0) second.push_back(added);
  }
  for (ModelList* list : {&main, &second}) {
    std::stable_sort(list->begin(), list->end(),
                     [](const ModelField& a, const ModelField& b) { return a.hidden < b.hidden; });
  }
}

}  // namespace tq::test
