// Candidate groups as plain arrays with linear searches: slow, obvious, and what the real ones are
// compared with, in results by the tests and in time by the bench.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "syncfile/sync_id.h"
#include "tqutil/ctd.h"

namespace tq::test {

class LiteralGroups {
 public:
  struct Origin {
    tSYNC_ID id;
    std::int32_t score;
  };
  struct Group {
    std::vector<tSYNC_ID> masters;
    std::vector<Origin> origins;
    std::vector<short> fields;
    bool handled = false;
  };
  std::vector<Group> groups;

  int master_group(const tSYNC_ID& id) const {
    for (std::size_t g = 0; g < groups.size(); ++g) {
      for (const tSYNC_ID& master : groups[g].masters) {
        if (same_record(master, id)) return static_cast<int>(g);
      }
    }
    return -1;
  }

  int origin_group(const tSYNC_ID& id) const {
    for (std::size_t g = 0; g < groups.size(); ++g) {
      if (find(groups[g], id) != nullptr) return static_cast<int>(g);
    }
    return -1;
  }

  void add_pair(const tSYNC_ID& org, std::int32_t score, const tSYNC_ID& mst,
                const std::vector<short>& fields) {
    int gm = master_group(mst);
    const int go = origin_group(org);
    if (gm >= 0 && go >= 0) {
      if (gm != go) merge(std::min(gm, go), std::max(gm, go));
      return;
    }
    if (go < 0) {
      if (gm < 0) gm = new_group(mst);
      group(gm).origins.push_back({org, score});
      add_fields(group(gm), fields);
    } else {
      group(go).masters.push_back(mst);
      add_fields(group(go), fields);
    }
  }

  void add_to_master(const tSYNC_ID& org, std::int32_t score, const tSYNC_ID& mst) {
    int gm = master_group(mst);
    if (gm < 0) gm = new_group(mst);
    if (find(group(gm), org) == nullptr) group(gm).origins.push_back({org, score});
  }

  int next_open() const {
    for (std::size_t g = 0; g < groups.size(); ++g) {
      if (!groups[g].handled) return static_cast<int>(g);
    }
    return -1;
  }

  bool next_master(tSYNC_SCHINFO& at, tSYNC_ID& id) const {
    if (at.grpPos < 0 || at.idPos < 0) return false;
    for (; at.grpPos < size(groups); ++at.grpPos, at.idPos = 0) {
      const auto& masters = group(at.grpPos).masters;
      if (at.idPos >= size(masters)) continue;
      id = masters[static_cast<std::size_t>(at.idPos++)];
      return true;
    }
    return false;
  }

  bool next_origin_of_file(const tSYNC_ID& file, tSYNC_SCHINFO& at, tSYNC_ID& id) const {
    if (at.recGrp != file.grp || at.recFile != file.file) at = {0, 0, 0, file.grp, file.file};
    if (at.grpPos < 0 || at.idPos < 0) return false;
    for (; at.grpPos < size(groups); ++at.grpPos, at.idPos = 0) {
      const Group& here = group(at.grpPos);
      while (!here.handled && at.idPos < size(here.origins)) {
        const Origin& origin = here.origins[static_cast<std::size_t>(at.idPos++)];
        if (origin.id.grp != file.grp || origin.id.file != file.file) continue;
        if (find(group(origin_group(origin.id)), origin.id) != &origin) continue;
        id = origin.id;
        return true;
      }
    }
    return false;
  }

  // `file` null: all origins.
  bool next_origin(int g, const std::uint16_t* file, tSYNC_SCHINFO& at, tSYNC_ID& id) {
    if (g < 0 || g >= size(groups) || at.idPos < 0) return false;
    if (file != nullptr && group(g).handled) return false;
    if (at.idPos == 0) sort(group(g));
    while (at.idPos < size(group(g).origins)) {
      const Origin& origin = group(g).origins[static_cast<std::size_t>(at.idPos++)];
      if (file != nullptr && origin.id.file != *file) continue;
      id = origin.id;
      return true;
    }
    return false;
  }

  void split(int g, std::span<const tSYNC_ID> leaving) {
    Group added;
    for (const tSYNC_ID& id : leaving) {
      const Origin* there = find(group(g), id);
      added.origins.push_back({id, there == nullptr ? 0 : there->score});
    }
    for (const tSYNC_ID& id : leaving) {
      auto& origins = group(g).origins;
      if (const Origin* there = find(group(g), id)) {
        origins.erase(origins.begin() + (there - origins.data()));
      }
    }
    groups.insert(groups.begin() + g + 1, added);
  }

 private:
  template <class Array>
  static std::int32_t size(const Array& array) {
    return static_cast<std::int32_t>(array.size());
  }
  Group& group(int g) { return groups[static_cast<std::size_t>(g)]; }
  const Group& group(int g) const { return groups[static_cast<std::size_t>(g)]; }

  static const Origin* find(const Group& group, const tSYNC_ID& id) {
    for (const Origin& origin : group.origins) {
      if (same_record(origin.id, id)) return &origin;
    }
    return nullptr;
  }

  int new_group(const tSYNC_ID& mst) {
    groups.push_back({{mst}, {}, {}, false});
    return static_cast<int>(groups.size()) - 1;
  }

  static void add_fields(Group& group, const std::vector<short>& fields) {
    for (const short field : fields) {
      if (std::ranges::find(group.fields, field) == group.fields.end()) {
        group.fields.push_back(field);
      }
    }
  }

  void merge(int low, int high) {
    Group& to = group(low);
    for (const tSYNC_ID& master : group(high).masters) to.masters.push_back(master);
    for (const Origin& origin : group(high).origins) {
      if (find(to, origin.id) == nullptr) to.origins.push_back(origin);
    }
    groups.erase(groups.begin() + high);
  }

  static void sort(Group& group) {
    auto& origins = group.origins;
    for (std::size_t i = 0; i + 1 < origins.size(); ++i) {
      for (std::size_t j = i + 1; j < origins.size(); ++j) {
        const Origin &a = origins[i], &b = origins[j];
        if (a.id.file > b.id.file || (a.id.file == b.id.file && a.score < b.score)) {
          std::swap(origins[i], origins[j]);
        }
      }
    }
  }
};

}  // namespace tq::test
