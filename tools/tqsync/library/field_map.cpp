#include "library/field_map.h"

#include <algorithm>
#include <new>
#include <span>
#include <utility>

#include "failure.h"
#include "library/headings.h"
#include "text/library_text.h"
#include "tqutil/appinfo.h"
#include "tqutil/siblings.h"
#include "tqutil/syncfld.h"

namespace tqsync {
namespace {

// Field ids that belong to every list, whatever the file holds.
bool is_in_every_list(short field) { return (field >= 970 && field <= 974) || field == 999; }

// While one of these lives, the library finds these fields in every field file that it opens: an
// address file has none of its own, its headings are one.
class ServedFields {
 public:
  explicit ServedFields(std::span<const FormatColumn> fields) : fields_(fields) {
    tFLDCOM_API api{};
    api.size = sizeof api;
    api.context = this;
    api.FldComFldDataInInit = [](void* self, const char*) { return self; };
    api.FldComIsFldDataIn = [](void* self, short, short, short field, short, void*) {
      const auto& all = static_cast<ServedFields*>(self)->fields_;
      return short{std::ranges::find(all, field, &FormatColumn::field) != all.end()};
    };
    api.FldComFldDataInEnd = [](void*, void*) {};
    api.FldComFldFileOpen = [](void* self, const char*, const char*) {
      static_cast<ServedFields*>(self)->next_ = 0;
      return self;
    };
    api.FldComFldFileRead = [](void* self, void*, tFLDCOM_FLDREC* record) {
      return static_cast<ServedFields*>(self)->read(*record);
    };
    api.FldComFldFileClose = [](void*, void*) {};
    tTQ_SIBLINGS tables{};
    tables.size = sizeof tables;
    tables.fldcom = &api;
    tqSetSiblings(&tables);
  }
  ~ServedFields() { tqSetSiblings(nullptr); }
  ServedFields(const ServedFields&) = delete;
  ServedFields& operator=(const ServedFields&) = delete;

 private:
  short read(tFLDCOM_FLDREC& record) {
    if (next_ == fields_.size()) return 1;
    record = {};
    record.fldId = fields_[next_].field;
    record.dataId = static_cast<short>(fields_[next_].column);
    ++next_;
    return 0;
  }

  std::span<const FormatColumn> fields_;
  std::size_t next_ = 0;
};

constexpr short kFile = 0;  // the one file of the table

}  // namespace

FieldMap::FieldMap(const std::vector<std::string>& headings, short application) {
  const std::vector<Format> formats = known_formats();
  HeadingMatch match = match_headings(headings, formats, application);
  if (match.format != nullptr) format_ = *match.format;
  by_place_ = match.by_place;
  fields_ = std::move(match.fields);
  set_master(formats);
  const ServedFields served(fields_);
  add_file("headings");
}

FieldMap::FieldMap(const Format& format) : format_(format) {
  for (const FormatColumn& field : format.fields) {
    const auto same = [&](const FormatColumn& other) { return other.field == field.field; };
    if (std::ranges::none_of(fields_, same)) fields_.push_back(field);
  }
  std::ranges::stable_sort(fields_, {}, &FormatColumn::column);
  set_master(known_formats());
  add_file(to_library_path(format.path));
}

FieldMap::Table::Table() : handle(CreateSyflCtl()) {
  if (handle == 0) throw Failure("the library has no room for one more table of fields.");
  SyflCreateFileTbl(1, handle);
}

FieldMap::Table::~Table() { FreeSyflCtl(handle); }

void FieldMap::set_master(std::span<const Format> formats) {
  const auto master = std::ranges::find(formats, Format::List::kMaster, &Format::list);
  if (master == formats.end()) return;
  const std::string path = to_library_path(master->path);
  SyflSetMstFileInfo(reinterpret_cast<const unsigned char*>(path.c_str()), table_.handle);
}

void FieldMap::add_file(std::string field_file) {
  tSYNC_INFO member{};
  member.fldFile = field_file.data();
  member.appType = application();
  if (SyflAddFileInfo(&member, table_.handle) != kFile) throw std::bad_alloc();
}

short FieldMap::application_type() const { return GetAppType(application()); }

std::vector<AddedField> FieldMap::added() const {
  std::vector<AddedField> added;
  const short count = SyflGetFldCnt(kFile, table_.handle);
  for (short i = 0; i < count; ++i) {
    const short field = SyflGetFldId(kFile, i, table_.handle);
    if (is_in_every_list(field) || column(field)) continue;
    if (std::ranges::find(added, field, &AddedField::field) != added.end()) continue;
    added.push_back({field, SyflIsOutPutFldId2(kFile, field, table_.handle) != 0});
  }
  return added;
}

std::optional<std::size_t> FieldMap::column(short field) const {
  const auto found = std::ranges::find(fields_, field, &FormatColumn::field);
  if (found == fields_.end() || SyflIsFldId(kFile, field, table_.handle) == 0) return {};
  return static_cast<std::size_t>(SyflGetDataIdS(kFile, field, table_.handle));
}

short FieldMap::stand_in(short field) const {
  const short there = SyflGetExtGrpFldIdOrg(kFile, field, table_.handle);
  return column(there) ? there : kNoField;
}

short FieldMap::master_key_field(short key) const {
  return SykyGetKey(TQ_APP_MASTER, key, table_.handle);
}

short FieldMap::key_field(short key) const {
  const short own = SykyGetKey(application_type(), key, table_.handle);
  const short field = own >= 0 ? own : master_key_field(key);
  return field < 0 ? kNoField : stand_in(field);
}

std::vector<short> FieldMap::master_fields() const {
  std::vector<short> fields;
  const short count = SyflGetMstFldCnt(table_.handle);
  for (short i = 0; i < count; ++i) {
    const short field = SyflGetMstFldId(i, table_.handle);
    if (!is_in_every_list(field)) fields.push_back(field);
  }
  return fields;
}

short FieldMap::rank(short field) const { return SykyGetFldRank(field, table_.handle); }

bool FieldMap::repeats(short field) const { return SykyGetMugenType(field, table_.handle) > 0; }

std::string FieldMap::search_table(short field) const {
  const char* name = SykyGetSchTblName(SykyFld2SchFld(field, table_.handle), table_.handle);
  return name == nullptr ? "" : name;
}

}  // namespace tqsync
