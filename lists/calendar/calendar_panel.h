// What a calendar shows at a moment: the first month, the view, the mark, what lies under the
// pointer. Without a screen: painters and readers ask it, keys and mouse change it.
#pragma once

#include <optional>
#include <string>

#include "lists/calendar/calendar_layout.h"

namespace kestrelon {

class CalendarPanel {
 public:
  /// True when that changed the places.
  bool set_shape(const CalendarShape& shape);
  void set_first_weekday(int weekday) { first_weekday_ = weekday; }
  const CalendarPlaces& places() const { return places_; }
  const CalendarShape& shape() const { return shape_; }
  CalendarView view() const { return view_; }
  YearMonth first_month() const { return first_; }
  int month_count() const { return static_cast<int>(places_.months.size()); }
  YearMonth month_at(int index) const { return month_moved(first_, index); }
  int first_weekday() const { return first_weekday_; }

  int32_t mark() const { return mark_; }
  /// Marks a day and turns to its month. True when other months show.
  bool set_mark(int32_t day);
  /// Turns by months; of a chooser by what a page of it holds. True when that led anywhere.
  bool turn(int pages);
  bool set_first_month(YearMonth month);
  /// From days to months, from months to years.
  void widen();
  /// Back to days.
  void show_days() { view_ = CalendarView::kDays; }
  /// The chosen month or year becomes the mark's; from years to months, from months to days.
  bool choose(int cell);

  /// The day in a cell; nothing where the neighbour months show their own, and outside the range.
  std::optional<int32_t> day_at(int index, int cell) const;
  bool is_neighbour(int index, int32_t day) const;
  /// The first cell that shows a day, its own month's if that shows.
  std::optional<CalendarHit> find_day(int32_t day) const;
  /// First and last day that show.
  DayBounds shown() const;

  std::wstring title() const;  ///< of a chooser
  std::wstring choice_text(int cell) const;
  bool is_marked_choice(int cell) const;

  CalendarHit hot() const { return hot_; }
  /// True when that is another part than before.
  bool set_hot(const CalendarHit& hit);
  CalendarHit hit(int x, int y) const { return hit_calendar(places_, view_, x, y); }

 private:
  CalendarShape shape_;
  CalendarPlaces places_;
  CalendarView view_ = CalendarView::kDays;
  YearMonth first_;
  int first_weekday_ = 1;
  int32_t mark_ = 0;
  CalendarHit hot_;
};

}  // namespace kestrelon
