#include "backup/mail_store.h"

#include "backup/history_file.h"
#include "backup/list.h"
#include "backup/site.h"
#include "common/path.h"
#include "common/text.h"
#include "siblings/siblings.h"

namespace tq {
namespace {

constexpr short kStartMode = 2;  // what AdrConvStartTransfer is called with
constexpr unsigned kPollMs = 500;

std::string_view without_extension(std::string_view path) {
  const std::string_view name = PathFileName(path);
  return name.substr(0, PathExtension(name));
}

// True when all of the request is on the disk. A request that is there in part would start some
// other transfer, so it is not started then.
bool ask(const Settings& settings, Transfer mode, std::string_view name) {
  return settings.set_transfer(static_cast<short>(mode)) &&
         settings.set_transfer_status(kTransferAsked) && settings.set_transfer_name(name);
}

}  // namespace

short mBkupPstTr(const Site& site, std::string_view destination, std::string_view source,
                 Transfer mode) {
  if (fldcom().FldComHasDataSet(fldcom().context, TQ_BKUP_TYPE_MAIL_STORE) == 0) return 0;
  const Settings settings(site.data_folder);
  const std::string_view copy = mode == Transfer::kBackUp ? destination : source;
  if (!ask(settings, mode, without_extension(copy))) return kTransferAsked;
  adrconv().AdrConvStartTransfer(adrconv().context, kStartMode);
  do {
    platform::sleep_ms(kPollMs);
  } while (adrconv().AdrConvIsBusy(adrconv().context) != 0);
  return settings.transfer_status();
}

bool needs_mail_client(Site& site, short kind) {
  BackupList list;
  if (!list.load_sorted(site, kind)) return false;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (static_cast<int>(i) < site.generations - 1) continue;
    FileGroups groups;
    // What a damaged history still tells counts as well.
    static_cast<void>(mGetFileGrpListS(view(list[i].historyPath), groups));
    for (std::size_t group = 0; group < groups.size(); ++group) {
      if (groups[group].type == TQ_BKUP_TYPE_MAIL_STORE) return true;
    }
  }
  return false;
}

}  // namespace tq
