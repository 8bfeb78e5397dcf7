// Tests of win32/preview/browser_view.h.
#include "win32/preview/browser_view.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/fake_shell.h"
#include "tests/win32/test_window.h"

namespace tintline {
namespace {

struct BrowserViewTest : testing::Test {
  test::Ole ole;
  test::TempFolder folder;
  test::FakeShell shell;
  test::TestWindow parent;
  ToolTips tips;
  WebBrowser model;

  BrowserViewTest() { tips.create(parent.get()); }

  // The system's window of the tool tips.
  HWND tipWindow() const {
    HWND found = nullptr;
    while ((found = FindWindowExW(nullptr, found, TOOLTIPS_CLASSW, nullptr)) != nullptr)
      if (GetWindowThreadProcessId(found, nullptr) == GetCurrentThreadId()) break;
    return found;
  }

  std::wstring tipOf(HWND window) const {
    wchar_t text[100]{};
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = parent.get();
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    tool.lpszText = text;
    SendMessageW(tipWindow(), TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
    return text;
  }

  void show(BrowserView& view, const char* text) {
    model.Navigate(test::writePage(folder, "seite.html", text));
    view.flush(true);
    test::pumpUntil([&] { return GetWindow(view.pane().window(), GW_CHILD) != nullptr; });
  }
};

std::vector<HWND> windowsIn(HWND pane) {
  std::vector<HWND> windows{pane};
  const auto note = [](HWND window, LPARAM list) -> BOOL {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
  };
  EnumChildWindows(pane, note, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

TEST_F(BrowserViewTest, theToolTipIsShownWhereverThePointerRests) {
  model.ToolTipText = L"Vorschau";
  BrowserView view(parent.get(), tips, model, 42, shell);
  for (const char* page : {"<pre>eins", "<pre>zwei", "<pre>drei"}) {
    show(view, page);
    const std::vector<HWND> windows = windowsIn(view.pane().window());
    ASSERT_GE(windows.size(), 2U);
    for (HWND window : windows) EXPECT_EQ(tipOf(window), L"Vorschau") << page;
    EXPECT_EQ(SendMessageW(tipWindow(), TTM_GETTOOLCOUNT, 0, 0),
              static_cast<LRESULT>(windows.size()))
        << "windows that are gone have none";
  }
  SetWindowPos(view.pane().window(), nullptr, 0, 0, 300, 200, SWP_NOZORDER);
  POINT place{100, 100};
  HWND cover = windowsIn(view.pane().window()).back();
  ClientToScreen(cover, &place);
  SetCursorPos(place.x, place.y);
  SendMessageW(cover, WM_MOUSEMOVE, 0, MAKELPARAM(100, 100));
  EXPECT_TRUE(test::pumpUntil([this] { return IsWindowVisible(tipWindow()) != FALSE; }, 5000));
}

}  // namespace
}  // namespace tintline
