// Tests of app/controls/list_box.h.
#include "app/controls/list_box.h"

#include <gtest/gtest.h>

#include "tests/support/convert.h"
#include "tests/support/fake_form_view.h"

namespace tintline {
namespace {

using Flags = std::vector<bool>;
using Texts = std::vector<std::string>;

ListBox& fill(ListBox& list) {
  list.setLines(test::lineList({"a", "b", "c"}));
  return list;
}

TEST(ListBox, ALineBetweenOthersLeavesSelectionAndCurrentItemWithTheirLines) {
  const struct {
    const char* name;
    std::size_t index;
    Texts lines;
    Flags selection;
    std::ptrdiff_t listIndex;
  } rows[] = {
      {"in front of all", 0, {"x", "a", "b", "c"}, {false, false, true, false}, 2},
      {"in front of the current", 1, {"a", "x", "b", "c"}, {false, false, true, false}, 2},
      {"behind the current", 2, {"a", "b", "x", "c"}, {false, true, false, false}, 1},
      {"at the end", 3, {"a", "b", "c", "x"}, {false, true, false, false}, 1},
  };
  for (const auto& row : rows) {
    ListBox list;
    fill(list);
    list.setSelected(1, true);
    list.setListIndex(1);
    list.AddItem("x", row.index);
    EXPECT_EQ(test::strings(list.lines()), row.lines) << row.name;
    EXPECT_EQ(list.selection(), row.selection) << row.name;
    EXPECT_EQ(list.ListIndex(), row.listIndex) << row.name;
    EXPECT_EQ(list.SelCount(), 1u) << row.name;
  }
}

TEST(ListBox, CountsTheSelectedLines) {
  ListBox list;
  fill(list);
  list.setSelected(2, true);
  list.setSelected(2, true);
  list.setSelected(0, true);
  EXPECT_EQ(list.SelCount(), 2u);
  list.setSelected(2, false);
  EXPECT_EQ(list.SelCount(), 1u);
  EXPECT_TRUE(list.Selected(0));
  list.selectAll();
  EXPECT_EQ(list.SelCount(), 3u);
  list.AddItem("d");
  EXPECT_EQ(list.selection(), (Flags{true, true, true, false}));
  list.Clear();
  EXPECT_EQ(list.SelCount(), 0u);
  EXPECT_EQ(list.ListCount(), 0u);
}

TEST(ListBox, NewLinesAreNotSelectedAndHaveNoCurrentItem) {
  ListBox list;
  fill(list).selectAll();
  list.setListIndex(2);
  fill(list);
  EXPECT_EQ(list.selection(), Flags(3));
  EXPECT_EQ(list.SelCount(), 0u);
  EXPECT_EQ(list.ListIndex(), ListBox::kNone);
}

TEST(ListBox, WhatTheUserSelectedComesBeforeTheClick) {
  ListBox list;
  fill(list);
  std::string seen;
  list.Click = [&] { seen = std::to_string(list.SelCount()) + std::to_string(list.ListIndex()); };
  list.userSelected({true, false, true}, 2);
  EXPECT_EQ(seen, "22");
  // Said of lines that are gone meanwhile, or of more lines than there are.
  list.userSelected({true}, 7);
  EXPECT_EQ(list.selection(), (Flags{true, false, false}));
  EXPECT_EQ(list.ListIndex(), ListBox::kNone);
  list.userSelected({false, false, false, true}, -5);
  EXPECT_EQ(list.SelCount(), 0u);
  EXPECT_EQ(list.ListIndex(), ListBox::kNone);
}

TEST(ListBox, AViewIsToldWhatToLookAt) {
  const struct {
    const char* name;
    void (*act)(ListBox&);
    bool lines, selection;
  } rows[] = {
      {"a line at the end", [](ListBox& list) { list.AddItem("x"); }, true, false},
      {"a line in front", [](ListBox& list) { list.AddItem("x", 0); }, true, true},
      {"other lines", [](ListBox& list) { fill(list); }, true, true},
      {"a line selected", [](ListBox& list) { list.setSelected(0, true); }, false, true},
      {"all selected", [](ListBox& list) { list.selectAll(); }, false, true},
      {"another current item", [](ListBox& list) { list.setListIndex(1); }, false, true},
      {"the same current item", [](ListBox& list) { list.setListIndex(-1); }, false, false},
      {"no such item", [](ListBox& list) { list.setListIndex(3); }, false, false},
  };
  for (const auto& row : rows) {
    ListBox list;
    test::FakeControlView view;
    fill(list).setView(&view);
    const unsigned lines = list.lineVersion(), selection = list.selectionVersion();
    row.act(list);
    EXPECT_EQ(list.lineVersion() != lines, row.lines) << row.name;
    EXPECT_EQ(list.selectionVersion() != selection, row.selection) << row.name;
    EXPECT_EQ(view.changes, row.lines || row.selection ? 1 : 0) << row.name;
  }
}

}  // namespace
}  // namespace tintline
