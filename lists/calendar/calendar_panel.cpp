#include "lists/calendar/calendar_panel.h"

#include <algorithm>

#include "lists/calendar/day_text.h"

namespace kestrelon {
namespace {

constexpr int kMonthsPerYear = 12;

}  // namespace

bool CalendarPanel::set_shape(const CalendarShape& shape) {
  if (shape == shape_ && !places_.months.empty()) return false;
  shape_ = shape;
  places_ = layout_calendar(shape);
  return true;
}

bool CalendarPanel::set_mark(int32_t day) {
  mark_ = day;
  const YearMonth month = month_of(day);
  const int ahead = months_between(first_, month);
  if (ahead < 0) return set_first_month(month);
  if (ahead >= std::max(month_count(), 1))
    return set_first_month(month_moved(month, 1 - std::max(month_count(), 1)));
  return false;
}

bool CalendarPanel::set_first_month(YearMonth month) {
  if (month == first_) return false;
  first_ = month;
  return true;
}

bool CalendarPanel::turn(int pages) {
  if (view_ == CalendarView::kDays) return set_first_month(month_moved(first_, pages));
  const int months = pages * kMonthsPerYear * (view_ == CalendarView::kYears ? kChooserCells : 1);
  const auto day = day_months_later(mark_, months);
  return day && set_mark(*day);
}

void CalendarPanel::widen() {
  if (view_ == CalendarView::kMonths) view_ = CalendarView::kYears;
  if (view_ == CalendarView::kDays) view_ = CalendarView::kMonths;
}

bool CalendarPanel::choose(int cell) {
  const YearMonth at = month_of(mark_);
  const int months = view_ == CalendarView::kMonths
                         ? cell + 1 - at.month
                         : (first_year_shown(at.year) + cell - at.year) * kMonthsPerYear;
  view_ = view_ == CalendarView::kYears ? CalendarView::kMonths : CalendarView::kDays;
  const auto day = day_months_later(mark_, months);
  return day && set_mark(*day);
}

bool CalendarPanel::is_neighbour(int index, int32_t day) const {
  return month_of(day) != month_at(index);
}

std::optional<int32_t> CalendarPanel::day_at(int index, int cell) const {
  const YearMonth month = month_at(index);
  const int32_t day = grid_start(month, first_weekday_) + cell;
  if (!date_of_day_number(day)) return std::nullopt;
  if (day < kestrelon::first_day(month) && index > 0) return std::nullopt;
  if (day > last_day(month) && index < month_count() - 1) return std::nullopt;
  return day;
}

std::optional<CalendarHit> CalendarPanel::find_day(int32_t day) const {
  const int last = month_count() - 1;
  if (last < 0 || view_ != CalendarView::kDays) return std::nullopt;
  const int index = std::clamp(months_between(first_, month_of(day)), 0, last);
  const int32_t cell = day - grid_start(month_at(index), first_weekday_);
  if (cell < 0 || cell >= kWeekDays * kGridWeeks) return std::nullopt;
  return CalendarHit{CalendarPart::kDay, index, cell};
}

DayBounds CalendarPanel::shown() const {
  return {kestrelon::first_day(first_),
          last_day(month_moved(first_, std::max(month_count(), 1) - 1))};
}

std::wstring CalendarPanel::title() const {
  const int year = month_of(mark_).year;
  if (view_ != CalendarView::kYears) return std::to_wstring(year);
  const int first = first_year_shown(year);
  return std::to_wstring(first) + L" a " + std::to_wstring(first + kChooserCells - 1);
}

std::wstring CalendarPanel::choice_text(int cell) const {
  if (view_ == CalendarView::kMonths) return short_month(cell + 1);
  return std::to_wstring(first_year_shown(month_of(mark_).year) + cell);
}

bool CalendarPanel::is_marked_choice(int cell) const {
  const YearMonth at = month_of(mark_);
  return view_ == CalendarView::kMonths ? cell + 1 == at.month
                                        : first_year_shown(at.year) + cell == at.year;
}

bool CalendarPanel::set_hot(const CalendarHit& hit) {
  if (hit == hot_) return false;
  hot_ = hit;
  return true;
}

}  // namespace kestrelon
