// A tree control over the nodes of a TreeView.
//
// Tested by tests/app/ and tests/win32/controls/.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "app/controls/tree_view.h"
#include "win32/controls/gdi.h"
#include "win32/controls/widget.h"

namespace tintline {

class TreeWidget final : public Widget {
 public:
  TreeWidget(WidgetHost& host, TreeView& model, int id);
  ~TreeWidget() override { TreeWidget::detach(); }

  void detach() override;
  void setFont(HFONT font, unsigned dpi) override;
  void followTheme() override;
  LRESULT notify(NMHDR& header) override;

  // Whether the user may not select another node now; to be set before the first message.
  std::function<bool()> locked = [] { return false; };

  // Where on the screen a context menu belongs when the model's RightClick asks for it.
  POINT menuPlace() const { return menuPlace_; }

 private:
  // Nodes are shown at once: there are few, and they come one by one.
  class Nodes final : public TreeViewView {
   public:
    explicit Nodes(TreeWidget& widget) : widget_(widget) {}
    void changed(Control& control) override { widget_.changed(control); }
    void refresh(Control& control) override { widget_.refresh(control); }
    void added(TreeNode& node) override { widget_.insert(node); }
    void updated(TreeNode& node) override { widget_.update(node); }
    void removing(TreeNode& node) override { widget_.remove(node); }
    void selected(TreeNode* node) override { widget_.select(node); }

   private:
    TreeWidget& widget_;
  };

  void show() override {}
  void lookChanged();
  void insertAll(const std::vector<std::unique_ptr<TreeNode>>& nodes);
  void insert(TreeNode& node);
  void update(TreeNode& node);
  void remove(TreeNode& node);
  void forget(const TreeNode& node);
  void select(TreeNode* node);

  bool selectionRefused() const { return !byProgram_ && locked(); }
  LRESULT color(NMTVCUSTOMDRAW& drawn) const;
  void selectionChanged(const NMTREEVIEWW& change);
  void clicked();
  bool rightClicked();
  void menuByKey();
  void expanded(const NMTREEVIEWW& change);
  void reportLater(std::size_t node);
  void report();
  TreeNode* nodeOf(HTREEITEM item) const;
  HTREEITEM itemBelow(POINT screen) const;
  static LRESULT CALLBACK treeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                        UINT_PTR, DWORD_PTR self);

  TreeView& model_;
  Nodes nodes_;
  bool ownLook_ = false;  // the system draws what is selected
  UniqueImageList pictures_;
  std::map<std::size_t, HTREEITEM> items_;  // by the node's id
  bool byProgram_ = false;                  // what happens now is no act of the user
  std::optional<std::size_t> chosen_;       // by the user, not yet reported
  POINT menuPlace_{};
};

}  // namespace tintline
