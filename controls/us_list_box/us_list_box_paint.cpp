// The list on its surface.
#include <algorithm>

#include "controls/us_list_box/us_list_box.h"
#include "frame/kit/color.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {

// Handlers run here, before anything is drawn: they may clear the list or destroy the control.
void USListBox::fetch_shown() {
  if (!model_.is_virtual()) return;
  const int first = first_row(), count = rows().touched_rows(first);
  for (int row = first; row < first + count && model_.has(row); ++row) virtual_item(row);
}

ItemColors USListBox::colors() const {
  ItemColors out = base_colors(BackNormal.get(), ForeColor.get());
  if (high_contrast()) return out;
  out.current1 = TranslateColor(SelectedListColor1.get());
  out.current2 = TranslateColor(SelectedListColor2.get());
  out.current_border = TranslateColor(SelectedListBorderColor.get());
  out.selected_back = TranslateColor(BackSelected.get());
  out.selected_text = TranslateColor(ForeColorSelected.get());
  out.hot = BlendColor(out.back, out.current1, 0.5);
  out.shadow = TranslateColor(ShadowColorText.get());
  out.shadowed = ShadowText.get();
  return out;
}

ItemLook USListBox::look_of(int index, const ItemColors& colors) const {
  ItemLook look;
  const ListEntry& item = model_.store().item(index);
  const VirtualItem* const theirs = model_.is_virtual() ? virtual_.find(index) : nullptr;
  look.text = theirs != nullptr ? std::wstring_view(theirs->text) : model_.store().text(index);
  const bool ticked = theirs != nullptr ? theirs->checked : item.has(ItemFlag::kChecked);
  if (CheckBoxes.get()) look.tick = ticked ? TickBox::kTicked : TickBox::kEmpty;
  if (!columns_.empty()) look.columns = &columns_;
  if (!high_contrast() && item.fore_color != kNoColor)
    look.fore_color = TranslateColor(item.fore_color);
  if (!high_contrast() && item.back_color != kNoColor)
    look.back_color = TranslateColor(item.back_color);
  look.heading = item.has(ItemFlag::kHeader);
  if (look.heading) look.tick = TickBox::kNone;
  look.bold = item.has(ItemFlag::kBold);
  look.disabled = !Enabled.get() || item.has(ItemFlag::kDisabled);
  const bool mark = index == model_.current() && focus_within();
  look.selected = model_.selected(index);
  look.current = mark && look.selected;
  look.focus_rect = mark && ShowFocusRect.get();
  look.hot = index == hot_ && HotTracking.get() && !look.disabled;
  look.wrapped = WordWrap.get() && !model_.is_virtual();
  look.mirrored = const_cast<USListBox*>(this)->right_to_left();
  (void)colors;
  return look;
}

void USListBox::draw_row(ItemPainter& painter, const ItemColors& colors, int row) {
  const int index = model_.index_of_row(row);
  ItemLook look = look_of(index, colors);
  const VirtualItem* const theirs = model_.is_virtual() ? virtual_.find(index) : nullptr;
  look.image = image_of(theirs != nullptr ? theirs->image : model_.store().item(index).image);
  const ItemParts parts = parts_of(row);
  painter.draw(look, parts, {0, parts.row.top, width(), parts.row.bottom});
  note_width(look.text);
}

// Only rows that have shown are measured: the bar grows as wider ones come.
void USListBox::note_width(std::wstring_view text) {
  if (WordWrap.get() || !columns_.empty()) return;
  const PixelRect whole{0, 0, 1 << 20, row_height_};
  const ItemParts parts = layout_item(whole, metrics_, 0, false);
  const int wanted = parts.text.left + text_width(surface().dc(), text) + 2 * metrics_.padding;
  if (wanted <= widest_) return;
  widest_ = wanted;
  if (widest_ > width()) tip_timer_.stop();
}

void USListBox::draw() {
  const Hold hold(*this);
  fetch_shown();
  if (!surface()) return;
  const ItemColors look = colors();
  const PixelView view = surface().pixels();
  surface().clear(look.back);
  const int before = widest_;
  {
    ItemPainter painter(surface(), look, plain_font(), bold_font(), scale());
    if (model_.row_count() == 0 && !user_mode())
      painter.draw_sample_lines(view.bounds(), row_height_);
    else if (model_.row_count() == 0)
      painter.draw_note(EmptyText.get(), view.bounds());
    const int first = first_row(), count = rows().touched_rows(first);
    for (int row = first; row < first + count; ++row) draw_row(painter, look, row);
  }
  draw_drop_mark();
  if (window() == nullptr && border() != 0)
    DrawFrame(view, TranslateColor(BorderColor.get()), 0, 0, view.width, view.height);
  if (std::max(before, width()) < widest_) relayout();  // a bar is wanted
}

void USListBox::draw_drop_mark() {
  if (!moving_item_ || drop_row_ < 0) return;
  const int y = rows().y_of(drop_row_, first_row());
  const int half = scale().line();
  fill_rect(surface().pixels(), {0, y - half, width(), y + half}, colors().current_border);
}

}  // namespace kestrelon
