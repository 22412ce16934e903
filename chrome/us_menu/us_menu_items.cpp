// The records, by position or key.
#include <algorithm>

#include "base/decimal.h"
#include "base/text.h"
#include "chrome/us_menu/us_menu.h"

namespace kestrelon {

int USMenu::find(const VARIANT& item) const {
  const VARIANT* value = &item;
  while (V_VT(value) == (VT_VARIANT | VT_BYREF)) value = V_VARIANTREF(value);
  if (V_VT(value) == VT_BSTR) return menu_model::find(items.get(), to_wstring(V_BSTR(value)));
  if (V_VT(value) == (VT_BSTR | VT_BYREF))
    return menu_model::find(items.get(), to_wstring(*V_BSTRREF(value)));
  Variant number;
  if (FAILED(VariantChangeType(&number, const_cast<VARIANT*>(value), 0, VT_I4)))
    return menu_model::kNone;
  const long index = static_cast<long>(V_I4(&number)) - 1;
  return items.contains(index) ? static_cast<int>(index) : menu_model::kNone;
}

template <class T>
T USMenu::get(const VARIANT& item, T MenuItem::*member) const {
  const int index = find(item);
  return index >= 0 ? items[static_cast<size_t>(index)].*member : MenuItem{}.*member;
}

template <class T>
void USMenu::set(const wchar_t* name, const VARIANT& item, T MenuItem::*member, T value) {
  const int index = find(item);
  if (index < 0 || items[static_cast<size_t>(index)].*member == value) return;
  items.change(name, [&](std::vector<MenuItem>& list) {
    list[static_cast<size_t>(index)].*member = std::move(value);
  });
}

template std::wstring USMenu::get(const VARIANT&, std::wstring MenuItem::*) const;
template bool USMenu::get(const VARIANT&, bool MenuItem::*) const;
template short USMenu::get(const VARIANT&, short MenuItem::*) const;
template void USMenu::set(const wchar_t*, const VARIANT&, std::wstring MenuItem::*, std::wstring);
template void USMenu::set(const wchar_t*, const VARIANT&, bool MenuItem::*, bool);
template void USMenu::set(const wchar_t*, const VARIANT&, short MenuItem::*, short);

namespace {

// An image as it is kept: the digits of a position, or a key.
std::wstring image_text(const VARIANT& image) {
  const VARIANT* value = &image;
  while (V_VT(value) == (VT_VARIANT | VT_BYREF)) value = V_VARIANTREF(value);
  if (V_VT(value) == VT_ERROR || V_VT(value) == VT_EMPTY || V_VT(value) == VT_NULL) return {};
  Variant text;
  if (FAILED(VariantChangeType(&text, const_cast<VARIANT*>(value), 0, VT_BSTR))) return {};
  std::wstring out = to_wstring(V_BSTR(&text));
  return out == L"0" ? std::wstring() : out;
}

constexpr size_t kLongestPosition = 9;  // digits

Variant image_value(const std::wstring& text) {
  if (text.empty() || !is_all_digits(text) || text.size() > kLongestPosition)
    return text.empty() ? Variant(0L) : Variant(std::wstring_view(text));
  long number = 0;
  for (const wchar_t c : text) number = number * 10 + (c - L'0');
  return Variant(number);
}

}  // namespace

Variant USMenu::item_image(const VARIANT& item) const {
  return image_value(get(item, &MenuItem::image));
}

void USMenu::set_item_image(const VARIANT& item, const VARIANT& image) {
  set(L"ItemImage", item, &MenuItem::image, image_text(image));
}

const c32bppDIB* USMenu::menu_image(const std::wstring& image) {
  return image_of(images().number(image_value(image)));
}

void USMenu::set_item_key(const VARIANT& item, const std::wstring& key) {
  const int other = menu_model::find(items.get(), key);
  if (other != menu_model::kNone && other != find(item)) return;  // two items never share a key
  set(L"ItemKey", item, &MenuItem::key, key);
}

short USMenu::add_item(const std::wstring& caption, const std::wstring& key,
                       const std::wstring& parent, const VARIANT& image,
                       const std::wstring& short_cut, const std::wstring& before) {
  const auto& list = items.get();
  if (list.size() >= RecordList<MenuItem>::kMost) return 0;
  if (menu_model::find(list, key) != menu_model::kNone) return 0;
  const int above = menu_model::find(list, parent);
  if (!parent.empty() && above == menu_model::kNone) return 0;
  const std::vector<int> levels = menu_model::levels(list);
  MenuItem made;
  made.caption = caption;
  made.key = key;
  made.image = image_text(image);
  made.short_cut = short_cut;
  made.level = static_cast<short>(above >= 0 ? levels[static_cast<size_t>(above)] + 1 : 0);
  int at = above >= 0 ? menu_model::subtree_end(list, above) : static_cast<int>(list.size());
  const int next = menu_model::find(list, before);
  if (next != menu_model::kNone && menu_model::parent_of(list, next) == above) at = next;
  items.change(L"ItemCount",
               [&](std::vector<MenuItem>& all) { all.insert(all.begin() + at, std::move(made)); });
  return static_cast<short>(at + 1);
}

void USMenu::remove_item(const VARIANT& item) {
  const int index = find(item);
  if (index < 0) return;
  const int end = menu_model::subtree_end(items.get(), index);
  items.change(L"ItemCount", [&](std::vector<MenuItem>& all) {
    all.erase(all.begin() + index, all.begin() + end);
  });
}

void USMenu::clear(const std::wstring& parent) {
  const auto& list = items.get();
  const int above = menu_model::find(list, parent);
  if (!parent.empty() && above == menu_model::kNone) return;
  const int end = menu_model::subtree_end(list, above);
  if (above + 1 >= end) return;
  items.change(L"ItemCount", [&](std::vector<MenuItem>& all) {
    all.erase(all.begin() + above + 1, all.begin() + end);
  });
}

short USMenu::item_index(const std::wstring& key) const {
  return static_cast<short>(menu_model::find(items.get(), key) + 1);
}

}  // namespace kestrelon
