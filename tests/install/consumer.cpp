// A host in C++, over the classes: saves a group, reads it back from its file and deletes it again;
// looks at the tables that the classes share.
// TQUTIL_HOME names the folder with the library's data.
#include <tqutil/host.h>
#include <tqutil/syncfile.h>
#include <tqutil/syncfld.h>

#include <cstdio>
#include <cstring>

namespace {

bool save(char* path) {
  CSyncFileCtl group;
  group.Create();
  group.SetTitle("consumer");
  if (group.Write(0) != 0) return false;
  group.GetSyncGrpPath(path);
  return true;
}

bool read_back(const char* path) {
  CSyncFileCtl group;
  if (group.Open(path, "R") != 0 || group.Read() != 0) return false;
  char title[TQ_TITLE_SIZE] = "";
  group.GetTitle(title);
  return std::strcmp(title, "consumer") == 0;
}

bool remove_again() {
  CSyncFileCtl listing;
  if (listing.GetSyncGrpInit() != 1) return false;
  tSYNC_GRP grp{};
  CSyncFileCtl::SyncGrpAlloc(&grp);
  short pos = 0;
  const bool listed = listing.GetSyncGrpNext(&pos, &grp) == 0;
  CSyncFileCtl::SyncGrpFree(&grp);
  return listed && listing.DeleteSyncGrp(pos) == 0;
}

// The library's own data, through its export table.
bool keys_are_loaded() {
  const short count = CSyncFldCtl::s_appCnt;
  CSyncFldCtl::FreeSyncKeyFile();
  const bool gone = CSyncFldCtl::s_appTbl == nullptr;
  return gone && CSyncFldCtl::ReadSyncKeyFile() == 0 && CSyncFldCtl::s_appTbl != nullptr &&
         count > 0 && CSyncFldCtl::s_appTbl[count - 1].itemCnt > 0;
}

}  // namespace

int main() {
  char path[TQ_PATH_SIZE] = "";
  if (!save(path) || !read_back(path) || !remove_again()) {
    std::fprintf(stderr, "consumer.cpp: the group does not come back\n");
    return 1;
  }
  if (!keys_are_loaded()) {
    std::fprintf(stderr, "consumer.cpp: the keys are not loaded\n");
    return 1;
  }
  std::printf("tqutil %s from C++\n", tqVersion());
  return 0;
}
