// Tests of app/controls/: what the commands that tests/app drives leave open.
#include <gtest/gtest.h>

#include <algorithm>

#include "app/controls/ListboxHScroll.h"
#include "app/controls/line_layout.h"
#include "engine/html_lines.h"
#include "tests/support/convert.h"
#include "tests/support/fake_ports.h"

namespace tintline::test {
namespace {

TEST(ListBox, TakesWhatTheUserSelectedOfLinesThatAreGoneMeanwhile) {
  ListBox list;
  list.setLines(lineList({"a", "b"}));
  for (const std::size_t lines : {1U, 4U}) {
    list.userSelected(std::vector<bool>(lines, true), lines == 1 ? 7 : -5);
    EXPECT_EQ(list.SelCount(), std::min<std::size_t>(lines, 2));
    EXPECT_EQ(list.ListIndex(), ListBox::kNone);
  }
}

// "W" is 10 pixels wide, any other character 5.
struct Scroll {
  FakeTextMeasure measure;
  ListBox list;
  ListboxHScroll wrapper{list, measure};
};

std::string times(std::size_t count, char c = 'x') { return std::string(count, c); }

TEST(ListboxHScroll, TheRangeIsThatOfTheWidestLine) {
  const struct {
    std::vector<std::string> lines;
    int width, measured;
  } rows[] = {
      {{}, 0, 0},
      {{""}, 0, 0},
      {{times(kDirectLength)}, 900, 0},  // lines that may go in directly count by their length
      {{times(kDirectLength + 1)}, 455, 1},
      {{"\tx"}, 50, 0},  // a tab leads to the fourth column
      {{"abcd\tx", "abc\tx\t"}, 90, 0},
      {{times(100, 'W'), "abc", times(300)}, 1500, 1},
      {{times(100, 'W'), times(150)}, 1000, 2},
      {{times(150), times(90, 'W'), times(100, 'W'), times(101)}, 1000, 3},
      {{times(100), times(20, '\t')}, 800, 1},
      {std::vector<std::string>(kMaxLines, times(190)), 950, 1 + static_cast<int>(kMaxLines - 1)},
  };
  for (const auto& row : rows) {
    Scroll scroll;
    scroll.list.setLines(lineList(row.lines));
    scroll.wrapper.setScrollWidth(7000);  // left over from a line that is gone
    scroll.wrapper.fit();
    EXPECT_EQ(scroll.wrapper.ScrollWidth(), row.width) << row.lines.size();
    EXPECT_EQ(scroll.measure.measured, row.measured) << row.lines.size();
    scroll.wrapper.Clear();
    EXPECT_EQ(scroll.wrapper.ScrollWidth(), 0);
  }
}

TEST(ListboxHScroll, TheRangeGrowsWithALineThatIsAdded) {
  Scroll scroll;
  scroll.wrapper.setScrollWidth(700);
  for (const auto& [line, width] : {std::pair{times(100), 700}, {times(100, 'W'), 1000}}) {
    scroll.wrapper.AddItem(line, -1, ListboxHScroll::kGrow);
    EXPECT_EQ(scroll.wrapper.ScrollWidth(), width);
  }
  scroll.wrapper.AddItem("y", 1, ListboxHScroll::kGrow);
  EXPECT_EQ(scroll.list.lines()[1], "y");
  EXPECT_EQ(scroll.list.lines()[2], times(100, 'W'));
  scroll.wrapper.AddItem("z", 3, ListboxHScroll::kGrow);
  EXPECT_EQ(scroll.list.lines()[3], "z");
  EXPECT_THROW(scroll.wrapper.AddItem("x", 5, ListboxHScroll::kGrow), ListboxError);
}

TEST(LineLayout, TabsAreBlanksUpToTheNextStopAndWideCharactersTakeTwoColumns) {
  const LineLayout layout = layOutLine(L"a\t語\tä");
  EXPECT_EQ(layout.text, L"a 語 ä");
  EXPECT_EQ(layout.columns, (std::vector<std::size_t>{0, 1, 4, 6, 8, 9}));
}

}  // namespace
}  // namespace tintline::test
