// Check marks of two and three states.
#include "lists/tree/tree_store.h"

namespace kestrelon {

void TreeStore::count_check(NodeId parent, uint8_t state, int by) {
  TreeNode& above = nodes_[parent];
  const auto step = static_cast<uint32_t>(by);
  if (state == kChecked) above.checked_children += step;
  if (state == kGrayed) above.grayed_children += step;
}

bool TreeStore::put_check(NodeId id, uint8_t state) {
  TreeNode& of = nodes_[id];
  if (of.check == state) return false;
  count_check(of.parent, of.check, -1);
  count_check(of.parent, state, 1);
  of.check = state;
  return true;
}

bool TreeStore::set_check(NodeId id, uint8_t state) {
  if (!has(id) || state > kGrayed) return false;
  if (!three_states_) return put_check(id, state);
  const TreeNode& of = nodes_[id];
  const uint32_t checked = state == kChecked ? of.children : 0u;
  const bool whole =
      state == kGrayed || (of.checked_children == checked && of.grayed_children == 0);
  if (of.check == state && whole) return false;
  if (state == kGrayed)
    put_check(id, state);
  else
    check_branch(id, state);
  parents_follow(of.parent);
  return true;
}

void TreeStore::check_branch(NodeId id, uint8_t state) {
  put_check(id, state);
  for (NodeId at = id; at != kNoNode;) {
    TreeNode& of = nodes_[at];
    of.check = state;
    of.checked_children = state == kChecked ? of.children : 0u;
    of.grayed_children = 0;
    at = of.first != kNoNode ? of.first : behind_branch(at, id);
  }
}

uint8_t TreeStore::check_of_children(const TreeNode& parent) const {
  if (parent.children == 0) return parent.check == kGrayed ? uint8_t{kUnchecked} : parent.check;
  if (parent.checked_children == parent.children) return kChecked;
  return parent.checked_children + parent.grayed_children == 0 ? kUnchecked : kGrayed;
}

void TreeStore::parents_follow(NodeId parent) {
  if (!three_states_) return;
  while (parent != kNoNode && put_check(parent, check_of_children(nodes_[parent])))
    parent = nodes_[parent].parent;
}

void TreeStore::set_three_states(bool on) {
  if (three_states_ == on) return;
  three_states_ = on;
  if (!on) return;
  const auto all = all_where([](const TreeNode&) { return true; });
  for (size_t i = all.size(); i-- > 0;)  // children before their parents
    put_check(all[i], check_of_children(nodes_[all[i]]));
}

}  // namespace kestrelon
