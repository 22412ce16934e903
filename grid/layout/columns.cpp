#include "grid/layout/columns.h"

#include <algorithm>
#include <cstdlib>

namespace kestrelon::grid_layout {
namespace {

int64_t width_of(const Column& column) {
  return column.visible ? std::max(column.width, 0) : 0;
}

int64_t width_between(std::span<const Column> columns, int32_t from, int32_t to) {
  int64_t sum = 0;
  for (int32_t i = from; i < to; ++i) sum += width_of(columns[static_cast<size_t>(i)]);
  return sum;
}

// Pixels for the columns that scroll.
int64_t scrolled_room(const ColumnStrip& strip, int32_t freeze) {
  return int64_t{strip.right} - strip.left - width_between(strip.columns, 0, freeze + 1);
}

// The first position from `from` on with which all columns up to and with `last` fit into `room`.
int32_t first_that_fits(const ColumnStrip& strip, int32_t from, int32_t last, int64_t room) {
  int32_t position = last;
  int64_t sum = width_of(strip.columns[static_cast<size_t>(last)]);
  while (position > from) {
    sum += width_of(strip.columns[static_cast<size_t>(position - 1)]);
    if (sum > room) break;
    --position;
  }
  return next_visible_column(strip.columns, position);
}

}  // namespace

int32_t next_visible_column(std::span<const Column> columns, int32_t position) {
  const int32_t count = static_cast<int32_t>(columns.size());
  position = std::max(position, 0);
  while (position < count && !columns[static_cast<size_t>(position)].visible) ++position;
  return std::min(position, count);
}

int32_t previous_visible_column(std::span<const Column> columns, int32_t position) {
  position = std::min(position, static_cast<int32_t>(columns.size()) - 1);
  while (position >= 0 && !columns[static_cast<size_t>(position)].visible) --position;
  return std::max(position, -1);
}

int32_t freeze_in_force(const ColumnStrip& strip) {
  const int32_t freeze = std::min(strip.freeze_at, strip.count() - 1);
  if (freeze < 0) return -1;
  return scrolled_room(strip, freeze) > 0 ? freeze : -1;
}

ScrollRange horizontal_range(const ColumnStrip& strip) {
  const int32_t freeze = freeze_in_force(strip);
  const int32_t first = next_visible_column(strip.columns, freeze + 1);
  const int32_t last = previous_visible_column(strip.columns, strip.count() - 1);
  if (first >= last) return {std::min(first, strip.count()), std::min(first, strip.count())};
  return {first, first_that_fits(strip, first, last, scrolled_room(strip, freeze))};
}

int32_t first_column(const ColumnStrip& strip, int32_t wanted) {
  const ScrollRange range = horizontal_range(strip);
  return range.limit(next_visible_column(strip.columns, wanted));
}

int32_t stepped_column(const ColumnStrip& strip, int32_t first, int direction) {
  const ScrollRange range = horizontal_range(strip);
  for (int32_t at = first + direction; at >= range.min && at <= range.max; at += direction) {
    const Column& column = strip.columns[static_cast<size_t>(at)];
    if (column.visible && !column.locked) return at;
  }
  return range.limit(direction < 0 ? range.min : range.max);
}

int32_t column_to_show(const ColumnStrip& strip, int32_t first, int32_t target) {
  const int32_t freeze = freeze_in_force(strip);
  first = first_column(strip, first);
  if (target <= freeze || target >= strip.count() ||
      !strip.columns[static_cast<size_t>(std::max(target, 0))].visible)
    return first;
  if (target <= first) return first_column(strip, target);
  return std::max(first, first_that_fits(strip, freeze + 1, target, scrolled_room(strip, freeze)));
}

std::vector<PlacedColumn> place_columns(const ColumnStrip& strip, int32_t first) {
  std::vector<PlacedColumn> placed;
  int64_t left = strip.left;
  const int32_t freeze = freeze_in_force(strip);
  for (int32_t i = freeze < 0 ? first : 0; i < strip.count() && left < strip.right; ++i) {
    if (i == freeze + 1) i = std::max(i, first);
    if (i >= strip.count()) break;
    const Column& column = strip.columns[static_cast<size_t>(i)];
    if (!column.visible) continue;
    const int32_t width = std::clamp(column.width, 0, 0x3FFFFFFF);
    placed.push_back({i, column.store, static_cast<int32_t>(left), width});
    left += width;
  }
  return placed;
}

int32_t ColumnAtX(std::span<const PlacedColumn> placed, int x) {
  for (const PlacedColumn& column : placed)
    if (x >= column.left && x < column.right()) return column.position;
  return -1;
}

int32_t column_edge_at(std::span<const PlacedColumn> placed, int x, int band) {
  int32_t found = -1;
  for (const PlacedColumn& column : placed) {
    const int distance = std::abs(x - column.right());
    if (distance > band) continue;
    band = distance;
    found = column.position;
  }
  return found;
}

}  // namespace kestrelon::grid_layout
