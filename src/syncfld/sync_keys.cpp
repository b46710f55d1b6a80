// The keys of applications: reading "SYNCKEY.DAT" into the table that the whole process shares, and
// finding key fields in it. The file is untrusted; docs/formats.md says what a reader makes of it.
#include <algorithm>
#include <limits>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "common/guarded.h"
#include "common/lines.h"
#include "common/record_table.h"
#include "common/text.h"
#include "siblings/siblings.h"
#include "syncfld/field_tables.h"
#include "tqutil/syncfld.h"

namespace tq {

template <>
struct RecordTraits<tSYKY_APP_TBL> {
  static constexpr std::size_t kBlock = 20;
  static int32_t& capacity(tSYKY_APP_TBL& first) { return first.cap; }
};

template <>
struct RecordTraits<tSYKY_KEY_ITEM> {
  static constexpr std::size_t kBlock = 20;
  static int32_t& capacity(tSYKY_KEY_ITEM& first) { return first.cap; }
};

namespace {

constexpr std::size_t kFirstItems = 20;  // room in a new item array

using Items = RecordTable<tSYKY_KEY_ITEM>;

// The arrays behind CSyncFldCtl::s_appTbl: one entry an application, and its items.
struct KeyTable {
  RecordTable<tSYKY_APP_TBL> apps;
  std::vector<Items> items;

  // Takes an entry and its items. False: no memory, or as many entries as a count can tell.
  bool add(tSYKY_APP_TBL app, Items&& list) {
    if (apps.size() >= static_cast<std::size_t>(std::numeric_limits<short>::max())) return false;
    items.push_back(std::move(list));
    app.items = items.back().data();
    if (apps.fill(app)) return true;
    items.pop_back();
    return false;
  }

  void clear() {
    items.clear();
    apps.clear();
  }
};

constinit KeyTable table;

// The entries that may be looked at: the array is zero behind those that were read.
std::span<const tSYKY_APP_TBL> entries() {
  if (CSyncFldCtl::s_appTbl == nullptr || CSyncFldCtl::s_appCnt < 0) return {};
  const auto count = static_cast<std::size_t>(CSyncFldCtl::s_appCnt);
  return {table.apps.data(), std::min(count, table.apps.capacity())};
}

// The keys of one line, from the first field id on. A last id may lack its comment.
bool read_items(Tokens& tokens, Items& items) {
  if (!items.allocate(kFirstItems)) return false;
  std::string_view token;
  while (tokens.next(':', token)) {
    tSYKY_KEY_ITEM item{};
    item.fldId = decimal16(token);
    if (!items.append(item)) return false;
    std::string_view comment;
    tokens.next(',', comment);
  }
  return true;
}

bool read_app(std::string_view line) {
  Tokens tokens(line);
  std::string_view label;
  std::string_view type;
  std::string_view number;
  if (!tokens.next(':', label) || !tokens.next(':', type) || !tokens.next(',', number))
    return false;
  tSYKY_APP_TBL app{};
  app.appType = decimal16(type);
  app.appNo = decimal16(number);
  Items items;
  if (!read_items(tokens, items)) return false;
  app.itemCnt = static_cast<short>(items.size());
  return table.add(app, std::move(items));
}

// The number of applications that the first line announces.
short read_header(LineReader& lines) {
  std::string_view line;
  if (!lines.next(line)) return 0;
  Tokens tokens(line);
  std::string_view label;
  std::string_view count;
  return tokens.next(':', label) && tokens.next(',', count) ? decimal16(count) : short{0};
}

// First row of a field in the key table: 0, or 1 with zeros.
short mGetGrpID(short fldId, short& keyNo, short& subNo) {
  const KeyField* row = find_key(fldId);
  keyNo = row == nullptr ? short{0} : row->keyNo;
  subNo = row == nullptr ? short{0} : row->subNo;
  return row == nullptr ? 1 : 0;
}

// Numbers the key groups of all items. Items get their key's numbers when the key is *not* found,
// and those are zero: applications have always read zeros here.
void mGrpFlgSet() {
  const auto for_all = [](auto&& visit) {
    for (Items& items : table.items) {
      for (tSYKY_KEY_ITEM& item : items.records()) visit(item);
    }
  };
  for_all([](tSYKY_KEY_ITEM& item) {
    short keyNo = 0;
    short subNo = 0;
    const bool unknown = mGetGrpID(item.fldId, keyNo, subNo) != 0;
    item.keyNo = unknown ? keyNo : short{0};
    item.subNo = unknown ? subNo : short{0};
  });
  short group = -1;
  short sequence = -1;
  for_all([&](tSYKY_KEY_ITEM& item) {
    if (item.keyNo != group) {
      group = item.keyNo;
      ++sequence;
    }
    item.grpSeq = sequence;
  });
}

short read_key_file() {
  LineReader lines;
  if (!lines.open(sibling_folder(&tFLDCOM_API::FldComGetDefFolder) + "SYNCKEY.DAT").ok()) return 1;
  const short announced = read_header(lines);
  CSyncFldCtl::s_appCnt = announced;
  // Room for one at least, so that a file without applications counts as loaded.
  if (announced < 0 || !table.apps.allocate(std::max<std::size_t>(announced, 1))) return 1;
  CSyncFldCtl::s_appTbl = table.apps.data();
  std::string_view line;
  while (lines.next(line)) {
    const bool more = !line.empty();
    // The empty line that ends the list counts as an entry without keys.
    const bool added = more ? read_app(line) : table.add({}, {});
    CSyncFldCtl::s_appTbl = table.apps.data();
    if (!added) return 1;
    if (!more) break;
  }
  CSyncFldCtl::s_appCnt = static_cast<short>(table.apps.size());
  mGrpFlgSet();
  return 0;
}

// Reads the keys when the library is loaded and releases them when it goes. Stands behind the
// table, so that the table is there before it and after it.
struct LoadedWithLibrary {
  LoadedWithLibrary() { CSyncFldCtl::ReadSyncKeyFile(); }
  ~LoadedWithLibrary() { CSyncFldCtl::FreeSyncKeyFile(); }
};

}  // namespace
}  // namespace tq

tSYKY_APP_TBL* CSyncFldCtl::s_appTbl = nullptr;
short CSyncFldCtl::s_appCnt = 0;
short CSyncFldCtl::s_keyIdTbl[20] = {};

namespace {
const tq::LoadedWithLibrary loaded;
}

short CSyncFldCtl::ReadSyncKeyFile() {
  if (s_appTbl != nullptr) return 0;
  return tq::guarded<short>(1, tq::read_key_file);
}

void CSyncFldCtl::FreeSyncKeyFile() {
  tq::table.clear();
  s_appTbl = nullptr;
}

short CSyncFldCtl::SykyGetKey(short appType, short keyNo) {
  int tries = 2;
  const auto apps = tq::entries();
  for (std::size_t at = 0; at < apps.size() && tries > 0; ++at) {
    if (apps[at].appType != appType) continue;
    --tries;
    const short fldId = SykyGetKeyS(static_cast<short>(at), appType, keyNo);
    if (fldId >= 0) return fldId;
  }
  return -1;
}

short CSyncFldCtl::SykyGetKeyS(short appIndex, short /*appType*/, short keyNo) {
  const auto apps = tq::entries();
  if (appIndex < 0 || static_cast<std::size_t>(appIndex) >= apps.size()) return -1;
  const tSYKY_APP_TBL& app = apps[static_cast<std::size_t>(appIndex)];
  for (const tq::KeyField& row : tq::s_keyFldTbl) {
    if (row.keyNo != keyNo) continue;
    for (short i = 0; i < app.itemCnt; ++i) {
      if (app.items[i].fldId == row.fldId) return row.fldId;
    }
  }
  return -1;
}
