#include "grid/store/store_sort.h"

#include <utility>

namespace kestrelon {

void StoreSort::reset() {
  column1_ = column2_ = clicked_ = -1;
}

bool StoreSort::choose_columns(const GridSortCall& call) {
  const int count = store_.column_count();
  if (column1_ >= count || column2_ >= count) reset();
  if (call.column1 >= count || call.column2 >= count) return false;
  const int clicked = std::exchange(clicked_, -1);
  if (call.column1 >= 0)
    column1_ = call.column1;
  else if (clicked >= 0 && clicked < count)
    column1_ = clicked;
  if (call.column2 >= 0) column2_ = call.column2;
  if (column1_ < 0) column1_ = std::exchange(column2_, -1);
  if (column1_ == column2_) column2_ = -1;
  return column1_ >= 0;
}

void StoreSort::natural_order() {
  column1_ = column2_ = -1;
  store_.restore_row_order();
}

bool StoreSort::sort(const GridSortCall& call, bool exact, const LocaleRules& rules,
                     CustomOrder* custom) {
  if (store_.row_count() == 0 || !choose_columns(call)) return false;
  const GridSortState first = next_sort_state(state(column1_), call.type1);
  state(column1_) = first;
  if (column2_ >= 0) state(column2_) = call.type2 >= 0 ? next_sort_state(first, call.type2) : first;
  if (first == GridSortState::None) {
    natural_order();
    return true;
  }
  RowSort wanted;
  wanted.first = {column1_, first == GridSortState::Descending};
  wanted.exact_rules = exact;
  if (column2_ >= 0 && state(column2_) != GridSortState::None)
    wanted.second = {column2_, state(column2_) == GridSortState::Descending};
  std::vector<int> order = store_.row_order();
  auto sorted = sort_rows(std::move(order), store_, wanted, rules, custom);
  return sorted && store_.set_row_order(std::move(*sorted));
}

}  // namespace kestrelon
