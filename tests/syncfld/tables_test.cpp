// The compiled-in tables: lookups against plain searches, and whether the page about fields and the
// shipped definition files say the same.
#include "syncfld/field_tables.h"

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "base/cp932.h"
#include "siblings/siblings.h"
#include "support/definitions.h"
#include "support/test.h"
#include "tqutil/appinfo.h"
#include "tqutil/csvinfo.h"
#include "tqutil/syncfld.h"

namespace {

using tq::FieldAttributes;
using tq::KeyField;
using tq::s_fldAttrTbl;
using tq::s_keyFldTbl;
using Ids = std::vector<short>;

TEST(Attributes, EveryIdLikeASearchFromTheFirstRow) {
  const CSyncFldCtl fields;
  for (int id = -32768; id <= 32767; ++id) {
    const auto fldId = static_cast<short>(id);
    const FieldAttributes* row = nullptr;
    for (std::size_t i = s_fldAttrTbl.size(); i-- > 0;) {
      if (s_fldAttrTbl[i].fldId == fldId) row = &s_fldAttrTbl[i];
    }
    const KeyField* key = nullptr;
    for (std::size_t i = s_keyFldTbl.size(); i-- > 0;) {
      if (s_keyFldTbl[i].fldId == fldId) key = &s_keyFldTbl[i];
    }
    ASSERT_EQ(tq::find_attributes(fldId), row) << id;
    ASSERT_EQ(tq::find_key(fldId), key) << id;
    if (row != nullptr && id % 7 != 0) continue;
    EXPECT_EQ(fields.SykyIsMugen(fldId), row == nullptr ? 0 : row->isMugen);
    EXPECT_EQ(fields.SykyGetMugenType(fldId), row == nullptr ? 0 : row->mugenType);
    EXPECT_EQ(fields.SykyGetMugenGrp(fldId), row == nullptr ? -1 : row->mugenGrp);
    EXPECT_EQ(fields.SykyGetCmpGrp(fldId), row == nullptr ? -1 : row->cmpGrp);
    EXPECT_EQ(fields.SykyGetFldRank(fldId), row == nullptr ? 99 : row->rank);
    const short without_row = id == 970 ? 9 : -1;
    EXPECT_EQ(fields.SykyFld2SchFld(fldId), row == nullptr ? without_row : row->schFld);
    EXPECT_EQ(fields.SykyFld2SchFldMst(fldId), row == nullptr ? without_row : row->schFldMst);
  }
}

TEST(Attributes, SearchTableNames) {
  const CSyncFldCtl fields;
  std::string names;
  for (short id = -3; id < 20; ++id) {
    const char* name = fields.SykyGetSchTblName(id);
    if (name != nullptr) names += std::to_string(id) + name + " ";
  }
  EXPECT_EQ(names, "1Name 2Tel 3Mail 4Mail2 5CName 9RecordId ");
}

// --- docs/fields.md ------------------------------------------------------------------------------

struct Documented {
  std::string name;
  std::string values;  // of the other columns
};

// The rows `| id | name | … |` of the page, by id.
std::map<int, Documented> documented_fields() {
  std::ifstream page(std::string(TQ_DOCS_FOLDER) + "/fields.md");
  EXPECT_TRUE(page.is_open());
  std::map<int, Documented> rows;
  for (std::string line; std::getline(page, line);) {
    std::istringstream cells(line);
    std::string none, id, name, values;
    std::getline(cells, none, '|');
    std::getline(cells, id, '|');
    std::getline(cells, name, '|');
    std::getline(cells, values);
    if (line.empty() || line[0] != '|' || id.find_first_of("0123456789") != 1) continue;
    EXPECT_TRUE(rows.insert({std::stoi(id), {name.substr(1, name.size() - 2), values}}).second)
        << line;
  }
  return rows;
}

std::string expected_values(const FieldAttributes& row) {
  std::ostringstream out;
  for (const short value : {row.isMugen, row.mugenType, row.mugenGrp, row.rank, row.schFld,
                            row.schFldMst, row.cmpGrp}) {
    out << ' ' << value << " |";
  }
  std::string keys;
  for (const KeyField& key : s_keyFldTbl) {
    if (key.fldId != row.fldId) continue;
    keys += ' ' + std::to_string(key.keyNo) + '.' + std::to_string(key.subNo);
  }
  return out.str() + (keys.empty() ? " " : keys) + " |";
}

TEST(FieldsPage, NamesEveryFieldWithItsValues) {
  std::map<int, Documented> rows = documented_fields();
  std::set<std::string> names;
  std::set<short> seen;
  for (const FieldAttributes& row : s_fldAttrTbl) {
    const Documented& told = rows[row.fldId];
    EXPECT_FALSE(told.name.empty()) << row.fldId;
    if (!seen.insert(row.fldId).second) continue;
    EXPECT_EQ(told.values, expected_values(row)) << row.fldId;
    EXPECT_TRUE(names.insert(told.name).second) << told.name << " names two fields";
  }
  for (const short id : Ids{970, 971, 972, 973, 974, 999})
    EXPECT_FALSE(rows[id].name.empty()) << id;
  EXPECT_EQ(rows.size(), 498U + 6U);
}

// --- Shipped files -------------------------------------------------------------------------------

TEST(Shipped, FieldDefinitionsAreThoseOfThePage) {
  DefinitionHome home;
  std::map<int, Documented> rows = documented_fields();
  const tRECDB_API& recdb = tq::recdb();
  ASSERT_EQ(recdb.RecDbGetMstFldInfoCnt(nullptr), static_cast<int32_t>(rows.size()));
  for (const auto& [id, told] : rows) {
    char caption[66];
    char table[66];
    const auto fldId = static_cast<short>(id);
    ASSERT_EQ(recdb.RecDbGetFldIdPair2(nullptr, fldId, caption, table), 0) << id;
    EXPECT_EQ(tq::cp932::to_utf8(caption), told.name) << id;
    EXPECT_STRNE(table, "") << id;
  }
}

// The paths of all shipped formats.
Texts shipped_formats() {
  Texts paths;
  char path[TQ_PATH_SIZE];
  int32_t list = GetCsvFldInfoInit1();
  while (GetCsvFldInfoNext1(nullptr, nullptr, nullptr, path, list) == 0) paths.emplace_back(path);
  GetCsvFldInfoEnd(list);
  list = GetCsvFldInfoInit2();
  while (GetCsvFldInfoNext2(nullptr, nullptr, path, list) == 0) paths.emplace_back(path);
  GetCsvFldInfoEnd(list);
  return paths;
}

TEST(Shipped, FormatsMapOntoTheMasterAndOfferTheirKeys) {
  DefinitionHome home;
  char master[TQ_PATH_SIZE];
  const int32_t list = GetCsvFldInfoInit3();
  ASSERT_EQ(GetCsvFldInfoNext3(nullptr, nullptr, master, list), 0);
  EXPECT_EQ(GetCsvFldInfoEnd(list), 0);
  const Texts paths = shipped_formats();
  EXPECT_GE(paths.size(), 5U);
  CSyncFldCtl fields;
  fields.SyflCreateFileTbl(static_cast<short>(paths.size()));
  fields.SyflSetMstFileInfo(reinterpret_cast<unsigned char*>(master));
  EXPECT_EQ(fields.SyflGetMstFldCntMax(), 504);
  const tFLDCOM_API& fldcom = tq::fldcom();
  for (std::string path : paths) {
    SCOPED_TRACE(path);
    tSYNC_INFO info{};
    info.fldFile = path.data();
    ASSERT_EQ(
        fldcom.FldComClassifyFile(nullptr, path.c_str(), &info.appType, nullptr, nullptr, nullptr),
        0);
    const auto file = static_cast<short>(fields.SyflAddFileInfo(&info));
    const short appType = GetAppType(info.appType);
    ASSERT_NE(appType, 0) << "no application has number " << info.appType;
    void* records = fldcom.FldComFldFileOpen(nullptr, path.c_str(), "r");
    for (tFLDCOM_FLDREC record; fldcom.FldComFldFileRead(nullptr, records, &record) == 0;) {
      EXPECT_NE(tq::find_attributes(record.fldId), nullptr) << record.fldId;
      if (fields.SyflIsMstFld(record.fldId) == 0) continue;  // settings of a telephone
      EXPECT_EQ(fields.SyflGetDataIdS(file, record.fldId), record.dataId) << record.fldId;
    }
    fldcom.FldComFldFileClose(nullptr, records);
    // Its keys are fields that it has, and its names can be matched.
    int keys = 0;
    for (short keyNo = 0; keyNo <= 19; ++keyNo) {
      const short fldId = CSyncFldCtl::SykyGetKey(appType, keyNo);
      if (fldId < 0) continue;
      ++keys;
      EXPECT_EQ(fields.SyflIsFldId(file, fldId), 1) << fldId;
      EXPECT_EQ(fields.SyflIsOutPutFldId2(file, fldId), 0) << fldId << " was added";
      EXPECT_GE(CSyncFldCtl::SykyGetKey(TQ_APP_MASTER, keyNo), 0) << "the master has none";
    }
    EXPECT_GE(keys, 2);
  }
}

}  // namespace
