// Shows one of the library's dialogs and waits, for a look or a screenshot; without a name it lists
// them.
#include <windows.h>

#include <cstdio>
#include <string>

#include "base/sjis_literal.h"
#include "platform/dialogs.h"
#include "siblings/siblings.h"
#include "tqutil/ui.h"

namespace {

using namespace tq::literals;

constexpr const char* kCaption = "住所録"_sjis;

void show_progress() {
  const auto progress =
      tq::platform::open_progress(kCaption, "ファイルのバックアップ中です..."_sjis, true);
  if (progress == nullptr) return;
  progress->set_group("住所録のデータ"_sjis);
  progress->set_file("C:\\住所録\\データ\\取引先.adr"_sjis);
  progress->set_percent(45);
  while (!progress->cancelled()) ::Sleep(20);
}

void show_message(short number) {
  const tERRBOX_API& box = tq::errbox();
  box.ErrBoxSetMessage(box.context, 2, number, nullptr);
  box.ErrBoxShow(box.context);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string which = argc > 1 ? argv[1] : "";
  std::string chosen;
  if (which == "notice-both") {
    tqOutlookSpInfoDlg(TQ_NOTICE_SYNC);
  } else if (which == "notice-convert") {
    tqOutlookSpInfoDlg(TQ_NOTICE_CONVERT);
  } else if (which == "notice-one") {
    tqOutlookSpInfoDlg(TQ_NOTICE_IMPORT);
  } else if (which == "missing") {
    tq::platform::ask_missing_folder(
        kCaption,
        "以下のファイルは元フォルダが存在しないため\nリストアできません.どうしますか？"_sjis,
        "C:\\住所録\\データ"_sjis, "取引先.adr"_sjis, chosen);
  } else if (which == "progress") {
    show_progress();
  } else if (which == "question") {
    show_message(5);
  } else if (which == "error") {
    show_message(6);
  } else {
    std::fputs(
        "show_dialogs notice-both|notice-convert|notice-one|missing|progress|question|error\n",
        stderr);
    return 2;
  }
  return 0;
}
