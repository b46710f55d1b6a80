// What a CLinkInfoCtl object holds: member files with the ids of their records, and master records
// with the origins that stand behind them. Shared by the files of this folder; nothing else
// includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "common/hash_index.h"
#include "common/record_table.h"
#include "tqutil/linkinfo.h"

namespace tq {

// One record of a member file.
struct tSYLK_RECINFO {
  tSYNC_ID id;
};

// One member file.
struct tSYLK_FILEINFO {
  char fileKey[8];                     // the caller's name for it
  std::vector<tSYLK_RECINFO> records;  // as many as were announced, zeros until they are stored
};

template <>
struct RecordTraits<tSYNC_ID> {
  static constexpr std::size_t kBlock = 20;
  static std::uint32_t& capacity(tSYNC_ID& first) { return first.cap; }
};

template <>
struct RecordTraits<tVAL_INFO> {
  static constexpr std::size_t kBlock = 20;
  static std::uint32_t& capacity(tVAL_INFO& first) { return first.cap; }
};

// One master record. Origins and values are parallel.
struct tSYLK_LINKINFO {
  std::int32_t linkNo;  // the caller's
  tSYNC_ID mst;
  RecordTable<tSYNC_ID> origins;
  RecordTable<tVAL_INFO> values;
  std::size_t sorted =
      0;  // origins in falling order of their values: all, when this is their count
};

// Where the origins of each member file stand among a master's origins. Covers the first ones only,
// and is brought up to date when it is asked.
struct FilePlaces {
  std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> of_file;  // rising
  std::size_t covered = 0;
};

}  // namespace tq

struct CLinkInfoCtl::State {
  // The first master with this id; kNoRecord when there is none.
  std::uint32_t mSchMstID(const tSYNC_ID& id) const;
  tq::tSYLK_LINKINFO* link(const unsigned char* mstSyncId);

  std::int32_t add_master(std::int32_t linkNo, const tSYNC_ID& id);
  std::int32_t lowest_free();
  bool sort(std::uint32_t link);
  // The first origin of a member file at or behind a place; the count of origins when there is
  // none.
  std::size_t find_origin(std::uint32_t link, std::uint32_t file, std::size_t from) noexcept;

  std::vector<tq::tSYLK_FILEINFO> files;
  std::vector<tq::tSYLK_LINKINFO> links;

 private:
  const tq::FilePlaces& places(std::uint32_t link);

  tq::HashIndex masters_;                                     // links by master id
  std::unordered_map<std::uint32_t, tq::FilePlaces> places_;  // of masters with many origins
  std::vector<bool> taken_;  // record numbers of masters, as far as the lowest free one can lie
  std::size_t free_from_ = 0;
};
