// The items of a list in their order: texts in an arena, records of fixed size, and one array of
// numbers that says which record stands where. Moving, sorting and inserting move those numbers
// alone.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "lists/bit_set.h"
#include "lists/collation.h"
#include "lists/column_widths.h"
#include "lists/list_entry.h"
#include "lists/text_arena.h"
#include "lists/text_match.h"

namespace kestrelon {

/// Indexes count from 0 and mean positions in the order; one out of range reads empty and changes
/// nothing. A slot is the number of a record: it stays with its item for life.
class ListStore {
 public:
  /// The order of the language for sorting; must outlive the store.
  explicit ListStore(const Collation& collation = folded_collation()) : collation_(&collation) {}

  int count() const { return static_cast<int>(order_.size()); }
  bool has(int index) const { return index >= 0 && index < count(); }

  /// Inserts before `index`; any other than 0 to count() means the end. The result is the position,
  /// or -1 when the list is full.
  int add(std::wstring_view text, int index = -1);
  /// Room for that many more: one growth instead of many.
  void reserve(int more);
  void remove(int index);
  void clear();
  /// Takes an item out and puts it where it then has the position `to`. False, with nothing
  /// changed, where one of them is none.
  bool move(int from, int to);

  std::wstring_view text(int index) const;
  void set_text(int index, std::wstring_view text);
  std::wstring_view tag(int index) const;
  void set_tag(int index, std::wstring_view text);

  /// The record to be read; a blank one out of range.
  const ListEntry& item(int index) const;
  bool has_flag(int index, ItemFlag flag) const { return item(index).has(flag); }
  /// True when that changed something.
  bool set_flag(int index, ItemFlag flag, bool value);
  void set_data(int index, int32_t data);
  void set_image(int index, int32_t image);
  void set_fore_color(int index, uint32_t color);
  void set_back_color(int index, uint32_t color);
  int checked_count() const { return checked_; }

  uint32_t slot(int index) const { return order_[static_cast<size_t>(index)]; }
  /// The position of a record, -1 of none: a walk, for rare use.
  int index_of_slot(uint32_t slot) const;

  /// Stable, by keys made once for each text.
  void sort(bool descending);
  /// Where a text would stand in a sorted list, behind its equals. The list must be sorted upwards.
  int sorted_position(std::wstring_view text);
  /// The first item from `start` on that matches, -1 if none; a start out of range is 0. A column
  /// is the piece of a text between its tabs.
  int find(const TextMatcher& matcher, int start = 0, int column = kWholeText) const;
  /// Hides what does not match, shows nothing. True when that changed something.
  bool hide_others(const TextMatcher& matcher, int column = kWholeText);
  bool show_all();

  /// The positions of the shown items, upwards. Valid until the next change.
  std::span<const int32_t> shown() const;
  /// Whether all are shown: a row is then a position, and shown() need not be asked.
  bool all_shown() const { return hidden_ == 0; }

 private:
  static constexpr int kMaxItems = 50'000'000;
  ListEntry* find_item(int index);
  std::wstring_view text_of(const ListEntry& item) const {
    return texts_.view({item.text_at, item.text_length});
  }
  uint32_t take_slot();
  void fetch_ahead(int index) const;
  void make_key(ListEntry& item);
  void make_keys();
  std::span<const uint8_t> key_of(const ListEntry& item) const;
  std::vector<uint32_t> slots_by_key();
  void rank_items();
  void compact_if_wasteful();
  void rows_changed() { shown_valid_ = false; }

  std::vector<ListEntry> items_;  // by slot
  std::vector<uint32_t> order_;   // by position
  std::vector<uint32_t> free_;    // slots to use again
  TextArena texts_;               // and tags
  std::vector<uint8_t> keys_;     // sort keys of those that have one
  size_t dead_keys_ = 0;          // bytes of keys_ that belong to nobody
  bool ranked_ = false;           // every record has its rank
  const Collation* collation_;
  mutable std::vector<int32_t> shown_;
  mutable bool shown_valid_ = false;
  int checked_ = 0;
  int hidden_ = 0;
};

}  // namespace kestrelon
