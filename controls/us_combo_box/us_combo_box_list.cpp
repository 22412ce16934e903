// The list itself: how its items look and what the mouse does to them.
#include "controls/us_combo_box/us_combo_box.h"
#include "frame/kit/color.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {

ItemColors USComboBox::list_colors() const {
  ItemColors out = base_colors(BackColor.get(), ForeColor.get());
  if (high_contrast()) return out;
  out.current1 = out.selected_back = TranslateColor(SelectListColor.get());
  out.current2 = ListGradient.get() ? TranslateColor(GradientColor2.get()) : out.current1;
  out.current_border = TranslateColor(SelectListBorderColor.get());
  out.selected_text = TranslateColor(HighLightColorText.get());
  out.hot = BlendColor(out.back, out.current1, 0.5);
  return out;
}

ItemLook USComboBox::look_of(int index) const {
  const ListEntry& item = model_.store().item(index);
  ItemLook look;
  look.text = model_.store().text(index);
  if (!suggested_for_.empty())
    look.bold_part = TextMatcher(suggested_for_, SearchMode::kLike, false).find(look.text);
  if (!columns_.empty()) look.columns = &columns_;
  if (CheckBoxes.get())
    look.tick = item.has(ItemFlag::kChecked) ? TickBox::kTicked : TickBox::kEmpty;
  if (!high_contrast()) {
    if (item.fore_color != kNoColor) look.fore_color = TranslateColor(item.fore_color);
    if (item.back_color != kNoColor) look.back_color = TranslateColor(item.back_color);
  }
  look.heading = item.has(ItemFlag::kHeader);
  if (look.heading) look.tick = TickBox::kNone;
  look.bold = item.has(ItemFlag::kBold);
  look.disabled = item.has(ItemFlag::kDisabled);
  look.current = look.selected = index == model_.current();
  look.hot = index == hot_ && model_.selectable(index);
  look.mirrored = right_to_left();
  return look;
}

void USComboBox::popup_draw(Surface& surface) {
  const ItemColors colors = list_colors();
  surface.clear(colors.back);
  {
    ItemPainter painter(surface, colors, plain_font(), bold_font(), scale());
    const int count = list_rows().touched_rows(top_);
    for (int row = top_; row < top_ + count; ++row) {
      const int index = model_.index_of_row(row);
      ItemLook look = look_of(index);
      look.image = image_of(model_.store().item(index).image);
      const PixelRect place = list_row(row);
      painter.draw(look, layout_item(place, metrics_, 0, right_to_left()), place);
    }
  }
  draw_grip(surface, colors);
}

void USComboBox::draw_grip(Surface& surface, const ItemColors& colors) {
  const PixelView view = surface.pixels();
  const PixelRect strip = grip_area();
  const int line = scale().line(), dot = scale()(1) + line, step = scale()(3) + line;
  fill_rect(view, strip, BlendColor(colors.back, colors.line, 0.2));
  const int edge = opens_up_ ? strip.bottom - line : strip.top;
  fill_rect(view, {strip.left, edge, strip.right, edge + line}, colors.line);
  for (int row = 0; row < 2; ++row)  // three dots in a corner
    for (int column = 0; column <= row; ++column) {
      const int x = strip.right - step - column * step;
      const int along = scale()(1) + line + row * step / 1;
      const int y = opens_up_ ? strip.bottom - line - along - dot : strip.top + along;
      fill_rect(view, {x, y, x + dot, y + dot}, BlendColor(colors.text, colors.line, 0.6));
    }
}

void USComboBox::list_moved(int x, int y) {
  const PixelRect first = list_row(top_);
  const bool over = x >= 0 && x < first.right;
  const int index = over ? model_.index_of_row(list_rows().row_at(y - first.top, top_)) : -1;
  if (std::exchange(hot_, index) != index) redraw_list();
}

void USComboBox::list_clicked(int x, int y) {
  const Hold hold(*this);
  const int row = list_rows().row_at(y - list_row(top_).top, top_);
  const int index = model_.index_of_row(row);
  if (!model_.selectable(index) || on_grip(x, y)) return;
  const ItemParts parts = layout_item(list_row(row), metrics_, 0, right_to_left());
  if (CheckBoxes.get() && hit_item(parts, x, y) == ItemPart::kCheck) return toggle_check(index);
  if (may_change(L"Text")) choose(index);
  close_list(true);
  select_text();
}

void USComboBox::toggle_check(int index) {
  if (!model_.selectable(index) || Locked.get()) return;
  model_.items().set_flag(index, ItemFlag::kChecked,
                          !model_.store().has_flag(index, ItemFlag::kChecked));
  item_look_changed();
  tell_readers(EVENT_OBJECT_VALUECHANGE);
  long which = index;
  raise_item_checked(which);
}

}  // namespace kestrelon
