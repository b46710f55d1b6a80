// The six categories with their operations, so that a test says each thing once.
#pragma once

#include <string>
#include <vector>

#include "tqutil/history.h"

namespace tq::test {

struct CategoryOperations {
  const char* name;
  const char* run_prefix;
  const char* file_prefix;
  bool kept_open;
  short (CHistoryCtl::*write)(const char*, const char*);
  short (CHistoryCtl::*write2)(short, const char*);
  short (CHistoryCtl::*init)(short);
  short (CHistoryCtl::*next)(short, char*);
  short (CHistoryCtl::*end)(short);
  int32_t (CHistoryCtl::*cnt)(short);
};

#define TQ_CATEGORY(name, run_prefix, file_prefix, kept_open, writer)                         \
  {                                                                                           \
#name, run_prefix, file_prefix, kept_open, &CHistoryCtl::writer, &CHistoryCtl::writer##2, \
        &CHistoryCtl::GetInfo4##name##Init, &CHistoryCtl::GetInfo4##name##Next,               \
        &CHistoryCtl::GetInfo4##name##End, &CHistoryCtl::GetInfo4##name##Cnt                  \
  }
inline const CategoryOperations kCategories[] = {
    TQ_CATEGORY(Read, "~XR", "~HR", false, WriteErrInfo4Read),
    TQ_CATEGORY(Write, "~XW", "~HW", false, WriteErrInfo4Write),
    TQ_CATEGORY(Tran, "~XT", "~HT", false, WriteErrInfo4Tran),
    TQ_CATEGORY(ReNew, "~XN", "~HN", true, WriteReNewInfo),
    TQ_CATEGORY(AddNew, "~XA", "~HA", true, WriteAddNewInfo),
    TQ_CATEGORY(Head, "~XH", "~HH", true, WriteHeadInfo),
};
#undef TQ_CATEGORY

// What reading gives, line by line; one line "not open" when Init fails.
inline std::vector<std::string> lines_of(CHistoryCtl& history, const CategoryOperations& category,
                                         short i) {
  std::vector<std::string> lines;
  if ((history.*category.init)(i) != 0) return {"not open"};
  char text[TQ_HISTORY_LINE_SIZE];
  while ((history.*category.next)(i, text) == 0) lines.emplace_back(text);
  lines.insert(lines.end(), text[0] == '\0' ? 0 : 1, "text at the end");
  (history.*category.end)(i);
  return lines;
}

}  // namespace tq::test
