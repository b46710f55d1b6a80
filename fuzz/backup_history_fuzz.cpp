// A backup history of any content, under an id and under another name: listed, its groups and files
// read, deleted. Nothing outside its own backup folder may be deleted. `@` in the input stands for
// the home folder. Restoring is left out: it would write where the input says.
#include <string>

#include "guarded_home.h"
#include "tqutil/backup.h"

namespace {

void walk(CBackUpCtl& object, int32_t backups) {
  unsigned char id[TQ_BKUP_ID_SIZE], group[TQ_BKUP_GRP_ID_SIZE], path[TQ_PATH_SIZE];
  unsigned char copy[TQ_PATH_SIZE], date[TQ_BKUP_DATE_SIZE], info[TQ_BKUP_INFO_SIZE];
  int32_t count = 0;
  while (object.GetBackUpFileListNext(id, nullptr, date, info, &count) == 0) {
    --backups;
    int32_t groups = object.GetBackUpFileGrpInit(id);
    for (; object.GetBackUpFileGrpNext(group, nullptr, &count) == 0; --groups) {
      int32_t files = object.GetBackUpFileInit(group);
      while (object.GetBackUpFileNext(path, copy, date, nullptr, nullptr) == 0) --files;
      require(files <= 0);  // below 0 when an earlier group has the same id
    }
    require(groups == 0);
  }
  require(backups == 0);
}

}  // namespace

void try_input(std::string_view input) {
  static const GuardedHome home(
      {"precious", "backup\\precious", "backup\\00000\\copy", "data\\TQ_BKINF.DAT"});
  std::string text;
  for (const char byte : input) text += byte == '@' ? home.path() : std::string(1, byte);
  for (const std::string id : {"00001", "other"}) {
    const std::string history = "data\\" + id + ".BKH";
    home.write(history, text);
    home.write("backup\\00001\\copy", "x");
    CBackUpCtl object;
    const int32_t backups = object.ReadBackUpFileList(-1);
    require(backups == 1);
    walk(object, backups);
    static_cast<void>(object.IsNeedOutlook(0));
    static_cast<void>(object.DeleteBkupAll());
    require(!home.exists(history));
    require(home.exists("backup\\00001\\copy") || id == "00001");
    home.check();
  }
}
