#include "lists/tree/tree_choice.h"

#include <gtest/gtest.h>

#include "lists/tree/tree_keys.h"

namespace kestrelon {
namespace {

// a(a1, a2(a21)), b, c; all expanded.
struct TreeChoiceTest : testing::Test {
  TreeStore tree;
  TreeChoice choice{tree};
  NodeId a = add(kNoNode), a1 = add(a), a2 = add(a), a21 = add(a2), b = add(kNoNode),
         c = add(kNoNode);

  TreeChoiceTest() { tree.expand_all(kNoNode, true); }
  NodeId add(NodeId parent) { return tree.add(L"x", L"", parent, NodePosition::kLastChild); }
  std::vector<NodeId> selected() {
    return tree.all_where([](const TreeNode& node) { return node.has(NodeFlag::kSelected); });
  }
};

TEST_F(TreeChoiceTest, CollapsingMovesAHiddenSelectionToTheParent) {
  choice.choose(a21, Choice::kPlain);
  tree.expand(a, false);
  EXPECT_TRUE(choice.collapsed(a));
  EXPECT_EQ(choice.current(), a);
  EXPECT_EQ(selected(), std::vector<NodeId>{a});
  EXPECT_FALSE(choice.collapsed(a));
  EXPECT_FALSE(choice.collapsed(b));
}

TEST_F(TreeChoiceTest, RemovingTheCurrentNodeGoesToANeighbour) {
  choice.set_current(a21);
  EXPECT_TRUE(choice.leave(a));
  EXPECT_EQ(choice.current(), b);
  choice.set_current(c);
  choice.leave(c);
  EXPECT_EQ(choice.current(), b);
  choice.set_current(a21);
  choice.leave(a21);
  EXPECT_EQ(choice.current(), a2);
  EXPECT_FALSE(choice.leave(b));
  tree.clear();
  EXPECT_EQ(choice.current(), kNoNode);
}

TEST_F(TreeChoiceTest, SelectsRangesOverWhatShows) {
  choice.set_mode(SelectMode::kStandard);
  tree.set_flag(a2, NodeFlag::kDisabled, true);
  choice.choose(a1, Choice::kPlain);
  choice.choose(b, Choice::kExtend);
  EXPECT_EQ(selected(), (std::vector<NodeId>{a1, a21, b}));
  choice.choose(a, Choice::kExtend);
  EXPECT_EQ(selected(), (std::vector<NodeId>{a, a1}));
  choice.choose(c, Choice::kToggle);
  EXPECT_EQ(selected(), (std::vector<NodeId>{a, a1, c}));
  choice.choose(b, Choice::kMark);
  EXPECT_EQ(choice.current(), b);
  EXPECT_EQ(tree.selected_count(), 3u);
  // The anchor may be hidden, or gone.
  tree.remove(c);
  EXPECT_TRUE(choice.choose(a1, Choice::kExtend));
  EXPECT_FALSE(choice.choose(a2, Choice::kPlain));
  choice.set_mode(SelectMode::kSingle);
  EXPECT_EQ(selected(), std::vector<NodeId>{a1});
  EXPECT_FALSE(choice.select_all());
}

TEST(TreeKeys, ExpandEnterCheckAndTypeAhead) {
  ListKeySettings settings;
  settings.check_boxes = true;
  settings.mode = SelectMode::kStandard;
  const auto act = [&](int key, int shift = 0) { return tree_command(key, shift, settings).act; };
  EXPECT_EQ(act(39), TreeAct::kInto);
  EXPECT_EQ(act(37), TreeAct::kOut);
  EXPECT_EQ(act(8), TreeAct::kParent);
  EXPECT_EQ(act(107), TreeAct::kExpand);
  EXPECT_EQ(act(187, 1), TreeAct::kExpand);
  EXPECT_EQ(act(187, 0), TreeAct::kNone);  // "=" is a letter to look for
  EXPECT_EQ(act(109), TreeAct::kCollapse);
  EXPECT_EQ(act(106), TreeAct::kExpandAll);
  EXPECT_EQ(act(32), TreeAct::kCheck);
  EXPECT_EQ(act(40, 4), TreeAct::kNone);  // Alt+Down is not the tree's
  EXPECT_EQ(act(65, 2), TreeAct::kSelectAll);
  EXPECT_EQ(act('A'), TreeAct::kNone);
  EXPECT_EQ(tree_command(40, 1, settings).how, Choice::kExtend);
  EXPECT_EQ(tree_command(37, 2, settings).how, Choice::kMark);
  settings.mirrored = true;
  EXPECT_EQ(act(37), TreeAct::kInto);
  settings.check_boxes = false;
  EXPECT_EQ(act(32), TreeAct::kToggle);
}

}  // namespace
}  // namespace kestrelon
