#include "controls/us_tree_view/tree_objects.h"

#include "base/counted_win.h"

namespace kestrelon {
namespace {

const TreeNode kNothing;

ComPtr<_cTreeNode> view(const TreeLink& tree, const NodeRef& node) {
  return ObjectRef<TreeNodeObject>::make(tree, node).as<_cTreeNode>();
}

// For Each: the nodes are those of the beginning, their views are made one by one.
class NodeEnumerator final : public Counted<IEnumVARIANT> {
 public:
  NodeEnumerator(TreeLink tree, std::vector<NodeRef> nodes, size_t next = 0)
      : tree_(std::move(tree)), nodes_(std::move(nodes)), next_(next) {}

  STDMETHODIMP Next(ULONG count, VARIANT* out, ULONG* fetched) override {
    if (out == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG done = 0;
    const HRESULT hr = guarded(IID_IEnumVARIANT, [&] {
      for (; done < count && next_ < nodes_.size(); ++done) {
        VariantInit(&out[done]);
        V_VT(&out[done]) = VT_DISPATCH;
        V_DISPATCH(&out[done]) = view(tree_, nodes_[next_++]).detach();
      }
    });
    if (fetched != nullptr) *fetched = done;
    return FAILED(hr) ? hr : done == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const size_t left = nodes_.size() - next_;
    next_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumVARIANT** out) override {
    if (out == nullptr) return E_POINTER;
    return guarded(IID_IEnumVARIANT, [&] {
      ComPtr<IEnumVARIANT>(new NodeEnumerator(tree_, nodes_, next_)).copy_to(out);
    });
  }

 private:
  TreeLink tree_;
  std::vector<NodeRef> nodes_;
  size_t next_;
};

std::vector<NodeRef> refs(const TreeStore& store, const std::vector<NodeId>& nodes) {
  std::vector<NodeRef> out;
  out.reserve(nodes.size());
  for (const NodeId id : nodes) out.push_back(store.ref(id));
  return out;
}

}  // namespace

// --- cTreeNode -----------------------------------------------------------------------------------

void* TreeNodeObject::find_interface(REFIID iid) {
  if (iid == IID_NativeTreeNode) return static_cast<NativeTreeNode*>(this);
  return AutomationObject::find_interface(iid);
}

const TreeNode& TreeNodeObject::node() const {
  const NodeId id = this->id();
  return id == kNoNode ? kNothing : (*tree_)->store().node(id);
}

long TreeNodeObject::handle() const {
  return id() == kNoNode ? 0 : (*tree_)->store().handle(id());
}

std::wstring TreeNodeObject::text() const {
  return id() == kNoNode ? std::wstring() : std::wstring((*tree_)->store().text(id()));
}

void TreeNodeObject::set_text(const std::wstring& text) {
  if (id() == kNoNode) return;
  (*tree_)->store().set_text(id(), text);
  (*tree_)->rows_changed();
}

std::wstring TreeNodeObject::key() const {
  return id() == kNoNode ? std::wstring() : std::wstring((*tree_)->store().key(id()));
}

void TreeNodeObject::set_key(const std::wstring& key) {
  if (id() != kNoNode) (*tree_)->store().set_key(id(), key);
}

Variant TreeNodeObject::tag() const {
  return id() == kNoNode ? Variant() : (*tree_)->tag_of(id());
}

void TreeNodeObject::set_tag(const VARIANT& tag) {
  if (id() != kNoNode) (*tree_)->set_tag_of(id(), tag);
}

void TreeNodeObject::set_data(long data) {
  if (id() != kNoNode) (*tree_)->store().contents(id())->data = static_cast<int32_t>(data);
}

Variant TreeNodeObject::image(int32_t TreeNode::*which) const {
  return id() == kNoNode ? Variant() : (*tree_)->image_value(node().*which);
}

void TreeNodeObject::set_image(int32_t TreeNode::*which, const VARIANT& image) {
  if (id() == kNoNode) return;
  const int32_t number = (*tree_)->image_number(image);
  if (TreeNode* const node = (*tree_)->store().contents(id())) node->*which = number;
  (*tree_)->look_changed();
}

void TreeNodeObject::set_flag(NodeFlag flag, bool value) {
  if (id() != kNoNode && (*tree_)->store().set_flag(id(), flag, value)) (*tree_)->look_changed();
}

void TreeNodeObject::set_checked(long state) {
  if (id() != kNoNode) (*tree_)->set_checked(id(), state);
}

void TreeNodeObject::set_expanded(bool expanded) {
  if (id() != kNoNode) (*tree_)->set_expanded(id(), expanded);
}

void TreeNodeObject::set_selected(bool selected) {
  if (id() != kNoNode) (*tree_)->set_selected(id(), selected);
}

void TreeNodeObject::set_fore_color(OLE_COLOR color) {
  if (id() == kNoNode) return;
  (*tree_)->store().contents(id())->fore_color = color;
  (*tree_)->look_changed();
}

void TreeNodeObject::set_back_color(OLE_COLOR color) {
  if (id() == kNoNode) return;
  (*tree_)->store().contents(id())->back_color = color;
  (*tree_)->look_changed();
}

long TreeNodeObject::index() const {
  return id() == kNoNode ? -1 : (*tree_)->store().index(id());
}

std::wstring TreeNodeObject::full_path() const {
  return id() == kNoNode ? std::wstring()
                         : (*tree_)->store().full_path(id(), (*tree_)->path_separator());
}

ComPtr<_cTreeNode> TreeNodeObject::relative(NodeId (TreeStore::*link)(NodeId) const) const {
  return id() == kNoNode ? nullptr : (*tree_)->view_of(((*tree_)->store().*link)(id()));
}

void TreeNodeObject::remove() {
  if (id() != kNoNode) (*tree_)->remove_node(id());
}

bool TreeNodeObject::move_to(const VARIANT& target, ENUM_TREE_POSITION position) {
  if (id() == kNoNode) return false;
  const bool to_root = V_VT(&target) == VT_EMPTY || V_VT(&target) == VT_NULL ||
                       (V_VT(&target) == VT_BSTR && SysStringLen(V_BSTR(&target)) == 0) ||
                       (V_VT(&target) == VT_DISPATCH && V_DISPATCH(&target) == nullptr);
  const NodeId to = (*tree_)->node_named(target);
  return (to != kNoNode || to_root) && (*tree_)->move_node(id(), to, position);
}

void TreeNodeObject::ensure_visible() {
  if (id() != kNoNode) (*tree_)->show_node(id());
}

void TreeNodeObject::sort(GRID_SORT_TYPE type) {
  if (id() != kNoNode) (*tree_)->sort_node(id(), type);
}

void TreeNodeObject::start_edit() {
  if (id() != kNoNode) (*tree_)->edit_node(id());
}

// --- cTreeNodes ----------------------------------------------------------------------------------

ComPtr<_cTreeNode> TreeNodesObject::item(const VARIANT& index) const {
  return *tree_ ? (*tree_)->view_of((*tree_)->node_named(index)) : nullptr;
}

ComPtr<IUnknown> TreeNodesObject::xcom_i_enum() const {
  std::vector<NodeRef> nodes;
  if (*tree_) {
    const TreeStore& store = (*tree_)->store();
    nodes = refs(store, store.all_where([](const TreeNode&) { return true; }));
  }
  return ComPtr<IUnknown>(new NodeEnumerator(tree_, std::move(nodes)));
}

void TreeNodesObject::remove(const VARIANT& index) {
  if (!*tree_) return;
  if (const NodeId id = (*tree_)->node_named(index); id != kNoNode) (*tree_)->remove_node(id);
}

void TreeNodesObject::clear() {
  if (*tree_) (*tree_)->clear_nodes();
}

bool TreeNodesObject::is_key_assigned(const std::wstring& key) const {
  return *tree_ && (*tree_)->store().find_key(key) != kNoNode;
}

// --- cTreeNodeList -------------------------------------------------------------------------------

ComPtr<_cTreeNodeList> node_list(const TreeLink& tree, const std::vector<NodeId>& nodes) {
  return ObjectRef<TreeNodeListObject>::make(tree, refs((*tree)->store(), nodes))
      .as<_cTreeNodeList>();
}

ComPtr<_cTreeNode> TreeNodeListObject::item(long index) const {
  if (index < 0 || index >= count()) return nullptr;
  return view(tree_, nodes_[static_cast<size_t>(index)]);
}

ComPtr<IUnknown> TreeNodeListObject::xcom_i_enum() const {
  return ComPtr<IUnknown>(new NodeEnumerator(tree_, nodes_));
}

}  // namespace kestrelon
