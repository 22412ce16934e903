// The sort columns of a grid, their states, and what a sort does to its rows.
#pragma once

#include <string>

#include "grid/store/grid_store.h"
#include "grid/values/row_sort.h"

namespace kestrelon {

/// What callers pass: column records and sort types (1 ascending, 2 descending, 0 the natural
/// order), -1 for "as it stands".
struct GridSortCall {
  int column1 = -1;
  int type1 = -1;
  int column2 = -1;
  int type2 = -1;
};

class StoreSort {
 public:
  explicit StoreSort(GridStore& store) : store_(store) {}

  /// The columns whose headers carry an arrow; -1 for none.
  int column1() const { return column1_; }
  int column2() const { return column2_; }
  /// The columns are others now.
  void reset();

  /// A header was clicked: the next call without a first column takes this one.
  void note_click(int column) { clicked_ = column; }

  /// False where nothing was sorted: no rows, no such column, or rows changed by `custom` while it
  /// was asked. The places of the store follow their rows.
  bool sort(const GridSortCall& call, bool exact, const LocaleRules& rules, CustomOrder* custom);

 private:
  bool choose_columns(const GridSortCall& call);
  void natural_order();
  GridSortState& state(int column) { return store_.edit_column(column).sort_state; }

  GridStore& store_;
  int column1_ = -1;
  int column2_ = -1;
  int clicked_ = -1;
};

}  // namespace kestrelon
