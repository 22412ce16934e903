#include "lists/calendar/calendar_layout.h"

#include <algorithm>

#include "lists/item_layout.h"

namespace kestrelon {
namespace {

constexpr int kMostMonths = 12;  // in one direction
constexpr int kChooserRows = kChooserCells / kChooserColumns;

// Sizes of the parts that do not stretch.
struct Measures {
  int border, gap, title, weekdays, weeks, today;
};

Measures measures_of(const CalendarShape& shape) {
  const auto px = [&](int at96) { return scale_pixels(at96, shape.dpi); };
  return {std::max(1, px(1)),
          px(8),
          shape.text_height + px(10),
          shape.text_height + px(4),
          shape.week_numbers ? 2 * shape.digit_width + px(8) : 0,
          shape.today_line ? shape.text_height + px(8) : 0};
}

int months_in(int wanted) {
  return std::clamp(wanted, 1, kMostMonths);
}

// Part `index` of `count` equal ones that fill from `start` to `end` without a gap.
int share(int start, int end, int index, int count) {
  return start + static_cast<int>(int64_t{std::max(end - start, 0)} * index / count);
}

PixelRect grid_cell(const PixelRect& area, int column, int columns, int row, int rows) {
  return {share(area.left, area.right, column, columns), share(area.top, area.bottom, row, rows),
          share(area.left, area.right, column + 1, columns),
          share(area.top, area.bottom, row + 1, rows)};
}

MonthPlaces layout_month(const PixelRect& area, const Measures& sizes) {
  MonthPlaces month;
  const int names = area.top + sizes.title, days = names + sizes.weekdays;
  const int left = area.left + sizes.weeks;
  month.title = {area.left, area.top, area.right, names};
  month.weekdays = {left, names, area.right, days};
  month.days = {left, days, area.right, area.bottom};
  if (sizes.weeks > 0) month.weeks = {area.left, days, left, area.bottom};
  return month;
}

bool holds(const PixelRect& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

// The cell of a grid under a point that lies within it, by the cells' own rectangles.
int cell_at(const PixelRect& area, int columns, int rows, int x, int y) {
  for (int cell = 0; cell < columns * rows; ++cell)
    if (holds(grid_cell(area, cell % columns, columns, cell / columns, rows), x, y)) return cell;
  return -1;
}

CalendarHit hit_month(const MonthPlaces& month, int index, int x, int y) {
  if (holds(month.title, x, y)) return {CalendarPart::kTitle, index, 0};
  const int day = cell_at(month.days, kWeekDays, kGridWeeks, x, y);
  if (day >= 0) return {CalendarPart::kDay, index, day};
  const int week = cell_at(month.weeks, 1, kGridWeeks, x, y);
  if (week >= 0) return {CalendarPart::kWeek, index, week};
  return {};
}

}  // namespace

CalendarSize natural_size(const CalendarShape& shape) {
  const Measures sizes = measures_of(shape);
  const int cell_width = 2 * shape.digit_width + scale_pixels(14, shape.dpi);
  const int cell_height = shape.text_height + scale_pixels(6, shape.dpi);
  const int across = months_in(shape.across), down = months_in(shape.down);
  const int month_width = sizes.weeks + kWeekDays * cell_width;
  const int month_height = sizes.title + sizes.weekdays + kGridWeeks * cell_height;
  return {across * month_width + (across - 1) * sizes.gap + 2 * sizes.border,
          down * month_height + (down - 1) * sizes.gap + sizes.today + 2 * sizes.border};
}

CalendarPlaces layout_calendar(const CalendarShape& shape) {
  const Measures sizes = measures_of(shape);
  CalendarPlaces places;
  places.bounds = {0, 0, std::max(shape.width, 0), std::max(shape.height, 0)};
  const PixelRect inner{sizes.border, sizes.border,
                        std::max(shape.width - sizes.border, sizes.border),
                        std::max(shape.height - sizes.border, sizes.border)};
  const int bottom = std::max(inner.bottom - sizes.today, inner.top);
  if (shape.today_line) places.today = {inner.left, bottom, inner.right, inner.bottom};
  const int across = months_in(shape.across), down = months_in(shape.down);
  // Gaps are handed out with the months, so that the last ends at the edge.
  const PixelRect all{inner.left, inner.top, inner.right + sizes.gap, bottom + sizes.gap};
  for (int i = 0; i < across * down; ++i) {
    PixelRect area = grid_cell(all, i % across, across, i / across, down);
    area.right -= sizes.gap;
    area.bottom -= sizes.gap;
    places.months.push_back(layout_month(area, sizes));
  }
  const int title_bottom = std::min(inner.top + sizes.title, bottom);
  const int arrow = std::min(sizes.title, (inner.right - inner.left) / 2);
  places.previous = {inner.left, inner.top, inner.left + arrow, title_bottom};
  places.next = {inner.right - arrow, inner.top, inner.right, title_bottom};
  places.chooser_title = {inner.left, inner.top, inner.right, title_bottom};
  places.chooser = {inner.left, title_bottom, inner.right, bottom};
  return places;
}

PixelRect day_cell(const MonthPlaces& month, int cell) {
  return grid_cell(month.days, cell % kWeekDays, kWeekDays, cell / kWeekDays, kGridWeeks);
}

PixelRect weekday_cell(const MonthPlaces& month, int column) {
  return grid_cell(month.weekdays, column, kWeekDays, 0, 1);
}

PixelRect week_cell(const MonthPlaces& month, int row) {
  return grid_cell(month.weeks, 0, 1, row, kGridWeeks);
}

PixelRect choice_cell(const CalendarPlaces& places, int cell) {
  return grid_cell(places.chooser, cell % kChooserColumns, kChooserColumns, cell / kChooserColumns,
                   kChooserRows);
}

CalendarHit hit_calendar(const CalendarPlaces& places, CalendarView view, int x, int y) {
  if (holds(places.previous, x, y)) return {CalendarPart::kPrevious, 0, 0};
  if (holds(places.next, x, y)) return {CalendarPart::kNext, 0, 0};
  if (holds(places.today, x, y)) return {CalendarPart::kToday, 0, 0};
  if (view == CalendarView::kDays) {
    for (size_t i = 0; i < places.months.size(); ++i) {
      const CalendarHit hit = hit_month(places.months[i], static_cast<int>(i), x, y);
      if (hit.part != CalendarPart::kNone) return hit;
    }
    return {};
  }
  if (holds(places.chooser_title, x, y)) return {CalendarPart::kTitle, 0, 0};
  const int cell = cell_at(places.chooser, kChooserColumns, kChooserRows, x, y);
  return cell >= 0 ? CalendarHit{CalendarPart::kChoice, 0, cell} : CalendarHit{};
}

DateFieldPlaces layout_date_field(int width, int height, int dpi) {
  const int border = std::max(1, scale_pixels(1, dpi)), padding = scale_pixels(3, dpi);
  const PixelRect frame{0, 0, std::max(width, 0), std::max(height, 0)};
  const int right = std::max(frame.right - border, border);
  const int bottom = std::max(frame.bottom - border, border);
  const int button = std::max(right - scale_pixels(18, dpi), border);
  return {frame,
          {std::min(border + padding, button), border, std::max(button - padding, border), bottom},
          {button, border, right, bottom}};
}

}  // namespace kestrelon
