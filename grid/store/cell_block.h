// The cells of all rows, column by column, and what few rows and cells have: tags, data, pictures.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "grid/grid_types.h"
#include "grid/store/slot_array.h"
#include "grid/store/text_pool.h"

namespace kestrelon {

/// 12 bytes a cell, whatever the word size.
struct CellRecord {
  TextPool::Ref text = 0;
  int16_t style = -1;
  int16_t flags = 0;
  GridAlignment alignment = GridAlignment::LeftTop;
};

/// Rows have a slot each, which stays the same while the row lives, so removing or moving a row
/// record moves no cell. A column lies together, which is how sorting and searching read.
class CellBlock {
 public:
  void add_column() { columns_.emplace_back(); }
  /// The caller writes every cell of the new slot before it is read.
  uint32_t take_slot();
  void give_slot(uint32_t slot);
  /// Where `give_slot` has left more holes than rows: the slots above `target_count()` are to be
  /// moved below, by `move_to_hole`, and then cut off by `finish_packing`.
  bool wants_packing() const { return free_.size() > 1024 && free_.size() > live_; }
  void begin_packing();
  uint32_t packed(uint32_t slot);
  void finish_packing();
  /// All columns and rows.
  void clear();
  /// All rows.
  void clear_rows();

  CellRecord cell(int column, uint32_t slot) const { return block(column).cells.get(slot); }
  CellRecord& cell_at(int column, uint32_t slot) { return block(column).cells.at(slot); }
  std::wstring_view text(int column, uint32_t slot) const {
    return pool_.view(cell(column, slot).text);
  }
  void set_text(int column, uint32_t slot, std::wstring_view text);

  std::wstring_view cell_tag(int column, uint32_t slot) const {
    return pool_.view(block(column).tags.get(slot));
  }
  void set_cell_tag(int column, uint32_t slot, std::wstring_view text) {
    put(block(column).tags, slot, text);
  }
  int32_t cell_data(int column, uint32_t slot) const { return block(column).data.get(slot); }
  void set_cell_data(int column, uint32_t slot, int32_t value) {
    put(block(column).data, slot, value);
  }
  GridObject picture(int column, uint32_t slot) const;
  /// Gives the old picture, for the caller to drop when the store is whole again.
  [[nodiscard]] GridObject set_picture(int column, uint32_t slot, GridObject picture);

  std::wstring_view row_tag(uint32_t slot) const { return pool_.view(row_tags_.get(slot)); }
  void set_row_tag(uint32_t slot, std::wstring_view text) { put(row_tags_, slot, text); }
  int32_t row_data(uint32_t slot) const { return row_data_.get(slot); }
  void set_row_data(uint32_t slot, int32_t value) { put(row_data_, slot, value); }
  int32_t row_image(uint32_t slot) const { return row_images_.get(slot); }
  void set_row_image(uint32_t slot, int32_t value);
  int row_image_count() const { return row_image_count_; }

  /// Pictures of removed slots, to be dropped by the caller when the store is whole again: a
  /// foreign object may run anything as it goes.
  std::vector<GridObject> take_dropped() { return std::exchange(dropped_, {}); }

  size_t slot_count() const { return next_; }
  size_t live_count() const { return live_; }
  const TextPool& pool() const { return pool_; }

 private:
  struct Column {
    SlotArray<CellRecord> cells;
    SlotArray<TextPool::Ref> tags;
    SlotArray<int32_t> data;
    std::map<uint32_t, GridObject> pictures;
  };

  Column& block(int column) { return columns_[static_cast<size_t>(column)]; }
  const Column& block(int column) const { return columns_[static_cast<size_t>(column)]; }
  void put(SlotArray<int32_t>& array, uint32_t slot, int32_t value);
  void put(SlotArray<TextPool::Ref>& array, uint32_t slot, std::wstring_view text);
  void move_slot(uint32_t from, uint32_t to);
  void sweep_if_wanted();

  TextPool pool_;
  std::vector<Column> columns_;
  SlotArray<TextPool::Ref> row_tags_;
  SlotArray<int32_t> row_data_;
  SlotArray<int32_t> row_images_;
  std::vector<GridObject> dropped_;
  std::vector<uint32_t> free_;
  uint32_t next_ = 0;  // slots ever taken
  size_t live_ = 0;
  int row_image_count_ = 0;
};

}  // namespace kestrelon
