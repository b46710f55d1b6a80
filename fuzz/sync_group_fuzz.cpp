// A group file of any content: read, listed, saved, its members and the group itself deleted.
// Nothing outside the group folder and the member folder of a usable id may change.
#include <string>

#include "guarded_home.h"
#include "support/records.h"
#include "tqutil/syncfile.h"

void try_input(std::string_view input) {
  static const GuardedHome home(
      {"precious.tmp", "work\\precious.tmp", "member\\precious.tmp", "data\\precious.tmp"});
  const std::string path = home.at("group\\input.SYG");
  home.write("group\\input.SYG", input);

  CSyncFileCtl group;
  require(group.Open(path.c_str(), "a") == 0);
  const short count = group.Read();
  require(count >= 0 && count == group.GetSyncFileCnt());
  tq::test::Info info;
  for (short i = 0; i < count; ++i) require(group.GetSyncFileInfo(i, &info) == 0);
  if (group.Write(0) == 0) {
    char saved[TQ_PATH_SIZE];
    group.GetSyncGrpPath(saved);
    CSyncFileCtl again;
    require(again.Open(saved, "r") == 0 && again.Read() >= 0);
  }
  while (group.GetSyncFileCnt() > 0) require(group.DeleteSyncFileInfo(0) == 0);

  require(group.GetSyncGrpInit() >= 1);
  tq::test::Group listed;
  short pos = 0;
  while (group.GetSyncGrpNext(&pos, &listed) == 0) static_cast<void>(group.DeleteSyncGrp(pos));
  home.check();
  home.remove("group");
}
