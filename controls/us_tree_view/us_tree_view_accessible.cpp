// The tree as screen readers see it: items are made when they are asked for, numbered by the rows
// that show.
#include "base/decimal.h"
#include "controls/us_tree_view/us_tree_view.h"

namespace kestrelon {

void USTreeView::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_OUTLINE;
  item.state = STATE_SYSTEM_FOCUSABLE;
  if (choice_.mode() != SelectMode::kSingle)
    item.state |= STATE_SYSTEM_MULTISELECTABLE | STATE_SYSTEM_EXTSELECTABLE;
}

bool USTreeView::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ItemControl::accessible_item(child, item);
  auto& self = const_cast<USTreeView&>(*this);  // measuring keeps what it measures
  const int row = static_cast<int>(child) - 1;
  const NodeId id = store_.node_at(row);
  if (id == kNoNode) return false;
  const TreeNode& node = store_.node(id);
  item.role = ROLE_SYSTEM_OUTLINEITEM;
  item.name = std::wstring(store_.text(id));
  item.value = decimal_text(node.level);  // the convention of readers for outlines
  item.description =
      decimal_text(store_.index(id) + 1) + L" de " + decimal_text(store_.child_count(node.parent));
  if (choice_.selectable(id))
    item.state |= STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  else
    item.state |= STATE_SYSTEM_UNAVAILABLE;
  if (node.has(NodeFlag::kSelected)) item.state |= STATE_SYSTEM_SELECTED;
  if (id == choice_.current() && focus_within()) item.state |= STATE_SYSTEM_FOCUSED;
  const bool open = node.has(NodeFlag::kExpanded) && node.children > 0;
  if (node.expandable()) item.state |= open ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED;
  if (has_checks() && !node.has(NodeFlag::kNoCheckBox)) {
    if (node.check == kChecked) item.state |= STATE_SYSTEM_CHECKED;
    if (node.check == kGrayed) item.state |= STATE_SYSTEM_MIXED;
  }
  const int first = self.first_row();
  if (row < first || row >= first + rows().touched_rows(first))
    item.state |= STATE_SYSTEM_OFFSCREEN | STATE_SYSTEM_INVISIBLE;
  else
    item.place = {0, rows().y_of(row, first), width(), rows().y_of(row, first) + row_height_};
  item.default_action = !node.expandable() ? L"Selecionar" : open ? L"Recolher" : L"Expandir";
  return true;
}

long USTreeView::accessible_at(POINT point) const {
  auto& self = const_cast<USTreeView&>(*this);
  return rows().row_at(static_cast<int>(point.y), self.first_row()) + 1;
}

long USTreeView::accessible_focus() const {
  return store_.row_of(choice_.current()) + 1;  // 0, the tree itself, when there is none
}

std::vector<long> USTreeView::accessible_selection() const {
  std::vector<long> out;
  if (store_.selected_count() == 0) return out;
  for (int row = 0; row < store_.row_count(); ++row)
    if (store_.node(store_.node_at(row)).has(NodeFlag::kSelected)) out.push_back(row + 1);
  return out;
}

void USTreeView::accessible_default_action(long child) {
  const NodeId id = store_.node_at(static_cast<int>(child) - 1);
  if (id == kNoNode) return;
  if (store_.node(id).expandable()) return toggle_expanded(id);
  move_mark(id, Choice::kPlain);
}

bool USTreeView::accessible_select(long child, long flags) {
  const NodeId id = store_.node_at(static_cast<int>(child) - 1);
  if (!choice_.selectable(id)) return false;
  const bool add = (flags & SELFLAG_ADDSELECTION) != 0;
  if ((flags & SELFLAG_REMOVESELECTION) != 0 || (add && choice_.mode() != SelectMode::kSingle)) {
    choice_changed(choice_.set_selected(id, add));
    return true;
  }
  const bool takes = (flags & (SELFLAG_TAKESELECTION | SELFLAG_ADDSELECTION)) != 0;
  move_mark(id, takes ? Choice::kPlain : Choice::kMark);
  return true;
}

}  // namespace kestrelon
