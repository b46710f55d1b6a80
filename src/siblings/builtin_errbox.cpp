// The built-in message boxes.
#include <string>
#include <string_view>

#include "base/sjis_literal.h"
#include "common/guarded.h"
#include "common/text.h"
#include "platform/dialogs.h"
#include "siblings/builtins.h"
#include "siblings/siblings.h"
#include "tqutil/records.h"

namespace tq {
namespace {

using namespace literals;

struct Message {
  short category;
  short number;
  platform::Buttons buttons;
  const char* text;
};

// Category 2 is backup and restore.
constexpr Message kMessages[] = {
    {2, 4, platform::Buttons::kOk, "フォルダを作成できませんでした."_sjis},
    {2, 5, platform::Buttons::kYesNo, "バックアップを中止しますか？"_sjis},
    {2, 6, platform::Buttons::kOk,
     "指定されたフォルダには同名のファイルがあるため戻せません."_sjis},
    {2, 7, platform::Buttons::kOk,
     "バックアップの履歴に不正な場所が記録されているため、リストアを中止しました."_sjis},
};

constexpr Message kUnknown = {0, 0, platform::Buttons::kOk, "エラーが発生しました."_sjis};

// What ErrBoxSetMessage chose and ErrBoxShow shows next.
struct Chosen {
  const Message* message = &kUnknown;
  std::string detail;
};
Chosen chosen;

void TQ_CALL set_message(void*, short category, short number, const char* detail) {
  chosen.message = &kUnknown;
  for (const Message& message : kMessages) {
    if (message.category == category && message.number == number) chosen.message = &message;
  }
  chosen.detail = guarded(std::string(), [&] { return std::string(view(detail)); });
}

short TQ_CALL show(void*) {
  const bool question = chosen.message->buttons == platform::Buttons::kYesNo;
  // Without memory the answer is the one that changes nothing.
  const bool yes = guarded(false, [] {
    char caption[TQ_PATH_SIZE] = {};
    fldcom().FldComGetCaption(fldcom().context, caption);
    std::string text = chosen.message->text;
    if (!chosen.detail.empty()) text += "\n" + chosen.detail;
    return platform::ask(caption, text, chosen.message->buttons);
  });
  if (question) return yes ? TQ_ANSWER_YES : TQ_ANSWER_NO;
  return TQ_ANSWER_OK;
}

}  // namespace

tERRBOX_API builtin_errbox() { return {sizeof(tERRBOX_API), nullptr, set_message, show}; }

}  // namespace tq
