// What a CSyncFileCtl object holds: one group with its members, and a listing of the group folder.
// Shared by the files of this folder; nothing else includes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/lines.h"
#include "common/record_table.h"
#include "tqutil/syncfile.h"

namespace tq {

// Values of CSyncFileCtl::LastError.
inline constexpr short kErrorOpenArguments = -1;
inline constexpr short kErrorRead = -2;
inline constexpr short kErrorWrite = -3;
inline constexpr short kErrorMemory = -9;

inline constexpr std::string_view kWorkingGroup = "999";
inline constexpr int kWorkingFlag = 19;   // sync flag of the working group
inline constexpr int kAdjustFlag = 19;    // transfer flag of the read-adjust file's member
inline constexpr int kFirstReadFlag = 0;  // set with it
inline constexpr int kIdCount = 1000;     // ids are three digits
inline constexpr std::string_view kGroupExtension = ".SYG";

// One member in memory.
struct tSYNC_FILE {
  char fileId[TQ_FILE_ID_SIZE];  // group id and three digits
  char fldFile[TQ_PATH_SIZE];
  char memberText[TQ_PATH_SIZE];
  char tmpFileO[TQ_PATH_SIZE];
  char tmpFileN[TQ_PATH_SIZE];
  char srchFile[TQ_PATH_SIZE];
  int32_t sts[TQ_STS_COUNT];
  short trFlg[TQ_FLG_COUNT];
  short appType;
  short appType2;
  short cap;               // capacity of the table, in its first record
  short tmpFileOFromFile;  // 1: the group file named it, so it may not lead a deletion elsewhere
};
static_assert(sizeof(tSYNC_FILE) == 1408);

template <>
struct RecordTraits<tSYNC_FILE> {
  static constexpr std::size_t kBlock = 10;
  static short& capacity(tSYNC_FILE& first) { return first.cap; }
};

template <>
struct RecordTraits<tSYNC_GRP2> {
  static constexpr std::size_t kBlock = 10;
  static short& capacity(tSYNC_GRP2& first) { return first.cap; }
};

// Whether an id may become part of a path that is written or deleted: one to three ASCII letters,
// digits,
// '-' or '_'. Everything that the library makes is; a group file may claim what it likes.
bool is_safe_group_id(std::string_view id);

// The six header lines of a group file, as far as they are there; `count` is what the sixth says.
// True when all six were read.
bool read_group_header(LineReader& lines, tSYNC_GRP2& header, std::int32_t& count);

}  // namespace tq

struct CSyncFileCtl::State {
  enum class Mode : short { kNone = -1, kNormal = 0, kReadOnly = 1, kWrite = 2 };

  State();

  // Group ids and the paths made of them (sync_group_list.cpp).
  std::string new_group_id() const;
  void rebuild_paths(tSYNC_GRP2& group) const;
  short delete_group(const tSYNC_GRP2& group) const;
  short list_groups();
  // The place in the listing of the group that answers to a position; the listing's size when none
  // does.
  std::size_t listed(short pos) const;

  // Members (sync_group.cpp).
  void start_group(std::string_view id);
  tq::tSYNC_FILE* member(short i);
  std::string new_file_id() const;
  bool add_member(short i, const tSYNC_INFO* info);
  short delete_member(short i);
  void renumber_members();
  std::string csv_head(std::size_t place);

  // The group file (sync_group_file.cpp).
  short read();
  short write(bool renumber);

  short fail(short error, short result) {
    last_error = error;
    return result;
  }

  // Runs an operation that may allocate; memory that runs out becomes the operation's failure
  // value.
  template <class Body>
  short guarded(short failure, Body&& body) noexcept {
    try {
      return body();
    } catch (...) {
      return fail(tq::kErrorMemory, failure);
    }
  }

  short last_error = 0;
  std::string group_folder;  // each with a trailing backslash
  std::string member_root;
  std::string work_folder;
  Mode mode = Mode::kNone;
  tq::RecordTable<tq::tSYNC_FILE> members;
  tSYNC_GRP2 group{};
  // Private work files of the members, by place; empty until asked for.
  std::vector<std::string> csv_heads;

  tq::RecordTable<tSYNC_GRP2> listing;
  std::size_t cursor = 0;
};
