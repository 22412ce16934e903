// The list as screen readers see it: items are made when they are asked for, numbered by the rows
// that show.
#include "controls/us_list_box/us_list_box.h"

namespace kestrelon {

void USListBox::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_LIST;
  item.state = STATE_SYSTEM_FOCUSABLE;
  if (model_.mode() != SelectMode::kSingle)
    item.state |= STATE_SYSTEM_MULTISELECTABLE | STATE_SYSTEM_EXTSELECTABLE;
}

bool USListBox::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ItemControl::accessible_item(child, item);
  auto& self = const_cast<USListBox&>(*this);  // measuring keeps what it measures
  const int row = static_cast<int>(child) - 1;
  const int index = model_.index_of_row(row);
  if (index < 0) return false;
  const ItemLook look = look_of(index, {});
  item.role = ROLE_SYSTEM_LISTITEM;
  item.name = self.item_text(index);
  item.description = std::to_wstring(child) + L" de " + std::to_wstring(model_.row_count());
  if (model_.selectable(index)) item.state |= STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  if (look.selected) item.state |= STATE_SYSTEM_SELECTED;
  if (index == model_.current() && focus_within()) item.state |= STATE_SYSTEM_FOCUSED;
  if (look.tick == TickBox::kTicked) item.state |= STATE_SYSTEM_CHECKED;
  if (look.disabled) item.state |= STATE_SYSTEM_UNAVAILABLE;
  const int first = self.first_row();
  if (row < first || row >= first + rows().touched_rows(first))
    item.state |= STATE_SYSTEM_OFFSCREEN | STATE_SYSTEM_INVISIBLE;
  else
    item.place = {0, rows().y_of(row, first), width(), rows().y_of(row, first) + height(row)};
  item.default_action = CheckBoxes.get() ? L"Marcar" : L"Selecionar";
  if (look.tick == TickBox::kTicked) item.default_action = L"Desmarcar";
  return true;
}

long USListBox::accessible_at(POINT point) const {
  const int row =
      rows().row_at(static_cast<int>(point.y), const_cast<USListBox*>(this)->first_row());
  return row + 1;
}

long USListBox::accessible_focus() const {
  return model_.shows(model_.current()) ? model_.row_of_index(model_.current()) + 1
                                        : static_cast<long>(CHILDID_SELF);
}

std::vector<long> USListBox::accessible_selection() const {
  std::vector<long> out;
  for (int row = 0; row < model_.row_count() && out.size() < size_t(model_.selected_count()); ++row)
    if (model_.selected(model_.index_of_row(row))) out.push_back(row + 1);
  return out;
}

void USListBox::accessible_default_action(long child) {
  const int index = model_.index_of_row(static_cast<int>(child) - 1);
  if (index < 0) return;
  if (CheckBoxes.get()) return toggle_check(index);
  move_mark(index, Choice::kPlain);
}

bool USListBox::accessible_select(long child, long flags) {
  const int index = model_.index_of_row(static_cast<int>(child) - 1);
  if (!model_.selectable(index)) return false;
  const bool add = (flags & SELFLAG_ADDSELECTION) != 0;
  if ((flags & SELFLAG_REMOVESELECTION) != 0 || (add && model_.mode() != SelectMode::kSingle)) {
    choice_changed(model_.set_selected(index, add));
    return true;
  }
  const bool takes = (flags & (SELFLAG_TAKESELECTION | SELFLAG_ADDSELECTION)) != 0;
  move_mark(index, takes ? Choice::kPlain : Choice::kMark);
  return true;
}

}  // namespace kestrelon
