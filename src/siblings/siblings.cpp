#include "siblings/siblings.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <initializer_list>

#include "common/path.h"
#include "common/text.h"
#include "siblings/builtins.h"
#include "tqutil/records.h"

namespace tq {
namespace {

// Entries that only make sense together, first to last: an application replaces all of them or
// none.
struct Together {
  std::size_t first;
  std::size_t last;
};

// Every table begins with its size and its context; behind them stand function pointers only.
constexpr std::size_t kHead = 2 * sizeof(void*);
using Entry = void (*)();
static_assert(sizeof(Entry) == sizeof(void*));

// The built-in table with the application's entries put over it.
template <class Api>
Api merged(const Api& built_in, const Api* given, std::initializer_list<Together> sets) {
  if (given == nullptr || given->size < kHead) return built_in;
  Api application{};
  std::memcpy(static_cast<void*>(&application), given,
              std::min<std::size_t>(given->size, sizeof(Api)));
  const auto entry = [](Api& api, std::size_t at) {
    return reinterpret_cast<std::byte*>(&api) + at;
  };
  const auto absent = [&](std::size_t at) {
    const Entry none = nullptr;
    return std::memcmp(entry(application, at), &none, sizeof none) == 0;
  };
  const auto drop = [&](std::size_t at) { std::memset(entry(application, at), 0, sizeof(Entry)); };
  for (const Together& set : sets) {
    bool whole = true;
    for (std::size_t at = set.first; at <= set.last; at += sizeof(Entry))
      whole = whole && !absent(at);
    for (std::size_t at = set.first; !whole && at <= set.last; at += sizeof(Entry)) drop(at);
  }
  Api result = built_in;
  result.context = application.context;
  for (std::size_t at = kHead; at < sizeof(Api); at += sizeof(Entry)) {
    if (!absent(at)) std::memcpy(entry(result, at), entry(application, at), sizeof(Entry));
  }
  return result;
}

struct Tables {
  tFLDCOM_API fldcom = builtin_fldcom();
  tRECDB_API recdb = builtin_recdb();
  tADRCONV_API adrconv = builtin_adrconv();
  tHSTYTMP_API hstytmp = builtin_hstytmp();
  tERRBOX_API errbox = builtin_errbox();
  tDIALOG_API dialog = builtin_dialog();
};

Tables& tables() {
  static Tables in_force;
  return in_force;
}

#define TQ_TOGETHER(api, first, last) \
  { offsetof(api, first), offsetof(api, last) }

Tables merged_tables(const tTQ_SIBLINGS& given) {
  Tables result;
  result.fldcom = merged(result.fldcom, given.fldcom,
                         {TQ_TOGETHER(tFLDCOM_API, FldComFldDataInInit, FldComFldDataInEnd),
                          TQ_TOGETHER(tFLDCOM_API, FldComFldFileOpen, FldComFldFileClose),
                          TQ_TOGETHER(tFLDCOM_API, FldComRelatedFiles, FldComRelatedFilesReset)});
  result.recdb =
      merged(result.recdb, given.recdb, {TQ_TOGETHER(tRECDB_API, RecDbFreeData, RecDbAllocData)});
  result.adrconv = merged(result.adrconv, given.adrconv, {});
  result.hstytmp = merged(result.hstytmp, given.hstytmp,
                          {TQ_TOGETHER(tHSTYTMP_API, HstyTmpDelete, HstyTmpWrite)});
  result.errbox =
      merged(result.errbox, given.errbox, {TQ_TOGETHER(tERRBOX_API, ErrBoxSetMessage, ErrBoxShow)});
  result.dialog = merged(result.dialog, given.dialog,
                         {TQ_TOGETHER(tDIALOG_API, DlgProgressOpen, DlgProgressClose)});
  return result;
}

#undef TQ_TOGETHER

}  // namespace

const tFLDCOM_API& fldcom() { return tables().fldcom; }
const tRECDB_API& recdb() { return tables().recdb; }
const tADRCONV_API& adrconv() { return tables().adrconv; }
const tHSTYTMP_API& hstytmp() { return tables().hstytmp; }
const tERRBOX_API& errbox() { return tables().errbox; }
const tDIALOG_API& dialog() { return tables().dialog; }

std::string sibling_folder(FolderQuery query) {
  char buffer[TQ_PATH_SIZE] = {};
  const tFLDCOM_API& api = fldcom();
  (api.*query)(api.context, buffer);
  buffer[TQ_PATH_SIZE - 1] = '\0';
  std::string folder(view(buffer));
  AddBackslash(folder);
  return folder;
}

bool set_siblings(const tTQ_SIBLINGS* siblings) {
  if (siblings != nullptr && siblings->size < kHead) return false;
  forget_field_definitions();
  if (siblings == nullptr) {
    tables() = Tables();
    return true;
  }
  tTQ_SIBLINGS given{};
  std::memcpy(&given, siblings, std::min<std::size_t>(siblings->size, sizeof given));
  tables() = merged_tables(given);
  return true;
}

bool get_siblings(tTQ_SIBLINGS* siblings) {
  if (siblings == nullptr || siblings->size < sizeof(tTQ_SIBLINGS)) return false;
  const Tables& now = tables();
  *siblings = {siblings->size, &now.fldcom, &now.recdb, &now.adrconv,
               &now.hstytmp,   &now.errbox, &now.dialog};
  return true;
}

}  // namespace tq
