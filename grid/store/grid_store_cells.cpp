// Texts, checks, progress, flags and looks of cells.
#include <algorithm>
#include <unordered_map>

#include "base/rounding.h"
#include "grid/store/grid_store.h"

namespace kestrelon {

// The running sums follow the text.
void GridStore::replace_text(int index, int column, std::wstring_view text) {
  const bool kept = totals_.keeps(column);
  const double before = kept ? numbers_(this->text(index, column)) : 0;
  const double after = kept ? numbers_(text) : 0;
  cells_.set_text(column, slot(index), text);
  if (!kept) return;
  totals_.change(column, before, row(index).visible, true);
  totals_.change(column, after, row(index).visible, false);
}

void GridStore::set_text(int row, int column, std::wstring_view text) {
  if (columns_[column].type != GridDataType::Boolean) return replace_text(row, column, text);
  const bool value = !text.empty() && numbers_(text) != 0;
  set_cell_bit(row, column, kGridChecked, value);
  replace_text(row, column, text.empty() ? text : value ? L"True" : L"False");
}

bool GridStore::checked(int row, int column) const {
  return (record(row, column).flags & kGridChecked) != 0;
}

void GridStore::set_checked(int row, int column, bool value) {
  set_cell_bit(row, column, kGridChecked, value);
  if (columns_[column].type == GridDataType::Boolean)
    replace_text(row, column, value ? L"True" : L"False");
}

void GridStore::set_progress(int row, int column, int16_t value) {
  record(row, column).flags = value;
  if (columns_[column].type == GridDataType::ProgressBar)
    replace_text(row, column, std::to_wstring(value));
}

void GridStore::set_cell_bit(int row, int column, int16_t bit, bool value) {
  int16_t& flags = record(row, column).flags;
  flags = static_cast<int16_t>(value ? flags | bit : flags & ~bit);
}

void GridStore::set_alignment(int row, int column, GridAlignment value) {
  record(row, column).alignment = value;
}

std::wstring_view GridStore::cell_tag(int row, int column) const {
  return cells_.cell_tag(column, slot(row));
}

void GridStore::set_cell_tag(int row, int column, std::wstring_view text) {
  cells_.set_cell_tag(column, slot(row), text);
}

void GridStore::set_cell_data(int row, int column, int32_t value) {
  cells_.set_cell_data(column, slot(row), value);
}

void GridStore::set_picture(int row, int column, GridObject picture) {
  const GridObject old = cells_.set_picture(column, slot(row), std::move(picture));
}

void GridStore::mark_changed(int row, int column) {
  set_cell_bit(row, column, kGridChanged, true);
  set_row_bit(row, kGridChanged, true);
  changed_ = true;
}

void GridStore::set_default_look(const GridLook& look) {
  if (default_look_ == look) return;
  default_look_ = look;
  if (default_style_ >= 0) looks_.release(default_style_);
  default_style_ = -1;
}

bool GridStore::take_default_style() {
  if (default_style_ < 0) default_style_ = looks_.acquire(default_look_);
  return default_style_ >= 0;
}

bool GridStore::clip(GridRange& range) const {
  range.row_from = std::max(range.row_from, 0);
  range.column_from = std::max(range.column_from, 0);
  if (range.row_to < 0 || range.row_to >= row_count()) range.row_to = row_count() - 1;
  if (range.column_to < 0 || range.column_to >= column_count())
    range.column_to = column_count() - 1;
  return range.row_from <= range.row_to && range.column_from <= range.column_to;
}

bool GridStore::change_look(const GridRange& wanted, const std::function<void(GridLook&)>& edit) {
  GridRange range = wanted;
  if (!clip(range)) return true;
  const auto for_each = [&](auto&& visit) {
    for (int c = range.column_from; c <= range.column_to; ++c)
      for (int p = range.row_from; p <= range.row_to; ++p) visit(record(row_at(p), c));
  };
  struct Change {
    int cells = 0;
    int style = LookPool::kFull;
  };
  std::unordered_map<int16_t, Change> changes;
  for_each([&](const CellRecord& cell) { ++changes[cell.style].cells; });
  // All new looks are found before the first cell takes one, so a full pool changes nothing.
  bool room = true;
  for (auto& [style, change] : changes) {
    GridLook look = this->look(style);
    edit(look);
    change.style = looks_.acquire(look, change.cells);
    room = room && change.style != LookPool::kFull;
  }
  if (room)
    for_each([&](CellRecord& cell) {
      cell.style = static_cast<int16_t>(changes.find(cell.style)->second.style);
    });
  for (const auto& [style, change] : changes)
    if (const int unused = room ? style : change.style; unused >= 0)
      looks_.release(unused, change.cells);
  return room;
}

void GridStore::apply_bit(const GridRange& wanted, int16_t bit, bool value) {
  GridRange range = wanted;
  if (!clip(range)) return;
  for (int c = range.column_from; c <= range.column_to; ++c)
    for (int p = range.row_from; p <= range.row_to; ++p) set_cell_bit(row_at(p), c, bit, value);
}

bool GridStore::format_cells(const GridRange& range, GridCellFormat mode, std::wstring_view value,
                             GridAlignment alignment) {
  const double number = numbers_(value);
  const auto look = [&](auto&& edit) { return change_look(range, edit); };
  const auto bit = [&](int16_t flag) {
    apply_bit(range, flag, number != 0);
    return true;
  };
  switch (mode) {
    case GridCellFormat::BackColor:
      return look([=](GridLook& l) {
        l.back_color = static_cast<uint32_t>(round_half_even<int64_t>(number));
      });
    case GridCellFormat::ForeColor:
      return look([=](GridLook& l) {
        l.fore_color = static_cast<uint32_t>(round_half_even<int64_t>(number));
      });
    case GridCellFormat::Image:
      return look([=](GridLook& l) { l.image = round_half_even<int16_t>(number); });
    case GridCellFormat::HandPointer:
      return look([=](GridLook& l) { l.hand_pointer = number != 0; });
    case GridCellFormat::FontName:
      if (value.find_first_not_of(L' ') == std::wstring_view::npos) return true;
      return look([=](GridLook& l) { l.font_name = value; });
    case GridCellFormat::FontBold:
      return bit(kGridBold);
    case GridCellFormat::FontItalic:
      return bit(kGridItalic);
    case GridCellFormat::FontUnderline:
      return bit(kGridUnderline);
    case GridCellFormat::FontStrikethrough:
      return bit(kGridStrikethrough);
    case GridCellFormat::Alignment: {
      GridRange clipped = range;
      if (!clip(clipped)) return true;
      for (int c = clipped.column_from; c <= clipped.column_to; ++c)
        for (int p = clipped.row_from; p <= clipped.row_to; ++p)
          set_alignment(row_at(p), c, alignment);
      return true;
    }
  }
  return true;
}

bool GridStore::reset_looks() {
  return change_look({}, [this](GridLook& look) { look = default_look_; });
}

}  // namespace kestrelon
