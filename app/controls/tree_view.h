// The model of a tree of keyed nodes.
//
// Tested by tests/app/ and tests/win32/controls/.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/controls/control.h"

namespace tintline {

class TreeView;

class TreeNode {
 public:
  const std::wstring& Key() const { return key_; }
  const std::wstring& Text() const { return text_; }
  void setText(std::wstring text);
  const std::string& Image() const { return image_; }
  const std::string& SelectedImage() const { return selectedImage_; }
  bool Expanded() const { return expanded_; }
  void setExpanded(bool expanded);

  // What the form notes at the node.
  std::wstring Tag;

  TreeNode* Parent() const { return parent_; }  // null for a root
  const std::vector<std::unique_ptr<TreeNode>>& Children() const { return children_; }

  // The texts from the root to this node, root first.
  std::vector<std::wstring> path() const;

  // A number of this node's own, never used again after the node is gone.
  std::size_t id() const { return id_; }

 private:
  friend class TreeView;
  TreeNode(TreeView& tree, TreeNode* parent, std::size_t id)
      : tree_(tree), parent_(parent), id_(id) {}

  TreeView& tree_;
  TreeNode* parent_;
  std::size_t id_;
  std::wstring key_, text_;
  std::string image_, selectedImage_;
  bool expanded_ = false;
  std::vector<std::unique_ptr<TreeNode>> children_;
};

// What the view of a tree gets to know beside changes of the control as a whole.
class TreeViewView : public ControlView {
 public:
  virtual void added(TreeNode& node) = 0;     // as the last child of its parent
  virtual void updated(TreeNode& node) = 0;   // text or expansion changed
  virtual void removing(TreeNode& node) = 0;  // with all below it; it is still there
  virtual void selected(TreeNode* node) = 0;  // by the form; null for none
};

class TreeView : public Control {
 public:
  // Adds a node, last among the children of `parent` (null: among the roots). Throws
  // std::invalid_argument when the key is taken.
  TreeNode& Add(TreeNode* parent, std::wstring key, std::wstring text, std::string image,
                std::string selectedImage);

  // Removes the node and all below it.
  void Remove(TreeNode& node);
  void Clear();

  const std::vector<std::unique_ptr<TreeNode>>& roots() const { return roots_; }
  bool empty() const { return roots_.empty(); }

  // The node, or null when there is none (any more).
  TreeNode* find(std::wstring_view key) const;
  TreeNode* byId(std::size_t id) const;

  TreeNode* SelectedItem() const { return selected_; }
  void select(TreeNode* node);

  // The view reports what the user did: the node clicked (or chosen by key), the
  // node under a right click.
  void userSelected(TreeNode& node);
  void userRightClicked(TreeNode& node) const;
  std::function<void(TreeNode&)> NodeClick;
  std::function<void(TreeNode&)> RightClick;

  // The view; it must live until another one or none is set.
  void setTreeView(TreeViewView* view);

 private:
  friend class TreeNode;
  void forget(const TreeNode& node);

  std::vector<std::unique_ptr<TreeNode>> roots_;
  std::vector<TreeNode*> nodes_;  // by id; null where a node is gone
  std::map<std::wstring, TreeNode*, std::less<>> byKey_;
  TreeNode* selected_ = nullptr;
  TreeViewView* treeView_ = nullptr;
};

}  // namespace tintline
