// The running sums of the columns' numbers, over all rows and over the visible ones.
#pragma once

#include <vector>

#include "grid/store/exact_sum.h"

namespace kestrelon {

/// A sum that was asked for once is kept from then on, change by change; one that nobody asks for
/// costs nothing. Sums are exact, so both ways give the same.
class ColumnTotals {
 public:
  struct Total {
    ExactSum sum;
    bool kept = false;
  };

  void add_column() { pairs_.emplace_back(); }
  void clear() { pairs_.clear(); }
  /// What is known is not true any more.
  void forget() { pairs_.assign(pairs_.size(), {}); }
  void forget_visible();
  Total& total(int column, bool visible_only);
  bool keeps(int column) const;
  /// Whether any column has a sum to be kept.
  bool keeps_any() const;
  /// A number came into a row (or left it, with `leaves`) that is shown or hidden.
  void change(int column, double value, bool visible, bool leaves);
  /// The row of this number was hidden or shown.
  void change_visible(int column, double value, bool visible);

 private:
  struct Pair {
    Total all;
    Total visible;
  };

  std::vector<Pair> pairs_;
};

}  // namespace kestrelon
