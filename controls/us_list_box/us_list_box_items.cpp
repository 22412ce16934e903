// What is in the list: texts, places, filters.
#include "controls/us_list_box/us_list_box.h"

namespace kestrelon {

void USListBox::set_list(long index, const std::wstring& text) {
  if (!model_.is_virtual()) return ListMembers::set_list(index, text);
  virtual_.forget();
  redraw();
}

void USListBox::texts_changed() {
  if (WordWrap.get() || Sorted.get()) return contents_changed();
  redraw();
}

void USListBox::set_item_visible(long index, bool visible) {
  if (model_.set_visible(at(index), visible)) contents_changed();
}

void USListBox::before_clear() {
  drop_edit();
  end_drag(false);
  virtual_.forget();
  top_ = left_ = widest_ = 0;
}

void USListBox::move_item(long from, long to) {
  if (!Sorted.get() && model_.move(at(from), at(to))) contents_changed();
}

void USListBox::filter_on(const std::wstring& sought, GRID_SEARCH_MODE mode, bool match_case) {
  if (!model_.filter({sought, static_cast<SearchMode>(mode), match_case})) return;
  top_ = 0;
  contents_changed();
}

void USListBox::filter_off() {
  if (!model_.filter_off()) return;
  contents_changed();
  show_item(model_.current(), false);
}

}  // namespace kestrelon
