// Reading, resolving, columns and the places that follow their records.
#include "grid/store/grid_store.h"

#include <algorithm>

namespace kestrelon {

GridRowInfo GridStore::row_info(int index) const {
  const RowRecord& record = row(index);
  const int16_t selected = selected_.test(index) ? kGridSelected : int16_t{0};
  return {record.height, cells_.row_image(record.slot),
          static_cast<int16_t>(record.flags | selected), record.group_header, record.visible};
}

std::wstring_view GridStore::text(int row, int column) const {
  return cells_.text(column, slot(row));
}

GridCellInfo GridStore::cell(int row, int column) const {
  const CellRecord cell = record(row, column);
  return {cells_.pool().view(cell.text), cell.flags, cell.style, cell.alignment};
}

const GridLook& GridStore::look(int style) const {
  return style >= 0 && style < looks_.size() ? looks_.look(style) : default_look_;
}

GridObject GridStore::picture(int row, int column) const {
  return cells_.picture(column, slot(row));
}

double GridStore::total(int column, bool visible_only) const {
  ColumnTotals::Total& total = totals_.total(column, visible_only);
  if (!total.kept) {
    for (const RowRecord& record : rows_)
      if (record.visible || !visible_only)
        total.sum.add(numbers_(cells_.text(column, record.slot)));
    total.kept = true;
  }
  return total.sum.value();
}

void GridStore::set_numbers(NumberReader numbers) {
  numbers_ = std::move(numbers);
  totals_.forget();
}

int GridStore::resolve_row(int position) const {
  if (rows_.empty()) return -1;
  if (position < 0) position = std::max(mark(GridMark::Caret).row, 0);
  return std::min(position, row_count() - 1);
}

int GridStore::resolve_column(int column) const {
  if (column >= 0) return columns_.valid(column) ? column : -1;
  const int position = mark(GridMark::Caret).column;
  return columns_.valid(position) ? columns_.at(position) : columns_.count() - 1 < 0 ? -1 : 0;
}

std::optional<GridCellId> GridStore::resolve(int position, int column) const {
  const int at = resolve_row(position);
  const int record = resolve_column(column);
  if (at < 0 || record < 0) return std::nullopt;
  return GridCellId{row_at(at), record};
}

int GridStore::add_column(GridNewColumn spec) {
  if (columns_.count() == 0) clear_all();
  if (!rows_.empty()) take_default_style();
  const auto marked = marked_columns();
  const int index = columns_.count();
  cells_.add_column();
  totals_.add_column();
  columns_.add(std::move(spec));
  columns_moved(marked);
  const GridColumn& added = columns_[index];
  for (int i = 0; i < row_count(); ++i) {
    record(i, index) = {0, static_cast<int16_t>(default_style_), added.flags, added.alignment};
    if (default_style_ >= 0) looks_.add_uses(default_style_, 1);
  }
  return index;
}

void GridStore::fit_columns(double width) {
  double sum = 0;
  for (int i = 0; i < column_count(); ++i) sum += column(i).visible ? column(i).width : 0;
  if (!(sum > 0)) return;
  for (int i = 0; i < column_count(); ++i)
    if (column(i).visible) set_column_width(i, column(i).width * (width / sum));
}

bool GridStore::set_column_order(std::span<const int> order) {
  const auto marked = marked_columns();
  if (!columns_.set_order(order)) return false;
  columns_moved(marked);
  return true;
}

bool GridStore::move_column(int from, int to) {
  const auto marked = marked_columns();
  if (!columns_.move(from, to)) return false;
  columns_moved(marked);
  return true;
}

bool GridStore::swap_columns(int a, int b) {
  const auto marked = marked_columns();
  if (!columns_.swap(a, b)) return false;
  columns_moved(marked);
  return true;
}

void GridStore::restore_column_order() {
  const auto marked = marked_columns();
  columns_.restore_order();
  columns_moved(marked);
}

std::array<int, kGridMarks> GridStore::marked_columns() const {
  std::array<int, kGridMarks> columns;
  for (size_t i = 0; i < columns.size(); ++i)
    columns[i] = marks_[i].column < 0 ? -1 : column_at(marks_[i].column);
  return columns;
}

void GridStore::columns_moved(const std::array<int, kGridMarks>& marked) {
  for (size_t i = 0; i < marked.size(); ++i)
    marks_[i].column = marked[i] < 0 ? -1 : columns_.position_of(marked[i]);
  ++structure_version_;
}

void GridStore::set_mark(GridMark mark, GridPlace place) {
  place.row = std::clamp(place.row, -1, row_count() - 1);
  place.column = std::clamp(place.column, -1, column_count() - 1);
  marks_[static_cast<size_t>(mark)] = place;
}

std::array<int, kGridMarks> GridStore::marked_rows() const {
  std::array<int, kGridMarks> rows;
  for (size_t i = 0; i < rows.size(); ++i) rows[i] = marks_[i].row < 0 ? -1 : row_at(marks_[i].row);
  return rows;
}

void GridStore::place_marks(const std::array<int, kGridMarks>& rows) {
  for (size_t i = 0; i < rows.size(); ++i) marks_[i].row = rows[i] < 0 ? -1 : position_of(rows[i]);
}

// Caret and anchor go to the row that takes the place of a removed one; an edit ends with its row.
bool GridStore::follows_removal(size_t mark) {
  return mark == static_cast<size_t>(GridMark::Caret) ||
         mark == static_cast<size_t>(GridMark::Anchor);
}

}  // namespace kestrelon
