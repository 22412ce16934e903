// The data grid as one would write it without a thought for time and memory: what the real store is
// compared with.
#pragma once

#include <algorithm>
#include <array>
#include <optional>

#include "grid/store/grid_store.h"
#include "tests/grid/store/test_numbers.h"

namespace kestrelon {

struct PlainCell {
  std::wstring text;
  std::wstring tag;
  GridLook look;
  GridAlignment alignment{};
  int16_t flags = 0;
  int32_t data = 0;
  GridObject picture;
};

struct PlainRow {
  int id = 0;  // of the record, for the places that follow it
  int32_t height = 0;
  int32_t image = 0;
  int32_t data = 0;
  int16_t flags = 0;
  bool group_header = false;
  bool visible = true;
  std::wstring tag;
  std::vector<PlainCell> cells;
};

struct PlainColumn {
  GridDataType type{};
  GridAlignment alignment{};
  int16_t flags = 0;
};

struct PlainMark {
  std::optional<int> id;
  int column = -1;  // position
};

class PlainGrid {
 public:
  std::vector<PlainColumn> columns;
  std::vector<int> column_order;
  std::vector<PlainRow> rows;  // in the order of creation
  std::vector<int> order;
  GridLook default_look;
  int default_height = 17;
  bool exact = false;
  bool changed = false;
  std::array<PlainMark, kGridMarks> marks;

  int last() const { return static_cast<int>(rows.size()) - 1; }
  PlainRow& at(int position) {
    return rows[static_cast<size_t>(order[static_cast<size_t>(position)])];
  }

  void add_column(GridDataType type, GridAlignment alignment, bool wrap, int position) {
    const int index = static_cast<int>(columns.size());
    columns.push_back({type, alignment, wrap ? kGridWordWrap : int16_t{0}});
    if (position <= 0 || position > index) position = index;
    column_order.insert(column_order.begin() + position, index);
    for (PlainMark& mark : marks)
      if (mark.column >= position) ++mark.column;
    for (PlainRow& row : rows) row.cells.push_back(new_cell(index));
  }

  int add(const std::vector<std::wstring>& texts, const GridNewRow& spec) {
    PlainRow row;
    row.id = next_id_++;
    row.height = default_height;
    row.data = spec.data;
    row.visible = spec.visible;
    row.flags = static_cast<int16_t>((spec.checked ? kGridChecked : 0) |
                                     (spec.added_new ? kGridAddedNew : 0) |
                                     (spec.locked ? kGridRowLocked : 0));
    for (size_t i = 0; i < columns.size(); ++i) row.cells.push_back(new_cell(static_cast<int>(i)));
    rows.push_back(row);
    const int position = spec.position >= 0 && spec.position < last() ? spec.position : last();
    order.insert(order.begin() + position, last());
    for (size_t i = 0; i < std::min(texts.size(), columns.size()); ++i) {
      if (texts[i].empty()) continue;
      PlainCell& cell = rows.back().cells[i];
      cell.text = texts[i];
      if (columns[i].type != GridDataType::Boolean) continue;
      const bool on = test_number(texts[i]) != 0;
      cell.text = on ? L"True" : L"False";
      set(exact ? cell.flags : at(last()).cells[i].flags, kGridChecked, on);
    }
    return position;
  }

  void remove(int position) {
    const int gone = order[static_cast<size_t>(position)];
    for (size_t i = 0; i < marks.size(); ++i) {
      if (marks[i].id != at(position).id) continue;
      const int next = position < last() ? position + 1 : position - 1;
      marks[i].id.reset();
      if (i < 2 && next >= 0) marks[i].id = at(next).id;  // caret and anchor
    }
    rows.erase(rows.begin() + gone);
    order.erase(order.begin() + position);
    for (int& entry : order)
      if (entry > gone) --entry;
    if (rows.empty()) clear();
  }

  void remove_selected() {
    for (int i = 0; i <= last();) {
      if ((at(i).flags & kGridSelected) != 0)
        remove(i);
      else
        ++i;
    }
  }

  void clear() {
    rows.clear();
    order.clear();
    marks = {};
    changed = false;
  }

  int position_of(int id) {
    for (int i = 0; i <= last(); ++i)
      if (at(i).id == id) return i;
    return -1;
  }

  double total(size_t column, bool visible_only) const {
    double sum = 0;
    for (const PlainRow& row : rows)
      if (row.visible || !visible_only) sum += test_number(row.cells[column].text);
    return sum;
  }

  static void set(int16_t& flags, int16_t bit, bool value) {
    flags = static_cast<int16_t>(value ? flags | bit : flags & ~bit);
  }

 private:
  PlainCell new_cell(int column) {
    const PlainColumn& record = columns[static_cast<size_t>(column)];
    PlainCell cell;
    cell.look = default_look;
    cell.alignment = record.alignment;
    cell.flags = record.flags;
    return cell;
  }

  int next_id_ = 1;
};

}  // namespace kestrelon
