// The built-in dialogs: the platform's own, behind the table's C functions.
#include <string>

#include "common/guarded.h"
#include "common/text.h"
#include "platform/dialogs.h"
#include "siblings/builtins.h"
#include "tqutil/records.h"

namespace tq {
namespace {

template <class Body>
void on_progress(void* progress, Body&& body) noexcept {
  if (progress == nullptr) return;
  guarded([&] { body(*static_cast<platform::Progress*>(progress)); });
}

void* TQ_CALL progress_open(void*, const char* caption, const char* heading, short canCancel) {
  return guarded<void*>(nullptr, [&] {
    return platform::open_progress(view(caption), view(heading), canCancel != 0).release();
  });
}

void TQ_CALL progress_group(void*, void* progress, const char* text) {
  on_progress(progress, [&](platform::Progress& shown) { shown.set_group(view(text)); });
}

void TQ_CALL progress_file(void*, void* progress, const char* text) {
  on_progress(progress, [&](platform::Progress& shown) { shown.set_file(view(text)); });
}

void TQ_CALL progress_pos(void*, void* progress, short percent) {
  on_progress(progress, [&](platform::Progress& shown) { shown.set_percent(percent); });
}

short TQ_CALL progress_cancelled(void*, void* progress) {
  bool cancelled = false;
  on_progress(progress, [&](platform::Progress& shown) { cancelled = shown.cancelled(); });
  return cancelled ? 1 : 0;
}

void TQ_CALL progress_resume(void*, void* progress) {
  on_progress(progress, [](platform::Progress& shown) { shown.resume(); });
}

void TQ_CALL progress_close(void*, void* progress) {
  delete static_cast<platform::Progress*>(progress);
}

short TQ_CALL missing_folder(void*, const char* caption, const char* message, const char* folder,
                             const char* fileName, char* chosen) {
  return guarded<short>(TQ_FOLDER_CANCEL, [&] {
    std::string other;
    switch (platform::ask_missing_folder(view(caption), view(message), view(folder), view(fileName),
                                         other)) {
      case platform::MissingFolder::kRecreate:
        return TQ_FOLDER_RECREATE;
      case platform::MissingFolder::kOther:
        copy_text(chosen, TQ_PATH_SIZE, other);
        return TQ_FOLDER_OTHER;
      case platform::MissingFolder::kCancel:
        break;
    }
    return TQ_FOLDER_CANCEL;
  });
}

short TQ_CALL setup_notice(void*, const char* caption, const char* note1, const char* note2,
                           const char* helpFile) {
  return guarded<short>(1, [&] {
    return platform::show_notice(view(caption), view(note1), view(note2), view(helpFile)) ? 0 : 1;
  });
}

}  // namespace

tDIALOG_API builtin_dialog() {
  return {sizeof(tDIALOG_API), nullptr,        progress_open,      progress_group,
          progress_file,       progress_pos,   progress_cancelled, progress_resume,
          progress_close,      missing_folder, setup_notice};
}

}  // namespace tq
