// A host in C++, over the classes: saves a group, finds it in the listing, reads it back and
// deletes it again; looks at the tables that the classes share.
// TQUTIL_HOME names the folder with the library's data.
#include <tqutil/host.h>
#include <tqutil/syncfile.h>
#include <tqutil/syncfld.h>

#include <cstdio>
#include <cstring>

namespace {

bool group_comes_back() {
  CSyncFileCtl saved, read;
  char path[TQ_PATH_SIZE] = "", title[TQ_TITLE_SIZE] = "";
  saved.Create();
  saved.SetTitle("consumer");
  if (saved.Write(0) != 0 || saved.GetSyncGrpInit() != 1) return false;
  saved.GetSyncGrpPath(path);
  if (read.Open(path, "R") != 0 || read.Read() != 0) return false;
  read.GetTitle(title);
  return std::strcmp(title, "consumer") == 0 && saved.DeleteSyncGrp(0) == 0;
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
  const bool group = group_comes_back(), keys = keys_are_loaded();
  std::printf("tqutil %s from C++: group %d, keys %d\n", tqVersion(), group, keys);
  return group && keys ? 0 : 1;
}
