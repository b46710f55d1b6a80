// The real dialogs, each driven once from another thread that reads their controls and presses
// their buttons.
#include <windows.h>

#include <atomic>
#include <functional>
#include <thread>

#include "base/cp932.h"
#include "platform/dialogs.h"
#include "support/test.h"

namespace {

namespace platform = tq::platform;

constexpr const wchar_t* kCaption = L"tqutil dialog test";
constexpr const char* kCaptionBytes = "tqutil dialog test";

// Without a desktop there are no windows; the test says so instead of failing.
bool has_desktop() {
  const HWND window = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                        nullptr, nullptr);
  if (window != nullptr) ::DestroyWindow(window);
  return window != nullptr;
}

// Waits for the dialog and does something to it while the main thread is inside it.
class Driver {
 public:
  explicit Driver(std::function<void(HWND)> act)
      : thread_([act = std::move(act)] {
          for (int tries = 0; tries < 500; ++tries) {
            const HWND window = ::FindWindowW(nullptr, kCaption);
            if (window != nullptr && ::IsWindowVisible(window)) return act(window);
            ::Sleep(20);
          }
          ADD_FAILURE() << "the dialog did not appear";
        }) {}
  ~Driver() { thread_.join(); }
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;

 private:
  std::thread thread_;
};

void press(HWND window, int id) { ::SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(id), 0); }

std::string control_text(HWND window, int id) {
  wchar_t text[2048] = {};
  ::GetDlgItemTextW(window, id, text, 2048);
  std::string sjis;
  const std::wstring wide = text;
  tq::cp932::from_utf16(std::u16string(wide.begin(), wide.end()), sjis);
  return sjis;
}

int height(HWND window) {
  RECT place{};
  ::GetWindowRect(window, &place);
  return place.bottom - place.top;
}

class WindowsDialogs : public testing::Test {
 protected:
  void SetUp() override {
    if (!has_desktop()) GTEST_SKIP() << "no desktop to show windows on";
  }
};

TEST_F(WindowsDialogs, NoticeShrinksByItsHiddenNote) {
  int with_both = 0;
  int with_one = 0;
  {
    const Driver driver([&](HWND window) {
      EXPECT_EQ(control_text(window, 1000), "一\r\n二"_sjis);
      EXPECT_EQ(control_text(window, 1001), "note 2");
      EXPECT_NE(::GetDlgItem(window, 2012), nullptr);
      EXPECT_EQ(control_text(window, IDOK), "続行"_sjis);
      with_both = height(window);
      press(window, IDOK);
    });
    EXPECT_TRUE(platform::show_notice(kCaptionBytes, "一\n二"_sjis, "note 2", "Z:\\none.txt"));
  }
  {
    const Driver driver([&](HWND window) {
      const HWND note = ::GetDlgItem(window, 1001);
      EXPECT_FALSE(::IsWindowVisible(note));
      with_one = height(window) + height(note);
      press(window, IDCANCEL);
    });
    EXPECT_FALSE(platform::show_notice(kCaptionBytes, "note 1", "", "Z:\\none.txt"));
  }
  EXPECT_EQ(with_one, with_both);
}

TEST_F(WindowsDialogs, MissingFolderChoices) {
  TestFolder folder;
  const std::wstring other = folder.native().wstring();
  std::string chosen;
  const auto ask = [&] {
    return platform::ask_missing_folder(kCaptionBytes, "message", "Z:\\gone", "file.csv", chosen);
  };
  {
    const Driver driver([](HWND window) {
      EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(window, 1012)))
          << "re-creating needs no other folder";
      press(window, IDOK);
    });
    EXPECT_EQ(ask(), platform::MissingFolder::kRecreate);
  }
  {
    const Driver driver([&](HWND window) {
      ::SendDlgItemMessageW(window, 1011, BM_CLICK, 0, 0);
      EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(window, 1012)));
      press(window, IDOK);
      EXPECT_TRUE(::IsWindow(window)) << "an empty folder name is no answer";
      ::SetDlgItemTextW(window, 1012, other.c_str());
      press(window, IDOK);
    });
    EXPECT_EQ(ask(), platform::MissingFolder::kOther);
    EXPECT_EQ(chosen, folder.path());
  }
  {
    const Driver driver([](HWND window) { press(window, IDCANCEL); });
    EXPECT_EQ(ask(), platform::MissingFolder::kCancel);
  }
}

TEST_F(WindowsDialogs, ProgressFollowsAndCancels) {
  for (const bool can_cancel : {true, false}) {
    auto progress = platform::open_progress(kCaptionBytes, "heading", can_cancel);
    ASSERT_NE(progress, nullptr);
    const HWND window = ::FindWindowW(nullptr, kCaption);
    ASSERT_NE(window, nullptr);
    progress->set_group("グループ"_sjis);
    progress->set_file("Z:\\a\\b.csv");
    progress->set_percent(40);
    EXPECT_EQ(control_text(window, 1001), "グループ"_sjis);
    EXPECT_EQ(control_text(window, 1002), "Z:\\a\\b.csv");
    EXPECT_EQ(::SendDlgItemMessageW(window, 1003, WM_USER + 8, 0, 0), 40);  // PBM_GETPOS
    EXPECT_EQ(::IsWindowEnabled(::GetDlgItem(window, IDCANCEL)) != 0, can_cancel);
    EXPECT_FALSE(progress->cancelled());
    ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(progress->cancelled(), can_cancel);
    progress->resume();
    EXPECT_FALSE(progress->cancelled());
    progress.reset();
    EXPECT_EQ(::FindWindowW(nullptr, kCaption), nullptr);
  }
}

TEST_F(WindowsDialogs, QuestionsAnswer) {
  const Driver driver([](HWND window) { press(window, IDYES); });
  EXPECT_TRUE(platform::ask(kCaptionBytes, "question", platform::Buttons::kYesNo));
}

}  // namespace
