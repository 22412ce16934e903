// Editing in place: the system's editor over the text of an item. It belongs to the item's record,
// whatever is inserted, sorted or removed meanwhile.
#include "controls/us_list_box/us_list_box.h"
#include "frame/translate_color.h"

namespace kestrelon {

void USListBox::start_edit(long index) {
  const Hold hold(*this);
  if (index < 0) index = model_.current();
  const int item = static_cast<int>(index);
  if (!AllowEdit.get() || model_.is_virtual() || window() == nullptr) return;
  if (editing() && !take_edit()) return;
  if (!model_.shows(item) || !model_.selectable(item)) return;
  edit_slot_ = model_.store().slot(item);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_before_edit(index, cancel);
  // A handler may have removed or hidden the item.
  const int now = model_.store().index_of_slot(edit_slot_);
  if (cancel != VARIANT_FALSE || window() == nullptr || editing() || !model_.shows(now)) return;
  show_item(now, false);
  if (!edit_.create(ES_AUTOHSCROLL | WS_BORDER, RECT{})) return;
  edit_.set_font(plain_font());
  edit_.set_limit(static_cast<int>(kMaxItemText));
  edit_.set_colors(TranslateColor(ForeColor.get()), TranslateColor(BackNormal.get()));
  edit_.set_text(model_.store().text(now));
  place_editor();
  edit_.show(true);
  SetFocus(edit_.hwnd());
  edit_.select_all();
}

void USListBox::place_editor() {
  if (!editing()) return;
  const int index = model_.store().index_of_slot(edit_slot_);
  if (!model_.shows(index)) return drop_edit();
  const PixelRect area = parts_of(model_.row_of_index(index)).text;
  const int over = scale()(3);
  edit_.move({area.left - over, area.top, width(), area.bottom});
}

bool USListBox::take_edit() {
  if (!editing()) return true;
  if (taking_edit_) return false;  // from within a handler of AfterEdit
  const Hold hold(*this);
  const int index = model_.store().index_of_slot(edit_slot_);
  std::wstring text = edit_.text();
  if (index < 0 || text == model_.store().text(index)) {
    drop_edit();
    return true;
  }
  long which = index;
  BSTR value = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  VARIANT_BOOL cancel = VARIANT_FALSE;
  taking_edit_ = true;
  raise_after_edit(which, value, cancel);
  taking_edit_ = false;
  text = to_wstring(value);
  SysFreeString(value);
  if (cancel != VARIANT_FALSE && editing()) return false;
  const int now = model_.store().index_of_slot(edit_slot_);
  drop_edit();
  if (cancel == VARIANT_FALSE && now >= 0) set_list(now, text);
  return true;
}

void USListBox::drop_edit() {
  if (!editing()) return;
  const bool had_focus = edit_.has_focus();
  edit_.show(false);
  edit_.destroy();
  if (had_focus && window() != nullptr) SetFocus(window());
  redraw();
}

}  // namespace kestrelon
