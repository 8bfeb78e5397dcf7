// Tests of app/controls/tree_view.h.
#include "app/controls/tree_view.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "base/codepage.h"

namespace tintline {
namespace {

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

// A file with a component with two procedures, and another file.
struct Tree {
  TreeView view;
  TreeNode& file = add(nullptr, L"F", L"Datei");
  TreeNode& component = add(&file, L"K", L"Modul1");
  TreeNode& first = add(&component, L"P1", L"Sub A");
  TreeNode& second = add(&component, L"P2", L"Sub B");
  TreeNode& other = add(nullptr, L"F2", L"Andere");

  TreeNode& add(TreeNode* parent, std::wstring key, std::wstring text) {
    return view.Add(parent, std::move(key), std::move(text), "zu", "auf");
  }
};

TEST(TreeView, NodesAreFoundByKeyAndNumber) {
  Tree tree;
  EXPECT_EQ(tree.view.find(L"P2"), &tree.second);
  EXPECT_EQ(tree.view.find(L"p2"), nullptr);
  EXPECT_EQ(tree.view.byId(tree.second.id()), &tree.second);
  EXPECT_EQ(tree.view.byId(99), nullptr);
  EXPECT_EQ(tree.second.path(), (std::vector<std::wstring>{L"Datei", L"Modul1", L"Sub B"}));
  EXPECT_EQ(tree.view.roots().size(), 2u);
  EXPECT_EQ(tree.component.Children()[1].get(), &tree.second);
}

TEST(TreeView, AKeyThatIsTakenAddsNothing) {
  Tree tree;
  EXPECT_THROW(tree.add(&tree.other, L"P1", L"x"), std::invalid_argument);
  EXPECT_TRUE(tree.other.Children().empty());
  EXPECT_EQ(tree.view.find(L"P1"), &tree.first);
}

TEST(TreeView, WithANodeGoesAllThatIsBelowIt) {
  Tree tree;
  const std::size_t component = tree.component.id(), second = tree.second.id();
  tree.view.select(&tree.second);
  tree.view.Remove(tree.component);
  EXPECT_TRUE(tree.file.Children().empty());
  for (const wchar_t* key : {L"K", L"P1", L"P2"}) EXPECT_EQ(tree.view.find(key), nullptr);
  EXPECT_EQ(tree.view.byId(component), nullptr);
  EXPECT_EQ(tree.view.byId(second), nullptr);
  EXPECT_EQ(tree.view.SelectedItem(), nullptr);
  // The keys are free again, the numbers are not.
  const TreeNode& again = tree.add(&tree.file, L"K", L"neu");
  EXPECT_NE(again.id(), component);
  EXPECT_EQ(tree.view.byId(component), nullptr);
}

TEST(TreeView, ASelectionElsewhereSurvivesARemoval) {
  Tree tree;
  tree.view.select(&tree.other);
  tree.view.Remove(tree.file);
  EXPECT_EQ(tree.view.SelectedItem(), &tree.other);
  tree.view.Clear();
  EXPECT_EQ(tree.view.SelectedItem(), nullptr);
  EXPECT_TRUE(tree.view.empty());
}

TEST(TreeView, AViewIsToldOfEveryChange) {
  Tree tree;
  RecordingView view;
  tree.view.setTreeView(&view);
  tree.add(&tree.file, L"K2", L"Modul2");
  tree.first.setText(L"Sub C");
  tree.file.setExpanded(true);
  tree.view.select(&tree.first);
  tree.view.select(nullptr);
  tree.view.Remove(tree.component);
  tree.view.Clear();
  tree.view.setTreeView(nullptr);
  tree.add(nullptr, L"F3", L"x");
  EXPECT_EQ(view.events, "+Modul2 !Sub C !Datei >Sub C >none -Modul1 -Andere -Datei ");
}

TEST(TreeView, AClickSelectsAndARightClickDoesNot) {
  Tree tree;
  RecordingView view;
  tree.view.setTreeView(&view);
  std::wstring clicked;
  tree.view.userSelected(tree.other);  // nobody listens yet
  tree.view.NodeClick = [&](TreeNode& node) {
    EXPECT_EQ(tree.view.SelectedItem(), &node);
    clicked += node.Text();
    tree.view.Remove(node);  // a click may take its node away
  };
  tree.view.RightClick = [&](TreeNode& node) { clicked += L"/" + node.Text(); };
  tree.view.userSelected(tree.first);
  tree.view.userRightClicked(tree.second);
  EXPECT_EQ(clicked, L"Sub A/Sub B");
  EXPECT_EQ(tree.view.SelectedItem(), nullptr);
  EXPECT_EQ(view.events, "-Sub A ") << "a view knows by itself what the user selected";
}

}  // namespace
}  // namespace tintline
