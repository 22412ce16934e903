// The text of the field and the item it stands for.
#include <algorithm>

#include "controls/us_combo_box/us_combo_box.h"

namespace kestrelon {
namespace {

std::wstring in_case(std::wstring text, ENUM_TEXT_CASE letters) {
  const auto size = static_cast<DWORD>(text.size());
  if (letters == Case_Upper) CharUpperBuffW(text.data(), size);
  if (letters == Case_Lower) CharLowerBuffW(text.data(), size);
  return text;
}

}  // namespace

int USComboBox::text_column() const {
  return std::max<int>(TextColumn.get(), 0);
}

std::wstring USComboBox::item_text(int index) const {
  return std::wstring(column_text(model_.store().text(index), text_column()));
}

int USComboBox::find_text(const std::wstring& text) const {
  const TextMatcher matcher(text, SearchMode::kEqual, false);
  return model_.store().find(matcher, 0, text_column());
}

bool USComboBox::show_text(const std::wstring& text) {
  const std::wstring shown = editable() ? in_case(text, TextCase.get()) : text;
  const bool other = shown != Value.get();
  Value.assign(shown);
  setting_text_ = true;
  edit_.set_text(shown);
  setting_text_ = false;
  redraw();
  return other;
}

void USComboBox::text_changed() {
  property_changed(L"Text");
  property_changed(L"BoundValue");
  tell_readers(EVENT_OBJECT_VALUECHANGE);
  raise_change();
}

void USComboBox::set_text(const std::wstring& text) {
  const Hold hold(*this);
  if (!may_change(L"Text")) return;
  end_suggestions();
  const bool other = show_text(text);
  contents_new_ = false;
  const bool moved = model_.set_current(find_text(text));
  redraw_list();
  if (other) text_changed();
  if (moved) raise_selection_changed();
}

void USComboBox::find_current() {
  if (!std::exchange(contents_new_, false) || model_.current() >= 0 || Value.get().empty()) return;
  if (model_.set_current(find_text(Value.get()))) redraw_list();
}

long USComboBox::list_index() {
  find_current();
  return model_.current();
}

void USComboBox::set_list_index(long index) {
  if (may_change(L"Text")) choose(static_cast<int>(index));
}

void USComboBox::choose(int index) {
  const Hold hold(*this);
  contents_new_ = false;
  const bool moved = model_.set_current(index);
  const bool other = show_text(model_.current() >= 0 ? item_text(model_.current()) : L"");
  redraw_list();
  if (other) text_changed();
  if (!moved) return;
  tell_choice();
  raise_selection_changed();
}

// A typed text stays what it is when the item of the same text goes.
void USComboBox::choice_lost() {
  if (refilling_) return;
  const Hold hold(*this);
  if (!editable() && show_text(L"")) text_changed();
  raise_selection_changed();
}

void USComboBox::clear_control() {
  const Hold hold(*this);
  end_suggestions();
  const bool moved = model_.set_current(-1);
  redraw_list();
  if (show_text(L"")) text_changed();
  if (moved) raise_selection_changed();
}

void USComboBox::remove_item(long index) {
  const Hold hold(*this);
  const bool current = index >= 0 && index == model_.current();
  if (current) model_.set_current(-1);  // no neighbour takes the place of what was chosen
  ListMembers::remove_item(index);
  if (current) choice_lost();
}

long USComboBox::fill_list_from_query(IDispatch* records, const std::wstring& text,
                                      const std::wstring& data, const std::wstring& tag,
                                      const std::wstring& image) {
  const Hold hold(*this);
  const int former = model_.current();
  long filled = -1;
  {
    const Refill refill(*this);
    filled = ListMembers::fill_list_from_query(records, text, data, tag, image);
  }
  if (filled < 0) return filled;
  find_current();
  if (model_.current() != former) raise_selection_changed();
  return filled;
}

// --- the value behind the text -------------------------------------------------------------------

Variant USComboBox::bound_value() {
  const long index = list_index();
  if (index < 0) return {};
  const std::wstring_view tag = model_.store().tag(at(index));
  return tag.empty() ? Variant(static_cast<long>(model_.store().item(at(index)).data))
                     : Variant(tag);
}

void USComboBox::set_bound_value(const VARIANT& value) {
  if (!may_change(L"BoundValue")) return;
  Variant text, number;
  VARIANT* const given = const_cast<VARIANT*>(&value);
  const bool has_text = V_VT(given) != VT_NULL && V_VT(given) != VT_EMPTY &&
                        SUCCEEDED(VariantChangeType(&text, given, 0, VT_BSTR));
  const bool has_number = has_text && SUCCEEDED(VariantChangeType(&number, given, 0, VT_I4));
  const std::wstring wanted = has_text ? to_wstring(V_BSTR(&text)) : std::wstring();
  for (int i = 0; has_text && i < model_.count(); ++i) {
    const std::wstring_view tag = model_.store().tag(i);
    const bool same =
        tag.empty() ? has_number && model_.store().item(i).data == V_I4(&number) : tag == wanted;
    if (same) return choose(i);
  }
  clear_control();
}

std::wstring USComboBox::checked_text() const {
  std::wstring out;
  int left = model_.store().checked_count();
  for (int i = 0; left > 0 && i < model_.count(); ++i) {
    if (!model_.store().has_flag(i, ItemFlag::kChecked)) continue;
    --left;
    if (!out.empty()) out += L"; ";
    out += item_text(i);
  }
  return out;
}

// --- selection in the field ----------------------------------------------------------------------

void USComboBox::select_text() {
  edit_.select({static_cast<int>(Value.get().size()), 0});
}

void USComboBox::set_sel_start(long start) {
  const int at = static_cast<int>(std::max(start, 0L));
  edit_.select({at, at});
}

long USComboBox::sel_length() const {
  const TextRange range = edit_.selection();
  return range.end - range.start;
}

void USComboBox::set_sel_length(long length) {
  const int start = edit_.selection().start;
  const auto room = static_cast<long>(Value.get().size());
  edit_.select({start, start + static_cast<int>(std::clamp(length, 0L, room))});
}

std::wstring USComboBox::sel_text() const {
  const TextRange range = edit_.selection();
  const std::wstring text = edit_.text();
  const auto start = std::min(static_cast<size_t>(range.start), text.size());
  return text.substr(start, static_cast<size_t>(range.end - range.start));
}

}  // namespace kestrelon
