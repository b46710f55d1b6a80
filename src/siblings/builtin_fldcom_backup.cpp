// The built-in common field library, as far as backups ask it: captions of file groups, which data
// sets there are, and which files make one up.
#include <string>

#include "base/sjis_literal.h"
#include "common/guarded.h"
#include "common/text.h"
#include "siblings/builtins.h"
#include "siblings/home.h"
#include "tqutil/backup.h"
#include "tqutil/records.h"

namespace tq {
namespace {

using namespace literals;

constexpr std::string_view default_caption(short type) {
  if (type == TQ_BKUP_TYPE_MAIL_STORE) return "メールデータ"_sjis;
  if (type == TQ_BKUP_TYPE_WHOLE_FOLDER) return "フォルダ"_sjis;
  return "ファイル"_sjis;
}

// `group<type>` of section [texts] in tqutil.ini, else a word for the type.
void TQ_CALL get_group_caption(void*, short type, char* caption) {
  const std::string_view fallback = default_caption(type);
  copy_text(caption, TQ_PATH_SIZE, fallback);
  guarded([&] {
    copy_text(caption, TQ_PATH_SIZE, configured_text("group" + std::to_string(type), fallback));
  });
}

// There is no mail store to transfer; whatever else there is, files hold it.
short TQ_CALL has_data_set(void*, short type) { return type == TQ_BKUP_TYPE_MAIL_STORE ? 0 : 1; }

// A data set is one file: the list that is out until it is released.
struct Listed {
  char path[TQ_PATH_SIZE] = {};
  const char* paths[1] = {path};
};
Listed listed;

short TQ_CALL related_files(void*, short, const char* path, int32_t* count,
                            const char* const** paths) {
  if (count == nullptr || paths == nullptr || view(path).size() >= TQ_PATH_SIZE) return 1;
  copy_text(listed.path, view(path));
  *count = 1;
  *paths = listed.paths;
  return 0;
}

void TQ_CALL reset_related_files(void*, short) { listed.path[0] = '\0'; }

}  // namespace

void add_backup_entries(tFLDCOM_API& api) {
  api.FldComGetGroupCaption = get_group_caption;
  api.FldComHasDataSet = has_data_set;
  api.FldComRelatedFiles = related_files;
  api.FldComRelatedFilesReset = reset_related_files;
}

}  // namespace tq
