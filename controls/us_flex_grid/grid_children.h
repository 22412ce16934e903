// The numbers by which screen readers know the parts of a grid: 1 to C the headings of its visible
// columns, then a number for each visible row, followed by those of its C cells.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>
#include <vector>

namespace kestrelon {

struct GridChild {
  enum Kind { kNone, kHeading, kRow, kCell } kind = kNone;
  int rank = -1;    ///< of the row among the visible ones
  int column = -1;  ///< display position
};

struct GridChildren {
  std::vector<int> columns;  ///< display positions of the visible ones
  int rows = 0;              ///< visible ones

  long stride() const { return static_cast<long>(columns.size()) + 1; }
  long count() const {
    const int64_t all = static_cast<int64_t>(columns.size()) + int64_t{rows} * stride();
    return static_cast<long>(std::min<int64_t>(all, INT_MAX));
  }

  GridChild at(long child) const {
    if (child < 1 || child > count()) return {};
    const long headings = static_cast<long>(columns.size());
    if (child <= headings)
      return {GridChild::kHeading, -1, columns[static_cast<size_t>(child - 1)]};
    const long index = child - headings - 1;
    const int rank = static_cast<int>(index / stride());
    const long place = index % stride();
    if (place == 0) return {GridChild::kRow, rank, -1};
    return {GridChild::kCell, rank, columns[static_cast<size_t>(place - 1)]};
  }

  /// 0 for a column that does not show.
  long heading(int column) const {
    const auto found = std::find(columns.begin(), columns.end(), column);
    return found == columns.end() ? 0 : static_cast<long>(found - columns.begin()) + 1;
  }
  /// The row itself for a column that does not show.
  long cell(int rank, int column) const {
    const int64_t row = static_cast<int64_t>(columns.size()) + int64_t{rank} * stride() + 1;
    const int64_t child = row + heading(column);
    return child > INT_MAX ? 0 : static_cast<long>(child);
  }
};

}  // namespace kestrelon
