// Tests of win32/controls/list_view.h. What the user does in a list is in tests/win32/program/.
#include "win32/controls/list_view.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/win32/host_window.h"
#include "win32/control_ids.h"
#include "win32/system/text_measure.h"

namespace tintline {
namespace {

struct ListViewTest : testing::Test {
  ListBox model;
  test::HostWindow window;
  ListTextMeasure measure;
  ListView view{window.host, model, id::kList1, measure.widestCharacter()};

  ListViewTest() {
    view.setFont(nullptr, kDesignDpi);
    SetWindowPos(view.hwnd(), nullptr, 0, 0, 300, 200, SWP_NOZORDER | SWP_SHOWWINDOW);
  }

  void fill(std::size_t lines) {
    for (std::size_t i = 0; i < lines; ++i) model.AddItem("Zeile " + std::to_string(i));
    window.show(view);
  }
  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(view.hwnd(), message, wParam, lParam);
  }
};

TEST_F(ListViewTest, showsLinesAndSelectionOfTheModel) {
  int clicks = 0;
  model.Click = [&clicks] { ++clicks; };
  fill(500);
  send(LB_SETTOPINDEX, 300);
  fill(500);
  EXPECT_EQ(send(LB_GETTOPINDEX), 300) << "lines behind do not move what the user looks at";
  for (const std::size_t line : {2U, 7U}) model.setSelected(line, true);
  model.setListIndex(7);
  window.show(view);
  EXPECT_EQ(send(LB_GETSELCOUNT), 2);
  EXPECT_EQ(send(LB_GETCARETINDEX), 7);
  model.selectAll();
  window.show(view);
  EXPECT_EQ(send(LB_GETSELCOUNT), 1000);
  EXPECT_EQ(clicks, 0) << "showing is no click";
  model.Clear();
  window.show(view);
  EXPECT_EQ(send(LB_GETCOUNT), 0);
}

TEST_F(ListViewTest, scrollsAsFarAsTheLongestLineAndTheChosenOneNeed) {
  fill(100);
  model.HorizontalExtent = 70 * measure.widestCharacter();
  model.setListIndex(99);
  window.show(view);
  RECT line{}, inside{};
  send(LB_GETITEMRECT, 99, reinterpret_cast<LPARAM>(&line));
  GetClientRect(view.hwnd(), &inside);
  EXPECT_LE(line.bottom, inside.bottom) << "whole above the scroll bar that comes with it";
  EXPECT_EQ(send(LB_GETHORIZONTALEXTENT), 70 * measure.widestCharacter());
  view.setFont(nullptr, 2 * kDesignDpi);  // the same 70 characters there
  EXPECT_EQ(send(LB_GETHORIZONTALEXTENT), 70 * characterSize(listFont(2 * kDesignDpi).get()).width);
}

// A screen reader asks so, too. Drawing must do with any line.
TEST_F(ListViewTest, givesItsLinesToWhoReadsItAndDrawsThem) {
  for (const std::string& text : {std::string("\xDC\x62ung\t1 "), std::string(60'000, 'x')})
    model.AddItem(text);
  model.selectAll();
  window.show(view);
  wchar_t text[20]{};
  EXPECT_EQ(send(LB_GETTEXTLEN, 0), 8);
  EXPECT_EQ(send(LB_GETTEXT, 0, reinterpret_cast<LPARAM>(text)), 8);
  EXPECT_EQ(std::wstring(text), L"Übung\t1 ");
  EXPECT_EQ(send(LB_GETTEXTLEN, 2), LB_ERR);
  EXPECT_EQ(send(kGetLine, 2), LB_ERR);
  EXPECT_TRUE(UpdateWindow(view.hwnd()));
}

}  // namespace
}  // namespace tintline
