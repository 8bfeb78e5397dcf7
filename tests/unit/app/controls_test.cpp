// Tests of app/controls/: the models of controls and forms.
#include <gtest/gtest.h>

#include <limits>

#include "app/controls/ListboxHScroll.h"
#include "app/controls/form.h"
#include "app/controls/tree_view.h"
#include "base/codepage.h"
#include "engine/html_lines.h"
#include "tests/support/convert.h"
#include "tests/support/fake_form_view.h"
#include "tests/support/fake_ports.h"

namespace tintline::test {
namespace {

TEST(Control, AViewGetsToKnowRealChangesOnly) {
  FakeControlView view;
  Label label;
  label.Caption = L"vor der Ansicht";
  label.setView(&view);
  label.Caption = L"neu";
  label.Caption = L"neu";
  label.Enabled = true;
  EXPECT_EQ(view.changes, 1);
  label.Refresh();
  EXPECT_EQ(view.refreshes, 1);
}

class TestForm final : public Form {
 public:
  std::vector<std::string> events;

 private:
  void Form_Load() override { events.emplace_back("load"); }
  void Form_Unload() override {
    events.emplace_back("unload");
    Unload();  // as when the form ends the program, which unloads every form
  }
};

TEST(Form, IsLoadedOnceHoweverOftenItIsShownAndHoweverItEnds) {
  FakeWindow window;
  TestForm form;
  form.makeView = window.maker();
  form.Unload();
  form.Load();
  form.Unload();
  EXPECT_EQ(window.views, 0) << "one that was only loaded has no window";
  form.Show();
  form.Show();
  EXPECT_TRUE(form.isLoaded() && form.isShown());
  form.Unload();
  form.Unload();
  EXPECT_FALSE(form.isLoaded() || form.isShown());
  form.ShowModal();  // the window ends by itself
  window.whileModal = [&form] { form.Unload(); };
  form.ShowModal();
  EXPECT_EQ(form.events, (std::vector<std::string>{"load", "unload", "load", "unload", "load",
                                                   "unload", "load", "unload"}));
  EXPECT_EQ(window.events, (std::vector<std::string>{"show", "show", "close", "runModal", "close",
                                                     "runModal", "close"}));
  EXPECT_EQ(window.views, 3);
}

TEST(Form, AWindowOutlivesTheEventInWhichItIsClosed) {
  struct Window final : FormView {
    Window(Form& ofForm, int& windows) : form(ofForm), alive(windows) { ++alive; }
    ~Window() override { --alive; }
    void show() override {}
    void close() override {}
    void runModal() override {
      form.Unload();
      EXPECT_EQ(alive, 1);
    }
    Form& form;
    int& alive;
  };
  int alive = 0;
  TestForm form;
  form.makeView = [&form, &alive] { return std::make_unique<Window>(form, alive); };
  form.ShowModal();
  form.ShowModal();
  EXPECT_LE(alive, 1);
}

// Lines and selection, "a b* [c]": selected, current.
std::string described(const ListBox& list) {
  std::string text;
  std::size_t selected = 0;
  for (std::size_t i = 0; i < list.ListCount(); ++i) {
    const std::string line = std::string(list.lines()[i]) + (list.Selected(i) ? "*" : "");
    const bool current = list.ListIndex() == static_cast<std::ptrdiff_t>(i);
    text += (i > 0 ? " " : "") + (current ? "[" + line + "]" : line);
    selected += list.Selected(i) ? 1 : 0;
  }
  EXPECT_EQ(list.SelCount(), selected);
  return text;
}

TEST(ListBox, KeepsLinesSelectionAndCurrentItemAndTellsItsView) {
  using List = ListBox;
  const struct {
    const char* after;
    bool lines, selection;  // what the view is to look at
    void (*act)(List&);
  } rows[] = {
      {"x a [b*] c", true, true, [](List& list) { list.AddItem("x", 0); }},
      {"a x [b*] c", true, true, [](List& list) { list.AddItem("x", 1); }},
      {"a [b*] x c", true, true, [](List& list) { list.AddItem("x", 2); }},
      {"a [b*] c x", true, false, [](List& list) { list.AddItem("x"); }},
      {"a [b*] c*", false, true, [](List& list) { list.setSelected(2, true); }},
      {"a [b*] c", false, false, [](List& list) { list.setSelected(1, true); }},
      {"a [b] c", false, true, [](List& list) { list.setSelected(1, false); }},
      {"a* [b*] c*", false, true, [](List& list) { list.selectAll(); }},
      {"[a*] b c", false, true, [](List& list) { list.selectOnly(0); }},
      {"a b* [c]", false, true, [](List& list) { list.setListIndex(2); }},
      {"a [b*] c", false, false, [](List& list) { list.setListIndex(1); }},
      {"a b* c", false, true, [](List& list) { list.setListIndex(3); }},
      {"[a*] b* c*", false, true,
       [](List& list) {
         list.setMarks({std::vector(3, true), 0});
       }},
      {"a [b*] c", false, false,
       [](List& list) {
         list.setMarks({std::vector(2, true), 0});
       }},
      {"d", true, true, [](List& list) { list.setLines(lineList({"d"})); }},
      {"", true, true, [](List& list) { list.Clear(); }},
  };
  for (const auto& row : rows) {
    ListBox list;
    list.setLines(lineList({"a", "b", "c"}));
    list.setSelected(1, true);
    list.setListIndex(1);
    FakeControlView view;
    list.setView(&view);
    const unsigned lines = list.lineVersion(), selection = list.selectionVersion();
    row.act(list);
    EXPECT_EQ(described(list), row.after);
    EXPECT_EQ(list.lineVersion() != lines, row.lines) << row.after;
    EXPECT_EQ(list.selectionVersion() != selection, row.selection) << row.after;
    EXPECT_EQ(view.changes, row.lines || row.selection ? 1 : 0) << row.after;
  }
}

TEST(ListBox, WhatTheUserSelectedComesBeforeTheClick) {
  ListBox list;
  list.setLines(lineList({"a", "b", "c"}));
  std::string seen;
  list.Click = [&] { seen = described(list); };
  list.userSelected({true, false, true}, 2);
  EXPECT_EQ(seen, "a* b [c*]");
  // Said of lines that are gone meanwhile, or of more lines than there are.
  list.userSelected({true}, 7);
  EXPECT_EQ(seen, "a* b c");
  list.userSelected({false, false, false, true}, -5);
  EXPECT_EQ(seen, "a b c");
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
      {{times(150), times(90, 'W'), times(100, 'W'), times(99)}, 1000, 2},
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

TEST(ListboxHScroll, AddingKeepsGrowsOrFitsTheRange) {
  const std::tuple<ListboxHScroll::Mode, std::string, int> rows[] = {
      {ListboxHScroll::kLeave, times(100, 'W'), 700},
      {ListboxHScroll::kGrow, times(100, 'W'), 1000},
      {ListboxHScroll::kGrow, "abc", 700},
      {ListboxHScroll::kFit, times(100, 'W'), 1000},
      {ListboxHScroll::kFit, "abc", 500},
  };
  for (const auto& [mode, line, width] : rows) {
    Scroll scroll;
    scroll.list.AddItem(times(50));
    scroll.wrapper.setScrollWidth(700);
    scroll.wrapper.AddItem(line, -1, mode);
    EXPECT_EQ(scroll.list.HorizontalExtent(), width);
  }
  Scroll huge;
  huge.measure.widest = std::numeric_limits<int>::max() / 2;
  huge.wrapper.AddItem("abc", -1, ListboxHScroll::kGrow);
  EXPECT_EQ(huge.wrapper.ScrollWidth(), std::numeric_limits<int>::max());
}

TEST(ListboxHScroll, ALineGoesToItsPlaceOrIsRefused) {
  const std::pair<std::ptrdiff_t, const char*> rows[] = {{-2, ""},     {-1, "a b x"}, {0, "x a b"},
                                                         {1, "a x b"}, {2, "a b x"},  {3, ""}};
  for (const auto& [index, lines] : rows) {
    Scroll scroll;
    scroll.list.setLines(lineList({"a", "b"}));
    try {
      scroll.wrapper.AddItem("x", index, ListboxHScroll::kGrow);
      EXPECT_EQ(described(scroll.list), lines) << index;
    } catch (const ListboxError& error) {
      EXPECT_EQ(error.source, "ListBoxHScroll.AddItem");
      EXPECT_EQ(*lines, '\0') << index;
    }
  }
  Scroll full;
  full.list.setLines(lineList(std::vector<std::string>(kMaxLines - 1)));
  full.wrapper.AddItem("last", -1, ListboxHScroll::kLeave);
  EXPECT_THROW(full.wrapper.AddItem("x", -1, ListboxHScroll::kLeave), ListboxError);
}

// Writes down what it is told, with the nodes' texts.
class RecordingView final : public TreeViewView {
 public:
  void changed(Control&) override {}
  void refresh(Control&) override {}
  void added(TreeNode& node) override { note("+", &node); }
  void updated(TreeNode& node) override { note("!", &node); }
  void removing(TreeNode& node) override { note("-", &node); }
  void selected(TreeNode* node) override { note(">", node); }

  std::string events;

 private:
  void note(const char* what, const TreeNode* node) {
    events += what + (node == nullptr ? "none" : toAnsi(node->Text())) + " ";
  }
};

TEST(TreeView, KeepsItsNodesAndTellsItsView) {
  TreeView tree;
  const auto add = [&](TreeNode* parent, const wchar_t* name) -> TreeNode& {
    return tree.Add(parent, name, name, "zu", "auf");
  };
  TreeNode& file = add(nullptr, L"F");
  TreeNode& component = add(&file, L"K");
  TreeNode& first = add(&component, L"P1");
  TreeNode& second = add(&component, L"P2");
  TreeNode& other = add(nullptr, L"F2");
  EXPECT_EQ(tree.find(L"P2"), &second);
  EXPECT_EQ(tree.find(L"p2"), nullptr);
  EXPECT_EQ(second.path(), (std::vector<std::wstring>{L"F", L"K", L"P2"}));
  EXPECT_THROW(add(&other, L"P1"), std::invalid_argument);
  EXPECT_TRUE(other.Children().empty()) << "a key that is taken adds nothing";

  RecordingView view;
  tree.setTreeView(&view);
  first.setText(L"neu");
  file.setExpanded(true);
  tree.select(&second);
  std::wstring clicked;
  tree.userSelected(other);  // nobody listens yet
  tree.NodeClick = [&](TreeNode& node) {
    EXPECT_EQ(tree.SelectedItem(), &node);
    clicked += node.Text();
    tree.Remove(node);  // a click may take its node away
  };
  tree.RightClick = [&](TreeNode& node) { clicked += L"/" + node.Text(); };
  tree.userSelected(first);
  tree.userRightClicked(second);
  EXPECT_EQ(clicked, L"neu/P2");
  EXPECT_EQ(tree.SelectedItem(), nullptr);

  const std::size_t id = component.id(), below = second.id();
  tree.select(&second);
  tree.Remove(component);
  EXPECT_EQ(tree.find(L"P2"), nullptr) << "with a node goes all that is below it";
  EXPECT_EQ(tree.byId(id), nullptr);
  EXPECT_EQ(tree.byId(below), nullptr);
  EXPECT_EQ(tree.byId(99), nullptr);
  EXPECT_EQ(tree.SelectedItem(), nullptr);
  const TreeNode& again = add(&file, L"K");  // the keys are free again, the numbers are not
  EXPECT_EQ(tree.byId(again.id()), &again);
  EXPECT_NE(again.id(), id);
  tree.select(&other);
  tree.Remove(file);
  EXPECT_EQ(tree.SelectedItem(), &other);
  tree.Clear();
  EXPECT_TRUE(tree.empty());
  EXPECT_EQ(view.events, "!neu !F >P2 -neu >P2 -K +K >F2 -F -F2 ");
}

}  // namespace
}  // namespace tintline::test
