// The built-in common field library: folders and captions from the home folder's settings.
#include <string_view>

#include "base/sjis_literal.h"
#include "common/guarded.h"
#include "common/text.h"
#include "siblings/builtins.h"
#include "siblings/home.h"
#include "tqutil/records.h"

namespace tq {
namespace {

using namespace literals;

struct FolderDefault {
  std::string_view key;       // in [folders] of tqutil.ini
  std::string_view fallback;  // under the home folder
};

constexpr FolderDefault kData = {"data", "data"};
constexpr FolderDefault kWork = {"work", "work"};
constexpr FolderDefault kBackup = {"backup", "backup"};
constexpr FolderDefault kGroup = {"group", "group"};
constexpr FolderDefault kMember = {"member", "member"};

template <const FolderDefault& kFolder>
void TQ_CALL get_folder(void*, char* folder) {
  copy_text(folder, TQ_PATH_SIZE, {});
  guarded(
      [&] { copy_text(folder, TQ_PATH_SIZE, configured_folder(kFolder.key, kFolder.fallback)); });
}

void TQ_CALL get_caption(void*, char* caption) {
  constexpr std::string_view kDefault = "住所録"_sjis;
  copy_text(caption, TQ_PATH_SIZE, kDefault);
  guarded([&] { copy_text(caption, TQ_PATH_SIZE, configured_text("caption", kDefault)); });
}

void TQ_CALL set_history_no(void*, uint16_t number) { history_filing().number = number; }

void TQ_CALL set_history_app_id(void*, uint16_t app_id) { history_filing().app_id = app_id; }

}  // namespace

tFLDCOM_API builtin_fldcom() {
  tFLDCOM_API api{};
  api.size = sizeof api;
  add_definitions(api);
  api.FldComGetDataFolder = get_folder<kData>;
  api.FldComGetWorkFolder = get_folder<kWork>;
  api.FldComGetBackupFolder = get_folder<kBackup>;
  api.FldComGetGroupFolder = get_folder<kGroup>;
  api.FldComGetMemberFolder = get_folder<kMember>;
  api.FldComGetCaption = get_caption;
  api.FldComSetHistoryNo = set_history_no;
  api.FldComSetHistoryAppId = set_history_app_id;
  add_backup_entries(api);
  return api;
}

}  // namespace tq
