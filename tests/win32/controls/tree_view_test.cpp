// Tests of win32/controls/tree_view.h.
#include "win32/controls/tree_view.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/win32/test_host.h"
#include "tests/win32/test_window.h"
#include "win32/control_ids.h"

namespace tintline {
namespace {

struct TreeViewTest : testing::Test {
  TreeView model;
  test::TestHost host;
  std::vector<std::wstring> clicked, rightClicked;
  std::unique_ptr<TreeWidget> widget;

  TreeViewTest() {
    model.NodeClick = [this](TreeNode& node) { clicked.push_back(node.Key()); };
    model.RightClick = [this](TreeNode& node) { rightClicked.push_back(node.Key()); };
  }

  HWND show() {
    widget = std::make_unique<TreeWidget>(host.host(), model, id::kTreeView1);
    widget->setFont(static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)), 96);
    SetWindowPos(widget->hwnd(), nullptr, 0, 0, 300, 300, SWP_NOZORDER | SWP_SHOWWINDOW);
    host.show(*widget);
    return widget->hwnd();
  }

  TreeNode& add(TreeNode* parent, const wchar_t* key) {
    return model.Add(parent, key, key, "open", "open");
  }

  // The texts of an item and all below it, "-" in front of each level.
  std::wstring texts(HTREEITEM item, const std::wstring& indent = {}) {
    std::wstring all;
    for (; item != nullptr; item = TreeView_GetNextSibling(widget->hwnd(), item)) {
      wchar_t text[50]{};
      TVITEMW known{};
      known.mask = TVIF_TEXT;
      known.hItem = item;
      known.pszText = text;
      known.cchTextMax = 50;
      TreeView_GetItem(widget->hwnd(), &known);
      all += indent + text + L" " + texts(TreeView_GetChild(widget->hwnd(), item), indent + L"-");
    }
    return all;
  }
  std::wstring texts() { return texts(TreeView_GetRoot(widget->hwnd())); }

  HTREEITEM firstChild() {
    return TreeView_GetChild(widget->hwnd(), TreeView_GetRoot(widget->hwnd()));
  }
  // Where the item's text is in the tree.
  RECT placeOf(HTREEITEM item) {
    RECT area{};
    TreeView_GetItemRect(widget->hwnd(), item, &area, TRUE);
    return area;
  }
  void click(HTREEITEM item, UINT down = WM_LBUTTONDOWN, UINT up = WM_LBUTTONUP) {
    const RECT area = placeOf(item);
    const POINT place{area.left + 3, area.top + 3};
    POINT screen = place;
    ClientToScreen(widget->hwnd(), &screen);
    SetCursorPos(screen.x, screen.y);
    PostMessageW(widget->hwnd(), down, MK_LBUTTON, MAKELPARAM(place.x, place.y));
    PostMessageW(widget->hwnd(), up, 0, MAKELPARAM(place.x, place.y));
  }
  bool waitForClicks(std::size_t count) {
    return test::pumpUntil([&] { return clicked.size() >= count; }, 3000);
  }
};

TEST_F(TreeViewTest, showsWhatWasThereBeforeAndWhatComesLater) {
  TreeNode& first = add(nullptr, L"a");
  add(&first, L"b");
  show();
  TreeNode& second = add(nullptr, L"c");
  add(&add(&second, L"d"), L"e");
  EXPECT_EQ(texts(), L"a -b c -d --e ");
  second.setText(L"neu");
  model.Remove(first);
  EXPECT_EQ(texts(), L"neu -d --e ");
  model.Clear();
  EXPECT_EQ(texts(), L"");
}

TEST_F(TreeViewTest, everyKindOfNodeHasAPictureOfItsOwn) {
  HWND tree = show();
  std::set<int> pictures;
  const char* const kinds[] = {"open", "word", "modul", "cls", "frm", "this", "dec", "vb"};
  for (const char* kind : kinds) {
    model.Clear();
    model.Add(nullptr, L"a", L"a", kind, kind);
    TVITEMW known{};
    known.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    known.hItem = TreeView_GetRoot(tree);
    TreeView_GetItem(tree, &known);
    EXPECT_GE(known.iImage, 0) << kind;
    EXPECT_EQ(known.iSelectedImage, known.iImage) << kind;
    pictures.insert(known.iImage);
  }
  EXPECT_EQ(pictures.size(), std::size(kinds));
}

TEST_F(TreeViewTest, theModelLivesOnWithoutItsWindow) {
  TreeNode& root = add(nullptr, L"a");
  show();
  widget->detach();  // as when the window goes
  add(&root, L"b");
  widget.reset();
  model.Clear();
}

TEST_F(TreeViewTest, whatTheProgramSelectsIsNoClick) {
  TreeNode& root = add(nullptr, L"a");
  TreeNode& child = add(&root, L"b");
  HWND tree = show();
  model.select(&child);
  EXPECT_EQ(TreeView_GetSelection(tree), firstChild());
  model.Remove(child);
  test::pumpUntil([] { return false; }, 50);
  EXPECT_TRUE(clicked.empty());
}

TEST_F(TreeViewTest, aRemovedSelectionIsNotHandedOnToANeighbour) {
  TreeNode& first = add(nullptr, L"a");
  TreeNode& child = add(&add(&first, L"b"), L"c");
  TreeNode& second = add(nullptr, L"d");
  HWND tree = show();
  first.setExpanded(true);
  SetFocus(tree);
  model.select(&child);
  model.Remove(first);
  EXPECT_EQ(model.SelectedItem(), nullptr);
  EXPECT_EQ(TreeView_GetSelection(tree), nullptr);
  click(TreeView_GetRoot(tree));
  ASSERT_TRUE(waitForClicks(1));
  EXPECT_EQ(clicked, std::vector<std::wstring>{L"d"});

  TreeNode& third = add(nullptr, L"e");
  model.Remove(third);
  EXPECT_EQ(TreeView_GetSelection(tree), TreeView_GetRoot(tree)) << "another one stays selected";
  TreeNode& fourth = add(nullptr, L"f");
  TreeView_SelectItem(tree, TreeView_GetNextSibling(tree, TreeView_GetRoot(tree)));
  model.Remove(second);  // before the choice is reported
  ASSERT_TRUE(waitForClicks(2));
  EXPECT_EQ(model.SelectedItem(), &fourth);
  EXPECT_EQ(TreeView_GetSelection(tree), TreeView_GetRoot(tree));
}

TEST_F(TreeViewTest, everyChoiceOfTheUserIsAClick) {
  add(&add(nullptr, L"a"), L"b");
  HWND tree = show();
  TreeView_SelectItem(tree, firstChild());  // as a screen reader does
  ASSERT_TRUE(waitForClicks(1));
  SendMessageW(tree, WM_KEYDOWN, VK_UP, 0);
  ASSERT_TRUE(waitForClicks(2));
  EXPECT_EQ(clicked, (std::vector<std::wstring>{L"b", L"a"}));
  EXPECT_EQ(model.SelectedItem()->Key(), L"a");
}

TEST_F(TreeViewTest, aClickOnTheSelectedNodeCountsToo) {
  TreeNode& root = add(nullptr, L"a");
  show();
  model.select(&root);
  click(TreeView_GetRoot(widget->hwnd()));
  ASSERT_TRUE(waitForClicks(1));
  test::pumpUntil([] { return false; }, 50);
  EXPECT_EQ(clicked, std::vector<std::wstring>{L"a"});
}

TEST_F(TreeViewTest, theUserDoesNotMoveALockedSelection) {
  TreeNode& root = add(nullptr, L"a");
  add(&root, L"b");
  TreeNode& other = add(nullptr, L"c");
  HWND tree = show();
  root.setExpanded(true);
  model.select(&root);
  bool locked = true;
  widget->locked = [&locked] { return locked; };
  const HTREEITEM first = TreeView_GetRoot(tree);
  click(firstChild());
  test::pumpUntil([] { return false; }, 50);
  SendMessageW(tree, WM_KEYDOWN, VK_DOWN, 0);
  EXPECT_EQ(TreeView_GetSelection(tree), first);
  locked = false;
  SendMessageW(tree, WM_KEYDOWN, VK_DOWN, 0);  // not reported before it is locked again
  locked = true;
  test::pumpUntil([] { return false; }, 50);
  EXPECT_EQ(TreeView_GetSelection(tree), first);
  EXPECT_EQ(model.SelectedItem(), &root);
  EXPECT_TRUE(clicked.empty());
  model.select(&other);  // the program may
  EXPECT_EQ(TreeView_GetSelection(tree), TreeView_GetNextSibling(tree, first));
  model.Remove(root);
  EXPECT_EQ(texts(), L"c ");
}

TEST_F(TreeViewTest, aRightClickAsksForOneMenuAtThePointer) {
  add(&add(nullptr, L"a"), L"b");
  show();
  click(TreeView_GetRoot(widget->hwnd()), WM_RBUTTONDOWN, WM_RBUTTONUP);
  test::pumpUntil([] { return false; }, 100);
  EXPECT_EQ(rightClicked, std::vector<std::wstring>{L"a"});
  POINT pointer{};
  GetCursorPos(&pointer);
  EXPECT_EQ(widget->menuPlace().x, pointer.x);
  EXPECT_EQ(widget->menuPlace().y, pointer.y);
}

TEST_F(TreeViewTest, theMenuKeyAsksForTheMenuOfTheSelectedNodeAtItsText) {
  TreeNode& root = add(nullptr, L"a");
  for (int i = 0; i < 100; ++i) add(&root, (L"b" + std::to_wstring(i)).c_str());
  HWND tree = show();
  const auto pressMenuKey = [tree] {
    SendMessageW(tree, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(tree), -1);
  };
  model.select(nullptr);
  pressMenuKey();
  EXPECT_TRUE(rightClicked.empty()) << "no node is selected";
  model.select(root.Children()[90].get());
  SendMessageW(tree, WM_VSCROLL, SB_TOP, 0);
  SetCursorPos(0, 0);
  pressMenuKey();
  EXPECT_EQ(rightClicked, std::vector<std::wstring>{L"b90"});
  const RECT text = placeOf(TreeView_GetSelection(tree));
  RECT inside{};
  GetClientRect(tree, &inside);
  EXPECT_LE(text.bottom, inside.bottom) << "the node is in view";
  POINT place = widget->menuPlace();
  ScreenToClient(tree, &place);
  EXPECT_EQ(place.x, text.left);
  EXPECT_EQ(place.y, text.bottom);
}

TEST_F(TreeViewTest, aNodeThatIsGoneIsNotClicked) {
  TreeNode& root = add(nullptr, L"a");
  show();
  TreeView_SelectItem(widget->hwnd(), TreeView_GetRoot(widget->hwnd()));
  model.Remove(root);
  test::pumpUntil([] { return false; }, 50);
  EXPECT_TRUE(clicked.empty());
}

TEST_F(TreeViewTest, modelAndControlAgreeWhichNodesAreOpen) {
  TreeNode& root = add(nullptr, L"a");
  add(&root, L"b");
  HWND tree = show();
  const auto open = [&] {
    return (TreeView_GetItemState(tree, TreeView_GetRoot(tree), TVIS_EXPANDED) & TVIS_EXPANDED) !=
           0;
  };
  root.setExpanded(true);
  EXPECT_TRUE(open());
  SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(TreeView_GetRoot(tree)));
  SendMessageW(tree, WM_KEYDOWN, VK_SUBTRACT, 0);  // the user closes it
  EXPECT_FALSE(open());
  EXPECT_FALSE(root.Expanded());
  SendMessageW(tree, WM_KEYDOWN, VK_ADD, 0);
  EXPECT_TRUE(root.Expanded());
}

}  // namespace
}  // namespace tintline
