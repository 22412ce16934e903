// Rows that come, go, move, hide and are selected.
#include <algorithm>
#include <numeric>

#include "base/text.h"
#include "grid/store/grid_store.h"

namespace kestrelon {

int GridStore::add_item(std::wstring_view item, const GridNewRow& spec) {
  // The usual number of fields needs no memory.
  std::array<std::wstring_view, 32> few;
  size_t count = 0;
  const size_t wanted = static_cast<size_t>(std::max(column_count(), 1));
  if (wanted > few.size()) return add_row(split(item, L"\t"), spec);
  for (size_t from = 0; count < wanted && from <= item.size();) {
    const size_t tab = std::min(item.find(L'\t', from), item.size());
    few[count++] = item.substr(from, tab - from);
    from = tab + 1;
  }
  return add_row(std::span(few).first(count), spec);
}

int GridStore::add_row(std::span<const std::wstring_view> texts, const GridNewRow& spec) {
  if (column_count() == 0) add_column({});
  if (!take_default_style()) return kNoRoomForLook;
  const int row = row_count();
  const bool inside = spec.position >= 0 && spec.position < row;
  const int position = inside ? spec.position : row;
  if (rows_.size() == rows_.capacity()) reserve_rows(std::max(row + 16, row + row / 2));

  rows_.push_back({default_row_height_, cells_.take_slot(), 0, false, spec.visible});
  order_.insert(order_.begin() + position, row);
  visible_.insert(position, spec.visible);
  selected_.push_back(false);
  if (inside)
    for (GridPlace& place : marks_)
      if (place.row >= position) ++place.row;
  ++structure_version_;

  try {
    fill_cells(row, texts, default_style_);
    if (spec.data != 0) set_row_data(row, spec.data);
  } catch (...) {  // no memory: as if the row had never come
    totals_.forget();
    remove_row(position);
    throw;
  }
  set_row_bit(row, kGridChecked, spec.checked);
  set_row_bit(row, kGridAddedNew, spec.added_new);
  set_row_bit(row, kGridRowLocked, spec.locked);
  return position;
}

void GridStore::fill_cells(int row, std::span<const std::wstring_view> texts, int style) {
  const int count = column_count();
  const uint32_t slot = this->slot(row);
  looks_.add_uses(style, count);
  for (int i = 0; i < count; ++i) {
    const GridColumn& column = columns_[i];
    cells_.cell_at(i, slot) = {0, static_cast<int16_t>(style), column.flags, column.alignment};
  }
  for (int i = 0; i < count && static_cast<size_t>(i) < texts.size(); ++i) {
    const std::wstring_view text = texts[static_cast<size_t>(i)];
    if (text.empty()) continue;
    if (columns_[i].type == GridDataType::Boolean)
      check_by_text(row, i, numbers_(text));
    else
      cells_.set_text(i, slot, text);
  }
  if (totals_.keeps_any()) account_row(row, false);
}

void GridStore::check_by_text(int row, int column, double value) {
  cells_.set_text(column, slot(row), value != 0 ? L"True" : L"False");
  // Callers rely on it: the check of an inserted row shows on the row at the end.
  const int target = exact_rules_ ? row : row_at(row_count() - 1);
  set_cell_bit(target, column, kGridChecked, value != 0);
}

void GridStore::reserve_rows(int count) {
  const auto rows = static_cast<size_t>(std::max(count, 0));
  rows_.reserve(rows);
  order_.reserve(rows);
  visible_.reserve(count);
  selected_.reserve(count);
}

void GridStore::account_row(int index, bool leaves) {
  for (int i = 0; i < column_count(); ++i)
    if (totals_.keeps(i)) totals_.change(i, numbers_(text(index, i)), row(index).visible, leaves);
}

void GridStore::release_row(int index) {
  if (totals_.keeps_any()) account_row(index, true);
  for (int i = 0; i < column_count(); ++i)
    if (const int style = record(index, i).style; style >= 0) looks_.release(style);
  set_row_bit(index, kGridChecked, false);
  cells_.give_slot(slot(index));
}

bool GridStore::remove_row(int position) {
  if (position < 0 || position >= row_count()) return false;
  const int index = row_at(position);
  release_row(index);
  rows_.erase(rows_.begin() + index);
  order_.erase(order_.begin() + position);
  for (int& entry : order_) entry -= entry > index ? 1 : 0;
  visible_.erase(position);
  selected_.erase(index);
  for (size_t i = 0; i < marks_.size(); ++i) {
    GridPlace& place = marks_[i];
    if (place.row == position && !follows_removal(i))
      place.row = -1;
    else if (place.row > position || place.row == row_count())
      --place.row;
  }
  ++structure_version_;
  pack();
  // Foreign objects go last: they may call back.
  const std::vector<GridObject> dropped = cells_.take_dropped();
  if (rows_.empty()) clear();
  return true;
}

int GridStore::remove_selected() {
  const int count = selected_.count();
  if (count == 0) return 0;
  std::vector<int> renumbered(rows_.size(), -1);
  size_t kept = 0;
  for (int i = 0; i < row_count(); ++i) {
    if (selected_.test(i)) {
      release_row(i);
      continue;
    }
    renumbered[static_cast<size_t>(i)] = static_cast<int>(kept);
    rows_[kept++] = row(i);
  }
  for (size_t i = 0; i < marks_.size(); ++i) {
    int& place = marks_[i].row;
    const bool gone = place >= 0 && selected_.test(row_at(place));
    const auto before = order_.begin() + std::max(place, 0);
    const auto left = std::count_if(order_.begin(), before, [&](int entry) {
      return renumbered[static_cast<size_t>(entry)] >= 0;
    });
    if (place < 0 || (gone && !follows_removal(i)))
      place = -1;
    else
      place = std::min(static_cast<int>(left), static_cast<int>(kept) - 1);
  }
  rows_.resize(kept);
  std::erase_if(order_, [&](int entry) { return renumbered[static_cast<size_t>(entry)] < 0; });
  for (int& entry : order_) entry = renumbered[static_cast<size_t>(entry)];
  selected_.assign(row_count(), false);
  rebuild_visible();
  ++structure_version_;
  pack();
  const std::vector<GridObject> dropped = cells_.take_dropped();
  if (rows_.empty()) clear();
  return count;
}

// Gives memory back once far more was removed than is left.
void GridStore::pack() {
  if (rows_.capacity() > 4096 && rows_.capacity() / 4 > rows_.size()) {
    rows_.shrink_to_fit();
    order_.shrink_to_fit();
  }
  if (!cells_.wants_packing()) return;
  cells_.begin_packing();
  for (RowRecord& record : rows_) record.slot = cells_.packed(record.slot);
  cells_.finish_packing();
}

void GridStore::clear() {
  rows_ = {};
  order_ = {};
  visible_.clear();
  selected_.clear();
  cells_.clear_rows();
  looks_.clear();
  default_style_ = -1;
  totals_.forget();
  checked_count_ = 0;
  marks_ = {};
  changed_ = false;
  ++structure_version_;
  const std::vector<GridObject> dropped = cells_.take_dropped();
}

void GridStore::clear_all() {
  const ColumnSet columns = std::exchange(columns_, {});  // bound controls go last
  columns_.set_scale(columns.scale());
  cells_.clear();
  totals_.clear();
  clear();
}

int GridStore::position_of(int row) const {
  const auto found = std::find(order_.begin(), order_.end(), row);
  return found == order_.end() ? -1 : static_cast<int>(found - order_.begin());
}

bool GridStore::set_row_order(std::vector<int> order) {
  if (order.size() != rows_.size()) return false;
  BitRow seen;
  seen.assign(row_count(), false);
  for (const int entry : order)
    if (entry < 0 || entry >= row_count() || !seen.set(entry, true)) return false;
  const auto rows = marked_rows();
  order_ = std::move(order);
  place_marks(rows);
  rebuild_visible();
  ++structure_version_;
  return true;
}

void GridStore::restore_row_order() {
  std::vector<int> order(rows_.size());
  std::iota(order.begin(), order.end(), 0);
  set_row_order(std::move(order));
}

void GridStore::rebuild_visible() {
  const bool all = visible_.count() == visible_.size();
  visible_.assign(row_count(), true);
  for (int i = 0; !all && i < row_count(); ++i) visible_.set(i, row(row_at(i)).visible);
}

void GridStore::set_row_height(int index, int pixels) {
  row(index).height = std::max(pixels, 0);
}

void GridStore::set_row_image(int index, int image) {
  cells_.set_row_image(slot(index), image);
}

void GridStore::set_row_bit(int index, int16_t bit, bool value) {
  if (bit == kGridSelected) {
    selected_.set(index, value);
    return;
  }
  int16_t& flags = row(index).flags;
  if (((flags & bit) != 0) == value) return;
  flags = static_cast<int16_t>(flags ^ bit);
  if (bit == kGridChecked) checked_count_ += value ? 1 : -1;
}

void GridStore::set_group_header(int index, bool value) {
  row(index).group_header = value;
}

bool GridStore::set_row_visible(int position, bool value) {
  if (!visible_.set(position, value)) return false;
  const int index = row_at(position);
  row(index).visible = value;
  if (!value) selected_.set(index, false);
  for (int i = 0; i < column_count(); ++i)
    if (totals_.keeps(i)) totals_.change_visible(i, numbers_(text(index, i)), value);
  return true;
}

bool GridStore::select_range(bool value, int from, int to) {
  if (rows_.empty()) return false;
  const int last = row_count() - 1;
  from = std::clamp(from, 0, last);
  to = to < 0 ? last : std::min(to, last);
  if (from > to) std::swap(from, to);
  const int before = selected_.count();
  if (from == 0 && to == last) {
    if (before == (value ? row_count() : 0)) return false;
    selected_.assign(row_count(), value);
    return true;
  }
  for (int i = from; i <= to; ++i) selected_.set(row_at(i), value);
  return selected_.count() != before;
}

}  // namespace kestrelon
