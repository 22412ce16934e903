// What the user does to nodes. Every event may remove the node, clear the tree or end the control:
// nothing is kept across one but the node's reference.
#include "controls/us_tree_view/us_tree_view.h"

namespace kestrelon {

void USTreeView::expand_by_user(NodeId id) {
  if (!store_.has(id) || store_.node(id).has(NodeFlag::kExpanded) || !store_.node(id).expandable())
    return;
  const Hold hold(*this);
  const NodeRef node = store_.ref(id);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  tell(id, [&](IDispatch*& view) { raise_before_expand(view, cancel); });
  id = store_.find(node);
  if (id == kNoNode || cancel != VARIANT_FALSE) return;
  if (store_.child_count(id) == 0) {
    // The program had none to add: there is nothing to expand.
    store_.set_flag(id, NodeFlag::kMayHaveChildren, false);
    return redraw();
  }
  if (SingleExpand.get()) {
    const std::vector<NodeId> open = store_.all_where([&](const TreeNode& each) {
      return each.parent == store_.parent(id) && each.has(NodeFlag::kExpanded);
    });
    std::vector<NodeRef> siblings;
    for (const NodeId each : open) siblings.push_back(store_.ref(each));
    for (const NodeRef& each : siblings) collapse_by_user(store_.find(each));
    id = store_.find(node);
    if (id == kNoNode) return;
  }
  if (!store_.expand(id, true)) return;
  rows_changed();
  tell_readers(EVENT_OBJECT_STATECHANGE, store_.row_of(id) + 1);
  tell(id, [&](IDispatch*& view) { raise_after_expand(view); });
}

void USTreeView::collapse_by_user(NodeId id) {
  if (!store_.has(id) || !store_.node(id).has(NodeFlag::kExpanded)) return;
  const Hold hold(*this);
  const NodeRef node = store_.ref(id);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  tell(id, [&](IDispatch*& view) { raise_before_collapse(view, cancel); });
  id = store_.find(node);
  if (id == kNoNode || cancel != VARIANT_FALSE) return;
  collapse_quietly(id);
  id = store_.find(node);
  if (id == kNoNode) return;
  tell_readers(EVENT_OBJECT_STATECHANGE, store_.row_of(id) + 1);
  tell(id, [&](IDispatch*& view) { raise_after_collapse(view); });
}

void USTreeView::toggle_expanded(NodeId id) {
  const TreeNode& node = store_.node(id);
  node.has(NodeFlag::kExpanded) && node.children > 0 ? collapse_by_user(id) : expand_by_user(id);
}

void USTreeView::toggle_check(NodeId id) {
  if (!has_checks() || !choice_.selectable(id) || store_.node(id).has(NodeFlag::kNoCheckBox))
    return;
  const Hold hold(*this);
  store_.set_check(id, store_.node(id).check == kChecked ? kUnchecked : kChecked);
  redraw();
  tell_readers(EVENT_OBJECT_STATECHANGE, store_.row_of(id) + 1);
  tell(id, [&](IDispatch*& view) { raise_node_checked(view); });
}

}  // namespace kestrelon
