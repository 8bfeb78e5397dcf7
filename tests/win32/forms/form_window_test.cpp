// Tests of win32/forms/form_window.h, input_box.h and menus.h, win32/controls/widgets.h and
// win32/message_pump.h.
#include "win32/forms/form_window.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/win32/host_window.h"
#include "win32/control_ids.h"
#include "win32/controls/status_line.h"
#include "win32/controls/widgets.h"
#include "win32/forms/input_box.h"
#include "win32/forms/menus.h"

namespace tintline {
namespace {

struct TestForm final : Form {
  TestForm() {
    Caption = L"Test";
    OKButton.Caption = L"OK";
    Choice.List = {L"eins", L"zwei"};
    OKButton.Click = Check.Click = Text.Change = Choice.Click = [this] { ++clicks; };
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
  std::wstring text(int number) const { return windowText(control(number)); }
};

TEST_F(FormWindowTest, showsTheModelsAndTellsThemWhatTheUserDoes) {
  form.Text.Text = L"Übung";
  form.Check.Value = true;
  form.Choice.ListIndex = 1;
  form.OKButton.Enabled = false;
  form.Status.Visible = false;
  form.Show();
  EXPECT_EQ(windowText(window), L"Test");
  EXPECT_EQ(text(kText), L"Übung");
  EXPECT_EQ(text(kChoice), L"zwei");
  EXPECT_EQ(SendMessageW(control(kCheck), BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_FALSE(IsWindowEnabled(control(id::kOk)));
  EXPECT_FALSE(IsWindowVisible(control(kStatus)));
  EXPECT_EQ(form.clicks, 0) << "showing is no act of the user";
  form.OKButton.Enabled = true;
  pump.flush();
  SetWindowTextW(control(kText), L"getippt");
  SendMessageW(control(kCheck), BM_CLICK, 0, 0);
  SendMessageW(control(kChoice), CB_SETCURSEL, 0, 0);
  SendMessageW(window, WM_COMMAND, MAKEWPARAM(kChoice, CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(control(kChoice)));
  SendMessageW(control(id::kOk), BM_CLICK, 0, 0);
  EXPECT_EQ(form.Text.Text(), L"getippt");
  EXPECT_FALSE(form.Check.Value);
  EXPECT_EQ(form.Choice.ListIndex, 0);
  EXPECT_EQ(form.clicks, 4);
}

TEST_F(FormWindowTest, theKeyboardComesBackToWhatWasDisabled) {
  const auto enable = [this](bool enabled) {
    form.Text.Enabled = enabled;
    form.Check.Enabled = enabled;
    pump.flush();
  };
  form.Show();
  for (const auto& [from, meanwhile, back] :
       {std::tuple{kText, kChoice + 0, kText + 0}, {int{id::kOk}, int{id::kOk}, int{id::kOk}}}) {
    SetFocus(control(from));
    enable(false);
    EXPECT_EQ(GetFocus(), control(meanwhile));
    enable(true);
    EXPECT_EQ(GetFocus(), control(back));
  }
}

TEST_F(FormWindowTest, aLongRunShowsNowAndThenAndARefreshAtOnce) {
  form.Show();
  int shown = 0;
  std::wstring before;
  const ULONGLONG end = GetTickCount64() + 500;
  for (int i = 0; GetTickCount64() < end; ++i) {
    form.Status.Caption = std::to_wstring(i);
    pump.yield();
    shown += text(kStatus) != before;
    before = text(kStatus);
  }
  EXPECT_GE(shown, 3);
  EXPECT_LE(shown, 20);
  form.Status.Caption = L"Stelle Verbindung her...";
  form.Status.Refresh();
  EXPECT_EQ(text(kStatus), L"Stelle Verbindung her...");
}

TEST_F(FormWindowTest, aTopmostFormIsInFrontAndItsTipsInFrontOfIt) {
  form.Text.ToolTipText = L"Tipp";
  form.Show();
  for (const bool topmost : {false, true}) {
    form.Topmost = topmost;
    form.Refresh();
    EXPECT_EQ((GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0, topmost);
    RECT place{};
    GetWindowRect(control(kText), &place);
    SetCursorPos(place.left + 5, place.top + 5);
    PostMessageW(control(kText), WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    HWND tips = nullptr;
    EXPECT_TRUE(test::pumpUntil([&] {
      while ((tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr)) != nullptr)
        if (IsWindowVisible(tips)) return true;
      return false;
    }));
    HWND behind = tips;
    while (behind != nullptr && behind != window) behind = GetWindow(behind, GW_HWNDNEXT);
    EXPECT_EQ(behind, window);
    SetCursorPos(0, 0);
    SendMessageW(tips, TTM_POP, 0, 0);
  }
}

TEST_F(FormWindowTest, aModalWindowLocksTheOthersUntilItClosesInItsOwnEvent) {
  const test::HostWindow other;
  form.OKButton.Click = [&] {
    EXPECT_FALSE(IsWindowEnabled(other.hwnd()));
    form.Unload();
  };
  form.makeView = [this] {
    auto view = std::make_unique<TestFormWindow>(pump, form);
    window = view->hwnd();
    PostMessageW(window, WM_COMMAND, id::kOk, 0);
    return view;
  };
  form.ShowModal();
  EXPECT_TRUE(IsWindowEnabled(other.hwnd()));
  EXPECT_FALSE(IsWindow(window));
  form.makeView = [this] {  // the end of the program ends it too
    PostQuitMessage(7);
    return std::make_unique<TestFormWindow>(pump, form);
  };
  form.ShowModal();
  EXPECT_EQ(pump.run(), 7);
  MSG rest;  // for the next test
  PeekMessageW(&rest, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
}

TEST(input_box, givesTheTextOrNothing) {
  static UINT key;
  for (const auto& [pressed, expected] :
       {std::pair<UINT, std::optional<std::wstring>>{VK_RETURN, L"12"}, {VK_ESCAPE, {}}}) {
    MessagePump pump;
    key = pressed;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR id, DWORD) {
      const HWND box = FindWindowW(kInputClass, nullptr);
      if (box == nullptr) return;
      KillTimer(nullptr, id);
      for (const WPARAM c : {L'1', L'2'})  // replaces what was offered
        SendDlgItemMessageW(box, id::kInputText, WM_CHAR, c, 0);
      PostMessageW(GetDlgItem(box, id::kInputText), WM_KEYDOWN, key, 0);
    });
    EXPECT_EQ(askForText(pump, L"TINTLINE", L"Wie breit?", L"80"), expected);
    KillTimer(nullptr, timer);
  }
}

TEST(menus, everyKeyCombinationIsThereOnce) {
  const UniqueAccelerators table = makeAccelerators();
  std::vector<ACCEL> keys(accelerators().size() + 9);
  keys.resize(static_cast<std::size_t>(
      CopyAcceleratorTableW(table.get(), keys.data(), static_cast<int>(keys.size()))));
  EXPECT_EQ(keys.size(), accelerators().size() + 2);  // plus and minus stand on two keys each
  std::set<std::pair<int, int>> seen;
  for (const ACCEL& key : keys)
    EXPECT_TRUE(seen.emplace(key.fVirt & (FCONTROL | FSHIFT | FALT), key.key).second) << key.key;
}

}  // namespace
}  // namespace tintline
