// Tests of win32/forms/form_window.h, win32/controls/widgets.h and win32/message_pump.h.
#include "win32/forms/form_window.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/win32/test_window.h"
#include "win32/control_ids.h"
#include "win32/controls/status_line.h"
#include "win32/controls/widgets.h"
#include "win32/forms/input_box.h"

namespace tintline {
namespace {

struct TestForm final : Form {
  TestForm() {
    Caption = L"Test";
    OKButton.Caption = L"OK";
    Choice.List = {L"eins", L"zwei"};
    OKButton.Click = [this] { ++clicks; };
    Check.Click = [this] { ++clicks; };
    Text.Change = [this] { ++clicks; };
    Choice.Click = [this] { ++clicks; };
  }
  TextBox Text;
  CheckBox Check;
  ComboBox Choice;
  Label Status;
  CommandButton OKButton;
  int clicks = 0;
};

constexpr int kText = 3001, kCheck = 3002, kChoice = 3003, kStatus = 3004;

class TestFormWindow final : public FormWindow {
 public:
  TestFormWindow(MessagePump& pump, TestForm& form) : FormWindow(pump, form) {
    createWindow(L"TINTLINE_TestForm", WS_POPUP | WS_CAPTION);
    widgets_ = {&add<EditWidget>(form.Text, kText),
                &add<ToggleWidget<CheckBox>>(form.Check, kCheck, kCheckStyle),
                &add<ComboWidget>(form.Choice, kChoice), &add<StatusWidget>(form.Status, kStatus),
                &add<ButtonWidget>(form.OKButton, id::kOk, BS_DEFPUSHBUTTON)};
  }

 private:
  void layout() override {
    int top = 0;
    for (const Widget* widget : widgets_) place(*widget, 0, std::exchange(top, top + 20), 200, 20);
  }
  SIZE clientSize() override { return {200, 100}; }

  std::vector<Widget*> widgets_;
};

// For EnumThreadWindows: puts the tool tip window into that place.
BOOL CALLBACK findTips(HWND window, LPARAM found) {
  wchar_t name[64]{};
  GetClassNameW(window, name, 64);
  if (std::wstring(name) == TOOLTIPS_CLASSW) *reinterpret_cast<HWND*>(found) = window;
  return TRUE;
}

struct FormWindowTest : testing::Test {
  MessagePump pump;
  TestForm form;
  HWND window = nullptr;

  FormWindowTest() {
    form.makeView = [this] {
      auto view = std::make_unique<TestFormWindow>(pump, form);
      window = view->hwnd();
      return view;
    };
  }
  ~FormWindowTest() override { form.Unload(); }

  HWND control(int number) const { return GetDlgItem(window, number); }
};

TEST_F(FormWindowTest, showsTheModelsWhenItOpens) {
  form.Text.Text = L"Übung";
  form.Check.Value = true;
  form.Choice.ListIndex = 1;
  form.OKButton.Enabled = false;
  form.Check.Visible = false;
  form.Show();
  EXPECT_EQ(test::windowText(window), L"Test");
  EXPECT_EQ(test::windowText(control(kText)), L"Übung");
  EXPECT_EQ(test::windowText(control(kChoice)), L"zwei");
  EXPECT_EQ(SendMessageW(control(kCheck), BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_FALSE(IsWindowEnabled(control(id::kOk)));
  EXPECT_FALSE(IsWindowVisible(control(kCheck)));
  EXPECT_EQ(form.clicks, 0) << "showing is no act of the user";
}

TEST_F(FormWindowTest, theKeyboardComesBackToWhatWasDisabled) {
  const auto enable = [this](bool enabled) {
    form.Text.Enabled = enabled;
    form.Check.Enabled = enabled;
    pump.flush();
  };
  form.Show();
  SetFocus(control(kText));
  enable(false);
  EXPECT_EQ(GetFocus(), control(kChoice)) << "behind two that are disabled";
  enable(true);
  EXPECT_EQ(GetFocus(), control(kText));
  enable(false);
  SetFocus(control(id::kOk));
  enable(true);
  EXPECT_EQ(GetFocus(), control(id::kOk)) << "where the user went";
}

TEST_F(FormWindowTest, showsChangesWithTheNextFlush) {
  form.Show();
  form.Status.Caption = L"1";
  form.Status.Caption = L"2";
  EXPECT_EQ(test::windowText(control(kStatus)), L"");
  pump.flush();
  EXPECT_EQ(test::windowText(control(kStatus)), L"2");
}

TEST_F(FormWindowTest, aLongRunShowsNowAndThen) {
  const std::function<void()> ways[] = {
      [this] { pump.yield(); },
      [this] { form.Check.Refresh(); },  // of a control that did not change itself
  };
  form.Show();
  for (const auto& letThrough : ways) {
    int shown = 0;
    std::wstring before;
    const ULONGLONG end = GetTickCount64() + 500;
    for (int i = 0; GetTickCount64() < end; ++i) {
      form.Status.Caption = std::to_wstring(i);
      letThrough();
      shown += test::windowText(control(kStatus)) != before;
      before = test::windowText(control(kStatus));
    }
    EXPECT_GE(shown, 3);
    EXPECT_LE(shown, 20);
  }
}

TEST_F(FormWindowTest, aRefreshShowsWhatChangedAtOnce) {
  form.Show();
  pump.flush();  // the next one is not due for a while
  form.Status.Caption = L"Stelle Verbindung her...";
  form.Status.Refresh();
  EXPECT_EQ(test::windowText(control(kStatus)), L"Stelle Verbindung her...");
  form.Caption = L"Neu";
  form.Refresh();
  EXPECT_EQ(test::windowText(window), L"Neu");
}

TEST_F(FormWindowTest, aTopmostFormIsInFrontAtOnceAndItsTipsInFrontOfIt) {
  form.Text.ToolTipText = L"Tipp";
  form.Show();
  HWND tips = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), findTips, reinterpret_cast<LPARAM>(&tips));
  ASSERT_NE(tips, nullptr);
  const auto tipIsShown = [&] { return IsWindowVisible(tips) != FALSE; };
  for (const bool topmost : {false, true, false}) {  // also behind a tip that was shown
    form.Topmost = topmost;
    form.Refresh();
    EXPECT_EQ((GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0, topmost);
    RECT place{};
    GetWindowRect(control(kText), &place);
    SetCursorPos(place.left + 5, place.top + 5);
    PostMessageW(control(kText), WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(test::pumpUntil(tipIsShown, 3000));
    HWND behind = tips;
    while (behind != nullptr && behind != window) behind = GetWindow(behind, GW_HWNDNEXT);
    EXPECT_EQ(behind, window);
    SetCursorPos(0, 0);
    SendMessageW(tips, TTM_POP, 0, 0);
    EXPECT_FALSE(tipIsShown());
  }
  form.Unload();
  EXPECT_FALSE(IsWindow(tips));
}

TEST_F(FormWindowTest, tellsTheModelsWhatTheUserDoes) {
  form.Show();
  SetWindowTextW(control(kText), L"getippt");
  EXPECT_EQ(form.Text.Text(), L"getippt");
  SendMessageW(control(kCheck), BM_CLICK, 0, 0);
  EXPECT_TRUE(form.Check.Value);
  SendMessageW(control(kChoice), CB_SETCURSEL, 1, 0);
  SendMessageW(window, WM_COMMAND, MAKEWPARAM(kChoice, CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(control(kChoice)));
  EXPECT_EQ(form.Choice.ListIndex, 1);
  SendMessageW(control(id::kOk), BM_CLICK, 0, 0);
  EXPECT_EQ(form.clicks, 4);
}

TEST_F(FormWindowTest, theFormMayCloseTheWindowInItsOwnEvent) {
  form.OKButton.Click = [this] { form.Unload(); };
  form.Show();
  SendMessageW(control(id::kOk), BM_CLICK, 0, 0);
  EXPECT_FALSE(IsWindow(window));
  form.Text.Text = L"danach";  // nobody shows it
  form.Show();
  EXPECT_EQ(test::windowText(control(kText)), L"danach");
}

TEST_F(FormWindowTest, aModalWindowLocksTheOthersUntilItCloses) {
  const test::TestWindow other;
  form.OKButton.Click = [&] {
    EXPECT_FALSE(IsWindowEnabled(other.get()));
    form.Unload();
  };
  form.makeView = [this] {
    auto view = std::make_unique<TestFormWindow>(pump, form);
    window = view->hwnd();
    PostMessageW(window, WM_COMMAND, id::kOk, 0);
    return view;
  };
  form.ShowModal();
  EXPECT_TRUE(IsWindowEnabled(other.get()));
  EXPECT_FALSE(IsWindow(window));
}

TEST_F(FormWindowTest, theEndOfTheProgramEndsModalWindowsToo) {
  form.makeView = [this] {
    PostQuitMessage(7);
    return std::make_unique<TestFormWindow>(pump, form);
  };
  form.ShowModal();
  EXPECT_EQ(pump.run(), 7);
  MSG rest;  // for the next test
  PeekMessageW(&rest, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
}

// Does something with the input box as soon as it is there.
std::optional<std::wstring> answerOf(const std::function<void(HWND)>& act) {
  MessagePump pump;
  static std::function<void(HWND)> waiting;
  waiting = act;
  const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
    HWND box = FindWindowW(kInputClass, nullptr);
    if (box == nullptr || !waiting) return;
    std::exchange(waiting, nullptr)(box);
  });
  auto answer = askForText(pump, L"TINTLINE", L"Wie breit?", L"80");
  KillTimer(nullptr, timer);
  return answer;
}

TEST(input_box, givesTheTextOrNothing) {
  EXPECT_EQ(answerOf([](HWND box) { PostMessageW(box, WM_COMMAND, id::kOk, 0); }), L"80");
  EXPECT_EQ(answerOf([](HWND box) {
              for (const WPARAM c : {L'1', L'2', L'0'})  // replaces what was offered
                SendDlgItemMessageW(box, id::kInputText, WM_CHAR, c, 0);
              PostMessageW(GetDlgItem(box, id::kInputText), WM_KEYDOWN, VK_RETURN, 0);
            }),
            L"120");
  EXPECT_EQ(answerOf([](HWND box) {
              PostMessageW(GetDlgItem(box, id::kInputText), WM_KEYDOWN, VK_ESCAPE, 0);
            }),
            std::nullopt);
  EXPECT_EQ(answerOf([](HWND box) { PostMessageW(box, WM_CLOSE, 0, 0); }), std::nullopt);
}

}  // namespace
}  // namespace tintline
