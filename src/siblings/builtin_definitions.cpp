// What the built-in `fldcom` serves from definition files: their folders, the application table,
// field files.
#include <bitset>
#include <memory>
#include <string_view>
#include <vector>

#include "common/guarded.h"
#include "common/text.h"
#include "siblings/app_list.h"
#include "siblings/builtins.h"
#include "siblings/field_file.h"
#include "siblings/home.h"
#include "siblings/siblings.h"
#include "tqutil/records.h"

namespace tq {
namespace {

// --- Folders -------------------------------------------------------------------------------------

struct DefinitionDefault {
  std::string_view key;
  std::string_view name;    // under the home folder and under the shipped one
  std::string_view wanted;  // what a folder must have to be taken
};

constexpr DefinitionDefault kProgram = {"program", "program", kAppListFile};
constexpr DefinitionDefault kDefinition = {"definition", "definition", "SYNCKEY.DAT"};
constexpr DefinitionDefault kFields1 = {"fields1", "fields\\1", "*.FLD"};
constexpr DefinitionDefault kFields2a = {"fields2a", "fields\\2a", "*.FLD"};
constexpr DefinitionDefault kFields2b = {"fields2b", "fields\\2b", "*.FLD"};
constexpr DefinitionDefault kFields3 = {"fields3", "fields\\3", "*.FLD"};

template <const DefinitionDefault& kFolder>
void TQ_CALL get_folder(void*, char* folder) {
  copy_text(folder, TQ_PATH_SIZE, {});
  guarded([&] {
    copy_text(folder, TQ_PATH_SIZE, definition_folder(kFolder.key, kFolder.name, kFolder.wanted));
  });
}

// --- Applications --------------------------------------------------------------------------------

const tFLDCOM_APPREC* TQ_CALL app_table(void*, int32_t* count) {
  static std::vector<tFLDCOM_APPREC> table;
  const bool read = guarded(false, [] {
    table.clear();
    LineReader lines;
    const std::string folder = sibling_folder(&tFLDCOM_API::FldComGetProgramFolder);
    if (!lines.open(folder + std::string(kAppListFile)).ok()) return false;
    for (AppLine line; read_app_line(lines, line) == AppRead::kRow;) {
      tFLDCOM_APPREC row{};
      row.appNo = line.number;
      row.appType = line.type;
      copy_text(row.name, line.label);
      table.push_back(row);
    }
    return !table.empty();
  });
  if (count != nullptr) *count = read ? static_cast<int32_t>(table.size()) : 0;
  return read ? table.data() : nullptr;
}

// --- Field files ---------------------------------------------------------------------------------

template <class T>
void give(T* out, T value) {
  if (out != nullptr) *out = value;
}

short TQ_CALL classify_file(void*, const char* path, short* number, char* title, char* comment,
                            short* number2) {
  return guarded<short>(1, [&] {
    FieldFile file;
    if (!file.open(view(path))) return 1;
    const FieldFileHeader& header = file.header();
    give(number, header.number);
    give(number2, header.number2);
    copy_text(title, sizeof header.title, view(header.title));
    copy_text(comment, sizeof header.comment, view(header.comment));
    return 0;
  });
}

// The field ids of a field file.
using Membership = std::bitset<0x8000>;

void* TQ_CALL open_membership(void*, const char* path) {
  return guarded<void*>(nullptr, [&]() -> void* {
    FieldFile file;
    if (!file.open(view(path))) return nullptr;
    auto fields = std::make_unique<Membership>();
    for (tFLDCOM_FLDREC record; file.next(record);) {
      fields->set(static_cast<std::size_t>(record.fldId));
    }
    return fields.release();
  });
}

// A field file lists what its application has, so the application's number does not matter.
short TQ_CALL is_member(void*, short, short, short fldId, short, void* test) {
  if (test == nullptr || fldId < 0) return 0;
  return static_cast<Membership*>(test)->test(static_cast<std::size_t>(fldId)) ? 1 : 0;
}

void TQ_CALL close_membership(void*, void* test) { delete static_cast<Membership*>(test); }

void* TQ_CALL open_field_file(void*, const char* path, const char* mode) {
  if (view(mode) != "r") return nullptr;
  return guarded<void*>(nullptr, [&] {
    auto file = std::make_unique<FieldFile>();
    return file->open(view(path)) ? file.release() : nullptr;
  });
}

short TQ_CALL read_field_file(void*, void* file, tFLDCOM_FLDREC* record) {
  if (file == nullptr || record == nullptr) return 1;
  return guarded<short>(1, [&] { return static_cast<FieldFile*>(file)->next(*record) ? 0 : 1; });
}

void TQ_CALL close_field_file(void*, void* file) { delete static_cast<FieldFile*>(file); }

// There is nothing to prepare: every field is compared.
void TQ_CALL prepare_comparison(void*, short, char*) {}

}  // namespace

void add_definitions(tFLDCOM_API& api) {
  api.FldComGetProgramFolder = get_folder<kProgram>;
  api.FldComGetDefFolder = get_folder<kDefinition>;
  api.FldComGetFldFolder1 = get_folder<kFields1>;
  api.FldComGetFldFolder2a = get_folder<kFields2a>;
  api.FldComGetFldFolder2b = get_folder<kFields2b>;
  api.FldComGetFldFolder3 = get_folder<kFields3>;
  api.FldComGetAppInfoTable = app_table;
  api.FldComClassifyFile = classify_file;
  api.FldComFldDataInInit = open_membership;
  api.FldComIsFldDataIn = is_member;
  api.FldComFldDataInEnd = close_membership;
  api.FldComFldFileOpen = open_field_file;
  api.FldComFldFileRead = read_field_file;
  api.FldComFldFileClose = close_field_file;
  api.FldComFldCompInit = prepare_comparison;
}

}  // namespace tq
