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

// What a form tells; it outlives the form, whose last window goes with it.
struct Told {
  std::string events;
  int windows = 0;  // that are alive
};

class TestForm final : public Form {
 public:
  explicit TestForm(Told& told) : told_(told) {
    makeView = [this] { return std::make_unique<Window>(*this, told_); };
  }

 private:
  struct Window final : FormView {
    Window(Form& ofForm, Told& toTell) : form(ofForm), told(toTell) { ++told.windows; }
    ~Window() override { --told.windows; }
    void show() override { told.events += "show "; }
    void close() override { told.events += "close "; }
    void runModal() override {
      told.events += "modal ";
      form.Unload();
      EXPECT_EQ(told.windows, 1) << "a window outlives the event in which it is closed";
    }
    Form& form;
    Told& told;
  };
  void Form_Load() override { told_.events += "load "; }
  void Form_Unload() override {
    told_.events += "unload ";
    Unload();  // as when the form ends the program, which unloads every form
  }
  Told& told_;
};

TEST(Form, IsLoadedOnceHoweverOftenItIsShownAndHoweverItEnds) {
  Told told;
  TestForm form(told);
  for (const auto act : {&Form::Unload, &Form::Load, &Form::Unload, &Form::Show, &Form::Show,
                         &Form::Unload, &Form::Unload, &Form::ShowModal, &Form::ShowModal})
    (form.*act)();
  EXPECT_EQ(told.events,
            "load unload load show show unload close load modal unload close "
            "load modal unload close ");
  EXPECT_FALSE(form.isLoaded() || form.isShown());
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
      {"a [b*] c", false, false, [](List& list) { list.Enabled = true; }},  // as it was
      // What the user selected of lines that are gone meanwhile, or of more than there are.
      {"a* b c", false, false, [](List& list) { list.userSelected({true}, 7); }},
      {"a b c", false, false, [](List& list) { list.userSelected(std::vector(4, false), -5); }},
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

TEST(ListboxHScroll, ALineGoesToItsPlaceAndIntoTheRangeOrIsRefused) {
  constexpr auto kLeave = ListboxHScroll::kLeave, kGrow = ListboxHScroll::kGrow;
  const struct {
    std::ptrdiff_t index;
    ListboxHScroll::Mode mode;
    std::string line;
    int width;  // 0: refused
  } rows[] = {{-2, kLeave, "x", 0},
              {0, kLeave, times(100, 'W'), 700},
              {1, kGrow, times(100, 'W'), 1000},
              {2, kGrow, "abc", 700},
              {3, kLeave, "x", 0},
              {-1, ListboxHScroll::kFit, "abc", 500}};
  for (const auto& row : rows) {
    Scroll scroll;
    scroll.list.setLines(lineList({times(50), "b"}));
    scroll.wrapper.setScrollWidth(700);
    try {
      scroll.wrapper.AddItem(row.line, row.index, row.mode);
      EXPECT_EQ(scroll.list.lines()[row.index < 0 ? 2 : row.index], row.line);
      EXPECT_EQ(scroll.list.HorizontalExtent(), row.width);
    } catch (const ListboxError&) {
      EXPECT_EQ(row.width, 0) << row.index;
    }
  }
  Scroll full;
  full.measure.widest = std::numeric_limits<int>::max() / 2;
  full.list.setLines(lineList(std::vector<std::string>(kMaxLines - 1)));
  full.wrapper.AddItem("abc", -1, kGrow);
  EXPECT_EQ(full.wrapper.ScrollWidth(), std::numeric_limits<int>::max());
  EXPECT_THROW(full.wrapper.AddItem("x", -1, kLeave), ListboxError);
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
  EXPECT_THROW(add(&file, L"P1"), std::invalid_argument);
  EXPECT_EQ(file.Children().size(), 1) << "a key that is taken adds nothing";
  RecordingView view;
  tree.setTreeView(&view);
  first.setText(L"neu");
  file.setExpanded(true);
  tree.userSelected(first);                                     // nobody listens yet
  tree.NodeClick = [&](TreeNode& node) { tree.Remove(node); };  // a click may take its node away
  tree.userSelected(first);
  const std::size_t below = second.id();
  tree.select(&second);
  tree.Remove(component);  // and with it all that is below it
  EXPECT_EQ(tree.find(L"P2"), nullptr);
  EXPECT_EQ(tree.byId(below), nullptr);
  EXPECT_EQ(tree.byId(99), nullptr);
  EXPECT_EQ(tree.SelectedItem(), nullptr);
  const TreeNode& again = add(&file, L"P2");  // the key is free again, the number is not
  EXPECT_EQ(tree.byId(again.id()), &again);
  EXPECT_NE(again.id(), below);
  tree.Clear();
  EXPECT_EQ(view.events, "!neu !F -neu >P2 -K +P2 -F ");
}

}  // namespace
}  // namespace tintline::test
