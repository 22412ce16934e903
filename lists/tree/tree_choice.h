// Which node of a tree is current and which are selected. Stays with its nodes, whatever is added,
// removed, moved or collapsed.
#pragma once

#include "lists/list_keys.h"
#include "lists/tree/tree_store.h"

namespace kestrelon {

/// Members that change the current node or the selection tell it by true. What is no node changes
/// nothing.
class TreeChoice {
 public:
  /// The store must outlive this.
  explicit TreeChoice(TreeStore& store) : store_(store) {}

  SelectMode mode() const { return mode_; }
  /// Keeps of a selection what the mode allows.
  bool set_mode(SelectMode mode);
  NodeId current() const { return store_.find(current_); }
  bool selectable(NodeId id) const {
    return store_.has(id) && !store_.node(id).has(NodeFlag::kDisabled);
  }
  /// As a program does it: alone selected; kNoNode selects nothing.
  bool set_current(NodeId id);
  bool set_selected(NodeId id, bool selected);
  bool select_all();
  /// As a user does it.
  bool choose(NodeId id, Choice how);

  /// To be called before a node goes with all below it: the mark goes to a neighbour.
  bool leave(NodeId id);
  /// To be called when a node has been collapsed: what was chosen below it is chosen in it.
  bool collapsed(NodeId id);

 private:
  bool select_alone(NodeId id);
  void select_rows(NodeId from, NodeId to);

  TreeStore& store_;
  SelectMode mode_ = SelectMode::kSingle;
  NodeRef current_;
  NodeRef anchor_;  // where a range begins
};

}  // namespace kestrelon
