#include "grid/store/cell_block.h"

#include <algorithm>
#include <new>

namespace kestrelon {

uint32_t CellBlock::take_slot() {
  const uint32_t slot = free_.empty() ? next_ : free_.back();
  for (Column& column : columns_) column.cells.at(slot);
  if (free_.empty())
    ++next_;
  else
    free_.pop_back();
  ++live_;
  return slot;
}

void CellBlock::give_slot(uint32_t slot) {
  free_.push_back(slot);
  --live_;
  for (Column& column : columns_) {
    pool_.remove(column.cells.reset(slot).text);
    pool_.remove(column.tags.reset(slot));
    column.data.reset(slot);
    if (const auto picture = column.pictures.find(slot); picture != column.pictures.end()) {
      dropped_.push_back(std::move(picture->second));
      column.pictures.erase(picture);
    }
  }
  pool_.remove(row_tags_.reset(slot));
  row_data_.reset(slot);
  set_row_image(slot, 0);
  sweep_if_wanted();
}

void CellBlock::begin_packing() {
  // The holes below the cut, to be filled from the back.
  std::erase_if(free_, [this](uint32_t slot) { return slot >= live_; });
}

uint32_t CellBlock::packed(uint32_t slot) {
  if (slot < live_) return slot;
  const uint32_t hole = free_.back();
  free_.pop_back();
  move_slot(slot, hole);
  return hole;
}

void CellBlock::finish_packing() {
  next_ = static_cast<uint32_t>(live_);
  free_.clear();
  free_.shrink_to_fit();
  for (Column& column : columns_) {
    column.cells.truncate(next_);
    column.tags.truncate(next_);
    column.data.truncate(next_);
  }
  row_tags_.truncate(next_);
  row_data_.truncate(next_);
  row_images_.truncate(next_);
}

void CellBlock::move_slot(uint32_t from, uint32_t to) {
  for (Column& column : columns_) {
    column.cells.move(from, to);
    column.tags.move(from, to);
    column.data.move(from, to);
    if (auto node = column.pictures.extract(from)) {
      node.key() = to;
      column.pictures.insert(std::move(node));
    }
  }
  row_tags_.move(from, to);
  row_data_.move(from, to);
  row_images_.move(from, to);
}

void CellBlock::clear_rows() {
  for (Column& column : columns_) {
    for (auto& [slot, picture] : column.pictures) dropped_.push_back(std::move(picture));
    column = {};
  }
  pool_.clear();
  row_tags_ = {};
  row_data_ = {};
  row_images_ = {};
  free_ = {};
  next_ = 0;
  live_ = 0;
  row_image_count_ = 0;
}

void CellBlock::clear() {
  clear_rows();
  columns_.clear();
}

void CellBlock::set_text(int column, uint32_t slot, std::wstring_view text) {
  CellRecord& cell = cell_at(column, slot);
  cell.text = pool_.replace(cell.text, text);
  sweep_if_wanted();
}

void CellBlock::put(SlotArray<int32_t>& array, uint32_t slot, int32_t value) {
  if (array.get(slot) != value) array.at(slot) = value;
}

void CellBlock::put(SlotArray<TextPool::Ref>& array, uint32_t slot, std::wstring_view text) {
  if (text.empty() && array.get(slot) == 0) return;
  TextPool::Ref& ref = array.at(slot);
  ref = pool_.replace(ref, text);
  sweep_if_wanted();
}

void CellBlock::set_row_image(uint32_t slot, int32_t value) {
  row_image_count_ += (value != 0 ? 1 : 0) - (row_image(slot) != 0 ? 1 : 0);
  put(row_images_, slot, value);
}

GridObject CellBlock::picture(int column, uint32_t slot) const {
  const auto found = block(column).pictures.find(slot);
  return found == block(column).pictures.end() ? nullptr : found->second;
}

GridObject CellBlock::set_picture(int column, uint32_t slot, GridObject picture) {
  auto& pictures = block(column).pictures;
  GridObject old = std::move(pictures[slot]);
  if (picture)
    pictures[slot] = std::move(picture);
  else
    pictures.erase(slot);
  return old;
}

void CellBlock::sweep_if_wanted() {
  if (!pool_.wants_sweep()) return;
  pool_.begin_sweep();
  const auto move = [this](TextPool::Ref& ref) { ref = pool_.swept(ref); };
  try {
    for (Column& column : columns_) {
      column.cells.for_each([&](CellRecord& cell) { move(cell.text); });
      column.tags.for_each(move);
    }
    row_tags_.for_each(move);
  } catch (const std::bad_alloc&) {  // what is not moved stays where it is
  }
  pool_.end_sweep();
}

}  // namespace kestrelon
