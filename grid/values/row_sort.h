// Sorting rows by one or two columns. Every sort is stable: rows that compare equal keep the order
// they had, in both directions.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "grid/grid_source.h"
#include "grid/locale_rules.h"

namespace kestrelon {

struct SortKey {
  int column = -1;
  bool descending = false;
};

struct RowSort {
  SortKey first;
  SortKey second;  ///< column -1 for none
  /// The second key orders runs of rows whose first cells read the same (Booleans: are checked
  /// alike), so 1 and 1,0 are different groups. With exact rules it orders rows that compare equal,
  /// and progress bars sort by value and not as texts.
  bool exact_rules = false;
};

/// Asked for columns of the custom type; the answer may be anything.
class CustomOrder {
 public:
  virtual ~CustomOrder() = default;
  /// True if the first text belongs before the second. May change the source.
  virtual bool before(bool ascending, int column, const std::wstring& value1,
                      const std::wstring& value2) = 0;
};

/// The rows of `order` sorted; nothing where a custom order changed the rows meanwhile. Without
/// `custom` such columns sort as texts. Cells are read once, before anything moves, except by
/// custom orders, which are asked n log n times at most.
std::optional<std::vector<int32_t>> sort_rows(std::vector<int32_t> order, const GridSource& source,
                                              const RowSort& sort, const LocaleRules& rules,
                                              CustomOrder* custom = nullptr);

/// What a sort type asks for (1 ascending, 2 descending, 0 the natural order); -1, or any other,
/// goes on from the present state: none, ascending, descending, none.
GridSortState next_sort_state(GridSortState now, int sort_type);

}  // namespace kestrelon
