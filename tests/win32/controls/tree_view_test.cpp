// Tests of win32/controls/tree_view.h.
#include "win32/controls/tree_view.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/win32/host_window.h"
#include "win32/control_ids.h"

namespace tintline {
namespace {

using Keys = std::vector<std::wstring>;

struct TreeViewTest : testing::Test {
  TreeView model;
  test::HostWindow window;
  Keys clicked, rightClicked;
  TreeWidget widget{window.host, model, id::kTreeView1};
  HWND tree = widget.hwnd();
  TreeNode& a = add(nullptr, L"a");
  TreeNode& b = add(&a, L"b");

  TreeViewTest() {
    model.NodeClick = [this](TreeNode& node) { clicked.push_back(node.Key()); };
    model.RightClick = [this](TreeNode& node) { rightClicked.push_back(node.Key()); };
    widget.setFont(static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)), 96);
    SetWindowPos(tree, nullptr, 0, 0, 300, 300, SWP_NOZORDER | SWP_SHOWWINDOW);
    window.show(widget);
  }

  TreeNode& add(TreeNode* parent, const wchar_t* key) {
    return model.Add(parent, key, key, "open", "open");
  }
  HTREEITEM root() { return TreeView_GetRoot(tree); }
  int pictureOf(HTREEITEM item) {
    TVITEMW known{};
    known.mask = TVIF_IMAGE;
    known.hItem = item;
    TreeView_GetItem(tree, &known);
    return known.iImage;
  }
  RECT placeOf(HTREEITEM item) {
    RECT area{};
    TreeView_GetItemRect(tree, item, &area, TRUE);
    return area;
  }
  void click(HTREEITEM item, UINT down = WM_LBUTTONDOWN) {
    test::clickAt(tree, {placeOf(item).left + 3, placeOf(item).top + 3}, down);
    test::pumpFor(50);
  }
};

TEST_F(TreeViewTest, eachKindOfNodeHasItsPicture) {
  std::set<int> pictures;
  for (const char* kind : {"open", "word", "modul", "cls", "frm", "this", "dec", "vb"}) {
    model.Clear();
    model.Add(nullptr, L"a", L"a", kind, kind);
    pictures.insert(pictureOf(root()));
  }
  EXPECT_EQ(pictures.size(), 8U);
}

TEST_F(TreeViewTest, everyChoiceOfTheUserIsAClickAndNothingElse) {
  model.select(&b);
  test::pumpFor(50);
  EXPECT_TRUE(clicked.empty()) << "what the program selects is none";
  SendMessageW(tree, WM_KEYDOWN, VK_UP, 0);
  test::pumpUntil([this] { return !clicked.empty(); }, 3000);
  click(root());  // the selected one, too
  EXPECT_EQ(clicked, (Keys{L"a", L"a"}));
  EXPECT_EQ(model.SelectedItem(), &a);
  TreeView_SelectItem(tree, TreeView_GetChild(tree, root()));
  model.Remove(a);  // before its click is told
  test::pumpFor(50);
  EXPECT_EQ(clicked.size(), 2U);
}

TEST_F(TreeViewTest, whatWasNotToldBeforeTheTreeIsLockedIsTakenBack) {
  add(nullptr, L"c");
  model.select(&a);
  bool locked = false;
  widget.locked = [&locked] { return locked; };
  SendMessageW(tree, WM_KEYDOWN, VK_DOWN, 0);
  locked = true;
  test::pumpFor(50);
  EXPECT_EQ(TreeView_GetSelection(tree), root());
  SendMessageW(tree, WM_KEYDOWN, VK_DOWN, 0);
  EXPECT_EQ(TreeView_GetSelection(tree), root());
  EXPECT_TRUE(clicked.empty());
}

TEST_F(TreeViewTest, theMenuKeyOpensTheMenuAtTheSelectedText) {
  for (int i = 0; i < 100; ++i) add(&a, (L"b" + std::to_wstring(i)).c_str());
  model.select(a.Children()[90].get());
  SendMessageW(tree, WM_VSCROLL, SB_TOP, 0);
  SendMessageW(tree, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(tree), -1);
  EXPECT_EQ(rightClicked, Keys{L"b89"});
  POINT place = widget.menuPlace();
  ScreenToClient(tree, &place);
  const RECT text = placeOf(TreeView_GetSelection(tree));
  EXPECT_EQ(place.x, text.left);
  EXPECT_EQ(place.y, text.bottom);
  EXPECT_LE(text.bottom, 300) << "the node is in view";
}

TEST_F(TreeViewTest, modelAndControlAgreeWhichNodesAreOpen) {
  a.setExpanded(true);
  EXPECT_NE(TreeView_GetItemState(tree, root(), TVIS_EXPANDED) & TVIS_EXPANDED, 0U);
  TreeView_SelectItem(tree, root());
  SendMessageW(tree, WM_KEYDOWN, VK_SUBTRACT, 0);  // the user closes it
  EXPECT_FALSE(a.Expanded());
  SendMessageW(tree, WM_KEYDOWN, VK_ADD, 0);
  EXPECT_TRUE(a.Expanded());
}

}  // namespace
}  // namespace tintline
