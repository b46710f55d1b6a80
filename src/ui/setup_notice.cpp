#include "ui/setup_notice.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "base/sjis_literal.h"
#include "common/text.h"
#include "siblings/siblings.h"
#include "tqutil/records.h"

namespace tq {
namespace {

using namespace literals;

constexpr short kStop = 1;

// What each operation puts into the notes; without words for note 2 that note is not shown.
struct ModeWords {
  const char* operation;  // %1 of note 1
  const char* when;       // %1 of note 2
  const char* subject;    // %2 of note 2
};

constexpr ModeWords kModes[] = {
    {"変換"_sjis, "変換先が「Outlook2002/97」の場合"_sjis, "変換先が"_sjis},
    {"インポート"_sjis, nullptr, nullptr},
    {"エクスポート"_sjis, "エクスポート先が「Outlook2002/97」の場合"_sjis, "エクスポート先が"_sjis},
    {"シンクロナイズ"_sjis, "シンクロナイズ中に「Outlook2002/97」へデータ更新が発生する場合"_sjis,
     "シンクロナイズ対象が"_sjis},
    {"アドレス帳の作成"_sjis, nullptr, nullptr},
};

constexpr const char* kNote1 =
    "※１ ： ダイヤルアップでインターネットに接続している方にご注意\n\n"
    " %1が終了するまでOutlookは内部的に起動している状態になります.\n"
    "自動接続等の設定になっていますと%1が終了するまで、常に回線が\n"
    "つながったままの状態になる可能性があります.\n"
    "このような設定になっている場合は、自動接続を解除するか、オフラインでOutlookが\n"
    "起動するように設定し直してから再度%1を実行してください."_sjis;

constexpr const char* kNote2 =
    "※２ ： Outlook2002/97をお使いの方にご注意\n\n"
    "%1、\n"
    "「Outlook2002/97」の仕様によりアドレス帳（連絡先）へのデータ更新が行われるたびに、\n"
    "一瞬アドレス帳（連絡先）画面が表示されます. 複数件の更新が行われる場合には\n"
    "断続して画面が表示されますが、これは正常な動作です.\n"
    "・%2「Outlook2000/98」の場合には、なにも表示されません."_sjis;

constexpr const char* kHelpFile = "設定方法.TXT"_sjis;

// '%' is never the second byte of a character, so the text can be searched byte by byte.
std::string fill_in(std::string_view text, std::string_view first, std::string_view second) {
  std::string filled;
  for (std::size_t pos = 0; pos < text.size(); ++pos) {
    const std::string_view mark = text.substr(pos, 2);
    if (mark == "%1" || mark == "%2") {
      filled += mark == "%1" ? first : second;
      ++pos;
    } else {
      filled += text[pos];
    }
  }
  return filled;
}

}  // namespace

short show_setup_notice(short mode) {
  // An operation that we have no words for is one that the user has not been warned about.
  if (mode < 0 || static_cast<std::size_t>(mode) >= std::size(kModes)) return kStop;
  const ModeWords& words = kModes[mode];
  char caption[TQ_PATH_SIZE] = {};
  fldcom().FldComGetCaption(fldcom().context, caption);
  const std::string note1 = fill_in(kNote1, words.operation, {});
  const std::string note2 =
      words.when == nullptr ? std::string() : fill_in(kNote2, words.when, words.subject);
  const std::string help = sibling_folder(&tFLDCOM_API::FldComGetProgramFolder) + kHelpFile;
  return dialog().DlgSetupNotice(dialog().context, caption, note1.c_str(),
                                 words.when == nullptr ? nullptr : note2.c_str(), help.c_str());
}

}  // namespace tq
