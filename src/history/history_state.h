// What a CHistoryCtl object holds: the levels of one run's history, and the table of its six
// categories. Shared by the files of this folder; nothing else includes it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "history/history_file.h"
#include "tqutil/history.h"

namespace tq {

enum class Category : std::uint8_t { kHead, kReNew, kAddNew, kWrite, kRead, kTran };

struct CategoryTraits {
  std::string_view run_prefix;  // of the temporary file's name
  std::string_view file_prefix;
  bool kept_open;  // between lines
};

// By category. Temporary files are made in this order.
inline constexpr std::array<CategoryTraits, 6> kCategories = {{
    {"~XH", "~HH", true},   // Head
    {"~XN", "~HN", true},   // ReNew
    {"~XA", "~HA", true},   // AddNew
    {"~XW", "~HW", false},  // Write
    {"~XR", "~HR", false},  // Read
    {"~XT", "~HT", false},  // Tran
}};

// The history of one level: the run as a whole or one file.
struct tSYFL_HSTYINFO {
  char fileId[TQ_FILE_ID_SIZE] = "";
  std::uint16_t appId = 0;  // under which the store files the records of this file
  std::array<HistoryFile, kCategories.size()> categories;
};

}  // namespace tq

struct CHistoryCtl::State {
  ~State();

  short create(short count);
  void add_file(const char* file_id, tSYNC_INFO* info);
  short close_all();

  // Levels; null when there is no such one.
  tq::tSYFL_HSTYINFO* level(short index);
  tq::tSYFL_HSTYINFO* level(const char* file_id);

  short write(tq::tSYFL_HSTYINFO* level, tq::Category category, const char* text);
  short start_reading(short index, tq::Category category);
  short next_line(short index, tq::Category category, char* text);
  short end_reading(short index, tq::Category category);
  std::int32_t count(short index, tq::Category category);

  // Phases (history_phases.cpp).
  short begin_phase(short index, std::uint16_t app_id);
  short begin_file_phase(short index);
  short end_phase(short number, short index, tq::Category category);

  // Keeps what failed. -1, or 0 when nothing did.
  short result(tq::HistoryFault fault);

  // Runs an operation that may allocate; memory that runs out becomes a failed line.
  template <class Body>
  short guarded(Body&& body) noexcept {
    try {
      return body();
    } catch (...) {
      return result(TQ_HISTORY_DETAIL_TEXT);
    }
  }

  short last_error = 0;
  short last_detail = 0;
  std::size_t registered = 0;  // of `files`, from the front
  std::vector<tq::tSYFL_HSTYINFO> files;
  tq::tSYFL_HSTYINFO run;

 private:
  void name_files(tq::tSYFL_HSTYINFO& level, std::string_view tq::CategoryTraits::*prefix);
  std::string new_path(std::string_view prefix);
  void discard();

  std::string work_folder_;  // with a trailing backslash
  // Names that were found by counting exist only once they are written to, so the next number of
  // each prefix is remembered.
  std::map<std::string_view, int> next_numbers_;
};
