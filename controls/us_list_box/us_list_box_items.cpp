// The members of single items. An index out of range reads empty and changes nothing.
#include "controls/us_list_box/us_list_box.h"

namespace kestrelon {
namespace {

int at(long index) {
  return static_cast<int>(index);
}

}  // namespace

std::wstring USListBox::list(long index) {
  return item_text(at(index));
}

void USListBox::set_list(long index, const std::wstring& text) {
  if (model_.is_virtual()) return virtual_.forget(), redraw();
  model_.items().set_text(at(index), text);
  if (Sorted.get()) return sort(Sort_Ascending);
  if (WordWrap.get()) return contents_changed();
  redraw();
  if (at(index) == model_.current()) property_changed(L"Text");
}

long USListBox::item_data(long index) const {
  return model_.store().item(at(index)).data;
}

void USListBox::set_item_data(long index, long data) {
  model_.items().set_data(at(index), static_cast<int32_t>(data));
}

std::wstring USListBox::item_tag(long index) const {
  return std::wstring(model_.store().tag(at(index)));
}

void USListBox::set_item_tag(long index, const std::wstring& tag) {
  model_.items().set_tag(at(index), tag);
}

Variant USListBox::item_image(long index) const {
  return images().value(model_.store().item(at(index)).image);
}

void USListBox::set_item_image(long index, const VARIANT& image) {
  model_.items().set_image(at(index), images().number(image));
  redraw();
}

bool USListBox::item_checked(long index) {
  return item_ticked(at(index));
}

void USListBox::set_item_checked(long index, bool checked) {
  if (model_.items().set_flag(at(index), ItemFlag::kChecked, checked)) redraw();
}

bool USListBox::item_enabled(long index) const {
  return model_.has(at(index)) && !model_.store().has_flag(at(index), ItemFlag::kDisabled);
}

void USListBox::set_item_enabled(long index, bool enabled) {
  if (model_.items().set_flag(at(index), ItemFlag::kDisabled, !enabled)) redraw();
}

OLE_COLOR USListBox::item_fore_color(long index) const {
  return model_.store().item(at(index)).fore_color;
}

void USListBox::set_item_fore_color(long index, OLE_COLOR color) {
  model_.items().set_fore_color(at(index), color);
  redraw();
}

OLE_COLOR USListBox::item_back_color(long index) const {
  return model_.store().item(at(index)).back_color;
}

void USListBox::set_item_back_color(long index, OLE_COLOR color) {
  model_.items().set_back_color(at(index), color);
  redraw();
}

bool USListBox::item_bold(long index) const {
  return model_.store().has_flag(at(index), ItemFlag::kBold);
}

void USListBox::set_item_bold(long index, bool bold) {
  if (model_.items().set_flag(at(index), ItemFlag::kBold, bold)) redraw();
}

bool USListBox::item_header(long index) const {
  return model_.store().has_flag(at(index), ItemFlag::kHeader);
}

void USListBox::set_item_header(long index, bool header) {
  if (model_.items().set_flag(at(index), ItemFlag::kHeader, header)) redraw();
}

bool USListBox::item_visible(long index) const {
  return model_.shows(at(index));
}

void USListBox::set_item_visible(long index, bool visible) {
  if (model_.set_visible(at(index), visible)) contents_changed();
}

}  // namespace kestrelon
