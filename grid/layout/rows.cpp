#include "grid/layout/rows.h"

#include <algorithm>
#include <cstdlib>

namespace kestrelon::grid_layout {
namespace {

int32_t height_of(const Rows& rows, int32_t position) {
  return std::clamp(rows.height(position), 1, 0x3FFFFFFF);
}

int32_t last_visible(const Rows& rows) {
  return rows.count() == 0 ? -1 : rows.previous_visible(rows.count() - 1);
}

// The first row with which all rows up to and with `last` fit into `room`.
int32_t first_that_fits(const Rows& rows, int32_t last, int room) {
  int32_t position = last;
  int64_t sum = height_of(rows, last);
  while (position > 0) {
    const int32_t before = rows.previous_visible(position - 1);
    if (before < 0) break;
    sum += height_of(rows, before);
    if (sum > room) break;
    position = before;
  }
  return position;
}

}  // namespace

ScrollRange vertical_range(const Rows& rows, int room) {
  const int32_t last = last_visible(rows);
  if (last < 0) return {0, 0};
  return {rows.next_visible(0), first_that_fits(rows, last, room)};
}

int32_t first_row(const Rows& rows, int room, int32_t wanted) {
  const ScrollRange range = vertical_range(rows, room);
  if (wanted <= range.min || wanted >= rows.count()) return range.limit(wanted);
  return range.limit(rows.next_visible(wanted));
}

int32_t stepped_row(const Rows& rows, int32_t position, int steps) {
  const int32_t last = last_visible(rows);
  if (last < 0) return -1;
  int32_t at = rows.next_visible(std::clamp(position, 0, last));
  for (; steps > 0 && at < last; --steps) at = rows.next_visible(at + 1);
  for (; steps < 0 && at > 0; ++steps) {
    const int32_t before = rows.previous_visible(at - 1);
    if (before < 0) break;
    at = before;
  }
  return at;
}

int32_t row_to_show(const Rows& rows, int room, int32_t first, int32_t target) {
  first = first_row(rows, room, first);
  if (target < 0 || target >= rows.count() || rows.next_visible(target) != target) return first;
  if (target <= first) return target;
  return std::max(first, first_that_fits(rows, target, room));
}

std::vector<PlacedRow> place_rows(const Rows& rows, int32_t first, int top, int bottom) {
  std::vector<PlacedRow> placed;
  if (first < 0 || first >= rows.count()) return placed;
  for (int32_t at = rows.next_visible(first); at < rows.count() && top < bottom;) {
    placed.push_back({at, top, height_of(rows, at)});
    top = placed.back().bottom();
    at = at + 1 < rows.count() ? rows.next_visible(at + 1) : rows.count();
  }
  return placed;
}

int RowTopPixels(const Rows& rows, int32_t row, int32_t first_row, int top, int bottom) {
  if (row < first_row) return -1;
  for (int32_t at = first_row; top < bottom && at < rows.count();) {
    at = rows.next_visible(at);
    if (at >= row) break;
    top += height_of(rows, at++);
  }
  return top;
}

int RowsPerPage(int room, int row_h) {
  return std::max(room / std::max(row_h, 1), 1);
}

int32_t RowAtY(std::span<const PlacedRow> placed, int y) {
  const auto found = std::find_if(placed.begin(), placed.end(), [&](const PlacedRow& row) {
    return y >= row.top && y < row.bottom();
  });
  return found == placed.end() ? -1 : found->position;
}

int32_t row_edge_at(std::span<const PlacedRow> placed, int y, int band) {
  int32_t found = -1;
  for (const PlacedRow& row : placed) {
    const int distance = std::abs(y - row.bottom());
    if (distance > band) continue;
    band = distance;
    found = row.position;
  }
  return found;
}

}  // namespace kestrelon::grid_layout
