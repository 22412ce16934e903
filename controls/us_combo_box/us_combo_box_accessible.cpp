// What screen readers are told: a field with a value, and while it is open its list.
#include "base/decimal.h"
#include "controls/us_combo_box/us_combo_box.h"

namespace kestrelon {

// --- the field -----------------------------------------------------------------------------------

void USComboBox::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_COMBOBOX;
  item.state = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_HASPOPUP;
  item.state |= dropped_down() ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED;
  if (Locked.get()) item.state |= STATE_SYSTEM_READONLY;
  item.value = shown_text();
  item.default_action = dropped_down() ? L"Fechar" : L"Abrir";
}

bool USComboBox::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ItemControl::accessible_item(child, item);
  if (child != 1 || !dropped_down()) return false;
  item.role = ROLE_SYSTEM_LIST;
  RECT place{};
  GetWindowRect(popup_.hwnd(), &place);
  MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&place), 2);
  item.place = place;
  return true;
}

ComPtr<IDispatch> USComboBox::accessible_object(long child) const {
  if (child != 1 || !dropped_down()) return nullptr;
  return ComPtr<IDispatch>(const_cast<ComboListAccess&>(list_access_).object());
}

void USComboBox::accessible_default_action(long child) {
  if (child == CHILDID_SELF) set_dropped_down(!dropped_down());
}

bool USComboBox::accessible_set_value(long child, const std::wstring& text) {
  if (child != CHILDID_SELF || Locked.get() || (!editable() && find_text(text) < 0)) return false;
  set_text(text);
  return true;
}

void USComboBox::tell_choice() {
  const int row = model_.shows(model_.current()) ? model_.row_of_index(model_.current()) : -1;
  if (!dropped_down() || row < 0) return;
  for (const DWORD event : {EVENT_OBJECT_FOCUS, EVENT_OBJECT_SELECTION})
    if (IsWinEventHookInstalled(event)) NotifyWinEvent(event, popup_.hwnd(), OBJID_CLIENT, row + 1);
}

// --- the list ------------------------------------------------------------------------------------

LRESULT ComboListAccess::answer(WPARAM wparam, LPARAM lparam) {
  if (static_cast<DWORD>(lparam) != static_cast<DWORD>(OBJID_CLIENT)) return 0;
  return accessible_result(wparam, object());
}

IAccessible* ComboListAccess::object() {
  if (!object_) object_ = ComPtr<AccessibleObject>(new AccessibleObject(*this));
  return object_.get();
}

void ComboListAccess::detach() {
  if (object_) object_->detach();
  object_.reset();
}

HWND ComboListAccess::accessible_window(RECT& place) const {
  GetClientRect(combo_.popup_.hwnd(), &place);
  return combo_.popup_.hwnd();
}

IUnknown* ComboListAccess::accessible_life() {
  return combo_.own_unknown();
}

long ComboListAccess::accessible_count() const {
  return combo_.model_.row_count();
}

bool ComboListAccess::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) {
    item.role = ROLE_SYSTEM_LIST;
    return true;
  }
  const int row = static_cast<int>(child) - 1;
  const int index = combo_.model_.index_of_row(row);
  if (index < 0) return false;
  item.role = ROLE_SYSTEM_LISTITEM;
  item.name = combo_.model_.store().text(index);
  item.description = decimal_text(child) + L" de " + decimal_text(int64_t{accessible_count()});
  if (combo_.model_.selectable(index))
    item.state |= STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  else
    item.state |= STATE_SYSTEM_UNAVAILABLE;
  if (index == combo_.model_.current()) item.state |= STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED;
  const bool checked = combo_.model_.store().has_flag(index, ItemFlag::kChecked);
  if (combo_.CheckBoxes.get() && checked) item.state |= STATE_SYSTEM_CHECKED;
  const int top = combo_.list_rows().limit_top(combo_.top_);
  if (row < top || row >= top + combo_.list_rows().touched_rows(top)) {
    item.state |= STATE_SYSTEM_OFFSCREEN | STATE_SYSTEM_INVISIBLE;
  } else {
    const PixelRect place = combo_.list_row(row);
    item.place = {place.left, place.top, place.right, place.bottom};
  }
  item.default_action = L"Escolher";
  return true;
}

long ComboListAccess::accessible_at(POINT point) const {
  const int y = static_cast<int>(point.y) - combo_.list_row(combo_.top_).top;
  return combo_.list_rows().row_at(y, combo_.top_) + 1;
}

long ComboListAccess::accessible_focus() const {
  const int current = combo_.model_.current();
  return combo_.model_.shows(current) ? combo_.model_.row_of_index(current) + 1 : 0;
}

std::vector<long> ComboListAccess::accessible_selection() const {
  const long current = accessible_focus();
  return current > 0 ? std::vector<long>{current} : std::vector<long>{};
}

void ComboListAccess::accessible_default_action(long child) {
  const int index = combo_.model_.index_of_row(static_cast<int>(child) - 1);
  if (!combo_.model_.selectable(index)) return;
  combo_.step(index);
  combo_.close_list(true);
}

bool ComboListAccess::accessible_select(long child, long) {
  const int index = combo_.model_.index_of_row(static_cast<int>(child) - 1);
  if (!combo_.model_.selectable(index)) return false;
  combo_.step(index);
  return true;
}

}  // namespace kestrelon
