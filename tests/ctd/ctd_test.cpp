// CCtdCtl through its texts: what callers rely on although a quick reading gets it wrong, copies,
// titles and handles.
#include "tqutil/ctd.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <sstream>

#include "support/test.h"

namespace {

// Ids are written short: "m1" is master record 1, "a1" record 1 of file 002, "b1" one of file 003,
// "B1" one of the same file number in another group.
std::string id(const std::string& name) {
  const char* file = name[0] == 'm' ? "001001" : name[0] == 'a' ? "001002" : "001003";
  return (name[0] == 'B' ? "002003" : file) + std::string(10 - name.size(), '0') + name.substr(1);
}

std::string name(const std::string& id) {
  const std::string file = id.substr(0, 6);
  const char* letter = file == "001001"   ? "m"
                       : file == "001002" ? "a"
                       : file == "001003" ? "b"
                                          : "B";
  return letter + std::to_string(std::stoi(id.substr(6)));
}

template <class Find>
std::string walk(Find find) {
  std::string names;
  tSYNC_SCHINFO cursor{};
  char text[TQ_SYNC_ID_SIZE] = "", last[TQ_SYNC_ID_SIZE] = "";
  for (; find(text, &cursor) == 0; std::copy(std::begin(text), std::end(text), last)) {
    names += (names.empty() ? "" : " ") + name(text);
  }
  EXPECT_STREQ(text, last) << "nothing more leaves the text";
  return names;
}

std::string masters(CCtdCtl& ctd) {
  return walk([&](char* text, tSYNC_SCHINFO* at) { return ctd.FindCtdMstSyncID(text, at); });
}
std::string origins(CCtdCtl& ctd, short group) {
  return walk(
      [&](char* text, tSYNC_SCHINFO* at) { return ctd.FindCtdOrgSyncID2(group, text, at); });
}
std::string of_file(CCtdCtl& ctd, const char* file) {
  return walk([&](char* text, tSYNC_SCHINFO* at) { return ctd.FindCtdOrgSyncID(file, text, at); });
}
std::string of_number(CCtdCtl& ctd, short group, const char* file) {
  return walk(
      [&](char* text, tSYNC_SCHINFO* at) { return ctd.FindCtdOrgSyncID3(group, file, text, at); });
}

void add(CCtdCtl& ctd, const std::string& org, int32_t score, const std::string& mst) {
  EXPECT_EQ(ctd.AddCtdData(id(org).c_str(), score, id(mst).c_str(), nullptr), 0);
}
void add2(CCtdCtl& ctd, const std::string& org, int32_t score, const std::string& mst) {
  tSYNC_ID origin{};
  tqSyncIdStr2Val(id(org).c_str(), &origin);
  EXPECT_EQ(ctd.AddCtdData2(&origin, score, id(mst).c_str()), 0);
}

// `pairs`: origin, score and master of each
// `want_origins`: of each group, in sorted order
const std::tuple<const char*, std::string, std::string, std::string> kJoins[] = {
    {"a pair of two known ids joins their groups, and its score is dropped",
     "a1 5 m1  a2 3 m2  a1 9 m2", "m1 m2", "a1 a2;"},
    {"the lower group takes the other, whichever id names it", "a1 1 m1  a2 2 m2  a3 3 m3  a3 9 m1",
     "m1 m3 m2", "a3 a1;a2;"},
    {"known together: nothing, not even a new score", "a1 1 m1  a2 5 m1  a1 9 m1", "m1", "a2 a1;"},
    {"a new master joins, its score goes nowhere", "a1 1 m1  a2 2 m1  a1 9 m2", "m1 m2", "a2 a1;"},
    {"files before scores, whatever their group number",
     "B1 4 m1  a1 1 m1  b1 5 m1  a2 2 m1  b2 3 m1", "m1", "a2 a1 b1 B1 b2;"},
    {"equal scores stand as exchanges leave them: a1 goes where a3 was",
     "a1 1 m1  a2 1 m1  a3 2 m1", "m1", "a3 a2 a1;"},
    {"negative scores come last", "a1 -2 m1  a2 0 m1  a3 -2147483648 m1", "m1", "a2 a1 a3;"},
};

TEST(Ctd, PairsBecomeGroups) {
  for (const auto& [why, pairs, want_masters, want_origins] : kJoins) {
    SCOPED_TRACE(why);
    CCtdCtl ctd;
    std::istringstream in(pairs);
    int32_t score = 0;
    for (std::string org, mst; in >> org >> score >> mst;) add(ctd, org, score, mst);
    EXPECT_EQ(masters(ctd), want_masters);
    std::string found;
    const auto count = static_cast<short>(ctd.GetCtdCnt());
    for (short g = 0; g < count; ++g) found += origins(ctd, g) + ";";
    EXPECT_EQ(found, want_origins);
  }
}

TEST(Ctd, OriginsOfSeveralGroupsAreGivenOnce) {
  CCtdCtl ctd;
  add2(ctd, "a1", 1, "m1");
  add2(ctd, "a1", 7, "m2");
  add2(ctd, "a2", 2, "m2");
  add2(ctd, "a2", 9, "m2");
  add2(ctd, "B1", 3, "m2");
  EXPECT_EQ(ctd.GetCtdCnt(), 2) << "never merges";
  EXPECT_EQ(origins(ctd, 1), "a1 a2 B1") << "a2 keeps its first score";
  EXPECT_EQ(ctd.SchOrgSyncID(id("a1").c_str()), 0);
  EXPECT_EQ(ctd.SchMstSyncID(id("m2").c_str()), 1);
  EXPECT_EQ(ctd.SchMstSyncID(id("a1").c_str()), -1) << "an origin is no master";

  EXPECT_EQ(of_file(ctd, "001002"), "a1 a2");
  EXPECT_EQ(of_file(ctd, "002003"), "B1");
  EXPECT_EQ(of_number(ctd, 1, "009003"), "B1") << "only the file number counts";
  ctd.CtdSchFlgSet(0);
  EXPECT_EQ(of_file(ctd, "001002"), "a2") << "a1 belongs to the handled group";
  EXPECT_EQ(of_number(ctd, 0, "001002"), "");
  EXPECT_EQ(origins(ctd, 0), "a1") << "this walk takes handled groups too";
  EXPECT_EQ(masters(ctd), "m1 m2");
  EXPECT_EQ(ctd.CtdSchNext(), 1);
}

TEST(Ctd, CopiesReadAsEmptyAssignedObjectsShare) {
  CCtdCtl source;
  add(source, "a1", 1, "m1");
  add(source, "a2", 1, "m2");
  source.CtdSchFlgSet(0);
  source.SetCtdTitle("source");

  CCtdCtl copy;
  copy.SetCtdTitle("copy");
  add(copy, "a9", 1, "m9");
  EXPECT_EQ(copy.CopyData(&source), 0);
  EXPECT_EQ(copy.GetCtdCnt(), 2);
  EXPECT_EQ(copy.GetCtdMstCnt(0) + copy.GetCtdOrgCnt(0), 0);
  EXPECT_EQ(masters(copy), "");
  EXPECT_EQ(copy.SchMstSyncID(id("m1").c_str()), -1);
  EXPECT_EQ(copy.CtdSchNext(), 0) << "marks are not copied";
  add(copy, "a1", 1, "m1");
  EXPECT_EQ(copy.SchMstSyncID(id("m1").c_str()), 2) << "a new group behind the empty ones";
  char title[TQ_CTD_TITLE_SIZE];
  copy.GetCtdTitle(title);
  EXPECT_STREQ(title, "copy");

  CCtdCtl shared;
  shared = source;
  add(shared, "a3", 1, "m3");
  EXPECT_EQ(source.GetCtdCnt(), 3);
  shared.SetCtdTitle("own");
  source.GetCtdTitle(title);
  EXPECT_STREQ(title, "source");
  shared.FreeData();
  EXPECT_EQ(shared.GetCtdCnt(), 0);
  EXPECT_EQ(source.GetCtdCnt(), 3) << "the share was given up, not the groups";
  source.CopyData(&source);
  EXPECT_EQ(source.GetCtdCnt(), 0) << "freed before anything was copied";
}

TEST(Ctd, TitleIsCutAtACharacter) {
  struct {
    const char* why;
    std::string title;
    std::size_t kept;
  } const cases[] = {
      {"single bytes", std::string(300, 'x'), 255},
      {"a character ends at the limit", "x" + std::string(298, '\x83'), 255},
      {"a character would pass the limit", std::string(300, '\x83'), 254},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    CCtdCtl ctd;
    char title[TQ_CTD_TITLE_SIZE];
    ctd.SetCtdTitle(c.title.c_str());
    ctd.GetCtdTitle(title);
    EXPECT_EQ(title, c.title.substr(0, c.kept));
  }
}

TEST(Ctd, HandlesAndMissingArguments) {
  std::vector<int32_t> handles;
  while (const int32_t handle = CreateSyncCtdCtl()) handles.push_back(handle);
  ASSERT_EQ(handles.size(), 20U);
  EXPECT_EQ(CopySyncCtdCtl(handles[3]), 0) << "no slot left";
  EXPECT_EQ(FreeSyncCtdCtl(handles[7]), 0);
  EXPECT_EQ(FreeSyncCtdCtl(handles[7]), 0);
  EXPECT_EQ(FreeSyncCtdCtl(0), 1);

  const int32_t live = handles[3];
  const tSYNC_CTDTBL fields[] = {{970, 0}, {-1, 0}};
  EXPECT_EQ(AddCtdData(id("a1").c_str(), 1, id("m1").c_str(), fields, live), 0);
  EXPECT_EQ(AddCtdData2(nullptr, 1, id("m1").c_str(), live), -1);
  const int32_t copy = CopySyncCtdCtl(live);
  EXPECT_EQ(copy, handles[7]) << "the lowest slot that is free";
  EXPECT_EQ(GetCtdCnt(copy), 1);
  EXPECT_EQ(GetCtdOrgCnt(0, copy), 0);
  EXPECT_EQ(GetCtdOrgCnt(0, live), 1);
  EXPECT_EQ(GetCtdMstCnt(1, live), 0);

  tSYNC_SCHINFO cursor{};
  char text[TQ_SYNC_ID_SIZE] = "mark";
  EXPECT_EQ(FindCtdMstSyncID(nullptr, &cursor, live), 1);
  EXPECT_EQ(FindCtdMstSyncID(text, nullptr, live), 1);
  EXPECT_EQ(FindCtdOrgSyncID2(-1, text, &cursor, live), 1);
  for (const int32_t dead : {0, 21, -1, INT32_MAX}) {
    EXPECT_EQ(CopySyncCtdCtl(dead), 0);
    EXPECT_EQ(AddCtdData(id("a1").c_str(), 1, id("m1").c_str(), nullptr, dead), -1);
    EXPECT_EQ(SchMstSyncID(id("m1").c_str(), dead), -1);
    EXPECT_EQ(GetCtdCnt(dead), -1);
    EXPECT_EQ(FindCtdMstSyncID(text, &cursor, dead), -1);
    CtdSchInit(dead);
    GetCtdTitle(text, dead);
  }
  EXPECT_STREQ(text, "mark");
  for (const int32_t handle : handles) FreeSyncCtdCtl(handle);
}

}  // namespace
