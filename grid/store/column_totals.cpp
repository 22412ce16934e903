#include "grid/store/column_totals.h"

#include <algorithm>

namespace kestrelon {
namespace {

void apply(ColumnTotals::Total& total, double value, bool leaves) {
  if (!total.kept) return;
  if (leaves)
    total.sum.subtract(value);
  else
    total.sum.add(value);
}

}  // namespace

void ColumnTotals::forget_visible() {
  for (Pair& pair : pairs_) pair.visible = {};
}

ColumnTotals::Total& ColumnTotals::total(int column, bool visible_only) {
  Pair& pair = pairs_[static_cast<size_t>(column)];
  return visible_only ? pair.visible : pair.all;
}

bool ColumnTotals::keeps(int column) const {
  const Pair& pair = pairs_[static_cast<size_t>(column)];
  return pair.all.kept || pair.visible.kept;
}

bool ColumnTotals::keeps_any() const {
  return std::any_of(pairs_.begin(), pairs_.end(),
                     [](const Pair& pair) { return pair.all.kept || pair.visible.kept; });
}

void ColumnTotals::change(int column, double value, bool visible, bool leaves) {
  Pair& pair = pairs_[static_cast<size_t>(column)];
  apply(pair.all, value, leaves);
  if (visible) apply(pair.visible, value, leaves);
}

void ColumnTotals::change_visible(int column, double value, bool visible) {
  apply(pairs_[static_cast<size_t>(column)].visible, value, !visible);
}

}  // namespace kestrelon
