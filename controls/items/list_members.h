// The members that list box and combo box have in common: their items, one by one and all together.
// An index out of range reads empty and changes nothing.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "contract/frame_types.h"
#include "controls/items/images_pack.h"
#include "controls/items/list_records.h"
#include "controls/items/text_lines.h"
#include "lists/collation_win.h"
#include "lists/list_model.h"

namespace kestrelon {

template <class Base>
class ListMembers : public ImagesPack<Base> {
 public:
  using Name = const std::wstring&;
  using ImagesPack<Base>::ImagesPack;

  std::wstring list(long index) { return std::wstring(model_.store().text(at(index))); }
  void set_list(long index, Name text) {
    model_.items().set_text(at(index), text);
    if (keeps_sorted()) model_.sort(false);
    texts_changed();
  }
  long item_data(long index) const { return model_.store().item(at(index)).data; }
  void set_item_data(long index, long data) {
    model_.items().set_data(at(index), static_cast<int32_t>(data));
  }
  std::wstring item_tag(long index) const { return std::wstring(model_.store().tag(at(index))); }
  void set_item_tag(long index, Name tag) { model_.items().set_tag(at(index), tag); }
  Variant item_image(long index) const {
    return this->images().value(model_.store().item(at(index)).image);
  }
  void set_item_image(long index, const VARIANT& image) {
    model_.items().set_image(at(index), this->images().number(image));
    item_look_changed();
  }
  bool item_checked(long index) { return has_flag(index, ItemFlag::kChecked); }
  void set_item_checked(long index, bool on) { set_flag(index, ItemFlag::kChecked, on); }
  bool item_enabled(long index) const {
    return model_.has(at(index)) && !has_flag(index, ItemFlag::kDisabled);
  }
  void set_item_enabled(long index, bool on) { set_flag(index, ItemFlag::kDisabled, !on); }
  OLE_COLOR item_fore_color(long index) const { return model_.store().item(at(index)).fore_color; }
  void set_item_fore_color(long index, OLE_COLOR color) {
    model_.items().set_fore_color(at(index), color);
    item_look_changed();
  }
  OLE_COLOR item_back_color(long index) const { return model_.store().item(at(index)).back_color; }
  void set_item_back_color(long index, OLE_COLOR color) {
    model_.items().set_back_color(at(index), color);
    item_look_changed();
  }
  bool item_bold(long index) const { return has_flag(index, ItemFlag::kBold); }
  void set_item_bold(long index, bool on) { set_flag(index, ItemFlag::kBold, on); }
  bool item_header(long index) const { return has_flag(index, ItemFlag::kHeader); }
  void set_item_header(long index, bool on) { set_flag(index, ItemFlag::kHeader, on); }
  long list_count() const { return model_.count(); }
  long new_index() const { return model_.new_index(); }

  long add_item(Name text, long index, const VARIANT& image, long data, bool checked) {
    const int place = model_.add(text, keeps_sorted() ? model_.sorted_position(text) : at(index));
    if (place < 0) return -1;
    model_.items().set_image(place, this->images().number(image));
    model_.items().set_data(place, static_cast<int32_t>(data));
    if (checked) model_.items().set_flag(place, ItemFlag::kChecked, true);
    contents_changed();
    return place;
  }
  long add_items(const VARIANT& items) {
    const std::vector<std::wstring> texts = texts_in(items);
    model_.reserve(static_cast<int>(texts.size()));
    long added = 0;
    for (const std::wstring& text : texts) added += model_.add(text) >= 0;
    if (keeps_sorted() && added > 0) model_.sort(false);
    contents_changed();
    return added;
  }
  void remove_item(long index) {
    const bool changed = model_.remove(at(index));
    contents_changed();
    choice_changed(changed);
  }
  void clear() {
    before_clear();
    const bool changed = model_.clear();
    contents_changed();
    choice_changed(changed);
  }
  void sort(GRID_SORT_TYPE type) {
    if (type != Sort_Ascending && type != Sort_Descending) return;
    model_.sort(type == Sort_Descending);
    contents_changed();
  }
  long find_item(Name sought, GRID_SEARCH_MODE mode, bool match_case, long start) const {
    const TextMatcher matcher(sought, static_cast<SearchMode>(mode), match_case);
    return model_.store().find(matcher, at(start));
  }
  long fill_list_from_query(IDispatch* records, Name text, Name data, Name tag, Name image) {
    // Its objects are the program's: the list is touched when they have had their say.
    std::vector<ListRecord> taken;
    if (!read_list_records(records, {text, data, tag, image}, taken)) return -1;
    clear();
    model_.reserve(static_cast<int>(taken.size()));
    for (const ListRecord& record : taken) {
      const int place = model_.add(record.text);
      if (place < 0) break;
      model_.items().set_data(place, record.data);
      if (!record.tag.empty()) model_.items().set_tag(place, record.tag);
      if (!image.empty()) model_.items().set_image(place, this->images().number(record.image));
    }
    if (keeps_sorted()) model_.sort(false);
    contents_changed();
    return static_cast<long>(taken.size());
  }

 protected:
  virtual bool keeps_sorted() const = 0;
  /// Items have come, gone or changed places.
  virtual void contents_changed() = 0;
  /// One text has changed.
  virtual void texts_changed() = 0;
  virtual void item_look_changed() = 0;
  /// Current item or selection may have changed.
  virtual void choice_changed(bool changed) = 0;
  virtual void before_clear() {}

  static int at(long index) { return static_cast<int>(index); }

  ListModel model_{language_collation()};

 private:
  bool has_flag(long index, ItemFlag flag) const {
    return model_.store().has_flag(at(index), flag);
  }
  void set_flag(long index, ItemFlag flag, bool on) {
    if (model_.items().set_flag(at(index), flag, on)) item_look_changed();
  }
};

}  // namespace kestrelon
