// Tests of win32/controls/list_view.h.
#include "win32/controls/list_view.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/controls/ListboxHScroll.h"
#include "tests/win32/test_host.h"
#include "win32/control_ids.h"
#include "win32/system/text_measure.h"

namespace tintline {
namespace {

struct ListViewTest : testing::Test {
  ListBox model;
  test::TestHost host;
  ListTextMeasure measure;
  ListView view{host.host(), model, id::kList1, measure.widestCharacter()};
  std::size_t clicks = 0;

  ListViewTest() {
    model.Click = [this] { ++clicks; };
    view.setFont(nullptr, kDesignDpi);
    SetWindowPos(view.hwnd(), nullptr, 0, 0, 300, 200, SWP_NOZORDER | SWP_SHOWWINDOW);
  }

  void fill(std::size_t lines) {
    for (std::size_t i = 0; i < lines; ++i) model.AddItem("Zeile " + std::to_string(i));
    host.show(view);
  }
  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(view.hwnd(), message, wParam, lParam);
  }
  std::vector<int> selected() {
    std::vector<int> items(static_cast<std::size_t>(send(LB_GETSELCOUNT)));
    send(LB_GETSELITEMS, items.size(), reinterpret_cast<LPARAM>(items.data()));
    return items;
  }
};

TEST_F(ListViewTest, showsAsManyLinesAsTheModelHas) {
  fill(1000);
  EXPECT_EQ(send(LB_GETCOUNT), 1000);
  model.Clear();
  host.show(view);
  EXPECT_EQ(send(LB_GETCOUNT), 0);
}

TEST_F(ListViewTest, linesAddedBehindDoNotMoveWhatTheUserLooksAt) {
  fill(500);
  send(LB_SETTOPINDEX, 300);
  fill(500);
  EXPECT_EQ(send(LB_GETTOPINDEX), 300);
}

TEST_F(ListViewTest, showsTheSelectionOfTheModel) {
  fill(10);
  for (const std::size_t line : {2U, 3U, 4U, 7U}) model.setSelected(line, true);
  model.setListIndex(7);
  host.show(view);
  EXPECT_EQ(selected(), (std::vector<int>{2, 3, 4, 7}));
  EXPECT_EQ(send(LB_GETCARETINDEX), 7);
  model.selectAll();
  host.show(view);
  EXPECT_EQ(send(LB_GETSELCOUNT), 10);
  model.selectOnly(0);
  host.show(view);
  EXPECT_EQ(selected(), std::vector<int>{0});
  EXPECT_EQ(clicks, 0U) << "showing is no click";
}

TEST_F(ListViewTest, theChosenLineIsSeenWholeAboveAScrollBarThatComesWithIt) {
  for (int line = 0; line < 100; ++line) model.AddItem("Zeile");
  model.HorizontalExtent = 10'000;
  model.setListIndex(99);
  host.show(view);
  RECT line{}, inside{};
  send(LB_GETITEMRECT, 99, reinterpret_cast<LPARAM>(&line));
  GetClientRect(view.hwnd(), &inside);
  EXPECT_LE(line.bottom, inside.bottom);
}

TEST_F(ListViewTest, theSelectionStaysWithLinesThatComeBehindIt) {
  fill(5);
  model.setSelected(1, true);
  host.show(view);
  fill(5);
  EXPECT_EQ(selected(), std::vector<int>{1});
}

TEST_F(ListViewTest, tellsTheModelWhatTheUserSelects) {
  fill(10);
  const LPARAM secondLine = MAKELPARAM(20, send(LB_GETITEMHEIGHT) * 3 / 2);
  send(WM_LBUTTONDOWN, MK_LBUTTON, secondLine);
  send(WM_LBUTTONUP, 0, secondLine);
  EXPECT_GE(clicks, 1U);
  EXPECT_TRUE(model.Selected(1));
  EXPECT_EQ(model.SelCount(), 1U);
  EXPECT_EQ(model.ListIndex(), 1);
}

TEST_F(ListViewTest, scrollsSidewaysAsFarAsTheLongestLineNeeds) {
  fill(1);
  model.HorizontalExtent = 70 * measure.widestCharacter();
  host.show(view);
  EXPECT_EQ(send(LB_GETHORIZONTALEXTENT), 70 * measure.widestCharacter());
  view.setFont(nullptr, 2 * kDesignDpi);  // the same 70 characters there
  EXPECT_EQ(send(LB_GETHORIZONTALEXTENT), 70 * characterSize(listFont(2 * kDesignDpi).get()).width);
}

TEST_F(ListViewTest, tabsAreScrolledThroughAsTheyAreDrawn) {
  ListboxHScroll scroll(model, measure);
  for (const std::string line : {"\t\t\t\t\t\t\t\tx", "abc\tx", "abcd\tx"}) {
    scroll.Clear();
    scroll.AddItem(line, -1, ListboxHScroll::kGrow);
    EXPECT_EQ(scroll.ScrollWidth(), measure.width(line)) << line;
  }
}

TEST_F(ListViewTest, givesItsLinesToWhoReadsIt) {
  model.AddItem(
      "\xDC"
      "bung\t1 ");
  host.show(view);
  wchar_t text[20]{};
  EXPECT_EQ(send(LB_GETTEXTLEN, 0), 8);
  EXPECT_EQ(send(LB_GETTEXT, 0, reinterpret_cast<LPARAM>(text)), 8);
  EXPECT_EQ(std::wstring(text), L"Übung\t1 ");
  char bytes[20]{};
  EXPECT_EQ(send(kGetLine, 0), 8);
  EXPECT_EQ(send(kGetLine, 0, reinterpret_cast<LPARAM>(bytes)), 8);
  EXPECT_EQ(std::string(bytes),
            "\xDC"
            "bung\t1 ");
  EXPECT_EQ(send(LB_GETTEXTLEN, 1), LB_ERR);
  EXPECT_EQ(send(kGetLine, 1), LB_ERR);
}

TEST_F(ListViewTest, drawsLongAndEmptyLinesAndTabs) {
  model.AddItem(std::string(60'000, 'x'));
  model.AddItem("");
  model.AddItem("\t\t1\t\xFF");
  model.selectAll();
  host.show(view);
  EXPECT_TRUE(UpdateWindow(view.hwnd()));
}

}  // namespace
}  // namespace tintline
