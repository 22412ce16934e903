// The automation classes cTreeNode, cTreeNodes and cTreeNodeList: views of a tree, made on demand.
// A view of a node, or of a tree, that is gone reads empty and changes nothing.
#pragma once

#include <vector>

#include "base/object_ref_win.h"
#include "controls/us_tree_view/tree_access.h"
#include "us_tree_view_glue.h"

namespace kestrelon {

/// Asks an object for the node it views; for objects of our own.
class NativeTreeNode : public IUnknown {
 public:
  /// The node if the object views one of this tree.
  virtual NodeRef node_in(const TreeAccess& tree) const = 0;

 protected:
  ~NativeTreeNode() = default;
};

// {B5C3F1A0-7D42-4E19-9C0B-2F6A51D0437F}
inline constexpr IID IID_NativeTreeNode = {
    0xB5C3F1A0, 0x7D42, 0x4E19, {0x9C, 0x0B, 0x2F, 0x6A, 0x51, 0xD0, 0x43, 0x7F}};

class TreeNodeObject final : public cTreeNodeGlue<TreeNodeObject, AutomationObject>,
                             public NativeTreeNode {
 public:
  TreeNodeObject(TreeLink tree, NodeRef node) : tree_(std::move(tree)), node_(node) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override { return outer_query(iid, out); }
  STDMETHODIMP_(ULONG) AddRef() override { return outer_add_ref(); }
  STDMETHODIMP_(ULONG) Release() override { return outer_release(); }
  NodeRef node_in(const TreeAccess& tree) const override {
    return *tree_ == &tree ? node_ : NodeRef{};
  }

  long handle() const;
  std::wstring text() const;
  void set_text(const std::wstring& text);
  std::wstring key() const;
  void set_key(const std::wstring& key);
  Variant tag() const;
  void set_tag(const VARIANT& tag);
  long data() const { return node().data; }
  void set_data(long data);
  Variant image() const { return image(&TreeNode::image); }
  void set_image(const VARIANT& image) { set_image(&TreeNode::image, image); }
  Variant image_selected() const { return image(&TreeNode::image_selected); }
  void set_image_selected(const VARIANT& image) { set_image(&TreeNode::image_selected, image); }
  Variant image_expanded() const { return image(&TreeNode::image_expanded); }
  void set_image_expanded(const VARIANT& image) { set_image(&TreeNode::image_expanded, image); }
  long checked() const { return node().check; }
  void set_checked(long state);
  bool check_visible() const { return id() != kNoNode && !node().has(NodeFlag::kNoCheckBox); }
  void set_check_visible(bool visible) { set_flag(NodeFlag::kNoCheckBox, !visible); }
  bool expanded() const { return node().has(NodeFlag::kExpanded); }
  void set_expanded(bool expanded);
  bool has_children() const { return node().expandable(); }
  void set_has_children(bool has) { set_flag(NodeFlag::kMayHaveChildren, has); }
  bool selected() const { return node().has(NodeFlag::kSelected); }
  void set_selected(bool selected);
  bool enabled() const { return id() != kNoNode && !node().has(NodeFlag::kDisabled); }
  void set_enabled(bool enabled) { set_flag(NodeFlag::kDisabled, !enabled); }
  bool bold() const { return node().has(NodeFlag::kBold); }
  void set_bold(bool bold) { set_flag(NodeFlag::kBold, bold); }
  OLE_COLOR fore_color() const { return node().fore_color; }
  void set_fore_color(OLE_COLOR color);
  OLE_COLOR back_color() const { return node().back_color; }
  void set_back_color(OLE_COLOR color);
  long level() const { return id() == kNoNode ? 0 : node().level; }
  long index() const;
  std::wstring full_path() const;
  ComPtr<_cTreeNode> parent() const { return relative(&TreeStore::parent); }
  ComPtr<_cTreeNode> first_child() const { return relative(&TreeStore::first_child); }
  ComPtr<_cTreeNode> last_child() const { return relative(&TreeStore::last_child); }
  ComPtr<_cTreeNode> next_node() const { return relative(&TreeStore::next_sibling); }
  ComPtr<_cTreeNode> previous_node() const { return relative(&TreeStore::previous_sibling); }
  long child_count() const { return static_cast<long>(node().children); }
  void remove();
  bool move_to(const VARIANT& target, ENUM_TREE_POSITION position);
  void ensure_visible();
  void sort(GRID_SORT_TYPE type);
  void start_edit();

 protected:
  void* find_interface(REFIID iid) override;

 private:
  NodeId id() const { return *tree_ ? (*tree_)->store().find(node_) : kNoNode; }
  const TreeNode& node() const;
  ComPtr<_cTreeNode> relative(NodeId (TreeStore::*link)(NodeId) const) const;
  Variant image(int32_t TreeNode::*which) const;
  void set_image(int32_t TreeNode::*which, const VARIANT& image);
  void set_flag(NodeFlag flag, bool value);

  TreeLink tree_;
  NodeRef node_;
};

class TreeNodesObject final : public cTreeNodesGlue<TreeNodesObject, AutomationObject> {
 public:
  explicit TreeNodesObject(TreeLink tree) : tree_(std::move(tree)) {}

  ComPtr<_cTreeNode> item(const VARIANT& index) const;
  ComPtr<IUnknown> xcom_i_enum() const;
  long count() const { return *tree_ ? static_cast<long>((*tree_)->store().count()) : 0; }
  void remove(const VARIANT& index);
  void clear();
  bool is_key_assigned(const std::wstring& key) const;

 private:
  TreeLink tree_;
};

class TreeNodeListObject final : public cTreeNodeListGlue<TreeNodeListObject, AutomationObject> {
 public:
  TreeNodeListObject(TreeLink tree, std::vector<NodeRef> nodes)
      : tree_(std::move(tree)), nodes_(std::move(nodes)) {}

  ComPtr<_cTreeNode> item(long index) const;
  ComPtr<IUnknown> xcom_i_enum() const;
  long count() const { return static_cast<long>(nodes_.size()); }

 private:
  TreeLink tree_;
  std::vector<NodeRef> nodes_;
};

/// A list as it is now; what happens to its nodes later, their views tell.
ComPtr<_cTreeNodeList> node_list(const TreeLink& tree, const std::vector<NodeId>& nodes);

}  // namespace kestrelon
