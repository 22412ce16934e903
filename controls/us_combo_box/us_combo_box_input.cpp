// Keys, mouse and focus of the field.
#include "controls/us_combo_box/us_combo_box.h"
#include "frame/input_state.h"

namespace kestrelon {
namespace {

bool inside(const PixelRect& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

}  // namespace

// --- keys ----------------------------------------------------------------------------------------

bool USComboBox::wants_key(int key, short shift) const {
  if ((shift & kAltKey) != 0) return key == VK_UP || key == VK_DOWN;
  if (dropped_down() && (key == VK_RETURN || key == VK_ESCAPE || key == VK_TAB)) return true;
  return key == VK_F4 || (key >= VK_PRIOR && key <= VK_DOWN);
}

void USComboBox::key_down(short& key, short& shift) {
  const Hold hold(*this);
  raise_key_down(key, shift);
  deleting_ = key == VK_BACK || key == VK_DELETE;
  if (key == 0 || !Enabled.get()) return;
  ensure_layout();
  const ComboState state{dropped_down(), editable(), CheckBoxes.get(), Required.get(),
                         !editable() && type_ahead_.takes_blank(GetTickCount())};
  if (run(combo_act(key, shift, state), shift)) key = 0;
}

// True when the key goes no further.
bool USComboBox::run(ComboAct act, short shift) {
  const int last = model_.row_count() - 1;
  switch (act) {
    case ComboAct::kToggle:
      dropped_down() ? close_list(false) : show_drop_down();
      return true;
    case ComboAct::kUp:
    case ComboAct::kDown:
      find_current();
      step(model_.step(act == ComboAct::kUp ? -1 : 1));
      return true;
    case ComboAct::kPageUp:
    case ComboAct::kPageDown: {
      if (last < 0) return true;
      find_current();
      const bool down = act == ComboAct::kPageDown;
      const int row = model_.current() >= 0 ? model_.row_of_index(model_.current()) : 0;
      step(model_.nearest(list_rows().page_target(row, list_rows().limit_top(top_), down), down));
      return true;
    }
    case ComboAct::kHome:
      step(model_.nearest(0, true));
      return true;
    case ComboAct::kEnd:
      step(model_.nearest(last, false));
      return true;
    case ComboAct::kAccept:
      close_list(true);
      select_text();
      return true;
    case ComboAct::kAcceptAndPass:
      close_list(true);
      send_tab((shift & kShiftKey) != 0);
      return true;
    case ComboAct::kClose:
      restore();
      return true;
    case ComboAct::kCheck:
      toggle_check(model_.current());
      return true;
    case ComboAct::kEmpty:
      if (!Locked.get() && may_change(L"Text")) clear_control();
      return true;
    default:
      return false;
  }
}

// Escape: what stood there when the list opened comes back.
void USComboBox::restore() {
  const bool moved = model_.set_current(index_at_opening_);
  const bool other = show_text(text_at_opening_);
  const int caret = static_cast<int>(text_at_opening_.size());
  edit_.select({caret, caret});
  close_list(false);
  if (other) text_changed();
  if (moved) raise_selection_changed();
}

void USComboBox::step(int index) {
  if (index < 0 || Locked.get() || !may_change(L"Text")) return;
  suggestion_timer_.stop();
  choose(index);
  show_row_of(model_.current());
  select_text();
}

void USComboBox::key_press(short& character) {
  const Hold hold(*this);
  raise_key_press(character);
  if (character == 0 || editable() || Locked.get() || !Enabled.get()) return;
  const auto letter = static_cast<wchar_t>(static_cast<unsigned short>(character));
  const TypeAhead::Search search = type_ahead_.add(letter, GetTickCount());
  if (search.text.empty()) return;
  find_current();
  const TextMatcher matcher(search.text, SearchMode::kBeginsWith, false);
  step(model_.find_ahead(matcher, search.from_next, text_column()));
}

// --- mouse ---------------------------------------------------------------------------------------

void USComboBox::mouse_down(short button, short shift, float x, float y) {
  const Hold hold(*this);
  const short pressed = button;
  const int column = static_cast<int>(x), row = static_cast<int>(y);
  raise_mouse_down(button, shift, x, y);
  if (pressed != kLeftButton || !runs() || window() == nullptr) return;
  if (editable() && !inside(button_area(), column, row)) return close_list(false);
  release_mouse();  // the press may be drawn into the list
  dropped_down() ? close_list(false) : show_drop_down();
}

void USComboBox::mouse_up(short button, short shift, float x, float y) {
  raise_mouse_up(button, shift, x, y);
}

void USComboBox::pointer_moved(short, short, float x, float y) {
  const bool hot = pointer_over() &&
                   (!editable() || inside(button_area(), static_cast<int>(x), static_cast<int>(y)));
  if (std::exchange(button_hot_, hot) != hot) redraw();
}

void USComboBox::hover_changed() {
  if (!pointer_over()) button_hot_ = false;
  look_changed();
}

bool USComboBox::mouse_wheel(bool horizontal, int delta, short) {
  if (horizontal || !Enabled.get()) return false;
  if (dropped_down()) {
    constexpr int kRows = 3;  // a notch
    scroll_list(int64_t{top_} - int64_t{delta} * kRows / WHEEL_DELTA);
    return true;
  }
  if (!WheelChanges.get() || !focus_within()) return false;
  const Hold hold(*this);
  find_current();
  step(model_.step(delta > 0 ? -1 : 1));
  return true;
}

// --- focus ---------------------------------------------------------------------------------------

void USComboBox::got_focus() {
  former_text_ = Value.get();
  ensure_layout();  // a box without a place would scroll to the end of its text
  select_text();
  look_changed();
}

void USComboBox::lost_focus() {
  const Hold hold(*this);
  suggestion_timer_.stop();
  close_list(false);
  judge_text();
  look_changed();
}

// Under LimitToList a text that no item has is offered to the program, or else taken back; a known
// one takes the letters of its item.
void USComboBox::judge_text() {
  if (!LimitToList.get() || !editable() || Value.get().empty()) return;
  int item = find_text(Value.get());
  if (item < 0) {
    Bstr offered(Value.get());
    BSTR text = offered.detach();
    VARIANT_BOOL cancel = VARIANT_FALSE;
    raise_not_in_list(text, cancel);
    const std::wstring left = to_wstring(text);
    SysFreeString(text);
    if (cancel != VARIANT_FALSE) return;
    item = find_text(left);  // the program may have added it, or named another
    if (item < 0) {
      const bool moved = model_.set_current(find_text(former_text_));
      if (show_text(former_text_)) text_changed();
      if (moved) raise_selection_changed();
      return;
    }
  }
  const bool moved = model_.set_current(item);
  if (show_text(item_text(item))) text_changed();
  if (moved) raise_selection_changed();
}

}  // namespace kestrelon
