#include "library/formats.h"

#include <cstdint>
#include <memory>
#include <set>
#include <utility>

#include "failure.h"
#include "text/library_text.h"
#include "text/native_path.h"
#include "tqutil/csvinfo.h"
#include "tqutil/records.h"
#include "tqutil/siblings.h"

namespace tqsync {
namespace {

tTQ_SIBLINGS siblings() {
  tTQ_SIBLINGS tables{};
  tables.size = sizeof tables;
  tqGetSiblings(&tables);
  return tables;
}

std::vector<FormatColumn> read_fields(const tFLDCOM_API& api, const std::string& path) {
  const auto close = [&api](void* file) { api.FldComFldFileClose(api.context, file); };
  const std::unique_ptr<void, decltype(close)> file(
      api.FldComFldFileOpen(api.context, path.c_str(), "r"), close);
  std::vector<FormatColumn> fields;
  tFLDCOM_FLDREC record{};
  while (file && api.FldComFldFileRead(api.context, file.get(), &record) == 0) {
    if (record.dataId < 0) continue;
    fields.push_back(
        {record.fldId, static_cast<std::size_t>(record.dataId), from_sjis(record.heading)});
  }
  return fields;
}

// The field file at a path in the library's form; false when it is none.
bool read_field_file(const std::string& path, Format& format) {
  const tFLDCOM_API& api = *siblings().fldcom;
  char title[TQ_PATH_SIZE] = "", comment[256] = "";
  if (api.FldComClassifyFile(api.context, path.c_str(), &format.application, title, comment,
                             &format.number) != 0) {
    return false;
  }
  format.path = to_native_path(path);
  format.title = from_sjis(title);
  format.comment = from_sjis(comment);
  format.fields = read_fields(api, path);
  return true;
}

std::string without_extension(const std::string& name) { return name.substr(0, name.rfind('.')); }

// One of the library's lists. `next(name, path)` gives its entries until it is not 0; a list that
// has no names of its own leaves `name` empty.
template <class Next>
void read_list(std::vector<Format>& formats, Format::List list, std::int32_t handle, Next next) {
  if (handle == 0) throw Failure("the formats cannot be listed: the library has no room.");
  char name[TQ_PATH_SIZE] = "", path[TQ_PATH_SIZE] = "";
  while (next(name, path, handle) == 0) {
    Format format;
    format.list = list;
    if (!read_field_file(path, format)) continue;  // gone meanwhile
    format.name = without_extension(file_name(format.path));
    if (list == Format::List::kPrograms && *name != '\0') format.name = from_sjis(name);
    formats.push_back(std::move(format));
  }
  GetCsvFldInfoEnd(handle);
}

}  // namespace

std::size_t Format::columns() const {
  std::set<std::size_t> known;
  for (const FormatColumn& field : fields) known.insert(field.column);
  return known.size();
}

std::vector<Format> known_formats() {
  std::vector<Format> formats;
  read_list(formats, Format::List::kPrograms, GetCsvFldInfoInit1(),
            [](char* name, char* path, std::int32_t handle) {
              return GetCsvFldInfoNext1(nullptr, nullptr, name, path, handle);
            });
  read_list(formats, Format::List::kGeneral, GetCsvFldInfoInit2(),
            [](char*, char* path, std::int32_t handle) {
              return GetCsvFldInfoNext2(nullptr, nullptr, path, handle);
            });
  read_list(formats, Format::List::kMaster, GetCsvFldInfoInit3(),
            [](char*, char* path, std::int32_t handle) {
              return GetCsvFldInfoNext3(nullptr, nullptr, path, handle);
            });
  return formats;
}

Format read_format(const std::string& native_path) {
  Format format;
  if (!read_field_file(to_library_path(native_path), format)) {
    throw Failure(
        native_path +
        ": this is no field file, or it cannot be read. It must begin with \"FLD:\" and " +
        "two numbers; docs/formats.md tells the rest.");
  }
  format.name = without_extension(file_name(format.path));
  return format;
}

std::string field_name(short field) {
  const tRECDB_API& api = *siblings().recdb;
  char caption[66] = "";
  api.RecDbGetFldIdPair2(api.context, field, caption, nullptr);
  return *caption == '\0' ? std::to_string(field) : from_sjis(caption);
}

}  // namespace tqsync
