// Finding and hiding rows by a cell's text.
#pragma once

#include <string_view>

#include "grid/store/grid_store.h"

namespace kestrelon {

/// What callers pass. A column that is none finds and hides nothing; a start that is no position is
/// the first.
struct GridSearch {
  std::wstring_view text;
  int column = 0;
  int mode = 0;  ///< a GridSearchMode
  bool match_case = false;
  int start = 0;  ///< position
};

/// The first position that matches, hidden rows included; -1 for none.
int find_item(const GridStore& store, const GridSearch& search);

/// Hides each row from the start on that does not match; shows none. True if that hid any.
bool filter_on(GridStore& store, const GridSearch& search);
/// Shows the rows from the start on. True if any was hidden.
bool filter_off(GridStore& store, int start);

/// A current row that is hidden gives way to the next visible one, else to the one before, else to
/// none. True if it did.
bool leave_hidden_row(GridStore& store);

}  // namespace kestrelon
