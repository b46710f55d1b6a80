// Building the field lists of a member file: the database's fields that its field file names, the
// special fields of its application, and where each field's data stands.
#include <memory>

#include "base/sjis_literal.h"
#include "common/text.h"
#include "siblings/siblings.h"
#include "syncfld/sync_fld_state.h"

namespace tq {
namespace {

using namespace literals;

// An open membership test of a field file.
class MembershipTest {
 public:
  explicit MembershipTest(const char* field_file)
      : api_(fldcom()), test_(api_.FldComFldDataInInit(api_.context, field_file)) {}
  ~MembershipTest() {
    if (test_ != nullptr) api_.FldComFldDataInEnd(api_.context, test_);
  }
  MembershipTest(const MembershipTest&) = delete;
  MembershipTest& operator=(const MembershipTest&) = delete;

  bool is_open() const { return test_ != nullptr; }
  bool has(short appNo, short fldId) const {
    constexpr short kSide = 1;
    return api_.FldComIsFldDataIn(api_.context, appNo, TQ_APP_MASTER, fldId, kSide, test_) != 0;
  }

 private:
  const tFLDCOM_API& api_;
  void* test_;
};

bool is_hidden(short fldId) {
  const tRECDB_API& api = recdb();
  tRECDB_FLDINFO info{};
  api.RecDbGetFldInfo(api.context, fldId, &info);
  return info.hidden != 0;
}

// One record of a field file.
struct tSYFL_FLDIDINFO {
  short fldId;
  short dataId;
};

// All records of a field file in its order; none when it cannot be opened.
std::vector<tSYFL_FLDIDINFO> mReadFldFile(const char* field_file) {
  std::vector<tSYFL_FLDIDINFO> records;
  if (*field_file == '\0') return records;
  const FieldRecords file(field_file);
  for (tFLDCOM_FLDREC record; file.next(record);) {
    records.push_back({record.fldId, record.dataId});
  }
  return records;
}

// Data ids and search tables belong to the ids that the list ends up with, so they come last.
void finish(FieldList& list, const std::vector<tSYFL_FLDIDINFO>& records,
            const IdIndex& first_record) {
  for (tSYFL_FLDINFO& field : list.records()) {
    const std::int32_t place = first_record.find(field.fldId);
    if (place >= 0) field.dataId = records[static_cast<std::size_t>(place)].dataId;
    field.schFld = search_table(field.fldId);
  }
  list.resolve();
}

}  // namespace

bool is_address_table(std::string_view table) {
  return table.find("住所録"_sjis) != std::string_view::npos;
}

tSYFL_FLDINFO new_field(short fldId, std::string_view table) {
  tSYFL_FLDINFO field{};
  field.fldId = fldId;
  const FieldAttributes* attributes = find_attributes(fldId);
  if (attributes != nullptr) field.mugenType = attributes->mugenType;
  copy_text(field.table, table);
  return field;
}

void append_to_second(tSYFL_FILEINFO& of, tSYFL_FLDINFO field) {
  copy_text(field.table, "シンクロ２"_sjis);
  of.second.append(field);
}

short search_table(short fldId) {
  if (fldId == kRecordIdField) return kSearchRecordId;
  const FieldAttributes* attributes = find_attributes(fldId);
  return attributes == nullptr ? short{-1} : attributes->schFld;
}

FieldRecords::FieldRecords(const char* field_file)
    : api_(fldcom()), file_(api_.FldComFldFileOpen(api_.context, field_file, "r")) {}

FieldRecords::~FieldRecords() {
  if (file_ != nullptr) api_.FldComFldFileClose(api_.context, file_);
}

bool FieldRecords::next(tFLDCOM_FLDREC& record) const {
  record = {};
  return file_ != nullptr && api_.FldComFldFileRead(api_.context, file_, &record) == 0;
}

}  // namespace tq

void CSyncFldCtl::State::read_definitions(std::int32_t count) {
  definitions.clear();
  definition_of.clear();
  const tRECDB_API& api = tq::recdb();
  for (std::int32_t i = 0; i < count; ++i) {
    Definition definition{};
    if (api.RecDbGetFldIdPair(api.context, i, &definition.fldId, definition.table) != 0) continue;
    definition_of.add(definition.fldId, static_cast<std::int32_t>(definitions.size()));
    definitions.push_back(definition);
  }
}

void CSyncFldCtl::State::mMakeFldInfo(tq::tSYFL_FILEINFO& of) {
  const tRECDB_API& api = tq::recdb();
  const std::int32_t count = api.RecDbGetMstFldInfoCnt(api.context);
  const tq::MembershipTest test(of.fldFile);
  if (!test.is_open()) return;
  read_definitions(count);
  const short appNo = of.appType != 0 ? of.appType : of.appType2;
  for (const Definition& definition : definitions) {
    const short fldId = definition.fldId;
    const std::string_view table = tq::view(definition.table);
    if (!tq::is_in_every_list(fldId) &&
        !(test.has(appNo, fldId) && tq::is_address_table(table) && !tq::is_hidden(fldId))) {
      continue;
    }
    const tq::tSYFL_FLDINFO field = tq::new_field(fldId, table);
    of.main.append(field);
    if (api.RecDbIsFldSync2Tbl(api.context, fldId) != 0) tq::append_to_second(of, field);
  }
  // Without definitions no application is known, so only what every file gets is added.
  add_special_fields(of, count <= 0 ? short{0} : appNo);

  const std::vector<tq::tSYFL_FLDIDINFO> records = tq::mReadFldFile(of.fldFile);
  tq::IdIndex first_record;
  for (std::size_t i = 0; i < records.size(); ++i) {
    first_record.add(records[i].fldId, static_cast<std::int32_t>(i));
  }
  tq::finish(of.main, records, first_record);
  tq::finish(of.second, records, first_record);
}
