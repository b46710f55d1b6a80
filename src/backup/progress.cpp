#include "backup/progress.h"

#include <algorithm>

#include "siblings/siblings.h"
#include "tqutil/records.h"

namespace tq {
namespace {

constexpr short kBackupMessages = 2;  // category of the error box

}  // namespace

Progress::Progress(const char* heading, bool can_cancel, std::int64_t total) : total_(total) {
  char caption[TQ_PATH_SIZE] = {};
  fldcom().FldComGetCaption(fldcom().context, caption);
  dialog_ = dialog().DlgProgressOpen(dialog().context, caption, heading, can_cancel ? 1 : 0);
}

Progress::~Progress() {
  if (dialog_ != nullptr) dialog().DlgProgressClose(dialog().context, dialog_);
}

void Progress::group(short type) {
  if (dialog_ == nullptr) return;
  char caption[TQ_PATH_SIZE] = {};
  fldcom().FldComGetGroupCaption(fldcom().context, type, caption);
  dialog().DlgProgressGroup(dialog().context, dialog_, caption);
}

void Progress::file(const char* path) {
  if (dialog_ != nullptr) dialog().DlgProgressFile(dialog().context, dialog_, path);
}

void Progress::advance() {
  ++done_;
  show_position();
}

void Progress::finish() {
  done_ = total_;
  file("");
  show_position();
}

bool Progress::stopped() {
  if (dialog_ == nullptr) return false;
  if (dialog().DlgProgressCancelled(dialog().context, dialog_) == 0) return false;
  if (show_message(kMessageStopBackup, nullptr) == TQ_ANSWER_YES) return true;
  dialog().DlgProgressResume(dialog().context, dialog_);
  return false;
}

void Progress::show_position() {
  constexpr std::int64_t kFull = 100;
  const std::int64_t percent = total_ > 0 ? std::min(done_ * kFull / total_, kFull) : kFull;
  if (dialog_ == nullptr || shown_ == percent) return;
  shown_ = static_cast<short>(percent);
  dialog().DlgProgressPos(dialog().context, dialog_, shown_);
}

short show_message(short number, const char* path) {
  errbox().ErrBoxSetMessage(errbox().context, kBackupMessages, number, path);
  return errbox().ErrBoxShow(errbox().context);
}

}  // namespace tq
