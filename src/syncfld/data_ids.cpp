// What SyflGetDataId answers, as tables by field id. It is asked for every field of every record,
// so it must not cost more than looking into a table.
#include <array>
#include <type_traits>
#include <utility>

#include "syncfld/sync_fld_state.h"

namespace tq {
namespace {

constexpr short kAsItIs = 99;

// Of a file whose application is the master: by the fields' compare groups.
DataIds master_data_ids() {
  constexpr std::size_t kIds = 1000;  // no field with attributes has a higher id
  static const auto kForms = [] {
    std::array<short, kIds> forms{};
    for (std::size_t id = 0; id < kIds; ++id) {
      const FieldAttributes* attributes = find_attributes(static_cast<short>(id));
      forms[id] = attributes == nullptr ? kAsItIs : master_form(attributes->cmpGrp);
    }
    return forms;
  }();
  return {kForms.data(), kForms.size(), kAsItIs};
}

DataIds data_ids_of(const tSYFL_FILEINFO& of, const FieldList& list) {
  if (of.appType == TQ_APP_MASTER) return master_data_ids();
  return {list.data_ids().data(), list.data_ids().size(), -1};
}

}  // namespace

short master_form(short cmpGrp) {
  switch (cmpGrp) {
    case 3:
      return 3;
    case 11:
      return 1;
    case 10:
    case 12:
    case 13:
    case 14:
    case 15:
    case 16:
      return 0;
    default:
      return kAsItIs;
  }
}

}  // namespace tq

void CSyncFldCtl::State::add(tq::tSYFL_FILEINFO&& of) {
  // Lists keep their data ids in place when the files move.
  static_assert(std::is_nothrow_move_constructible_v<tq::tSYFL_FILEINFO>);
  const auto make_room = [](auto& table) {
    if (table.size() == table.capacity()) table.reserve(2 * table.size() + 1);
  };
  make_room(files);
  for (auto& ids : data_ids) make_room(ids);
  files.push_back(std::move(of));
  const tq::tSYFL_FILEINFO& added = files.back();
  data_ids[0].push_back(tq::data_ids_of(added, added.main));
  data_ids[1].push_back(tq::data_ids_of(added, added.second));
}

void CSyncFldCtl::State::clear_files() {
  files.clear();
  for (auto& ids : data_ids) ids.clear();
}
