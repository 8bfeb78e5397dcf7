// Tests of win32/forms/form_window.h and menus.h, and of win32/message_pump.h. That
// widgets and their models agree is in tests/win32/program/.
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
#include "win32/forms/menus.h"

namespace tintline {
namespace {

struct TestForm final : Form {
  TextBox Text;
  ComboBox Choice;
  Label Status;
  CommandButton OKButton;
};

constexpr int kText = 3001, kChoice = 3002, kStatus = 3003;

class TestFormWindow final : public FormWindow {
 public:
  TestFormWindow(MessagePump& pump, TestForm& form) : FormWindow(pump, form) {
    createWindow(L"TINTLINE_TestForm", WS_POPUP | WS_CAPTION);
    widgets_ = {&add<EditWidget>(form.Text, kText), &add<ComboWidget>(form.Choice, kChoice),
                &add<StatusWidget>(form.Status, kStatus),
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

TEST_F(FormWindowTest, theKeyboardComesBackToWhatWasDisabled) {
  form.Show();
  SetFocus(control(kText));
  for (const auto& [enabled, focused] : {std::pair{false, kChoice}, {true, kText}}) {
    form.Text.Enabled = enabled;
    pump.flush();
    EXPECT_EQ(GetFocus(), control(focused));
  }
}

TEST_F(FormWindowTest, aLongRunShowsNowAndThenAndARefreshAtOnce) {
  form.Show();
  std::set<std::wstring> shown;
  const ULONGLONG start = GetTickCount64();
  for (int i = 0; shown.size() < 10 && GetTickCount64() - start < 20'000; ++i) {
    form.Status.Caption = std::to_wstring(i);
    pump.yield();
    shown.insert(text(kStatus));
  }
  EXPECT_EQ(shown.size(), 10U);
  EXPECT_GE(GetTickCount64() - start, 200U);
  form.Status.Caption = L"Stelle Verbindung her...";
  form.Status.Refresh();
  EXPECT_EQ(text(kStatus), L"Stelle Verbindung her...");
}

TEST_F(FormWindowTest, aTopmostFormHasItsTipsInFrontOfIt) {
  form.Text.ToolTipText = L"Tipp";
  form.Show();
  form.Topmost = true;
  form.Refresh();
  EXPECT_NE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
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
