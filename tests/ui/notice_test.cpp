// What the setup notice says for each operation, and the messages of the error box, seen from the
// tables behind them.
#include "support/own_siblings.h"
#include "support/test.h"
#include "tqutil/ui.h"

namespace {

// What was shown last, and how often something was.
struct Shown {
  int times = 0;
  short answer = 0;
  std::string text;
};

short TQ_CALL take_notice(void* context, const char* caption, const char* note1, const char* note2,
                          const char* helpFile) {
  auto& shown = *static_cast<Shown*>(context);
  ++shown.times;
  shown.text = std::string(caption) + "|" + note1 + "|" + (note2 == nullptr ? "hidden" : note2) +
               "|" + helpFile;
  return shown.answer;
}

TEST(SetupNotice, WordsOfEachOperation) {
  TestHome home;
  home.write("tqutil.ini", std::string("[texts]\ncaption=") + "住所録Ｘ"_sjis + "\n");
  Shown shown;
  OwnSiblings own(&shown);
  own.dialog.DlgSetupNotice = take_notice;
  own.install();

  const std::tuple<short, const char*, const char*> cases[] = {
      {TQ_NOTICE_CONVERT, " 変換が終了するまで"_sjis, "・変換先が「Outlook2000/98」"_sjis},
      {TQ_NOTICE_IMPORT, " インポートが終了するまで"_sjis, "|hidden|"},
      {TQ_NOTICE_EXPORT, "再度エクスポートを実行"_sjis,
       "エクスポート先が「Outlook2002/97」の場合、"_sjis},
      {TQ_NOTICE_SYNC, "シンクロナイズが終了"_sjis,
       "「Outlook2002/97」へデータ更新が発生する場合、"_sjis},
      {TQ_NOTICE_CREATE, "アドレス帳の作成が終了"_sjis, "|hidden|"},
  };
  for (const auto& [mode, in_note1, in_note2] : cases) {
    SCOPED_TRACE(mode);
    shown.answer = static_cast<short>(mode % 2);
    EXPECT_EQ(tqOutlookSpInfoDlg(mode), mode % 2);
    for (const std::string part : {in_note1, in_note2}) {
      EXPECT_NE(shown.text.find(part), std::string::npos) << shown.text;
    }
    EXPECT_EQ(shown.text.find("%1"), std::string::npos);
    EXPECT_TRUE(shown.text.starts_with("住所録Ｘ|"_sjis));
    EXPECT_TRUE(shown.text.ends_with("\\設定方法.TXT"_sjis));
  }
  EXPECT_EQ(shown.times, 5);
  shown.answer = 0;
  EXPECT_EQ(tqOutlookSpInfoDlg(5), 1) << "no words, no warning, no go";
  EXPECT_EQ(tqOutlookSpInfoDlg(-1), 1);
  EXPECT_EQ(shown.times, 5);
}

}  // namespace
