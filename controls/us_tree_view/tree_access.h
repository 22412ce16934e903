// What the objects that a program holds (nodes, collections) need of their tree.
#pragma once

#include <memory>

#include "base/com_win.h"
#include "contract/us_tree_view.h"
#include "lists/tree/tree_store.h"

namespace kestrelon {

class TreeAccess {
 public:
  virtual TreeStore& store() = 0;
  virtual ComPtr<_cTreeNode> view_of(NodeId id) = 0;
  /// The node that a program names: a view, a key (text) or a handle (number).
  virtual NodeId node_named(const VARIANT& name) = 0;

  virtual std::wstring path_separator() const = 0;
  virtual Variant tag_of(NodeId id) const = 0;
  virtual void set_tag_of(NodeId id, const VARIANT& tag) = 0;
  virtual Variant image_value(int32_t number) const = 0;
  virtual int32_t image_number(const VARIANT& image) = 0;

  /// A node looks different, or rows have come, gone or changed places.
  virtual void look_changed() = 0;
  virtual void rows_changed() = 0;
  virtual void set_checked(NodeId id, long state) = 0;
  virtual void set_expanded(NodeId id, bool expanded) = 0;
  virtual void set_selected(NodeId id, bool selected) = 0;
  virtual void remove_node(NodeId id) = 0;
  virtual void clear_nodes() = 0;
  virtual bool move_node(NodeId id, NodeId target, long position) = 0;
  virtual void show_node(NodeId id) = 0;
  virtual void sort_node(NodeId id, GRID_SORT_TYPE type) = 0;
  virtual void edit_node(NodeId id) = 0;

 protected:
  ~TreeAccess() = default;
};

/// Shared by a tree and all its objects; holds null once the tree is gone.
using TreeLink = std::shared_ptr<TreeAccess*>;

}  // namespace kestrelon
