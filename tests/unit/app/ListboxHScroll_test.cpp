// Tests of app/controls/ListboxHScroll.h.
#include "app/controls/ListboxHScroll.h"

#include <gtest/gtest.h>

#include <limits>

#include "engine/html_lines.h"
#include "tests/support/convert.h"
#include "tests/support/fake_text_measure.h"

namespace tintline {
namespace {

// "W" is 10 pixels wide, any other character 5.
struct Scroll {
  test::FakeTextMeasure measure;
  ListBox list;
  ListboxHScroll wrapper{list, measure};
};

std::string times(std::size_t count, char c = 'x') { return std::string(count, c); }

TEST(ListboxHScroll, LinesThatMayGoInDirectlyCountByTheirLength) {
  const struct {
    const char* name;
    std::string line;
    int width;
    int measured;
  } rows[] = {
      {"no characters", "", 0, 0},
      {"a short line", "abc", 30, 0},
      {"the longest direct line", times(kDirectLength), 900, 0},
      {"one character more", times(kDirectLength + 1), 455, 1},
      {"a long wide line", times(100, 'W'), 1000, 1},
      {"a tab leads to the fourth column", "\tx", 50, 0},
      {"or the eighth", "abcd\tx", 90, 0},
      {"a tab is at least a column", "abc\tx\t", 80, 0},
      {"a direct line of tabs", times(kDirectLength, '\t'), 3600, 0},
  };
  for (const auto& row : rows) {
    Scroll scroll;
    scroll.wrapper.AddItem(row.line, -1, ListboxHScroll::kGrow);
    EXPECT_EQ(scroll.wrapper.ScrollWidth(), row.width) << row.name;
    EXPECT_EQ(scroll.measure.measured, row.measured) << row.name;
    scroll.wrapper.setScrollWidth(0);
    scroll.wrapper.fit();
    EXPECT_EQ(scroll.wrapper.ScrollWidth(), row.width) << row.name;
  }
}

TEST(ListboxHScroll, TheModeDecidesAboutTheRange) {
  const struct {
    const char* name;
    ListboxHScroll::Mode mode;
    std::string line;
    int width;
  } rows[] = {
      {"leaving it, wide line", ListboxHScroll::kLeave, times(100, 'W'), 700},
      {"growing, wide line", ListboxHScroll::kGrow, times(100, 'W'), 1000},
      {"growing, narrow line", ListboxHScroll::kGrow, "abc", 700},
      {"fitting, wide line", ListboxHScroll::kFit, times(100, 'W'), 1000},
      {"fitting, narrow line: the widest line of all counts", ListboxHScroll::kFit, "abc", 500},
  };
  for (const auto& row : rows) {
    Scroll scroll;
    scroll.list.AddItem(times(50));
    scroll.wrapper.setScrollWidth(700);  // left over from a line that is gone
    scroll.wrapper.AddItem(row.line, -1, row.mode);
    EXPECT_EQ(scroll.wrapper.ScrollWidth(), row.width) << row.name;
    EXPECT_EQ(scroll.list.HorizontalExtent(), row.width) << row.name;
  }
}

TEST(ListboxHScroll, TheRangeShrinksWithTheLongestLine) {
  Scroll scroll;
  scroll.list.setLines(test::lineList({times(100, 'W'), "abc", times(300)}));
  scroll.wrapper.fit();
  EXPECT_EQ(scroll.wrapper.ScrollWidth(), 1500);
  scroll.list.setLines(test::lineList({times(100, 'W'), "abc", times(120)}));
  scroll.wrapper.fit();
  EXPECT_EQ(scroll.wrapper.ScrollWidth(), 1000);
  scroll.wrapper.Clear();
  EXPECT_EQ(scroll.wrapper.ScrollWidth(), 0);
  EXPECT_EQ(scroll.list.ListCount(), 0u);
  scroll.wrapper.setScrollWidth(5);
  scroll.wrapper.fit();
  EXPECT_EQ(scroll.wrapper.ScrollWidth(), 0);
}

TEST(ListboxHScroll, OnlyLinesThatMayBeTheWidestAreMeasured) {
  Scroll scroll;
  LineList lines;
  for (std::size_t i = 0; i < kMaxLines; ++i) lines.append(times(91 + i % 100));
  lines.append(times(400));
  scroll.list.setLines(std::move(lines));
  scroll.wrapper.fit();
  EXPECT_EQ(scroll.wrapper.ScrollWidth(), 2000);
  EXPECT_EQ(scroll.measure.measured, 1);
}

TEST(ListboxHScroll, AShorterLineOfWiderCharactersWins) {
  Scroll scroll;
  scroll.list.setLines(test::lineList({times(150), times(90, 'W'), times(100, 'W'), times(99)}));
  scroll.wrapper.fit();
  EXPECT_EQ(scroll.wrapper.ScrollWidth(), 1000);
}

TEST(ListboxHScroll, AShorterLineOfTabsWins) {
  Scroll scroll;
  scroll.list.setLines(test::lineList({times(100), times(20, '\t')}));
  scroll.wrapper.fit();
  EXPECT_EQ(scroll.wrapper.ScrollWidth(), 800);
}

TEST(ListboxHScroll, NoLengthOverflowsTheRange) {
  Scroll scroll;
  scroll.measure.widest = std::numeric_limits<int>::max() / 2;
  scroll.wrapper.AddItem("abc", -1, ListboxHScroll::kGrow);
  EXPECT_EQ(scroll.wrapper.ScrollWidth(), std::numeric_limits<int>::max());
}

TEST(ListboxHScroll, ALineGoesToItsPlaceOrIsRefused) {
  const struct {
    std::ptrdiff_t index;
    const char* lines;  // "" for refused
  } rows[] = {{-2, ""}, {-1, "abx"}, {0, "xab"}, {1, "axb"}, {2, "abx"}, {3, ""}};
  for (const auto& row : rows) {
    Scroll scroll;
    scroll.list.setLines(test::lineList({"a", "b"}));
    std::string result;
    try {
      scroll.wrapper.AddItem("x", row.index, ListboxHScroll::kGrow);
      for (const std::string& line : test::strings(scroll.list.lines())) result += line;
    } catch (const ListboxError& error) {
      EXPECT_EQ(error.source, "ListBoxHScroll.AddItem");
      EXPECT_EQ(scroll.list.ListCount(), 2u);
    }
    EXPECT_EQ(result, row.lines) << row.index;
  }
}

TEST(ListboxHScroll, AFullListTakesNoMore) {
  Scroll scroll;
  LineList lines;
  for (std::size_t i = 0; i + 1 < kMaxLines; ++i) lines.append("");
  scroll.list.setLines(std::move(lines));
  scroll.wrapper.AddItem("last", -1, ListboxHScroll::kLeave);
  EXPECT_THROW(scroll.wrapper.AddItem("x", -1, ListboxHScroll::kLeave), ListboxError);
  EXPECT_EQ(scroll.list.ListCount(), kMaxLines);
}

TEST(ListboxHScroll, ALineOfTheListItselfMayBeAddedAgain) {
  Scroll scroll;
  scroll.list.setLines(test::lineList({times(100, 'W'), "b"}));
  scroll.wrapper.AddItem(scroll.list.lines()[0], 1, ListboxHScroll::kGrow);
  EXPECT_EQ(scroll.list.lines()[1], times(100, 'W'));
  EXPECT_EQ(scroll.wrapper.ScrollWidth(), 1000);
}

}  // namespace
}  // namespace tintline
