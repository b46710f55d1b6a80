// The built-in record database knows what fields there are: one definition a line of "RECDB.DAT",
// `id,kind,hidden,second,table,caption` (docs/formats.md). The file is untrusted: lines that are no
// definitions are passed over, and so are further ones for the same field.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/guarded.h"
#include "common/lines.h"
#include "common/table_memory.h"
#include "common/text.h"
#include "siblings/builtins.h"
#include "siblings/home.h"

namespace tq {
namespace {

constexpr std::string_view kDefinitionFile = "RECDB.DAT";
constexpr std::size_t kMaxFields = 0x8000;  // field ids are 0 to 32767

struct Definition {
  tRECDB_FLDINFO info;
  short second;  // belongs to the second sync table
};

struct Definitions {
  bool read = false;
  std::vector<Definition> rows;
  std::vector<std::int16_t> places;  // by field id; -1 where there is none

  const Definition* at(std::int32_t index) const {
    const bool there = index >= 0 && static_cast<std::size_t>(index) < rows.size();
    return there ? &rows[static_cast<std::size_t>(index)] : nullptr;
  }
  const Definition* find(short fldId) const {
    if (fldId < 0 || static_cast<std::size_t>(fldId) >= places.size()) return nullptr;
    return at(places[static_cast<std::size_t>(fldId)]);
  }
};

Definitions definitions;

// The next field of a line; the last one takes the rest.
std::string_view take(std::string_view& line) {
  const std::size_t comma = line.find(',');
  const std::string_view field = line.substr(0, comma);
  line.remove_prefix(comma == std::string_view::npos ? line.size() : comma + 1);
  return field;
}

bool parse(std::string_view line, Definition& definition) {
  definition = {};
  const std::string_view id = take(line);
  if (id.empty() || id.find_first_not_of("0123456789") != std::string_view::npos) return false;
  const std::int32_t fldId = decimal(id);
  if (static_cast<std::size_t>(fldId) >= kMaxFields) return false;
  definition.info.fldId = static_cast<short>(fldId);
  definition.info.kind = decimal16(take(line));
  definition.info.hidden = decimal16(take(line));
  definition.second = decimal16(take(line));
  copy_text(definition.info.table, take(line));
  copy_text(definition.info.caption, line);
  return definition.info.table[0] != '\0';
}

void add(Definitions& to, const Definition& definition) {
  const auto id = static_cast<std::size_t>(definition.info.fldId);
  if (id >= to.places.size()) to.places.resize(id + 1, -1);
  if (to.places[id] != -1) return;
  to.places[id] = static_cast<std::int16_t>(to.rows.size());
  to.rows.push_back(definition);
}

Definitions load() {
  Definitions loaded;
  LineReader lines;
  const std::string folder = definition_folder("definition", "definition", kDefinitionFile);
  loaded.read = lines.open(folder + std::string(kDefinitionFile)).ok();
  std::string_view line;
  for (Definition definition; lines.next_data(line);) {
    if (parse(line, definition)) add(loaded, definition);
  }
  return loaded;
}

// What is known; empty while the file cannot be read.
const Definitions& known() noexcept {
  if (!definitions.read) definitions = guarded(Definitions(), load);
  return definitions;
}

int32_t TQ_CALL count(void*) { return static_cast<int32_t>(known().rows.size()); }

short TQ_CALL pair_at(void*, int32_t index, short* fldId, char* table) {
  const Definition* found = known().at(index);
  if (found == nullptr) return 1;
  if (fldId != nullptr) *fldId = found->info.fldId;
  copy_text(table, sizeof found->info.table, view(found->info.table));
  return 0;
}

short TQ_CALL pair_of(void*, short fldId, char* caption, char* table) {
  const Definition* found = known().find(fldId);
  const tRECDB_FLDINFO none{};
  const tRECDB_FLDINFO& info = found == nullptr ? none : found->info;
  copy_text(caption, sizeof info.caption, view(info.caption));
  copy_text(table, sizeof info.table, view(info.table));
  return found == nullptr ? 1 : 0;
}

short TQ_CALL info_of(void*, short fldId, tRECDB_FLDINFO* info) {
  const Definition* found = known().find(fldId);
  if (info != nullptr) *info = found == nullptr ? tRECDB_FLDINFO{} : found->info;
  return found == nullptr ? 1 : 0;
}

short TQ_CALL is_second(void*, short fldId) {
  const Definition* found = known().find(fldId);
  return found == nullptr ? short{0} : found->second;
}

void TQ_CALL free_data(void*, void* data) { TblFree(data); }

void* TQ_CALL alloc_data(void*, uint32_t bytes) { return TblAlloc(1, bytes); }

}  // namespace

tRECDB_API builtin_recdb() {
  return {sizeof(tRECDB_API), nullptr,   count,     pair_at, pair_of, info_of,
          is_second,          free_data, alloc_data};
}

void forget_field_definitions() { definitions = {}; }

}  // namespace tq
