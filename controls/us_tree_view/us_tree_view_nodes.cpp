// What a program does to nodes.
#include "controls/items/text_lines.h"
#include "controls/us_tree_view/us_tree_view.h"
#include "lists/tree/tree_fill.h"
#include "services/record_rows_win.h"

namespace kestrelon {
namespace {

// An argument left out, Nothing, Empty, 0 or "": the root.
bool names_root(const VARIANT& name) {
  switch (V_VT(&name)) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_ERROR:
      return true;
    case VT_BSTR:
      return SysStringLen(V_BSTR(&name)) == 0;
    case VT_DISPATCH:
      return V_DISPATCH(&name) == nullptr;
    default:
      return false;
  }
}

VARIANT as_variant(IDispatch* object) {
  VARIANT out;
  V_VT(&out) = VT_DISPATCH;
  V_DISPATCH(&out) = object;
  return out;
}

}  // namespace

ComPtr<_cTreeNode> USTreeView::view_of(NodeId id) {
  if (!store_.has(id)) return nullptr;
  return ObjectRef<TreeNodeObject>::make(link_, store_.ref(id)).as<_cTreeNode>();
}

NodeId USTreeView::node_named(const VARIANT& given) {
  Variant name;
  if (FAILED(VariantCopyInd(&name, const_cast<VARIANT*>(&given)))) return kNoNode;
  if (V_VT(&name) == VT_BSTR) return store_.find_key(to_wstring(V_BSTR(&name)));
  if (V_VT(&name) == VT_DISPATCH || V_VT(&name) == VT_UNKNOWN) {
    ComPtr<NativeTreeNode> node;
    if (V_UNKNOWN(&name) == nullptr ||
        FAILED(V_UNKNOWN(&name)->QueryInterface(IID_NativeTreeNode, node.put_void())))
      return kNoNode;
    return store_.find(node->node_in(*this));
  }
  return name.change(VT_I4) ? store_.find_handle(V_I4(&name)) : kNoNode;
}

ComPtr<_cTreeNodes> USTreeView::nodes() {
  return ObjectRef<TreeNodesObject>::make(link_).as<_cTreeNodes>();
}

ComPtr<_cTreeNode> USTreeView::add_node(const std::wstring& text, const std::wstring& key,
                                        const VARIANT& node, ENUM_TREE_POSITION position,
                                        const VARIANT& image, const VARIANT& image_selected,
                                        bool has_children) {
  const NodeId target = node_named(node);
  if (target == kNoNode && !names_root(node)) return nullptr;
  const NodeId id = store_.add(text, key, target, static_cast<NodePosition>(position));
  if (id == kNoNode) return nullptr;
  TreeNode& added = *store_.contents(id);
  added.image = images().number(image);
  added.image_selected = images().number(image_selected);
  if (has_children) store_.set_flag(id, NodeFlag::kMayHaveChildren, true);
  rows_changed();
  return view_of(id);
}

void USTreeView::remove_node(NodeId id) {
  if (!store_.has(id)) return;
  const bool selected = store_.selected_count() > 0;
  const bool changed = choice_.leave(id);
  const uint32_t before = store_.selected_count();
  store_.remove(id);
  drop_released();
  if (editing() && store_.find(edited_) == kNoNode) drop_edit();
  rows_changed();
  choice_changed(changed || (selected && store_.selected_count() != before));
}

void USTreeView::clear_nodes() {
  drop_edit();
  end_drag(false);
  const bool changed = choice_.current() != kNoNode || store_.selected_count() > 0;
  store_.clear();
  drop_released();
  top_ = left_ = widest_ = 0;
  rows_changed();
  choice_changed(changed);
}

bool USTreeView::move_node(NodeId id, NodeId target, long position) {
  if (!store_.move(id, target, static_cast<NodePosition>(position))) return false;
  rows_changed();
  return true;
}

void USTreeView::set_selected_node(_cTreeNode* node) {
  const NodeId id = node_named(as_variant(node));
  if (id != kNoNode) {
    store_.reveal(id);
    show_row_of(id, false);
  }
  choice_changed(choice_.set_current(id));
}

void USTreeView::set_drop_node(_cTreeNode* node) {
  drop_ = store_.ref(node_named(as_variant(node)));
  drop_position_ = NodePosition::kLastChild;
  drop_allowed_ = true;
  redraw();
}

void USTreeView::set_top_node(_cTreeNode* node) {
  const NodeId id = node_named(as_variant(node));
  if (id == kNoNode) return;
  store_.reveal(id);
  relayout();
  scroll_to(store_.row_of(id), false);
}

ComPtr<_cTreeNodeList> USTreeView::selected_nodes() {
  return node_list(
      link_, store_.all_where([](const TreeNode& node) { return node.has(NodeFlag::kSelected); }));
}

ComPtr<_cTreeNodeList> USTreeView::checked_nodes() {
  return node_list(link_,
                   store_.all_where([](const TreeNode& node) { return node.check == kChecked; }));
}

std::wstring USTreeView::expanded_keys() {
  std::wstring keys;
  for (NodeId id = store_.next(); id != kNoNode; id = store_.next(id)) {
    const TreeNode& node = store_.node(id);
    if (node.key_length == 0 || node.children == 0 || !node.has(NodeFlag::kExpanded)) continue;
    if (!keys.empty()) keys += L"\r\n";
    keys += store_.key(id);
  }
  return keys;
}

void USTreeView::set_expanded_keys(const std::wstring& keys) {
  store_.expand_all(kNoNode, false);
  for (const std::wstring& key : texts_in(Variant(std::wstring_view(keys))))
    store_.expand(store_.find_key(key), true);
  filled();
}

void USTreeView::expand_all(const VARIANT& node) {
  const NodeId id = node_named(node);
  if (id == kNoNode && !names_root(node)) return;
  store_.expand_all(id, true);
  rows_changed();
}

void USTreeView::collapse_all(const VARIANT& node) {
  const NodeId id = node_named(node);
  if (id == kNoNode && !names_root(node)) return;
  store_.expand_all(id, false);
  filled();
}

// After rows were hidden wholesale: what was chosen below is chosen in what still shows.
void USTreeView::filled() {
  bool changed = false;
  const NodeId mark = choice_.current();
  NodeId top = mark;
  for (NodeId up = store_.parent(mark); up != kNoNode; up = store_.parent(up))
    if (!store_.node(up).has(NodeFlag::kExpanded)) top = up;
  if (top != mark) changed = choice_.collapsed(top);
  rows_changed();
  choice_changed(changed);
}

ComPtr<_cTreeNode> USTreeView::find_node(const std::wstring& sought, GRID_SEARCH_MODE mode,
                                         bool match_case, const VARIANT& start) {
  const NodeId after = node_named(start);
  if (after == kNoNode && !names_root(start)) return nullptr;
  return view_of(
      store_.find_text(TextMatcher(sought, static_cast<SearchMode>(mode), match_case), after));
}

ComPtr<_cTreeNode> USTreeView::hit_test(float x, float y) {
  if (x < 0 || y < 0 || x >= static_cast<float>(width()) || y >= static_cast<float>(height()))
    return nullptr;
  return view_of(node_at_point(static_cast<int>(y)));
}

long USTreeView::fill_tree_from_query(IDispatch* records, const std::wstring& key,
                                      const std::wstring& parent, const std::wstring& text,
                                      const std::wstring& image) {
  std::vector<TreeRow> taken;
  // Its objects are the program's: the tree is touched when they have had their say.
  const bool read = read_records(records, {key, parent, text, image}, [&](RecordFields& fields) {
    const int32_t number = image.empty() ? 0 : images().number(fields.value(3));
    taken.push_back({fields.text(0), fields.text(1), fields.text(2), number});
  });
  if (!read || key.empty() || text.empty()) return -1;
  clear_nodes();
  const long count = fill_by_parents(store_, taken);
  rows_changed();
  return count;
}

long USTreeView::fill_tree_from_codes(IDispatch* records, const std::wstring& code,
                                      const std::wstring& text, const std::wstring& separator) {
  std::vector<TreeRow> taken;
  const bool read = read_records(records, {code, text}, [&](RecordFields& fields) {
    taken.push_back({fields.text(0), L"", fields.text(1), 0});
  });
  if (!read || code.empty() || text.empty()) return -1;
  clear_nodes();
  const long count = fill_by_codes(store_, taken, separator);
  rows_changed();
  return count;
}

// --- single nodes --------------------------------------------------------------------------------

Variant USTreeView::tag_of(NodeId id) const {
  const auto kept = tags_.find(id);
  return kept == tags_.end() ? Variant() : kept->second;
}

void USTreeView::set_tag_of(NodeId id, const VARIANT& tag) {
  if (!store_.has(id)) return;
  Variant former;  // released last: its object may do anything
  Variant copy;
  if (FAILED(VariantCopyInd(&copy, const_cast<VARIANT*>(&tag)))) return;
  store_.set_flag(id, NodeFlag::kTagged, true);
  former = std::exchange(tags_[id], std::move(copy));
}

void USTreeView::set_checked(NodeId id, long state) {
  if (state < 0 || state > kGrayed || !store_.set_check(id, static_cast<uint8_t>(state))) return;
  redraw();
  tell_readers(EVENT_OBJECT_STATECHANGE, store_.row_of(id) + 1);
}

void USTreeView::set_expanded(NodeId id, bool expanded) {
  if (!expanded) return collapse_quietly(id);
  // A branch that is not loaded yet is loaded by the program's handler, as for the user.
  const TreeNode& node = store_.node(id);
  if (node.children == 0 && node.has(NodeFlag::kMayHaveChildren)) return expand_by_user(id);
  if (store_.expand(id, true)) rows_changed();
}

void USTreeView::collapse_quietly(NodeId id) {
  if (!store_.expand(id, false)) return;
  const bool changed = choice_.collapsed(id);
  rows_changed();
  choice_changed(changed);
}

void USTreeView::set_selected(NodeId id, bool selected) {
  choice_changed(choice_.set_selected(id, selected));
}

void USTreeView::show_node(NodeId id) {
  store_.reveal(id);
  relayout();
  show_row_of(id, false);
}

void USTreeView::sort_node(NodeId id, GRID_SORT_TYPE type) {
  if (type != Sort_Ascending && type != Sort_Descending) return;
  store_.sort_children(id, type == Sort_Descending);
  rows_changed();
}

}  // namespace kestrelon
