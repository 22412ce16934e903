// Life, choice, and the setters that do more than draw again.
#include "controls/us_list_box/us_list_box.h"

namespace kestrelon {
namespace {

ControlTraits list_traits() {
  ControlTraits traits;
  traits.initial_pixels = {160, 120};
  return traits;
}

}  // namespace

USListBox::USListBox() : USListBoxGlue(list_traits()) {}

void USListBox::init_properties() {
  ItemControl::init_properties();
}

void USListBox::properties_read() {
  images_read();
  model_.set_mode(static_cast<SelectMode>(MultiSelect.get()));
  list_items_changed();
  ItemControl::properties_read();
}

void USListBox::window_created() {
  bars_.Create(window());
  relayout();
}

void USListBox::terminate() {
  edge_timer_.stop();
  hide_item_tip();
  edit_.destroy();
  bars_.Create(nullptr);
  ItemControl::terminate();
}

void USListBox::font_changed() {
  widest_ = 0;
  ItemControl::font_changed();
}

void USListBox::mode_changed() {
  model_.set_mode(static_cast<SelectMode>(MultiSelect.get()));
  redraw();
}

void USListBox::sorted_changed() {
  if (Sorted.get()) sort(Sort_Ascending);
}

void USListBox::list_items_changed() {
  clear();
  add_items(Variant(std::wstring_view(ListItems.get())));
}

void USListBox::contents_changed() {
  wrapped_.clear();
  if (tip_item_ >= 0) hide_item_tip();
  hot_ = -1;
  relayout();
}

// --- choice --------------------------------------------------------------------------------------

void USListBox::choice_changed(bool changed) {
  if (!changed) return;
  redraw();
  const Hold hold(*this);
  property_changed(L"Text");
  const long item = accessible_focus();
  tell_readers(EVENT_OBJECT_SELECTION, item);
  if (focus_within()) tell_readers(EVENT_OBJECT_FOCUS, item);
  raise_selection_changed();
}

void USListBox::set_selected(long index, bool selected) {
  choice_changed(model_.set_selected(static_cast<int>(index), selected));
}

void USListBox::set_list_index(long index) {
  if (!model_.set_current(static_cast<int>(index))) return;
  show_item(model_.current(), false);
  choice_changed(true);
}

void USListBox::select_all() {
  choice_changed(model_.select_all());
}

void USListBox::unselect_all() {
  choice_changed(model_.unselect_all());
}

std::wstring USListBox::text() {
  return item_text(model_.current());
}

void USListBox::set_text(const std::wstring& text) {
  if (model_.is_virtual()) return;
  set_list_index(model_.store().find(TextMatcher(text, SearchMode::kEqual, false)));
}

void USListBox::set_virtual_count(long count) {
  drop_edit();
  const bool had = model_.current() >= 0;
  virtual_.forget();
  model_.set_virtual_count(static_cast<int>(std::clamp(count, 0L, 100'000'000L)));
  top_ = 0;
  contents_changed();
  choice_changed(had);
}

// --- items that the program holds ----------------------------------------------------------------

const VirtualItem* USListBox::virtual_item(int index) {
  if (!model_.is_virtual() || !model_.has(index)) return nullptr;
  if (const VirtualItem* kept = virtual_.find(index)) return kept;
  const uint32_t asked = virtual_.age();
  long asked_index = index;
  BSTR text = SysAllocString(L"");
  Variant image;
  VARIANT_BOOL checked = VARIANT_FALSE;
  const Hold hold(*this);
  raise_request_item(asked_index, text, *image.put(), checked);
  VirtualItem item{index, to_wstring(text), images().number(image), checked != VARIANT_FALSE};
  SysFreeString(text);
  if (item.text.size() > kMaxItemText) item.text.resize(kMaxItemText);
  virtual_.keep(std::move(item), asked);
  return virtual_.find(index);
}

std::wstring USListBox::item_text(int index) {
  if (!model_.is_virtual()) return std::wstring(model_.store().text(index));
  const VirtualItem* const item = virtual_item(index);
  return item != nullptr ? item->text : std::wstring();
}

bool USListBox::item_ticked(int index) {
  if (!model_.is_virtual()) return model_.store().has_flag(index, ItemFlag::kChecked);
  const VirtualItem* const item = virtual_item(index);
  return item != nullptr && item->checked;
}

}  // namespace kestrelon
