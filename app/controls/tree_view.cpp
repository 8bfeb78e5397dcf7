// See tree_view.h. Tested by tests/app/ and tests/win32/controls/.
#include "app/controls/tree_view.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tintline {

void TreeNode::setText(std::wstring text) {
  text_ = std::move(text);
  if (tree_.treeView_ != nullptr) tree_.treeView_->updated(*this);
}

void TreeNode::setExpanded(bool expanded) {
  expanded_ = expanded;
  if (tree_.treeView_ != nullptr) tree_.treeView_->updated(*this);
}

std::vector<std::wstring> TreeNode::path() const {
  std::vector<std::wstring> texts;
  for (const TreeNode* node = this; node != nullptr; node = node->parent_)
    texts.push_back(node->text_);
  std::reverse(texts.begin(), texts.end());
  return texts;
}

TreeNode& TreeView::Add(TreeNode* parent, std::wstring key, std::wstring text, std::string image,
                        std::string selectedImage) {
  if (find(key) != nullptr) throw std::invalid_argument("the tree has a node of that key");
  auto& siblings = parent != nullptr ? parent->children_ : roots_;
  siblings.push_back(std::unique_ptr<TreeNode>(new TreeNode(*this, parent, nodes_.size())));
  TreeNode& node = *siblings.back();
  node.key_ = std::move(key);
  node.text_ = std::move(text);
  node.image_ = std::move(image);
  node.selectedImage_ = std::move(selectedImage);
  nodes_.push_back(&node);
  byKey_.emplace(node.key_, &node);
  if (treeView_ != nullptr) treeView_->added(node);
  return node;
}

void TreeView::Remove(TreeNode& node) {
  if (treeView_ != nullptr) treeView_->removing(node);
  forget(node);
  auto& siblings = node.parent_ != nullptr ? node.parent_->children_ : roots_;
  std::erase_if(siblings, [&node](const auto& sibling) { return sibling.get() == &node; });
}

void TreeView::Clear() {
  while (!roots_.empty()) Remove(*roots_.back());
}

TreeNode* TreeView::find(std::wstring_view key) const {
  const auto place = byKey_.find(key);
  return place == byKey_.end() ? nullptr : place->second;
}

TreeNode* TreeView::byId(std::size_t id) const { return id < nodes_.size() ? nodes_[id] : nullptr; }

void TreeView::select(TreeNode* node) {
  selected_ = node;
  if (treeView_ != nullptr) treeView_->selected(node);
}

void TreeView::userSelected(TreeNode& node) {
  selected_ = &node;
  if (NodeClick) NodeClick(node);
}

void TreeView::userRightClicked(TreeNode& node) const {
  if (RightClick) RightClick(node);
}

void TreeView::setTreeView(TreeViewView* view) {
  treeView_ = view;
  setView(view);
}

void TreeView::forget(const TreeNode& node) {
  for (const auto& child : node.children_) forget(*child);
  if (selected_ == &node) selected_ = nullptr;
  nodes_[node.id_] = nullptr;
  byKey_.erase(node.key_);
}

}  // namespace tintline
