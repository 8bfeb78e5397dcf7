// See tree_view.h.
#include "win32/controls/tree_view.h"

#include <uxtheme.h>
#include <vssym32.h>
#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "app/controls/selection_colors.h"
#include "win32/controls/fonts.h"
#include "win32/controls/image_strips.h"
#include "win32/controls/theme.h"
#include "win32/controls/window.h"

namespace tintline {
namespace {

constexpr int kRowHeight = 22;  // pixels at 96 dpi, as in the file manager
constexpr DWORD kTreeStyle = TVS_HASBUTTONS | TVS_FULLROWSELECT | TVS_LINESATROOT |
                             TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP | WS_TABSTOP | WS_GROUP;

// To the tree itself: the user chose a node.
constexpr UINT kReport = WM_APP + 2;

// A change of the selection by the control itself, as when it first gets the keyboard.
constexpr UINT kInternal = 0x10000;

// The place that WM_CONTEXTMENU has when the menu key or Shift+F10 asked for it.
constexpr LPARAM kByKey = -1;

// Whether the file manager's look of trees is there, which draws what is selected.
bool hasExplorerLook() {
  HTHEME theme = OpenThemeData(nullptr, L"Explorer::TreeView");
  if (theme == nullptr) return false;
  const bool draws = IsThemePartDefined(theme, TVP_TREEITEM, 0) != FALSE;
  CloseThemeData(theme);
  return draws;
}

class Flagged {
 public:
  explicit Flagged(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  Flagged(const Flagged&) = delete;
  Flagged& operator=(const Flagged&) = delete;
  ~Flagged() { flag_ = before_; }

 private:
  bool& flag_;
  bool before_;
};

}  // namespace

TreeWidget::TreeWidget(WidgetHost& host, TreeView& model, int id)
    : Widget(host, model, id, {WC_TREEVIEWW, kTreeStyle, WS_EX_CLIENTEDGE}),
      model_(model),
      nodes_(*this) {
  SetWindowSubclass(hwnd(), treeProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
  if (hasExplorerLook()) SetWindowTheme(hwnd(), L"Explorer", nullptr);  // as in the file manager
  lookChanged();
  TreeView_SetExtendedStyle(hwnd(), TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
  model.setTreeView(&nodes_);
  insertAll(model.roots());
  if (model.SelectedItem() != nullptr) select(model.SelectedItem());
}

void TreeWidget::detach() {
  if (hwnd() == nullptr) return;
  model_.setTreeView(nullptr);
  Widget::detach();
}

void TreeWidget::setFont(HFONT font, unsigned dpi) {
  UniqueImageList before = std::exchange(pictures_, loadStrip(Strip::Tree, dpi));
  TreeView_SetImageList(hwnd(), pictures_.get(), TVSIL_NORMAL);
  Widget::setFont(font, dpi);
  const auto text = static_cast<int>(textSize(font, L"Ag").cy);
  TreeView_SetItemHeight(hwnd(), std::max(scaled(kRowHeight, dpi), text + scaled(4, dpi)));
}

// The row below the mouse is marked by the file manager's look only; without it the system would
// underline it like a link.
void TreeWidget::lookChanged() {
  constexpr LONG_PTR kTrack = TVS_TRACKSELECT;
  ownLook_ = hasExplorerLook();
  const LONG_PTR style = GetWindowLongPtrW(hwnd(), GWL_STYLE);
  SetWindowLongPtrW(hwnd(), GWL_STYLE, ownLook_ ? style | kTrack : style & ~kTrack);
}

void TreeWidget::followTheme() {
  const auto told = [](int index) {
    return theme::isOwn() ? theme::color(index) : static_cast<COLORREF>(-1);  // the system's
  };
  if (ownLook_ && !theme::isOwn())
    SetWindowTheme(hwnd(), L"Explorer", nullptr);
  else
    theme::dress(hwnd());
  TreeView_SetBkColor(hwnd(), told(COLOR_WINDOW));
  TreeView_SetTextColor(hwnd(), told(COLOR_WINDOWTEXT));
  TreeView_SetLineColor(hwnd(), theme::isOwn() ? theme::color(COLOR_BTNSHADOW) : CLR_DEFAULT);
  theme::dressTips(TreeView_GetToolTips(hwnd()));
}

// ----------------------------------------------------------------- from the model
void TreeWidget::insertAll(const std::vector<std::unique_ptr<TreeNode>>& nodes) {
  for (const auto& node : nodes) {
    insert(*node);
    insertAll(node->Children());
    update(*node);
  }
}

void TreeWidget::insert(TreeNode& node) {
  const Flagged flagged(byProgram_);
  std::wstring text = node.Text();
  TVINSERTSTRUCTW insertion{};
  insertion.hParent = node.Parent() != nullptr ? items_[node.Parent()->id()] : TVI_ROOT;
  insertion.hInsertAfter = TVI_LAST;
  insertion.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
  insertion.item.pszText = text.data();
  insertion.item.iImage = pictureOf(Strip::Tree, node.Image());
  insertion.item.iSelectedImage = pictureOf(Strip::Tree, node.SelectedImage());
  insertion.item.lParam = static_cast<LPARAM>(node.id());
  items_[node.id()] = TreeView_InsertItem(hwnd(), &insertion);
  if (insertion.hParent != TVI_ROOT) InvalidateRect(hwnd(), nullptr, FALSE);  // a button to open it
}

void TreeWidget::update(TreeNode& node) {
  const Flagged flagged(byProgram_);
  HTREEITEM place = items_[node.id()];
  std::wstring text = node.Text();
  TVITEMW item{};
  item.mask = TVIF_TEXT | TVIF_HANDLE;
  item.hItem = place;
  item.pszText = text.data();
  TreeView_SetItem(hwnd(), &item);
  const bool open = (TreeView_GetItemState(hwnd(), place, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
  if (open != node.Expanded())
    TreeView_Expand(hwnd(), place, node.Expanded() ? TVE_EXPAND : TVE_COLLAPSE);
}

void TreeWidget::remove(TreeNode& node) {
  const Flagged flagged(byProgram_);
  TreeView_DeleteItem(hwnd(), items_[node.id()]);
  forget(node);
  // The control goes on to a neighbour of a selected node that is gone, the model to none.
  const TreeNode* selected = model_.SelectedItem();
  if (selected == nullptr || !items_.contains(selected->id())) select(nullptr);
}

void TreeWidget::forget(const TreeNode& node) {
  items_.erase(node.id());
  for (const auto& child : node.Children()) forget(*child);
}

void TreeWidget::select(TreeNode* node) {
  const Flagged flagged(byProgram_);
  TreeView_SelectItem(hwnd(), node != nullptr ? items_[node->id()] : nullptr);
}

// ------------------------------------------------------------------- to the model
LRESULT TreeWidget::notify(NMHDR& header) {
  switch (header.code) {
    case TVN_SELCHANGINGW:
      return selectionRefused();
    case TVN_SELCHANGEDW:
      selectionChanged(reinterpret_cast<const NMTREEVIEWW&>(header));
      return 0;
    case TVN_ITEMEXPANDEDW:
      expanded(reinterpret_cast<const NMTREEVIEWW&>(header));
      return 0;
    case NM_CLICK:
      clicked();
      return 0;
    case NM_CUSTOMDRAW:
      return color(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
    case NM_RCLICK:
      return rightClicked();  // true: no default menu
    default:
      return 0;
  }
}

// The system's own colours for what is selected without the keyboard are hard to see.
LRESULT TreeWidget::color(NMTVCUSTOMDRAW& drawn) const {
  if (drawn.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  const bool selected = (drawn.nmcd.uItemState & CDIS_SELECTED) != 0;
  if (drawn.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && selected && GetFocus() != hwnd() &&
      !ownLook_) {
    const SelectionColors colors =
        unfocusedSelection(theme::color(COLOR_WINDOW), theme::color(COLOR_WINDOWTEXT));
    drawn.clrText = colors.text;
    drawn.clrTextBk = colors.back;
  }
  return CDRF_DODEFAULT;
}

void TreeWidget::selectionChanged(const NMTREEVIEWW& change) {
  if (byProgram_ || change.action == kInternal || change.itemNew.hItem == nullptr) return;
  reportLater(static_cast<std::size_t>(change.itemNew.lParam));
}

// A click on the node that is selected changes nothing, but is a click all the same.
void TreeWidget::clicked() {
  HTREEITEM item = itemBelow(pointOf(static_cast<LPARAM>(GetMessagePos())));
  if (item == nullptr || item != TreeView_GetSelection(hwnd())) return;
  if (const TreeNode* node = nodeOf(item)) reportLater(node->id());
}

bool TreeWidget::rightClicked() {
  HTREEITEM item = itemBelow(pointOf(static_cast<LPARAM>(GetMessagePos())));
  TreeNode* node = item != nullptr ? nodeOf(item) : nullptr;
  GetCursorPos(&menuPlace_);
  if (node != nullptr) model_.userRightClicked(*node);
  return true;
}

// The menu of the selected node, below its text.
void TreeWidget::menuByKey() {
  HTREEITEM item = TreeView_GetSelection(hwnd());
  TreeNode* node = item != nullptr ? nodeOf(item) : nullptr;
  if (node == nullptr) return;
  TreeView_EnsureVisible(hwnd(), item);
  RECT text{};
  TreeView_GetItemRect(hwnd(), item, &text, TRUE);
  menuPlace_ = {text.left, text.bottom};
  ClientToScreen(hwnd(), &menuPlace_);
  model_.userRightClicked(*node);
}

void TreeWidget::expanded(const NMTREEVIEWW& change) {
  TreeNode* node = byProgram_ ? nullptr : nodeOf(change.itemNew.hItem);
  if (node != nullptr) node->setExpanded((change.itemNew.state & TVIS_EXPANDED) != 0);
}

// Behind the control's own handling of the click: what the form does takes a while,
// and may remove the very node.
void TreeWidget::reportLater(std::size_t node) {
  if (!std::exchange(chosen_, node)) PostMessageW(hwnd(), kReport, 0, 0);
}

void TreeWidget::report() {
  const auto chosen = std::exchange(chosen_, std::nullopt);
  TreeNode* node = chosen ? model_.byId(*chosen) : nullptr;
  if (locked()) {
    select(model_.SelectedItem());  // a run began in between: the choice is taken back
  } else if (node != nullptr) {
    select(node);  // perhaps taken back with a node that was removed in between
    model_.userSelected(*node);
  }
}

LRESULT CALLBACK TreeWidget::treeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                           UINT_PTR, DWORD_PTR self) {
  auto& tree = *reinterpret_cast<TreeWidget*>(self);
  if (message == kReport) {
    tree.report();
    return 0;
  }
  if (message == WM_CONTEXTMENU && lParam == kByKey) {
    tree.menuByKey();
    return 0;
  }
  if (message == WM_THEMECHANGED) tree.lookChanged();
  return DefSubclassProc(window, message, wParam, lParam);
}

TreeNode* TreeWidget::nodeOf(HTREEITEM item) const {
  TVITEMW known{};
  known.mask = TVIF_PARAM | TVIF_HANDLE;
  known.hItem = item;
  if (!TreeView_GetItem(hwnd(), &known)) return nullptr;
  return model_.byId(static_cast<std::size_t>(known.lParam));
}

HTREEITEM TreeWidget::itemBelow(POINT screen) const {
  TVHITTESTINFO test{};
  test.pt = screen;
  ScreenToClient(hwnd(), &test.pt);
  HTREEITEM item = TreeView_HitTest(hwnd(), &test);
  return (test.flags & TVHT_ONITEM) != 0 ? item : nullptr;
}

}  // namespace tintline
