// Life, and the setters that do more than draw again.
#include "controls/us_combo_box/us_combo_box.h"

#include <algorithm>

#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

ControlTraits combo_traits() {
  ControlTraits traits;
  traits.initial_pixels = {160, 22};
  return traits;
}

}  // namespace

USComboBox::USComboBox() : USComboBoxGlue(combo_traits()) {}

void USComboBox::properties_read() {
  images_read();
  list_items_changed();
  ItemControl::properties_read();
}

void USComboBox::window_created() {
  style_changed();
}

void USComboBox::shown() {
  ItemControl::shown();
  look_changed();
}

void USComboBox::hidden() {
  suggestion_timer_.stop();
}

void USComboBox::closing() {
  close_list(false);
}

void USComboBox::terminate() {
  suggestion_timer_.stop();
  bars_.Create(nullptr);
  popup_.close();
  list_access_.detach();
  edit_.destroy();
  completion_records_ = {};
  ItemControl::terminate();
}

void USComboBox::theme_applied(int32_t theme) {
  if (theme < 0 || theme > 2) return;
  GradientMode.put(Combo_TopBottom);
  UseGradient.put(true);
  ShowCorner.put(theme != Windows_8);
  ListGradient.put(theme != Windows_8);
  look_changed();
}

void USComboBox::font_changed() {
  ItemControl::font_changed();
  edit_.set_font(plain_font());
}

void USComboBox::ambient_changed(DISPID id) {
  style_changed();  // the reading order, for one
  ItemControl::ambient_changed(id);
}

void USComboBox::style_changed() {
  const bool focused = focus_within() && window() != nullptr;
  restyling_ = true;
  if (focused) SetFocus(window());
  restyling_ = false;
  edit_.destroy();
  if (window() != nullptr && runs() && editable()) {
    DWORD style = ES_AUTOHSCROLL;
    if (right_to_left()) style |= ES_RIGHT;
    if (TextCase.get() == Case_Upper) style |= ES_UPPERCASE;
    if (TextCase.get() == Case_Lower) style |= ES_LOWERCASE;
    if (edit_.create(style, RECT{})) {
      edit_.set_font(plain_font());
      show_text(Value.get());
      edit_.show(true);
      if (focused) SetFocus(edit_.hwnd());
    }
  }
  look_changed();
  relayout();
}

void USComboBox::color_edit() {
  edit_.set_colors(Enabled.get() ? shown_color(ForeColor.get(), COLOR_WINDOWTEXT)
                                 : shown_color(0x99A8AC, COLOR_GRAYTEXT),
                   shown_color(lit() ? BackColorOver.get() : BackColor.get(), COLOR_WINDOW));
}

void USComboBox::look_changed() {
  edit_.set_read_only(Locked.get());
  edit_.set_limit(static_cast<int>(std::clamp(MaxLength.get(), 0L, 32767L)));
  edit_.set_cue(PlaceHolder.get(), shown_color(0x99A8AC, COLOR_GRAYTEXT));
  redraw();
}

void USComboBox::list_items_changed() {
  {
    const Refill refill(*this);
    clear();
    add_items(Variant(std::wstring_view(ListItems.get())));
  }
  find_current();
}

void USComboBox::sorted_changed() {
  if (Sorted.get()) sort(Sort_Ascending);
}

void USComboBox::column_changed() {
  if (model_.current() >= 0) show_text(item_text(model_.current()));
}

void USComboBox::contents_changed() {
  hot_ = -1;
  contents_new_ = list_new_ = true;
  item_look_changed();
}

void USComboBox::item_look_changed() {
  redraw_list();
  redraw();
}

// Items have gone; what goes with them is told once they are gone.
void USComboBox::choice_changed(bool changed) {
  if (!changed || refilling_) return;
  if (model_.current() < 0) return choice_lost();
  const Hold hold(*this);
  raise_selection_changed();
}

}  // namespace kestrelon
