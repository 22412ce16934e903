#include "grid/store/store_check.h"

#include <algorithm>

namespace kestrelon {
namespace {

bool is_permutation_of_all(std::vector<int> order, int count) {
  std::sort(order.begin(), order.end());
  for (size_t i = 0; i < order.size(); ++i)
    if (order[i] != static_cast<int>(i)) return false;
  return static_cast<int>(order.size()) == count;
}

}  // namespace

std::string GridStoreCheck::fault(const GridStore& store) {
  GridStoreCheck check(store);
  check.orders();
  if (check.fault_.empty()) {
    check.rows();
    check.cells();
    check.totals();
    check.marks();
  }
  return check.fault_;
}

void GridStoreCheck::orders() {
  expect(is_permutation_of_all(store_.order_, store_.row_count()), "row order is no permutation");
  expect(is_permutation_of_all(store_.column_order(), store_.column_count()),
         "column order is no permutation");
  expect(store_.visible_.size() == store_.row_count(), "visible bits are not one a row");
  expect(store_.selected_.size() == store_.row_count(), "selected bits are not one a row");
  expect(store_.cells_.live_count() == store_.rows_.size(), "slots are not one a row");
}

void GridStoreCheck::rows() {
  std::vector<bool> taken(store_.cells_.slot_count());
  int visible = 0;
  int selected = 0;
  int checked = 0;
  int images = 0;
  for (int i = 0; i < store_.row_count(); ++i) {
    const int row = store_.row_at(i);
    const uint32_t slot = store_.slot(row);
    if (slot >= taken.size() || taken[slot]) return expect(false, "two rows in one slot");
    taken[slot] = true;
    const GridRowInfo info = store_.row_info(row);
    expect(store_.visible_.test(i) == info.visible, "visible bit differs from its row");
    visible += info.visible ? 1 : 0;
    selected += info.has(kGridSelected) ? 1 : 0;
    checked += info.has(kGridChecked) ? 1 : 0;
    images += info.image != 0 ? 1 : 0;
  }
  expect(visible == store_.visible_count(), "wrong count of visible rows");
  expect(selected == store_.selected_count(), "wrong count of selected rows");
  expect(checked == store_.checked_count(), "wrong count of checked rows");
  expect(images == store_.cells_.row_image_count(), "wrong count of row images");
}

void GridStoreCheck::cells() {
  std::vector<int> uses(static_cast<size_t>(store_.looks_.size()));
  if (store_.default_style_ >= 0) ++uses[static_cast<size_t>(store_.default_style_)];
  size_t units = 0;
  const auto count = [&](std::wstring_view text) { units += text.empty() ? 0 : text.size() + 1; };
  for (int row = 0; row < store_.row_count(); ++row) {
    count(store_.row_tag(row));
    for (int column = 0; column < store_.column_count(); ++column) {
      const GridCellInfo cell = store_.cell(row, column);
      count(cell.text);
      count(store_.cell_tag(row, column));
      if (cell.style < -1 || cell.style >= store_.looks_.size())
        return expect(false, "a cell has a look that is none");
      if (cell.style >= 0) ++uses[static_cast<size_t>(cell.style)];
    }
  }
  expect(units == store_.cells_.pool().live_units(), "texts that no cell holds");
  for (int i = 0; i < store_.looks_.size(); ++i)
    expect(uses[static_cast<size_t>(i)] == store_.looks_.use_count(i), "wrong uses of a look");
}

void GridStoreCheck::totals() {
  for (int column = 0; column < store_.column_count(); ++column)
    for (const bool visible_only : {false, true}) {
      if (!store_.totals_.total(column, visible_only).kept) continue;
      ExactSum sum;
      for (int row = 0; row < store_.row_count(); ++row)
        if (!visible_only || store_.row_info(row).visible)
          sum.add(store_.number(store_.text(row, column)));
      expect(sum.value() == store_.total(column, visible_only), "wrong running sum");
    }
}

void GridStoreCheck::marks() {
  for (const GridPlace& place : store_.marks_) {
    expect(place.row >= -1 && place.row < store_.row_count(), "a place outside the rows");
    expect(place.column >= -1 && place.column < store_.column_count(),
           "a place outside the columns");
  }
}

}  // namespace kestrelon
