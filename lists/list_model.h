// A list as its user knows it: items, which of them show, which is current, which are selected.
// Everything here stays with its item, whatever is inserted, removed, moved or sorted.
#pragma once

#include <string_view>

#include "lists/list_keys.h"
#include "lists/list_store.h"

namespace kestrelon {

/// Members that change the current item or the selection tell it by true. Indexes out of range do
/// nothing. A row is a place among the items that show.
class ListModel {
 public:
  explicit ListModel(const Collation& collation = folded_collation()) : store_(collation) {}

  const ListStore& store() const { return store_; }
  /// For what changes neither order, nor number, nor what shows or can be chosen.
  ListStore& items() { return store_; }

  /// Above 0: the program holds that many items, and the store is not looked at.
  void set_virtual_count(int count);
  bool is_virtual() const { return virtual_count_ > 0; }
  int count() const { return is_virtual() ? virtual_count_ : store_.count(); }
  bool has(int index) const { return index >= 0 && index < count(); }

  // Rows.
  int row_count() const;
  int index_of_row(int row) const;
  /// The row of an item; of a hidden one where it would be.
  int row_of_index(int index) const;
  bool shows(int index) const;
  /// Not a heading, not disabled.
  bool selectable(int index) const;

  // Order and contents.
  int add(std::wstring_view text, int index = -1);
  void reserve(int more) { store_.reserve(more); }
  bool remove(int index);
  bool clear();
  bool move(int from, int to);
  void sort(bool descending);
  int sorted_position(std::wstring_view text) { return store_.sorted_position(text); }
  bool set_visible(int index, bool visible) {
    return store_.set_flag(index, ItemFlag::kHidden, !visible);
  }
  bool filter(const TextMatcher& matcher, int column = kWholeText) {
    return store_.hide_others(matcher, column);
  }
  bool filter_off() { return store_.show_all(); }
  int new_index() const { return new_index_; }

  // Choice.
  SelectMode mode() const { return mode_; }
  /// Keeps of a selection what the mode allows.
  void set_mode(SelectMode mode);
  int current() const { return current_; }
  /// As a program does it: alone selected where one is selected at most, otherwise the mark alone
  /// moves. Anything out of range is none.
  bool set_current(int index);
  bool selected(int index) const;
  bool set_selected(int index, bool value);
  int selected_count() const { return selected_.count(); }
  /// What shows and can be chosen; with one selection at most nothing.
  bool select_all();
  bool unselect_all();
  /// As a user does it.
  bool choose(int index, Choice how);
  /// The pointer was dragged from where it was pressed to `index`.
  bool drag_to(int index);

  /// The item that is `rows` rows from the current one and can be chosen, the nearest beyond it if
  /// that one cannot, back from there at the ends; -1 if there is none.
  int step(int rows) const;
  /// The item that can be chosen next to `row`, looked for downwards or upwards first.
  int nearest(int row, bool down) const;
  /// The first item from `start` on that matches, shows and can be chosen; -1 if there is none.
  int find_choice(const TextMatcher& matcher, int start, int column = kWholeText) const;
  /// The same for a key typed ahead: from the current item or the next one on, and around the end.
  int find_ahead(const TextMatcher& matcher, bool from_next, int column = kWholeText) const;

 private:
  uint32_t bit(int index) const {
    return is_virtual() ? static_cast<uint32_t>(index) : store_.slot(index);
  }
  bool select_alone(int index);
  void select_range(int from, int to);
  bool toggle(int index);
  void shift_marks(int from, int by);

  ListStore store_;
  BitSet selected_;  // by slot; by index where the program holds the items
  SelectMode mode_ = SelectMode::kSingle;
  int virtual_count_ = 0;
  int current_ = -1;
  int anchor_ = -1;  // where a range begins
  int new_index_ = -1;
};

}  // namespace kestrelon
