// What a program fills the ribbon with and asks of it.
#include "chrome/us_ribbon/us_ribbon.h"

namespace kestrelon {

using namespace ribbon;

void USRibbon::add_tab(short index, const std::wstring& caption) {
  model_.add_tab(index, caption);
}

void USRibbon::add_cat(short index, short tab, const std::wstring& caption, bool launcher) {
  model_.add_category(index, tab, caption, launcher);
}

void USRibbon::add_button(short index, short category, const std::wstring& caption,
                          IDispatch* picture, short image, bool arrow, const std::wstring& tip) {
  if (!model_.add_button(index, category, caption, image, arrow, tip)) return;
  button_objects_.resize(model_.buttons().size());
  button_objects_.back() = ComPtr<IDispatch>(picture);
}

void USRibbon::add_tab_button(short index, IDispatch* picture, short image,
                              const std::wstring& tip) {
  if (!model_.add_tab_button(index, image, tip)) return;
  tab_button_objects_.resize(model_.tab_buttons().size());
  tab_button_objects_.back() = ComPtr<IDispatch>(picture);
}

void USRibbon::activate_tab(short index) {
  if (!model_.may_activate(index)) return;
  const int entry = model_.find_tab(index);
  if (entry != Model::kNone) activate(entry);
}

void USRibbon::refresh() {
  if (model_.selected() == Model::kNone) model_.select(model_.first_visible());
  built_tabs_ = static_cast<int>(model_.tabs().size());
  built_tab_buttons_ = static_cast<int>(model_.tab_buttons().size());
  rebuild();
  tell_readers(EVENT_OBJECT_REORDER);
}

void USRibbon::clear() {
  left_alone_ = true;
  remove_button();
  remove_cat();
  remove_tab();
  model_.remove_tab_buttons();
  tab_button_images_.clear();
  tab_button_objects_.clear();
  built_tab_buttons_ = 0;
  left_alone_ = false;
  rebuild();
}

// The scene is made anew in any case: no element may name an entry that is gone.
void USRibbon::remove_button() {
  model_.remove_buttons();
  button_images_.clear();
  button_objects_.clear();
  bound_images_.clear();
  focus_ = Model::kNone;
  scene_.buttons.clear();
  rebuild();
}

void USRibbon::remove_cat() {
  model_.remove_categories();
  scene_.categories.clear();
  scene_.buttons.clear();
  first_ = 0;
  rebuild();
}

void USRibbon::remove_tab() {
  model_.remove_tabs();
  scene_ = {};
  built_tabs_ = 0;
  first_ = 0;
  rebuild();
}

bool USRibbon::button_enabled(short index) {
  const ButtonState* const state = model_.state(index);
  return state != nullptr && state->enabled;
}

void USRibbon::set_button_enabled(short index, bool enabled) {
  ButtonState* const state = model_.state(index);
  if (state == nullptr || state->enabled == enabled) return;
  state->enabled = enabled;
  if (!live(pressed_)) pressed_ = {};
  if (!live(hot_)) set_hot(hot_);
  if (focus_ != Model::kNone && !usable(focus_)) set_focus(Model::kNone);
  update_access_keys();
  draw_button(index);
  tell_readers(EVENT_OBJECT_STATECHANGE);
}

std::wstring USRibbon::button_caption(short index) const {
  const int entry = model_.find_button(index);
  return entry == Model::kNone ? std::wstring()
                               : model_.buttons()[static_cast<size_t>(entry)].caption;
}

void USRibbon::set_button_caption(short index, const std::wstring& caption) {
  const int entry = model_.find_button(index);
  if (entry == Model::kNone) return;
  model_.set_caption(entry, caption);
  rebuild();
}

RIBBON_BUTTON_STYLE USRibbon::button_style(short index) {
  const ButtonState* const state = model_.state(index);
  return state == nullptr ? Ribbon_Normal : static_cast<RIBBON_BUTTON_STYLE>(state->style);
}

void USRibbon::set_button_style(short index, RIBBON_BUTTON_STYLE style) {
  ButtonState* const state = model_.state(index);
  if (state == nullptr || style < Ribbon_Normal || style > Ribbon_Split) return;
  state->style = static_cast<ribbon::ButtonStyle>(style);
  rebuild();
}

bool USRibbon::button_value(short index) {
  const ButtonState* const state = model_.state(index);
  return state != nullptr && state->checked;
}

void USRibbon::set_button_value(short index, bool value) {
  ButtonState* const state = model_.state(index);
  if (state == nullptr || state->checked == value) return;
  state->checked = value;
  draw_button(index);
  tell_readers(EVENT_OBJECT_STATECHANGE);
}

RIBBON_BUTTON_SIZE USRibbon::button_size(short index) {
  const ButtonState* const state = model_.state(index);
  return state == nullptr ? Ribbon_Large : static_cast<RIBBON_BUTTON_SIZE>(state->size);
}

void USRibbon::set_button_size(short index, RIBBON_BUTTON_SIZE size) {
  ButtonState* const state = model_.state(index);
  if (state == nullptr || size < Ribbon_Large || size > Ribbon_Small) return;
  state->size = static_cast<ribbon::ButtonSize>(size);
  rebuild();
}

bool USRibbon::tab_visible(short index) const {
  const int entry = model_.find_tab(index);
  return entry != Model::kNone && model_.tabs()[static_cast<size_t>(entry)].visible;
}

void USRibbon::set_tab_visible(short index, bool visible) {
  const int entry = model_.find_tab(index);
  if (entry == Model::kNone || model_.tab(entry)->visible == visible) return;
  model_.tab(entry)->visible = visible;
  if (!visible && entry == model_.selected()) return activate(model_.first_visible());
  rebuild();
}

OLE_COLOR USRibbon::tab_color(short index) const {
  const int entry = model_.find_tab(index);
  return entry == Model::kNone ? 0 : model_.tabs()[static_cast<size_t>(entry)].color;
}

void USRibbon::set_tab_color(short index, OLE_COLOR color) {
  const int entry = model_.find_tab(index);
  if (entry == Model::kNone) return;
  model_.tab(entry)->color = color & 0xFFFFFF;
  draw();
}

short USRibbon::active_tab() const {
  const int entry = model_.selected();
  return static_cast<short>(
      entry == Model::kNone ? -1 : model_.tabs()[static_cast<size_t>(entry)].index);
}

}  // namespace kestrelon
