/* A host in plain C, over handles: saves a group, finds it in the listing and deletes it again;
 * asks for what the shipped definition files say. TQUTIL_HOME names the folder with the library's
 * data. */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <tqutil/appinfo.h>
#include <tqutil/host.h>
#include <tqutil/syncfile.h>
#include <tqutil/syncfld.h>

static const char kTitle[] = "\xE4\xBD\x8F\xE6\x89\x80\xE9\x8C\xB2"; /* "address book", UTF-8 */

static void require(int holds, const char* what) {
  if (holds) return;
  fprintf(stderr, "consumer.c: %s\n", what);
  exit(1);
}

static void save_group(const char* title) {
  int32_t group = CreateSyncFile();
  require(group != 0, "no group");
  SetSyncTitle(title, group);
  require(WriteSyncFile(0, group) == 0, "the group is not saved");
  require(CloseSyncFile(group) == 0, "the group does not close");
}

static int delete_groups(const char* title) {
  short count = 0;
  short pos = 0;
  int deleted = 0;
  tSYNC_GRP grp = {0};
  int32_t listing = GetSyncGrpInit(&count);
  require(listing != 0 && count > 0, "no listing");
  SyncGrpAlloc(&grp);
  while (GetSyncGrpNext(&pos, &grp, listing) == 0) {
    if (strcmp(grp.title, title) != 0) continue;
    require(DeleteSyncGrpInfo(pos, listing) == 0, "the group cannot be deleted");
    ++deleted;
  }
  SyncGrpFree(&grp);
  require(GetSyncGrpClose(listing) == 0, "the listing does not close");
  return deleted;
}

int main(void) {
  char title[TQ_TITLE_SIZE];
  require(tqUtf8ToSjis(kTitle, (int32_t)sizeof kTitle - 1, title, sizeof title) == 6, "no title");
  save_group(title);
  require(delete_groups(title) == 1, "the group is not in the listing");
  require(GetAppType(TQ_APP_MASTER) == TQ_APP_MASTER, "the application list is not found");
  require(SykyGetKey(TQ_APP_MASTER, 1, 1) == 42, "the keys are not loaded");
  printf("tqutil %s from C\n", tqVersion());
  return 0;
}
