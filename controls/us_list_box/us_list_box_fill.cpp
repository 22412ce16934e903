// What is in the list: adding, removing, ordering, searching, filling from records.
#include <algorithm>

#include "controls/items/text_lines.h"
#include "controls/us_list_box/us_list_box.h"
#include "services/record_rows_win.h"

namespace kestrelon {

long USListBox::add_item(const std::wstring& item, long index, const VARIANT& image, long data,
                         bool checked) {
  int at = static_cast<int>(index);
  if (Sorted.get()) at = model_.sorted_position(item);
  at = model_.add(item, at);
  if (at < 0) return -1;
  model_.items().set_image(at, images().number(image));
  model_.items().set_data(at, static_cast<int32_t>(data));
  if (checked) model_.items().set_flag(at, ItemFlag::kChecked, true);
  contents_changed();
  return at;
}

long USListBox::add_items(const VARIANT& items) {
  const std::vector<std::wstring> texts = texts_in(items);
  model_.reserve(static_cast<int>(texts.size()));
  long added = 0;
  for (const std::wstring& text : texts) added += model_.add(text) >= 0;
  if (Sorted.get() && added > 0) model_.sort(false);
  contents_changed();
  return added;
}

void USListBox::remove_item(long index) {
  const bool changed = model_.remove(static_cast<int>(index));
  contents_changed();
  choice_changed(changed);
}

void USListBox::clear() {
  drop_edit();
  end_drag(false);
  virtual_.forget();
  const bool changed = model_.clear();
  top_ = left_ = widest_ = 0;
  contents_changed();
  choice_changed(changed);
}

void USListBox::move_item(long from, long to) {
  if (!Sorted.get() && model_.move(static_cast<int>(from), static_cast<int>(to)))
    contents_changed();
}

void USListBox::sort(GRID_SORT_TYPE type) {
  if (type != Sort_Ascending && type != Sort_Descending) return;
  model_.sort(type == Sort_Descending);
  contents_changed();
}

long USListBox::find_item(const std::wstring& sought, GRID_SEARCH_MODE mode, bool match_case,
                          long start) const {
  const TextMatcher matcher(sought, static_cast<SearchMode>(mode), match_case);
  return model_.store().find(matcher, static_cast<int>(start));
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

long USListBox::fill_list_from_query(IDispatch* records, const std::wstring& text_field,
                                     const std::wstring& data_field, const std::wstring& tag_field,
                                     const std::wstring& image_field) {
  struct Row {
    std::wstring text, tag;
    int32_t data;
    Variant image;
  };
  std::vector<Row> taken;
  // Its objects are the program's: the list is touched when they have had their say.
  const bool read = read_records(
      records, {text_field, data_field, tag_field, image_field}, [&](RecordFields& fields) {
        taken.push_back({fields.text(0), fields.text(2), fields.number(1), fields.value(3)});
      });
  if (!read) return -1;
  clear();
  model_.reserve(static_cast<int>(taken.size()));
  for (const Row& row : taken) {
    const int at = model_.add(row.text);
    if (at < 0) break;
    model_.items().set_data(at, row.data);
    if (!row.tag.empty()) model_.items().set_tag(at, row.tag);
    if (!image_field.empty()) model_.items().set_image(at, images().number(row.image));
  }
  if (Sorted.get()) model_.sort(false);
  contents_changed();
  return static_cast<long>(taken.size());
}

}  // namespace kestrelon
