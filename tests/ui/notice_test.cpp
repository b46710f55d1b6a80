// What the setup notice says for each operation, and the messages of the error box, seen from the
// tables behind them.
#include "support/own_siblings.h"
#include "support/test.h"
#include "tqutil/ui.h"

namespace {

struct Shown {
  int times = 0;
  std::string caption, note1, note2, help_file;
  short answer = 0;
};

short TQ_CALL take_notice(void* context, const char* caption, const char* note1, const char* note2,
                          const char* helpFile) {
  auto& shown = *static_cast<Shown*>(context);
  ++shown.times;
  shown.caption = caption;
  shown.note1 = note1;
  shown.note2 = note2 == nullptr ? "hidden" : note2;
  shown.help_file = helpFile;
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
      {TQ_NOTICE_IMPORT, " インポートが終了するまで"_sjis, "hidden"},
      {TQ_NOTICE_EXPORT, "再度エクスポートを実行"_sjis,
       "エクスポート先が「Outlook2002/97」の場合、"_sjis},
      {TQ_NOTICE_SYNC, "シンクロナイズが終了"_sjis,
       "「Outlook2002/97」へデータ更新が発生する場合、"_sjis},
      {TQ_NOTICE_CREATE, "アドレス帳の作成が終了"_sjis, "hidden"},
  };
  for (const auto& [mode, in_note1, in_note2] : cases) {
    SCOPED_TRACE(mode);
    shown.answer = static_cast<short>(mode % 2);
    EXPECT_EQ(tqOutlookSpInfoDlg(mode), mode % 2);
    EXPECT_NE(shown.note1.find(in_note1), std::string::npos);
    EXPECT_EQ(shown.note1.find("%1"), std::string::npos);
    EXPECT_NE(shown.note2.find(in_note2), std::string::npos);
    EXPECT_EQ(shown.caption, "住所録Ｘ"_sjis);
    EXPECT_TRUE(shown.help_file.ends_with("\\設定方法.TXT"_sjis));
  }
  EXPECT_EQ(shown.times, 5);
  shown.answer = 0;
  EXPECT_EQ(tqOutlookSpInfoDlg(5), 1) << "no words, no warning, no go";
  EXPECT_EQ(tqOutlookSpInfoDlg(-1), 1);
  EXPECT_EQ(shown.times, 5);
}

}  // namespace
