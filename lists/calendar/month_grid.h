// Months and weeks as a calendar shows them. Days are day numbers (base/calendar.h).
#pragma once

#include <compare>
#include <cstdint>
#include <optional>

#include "base/calendar.h"

namespace kestrelon {

inline constexpr int kWeekDays = 7;
inline constexpr int kGridWeeks = 6;  ///< rows that hold any month

struct YearMonth {
  int year = kFirstYear;
  int month = 1;  // 1 to 12
  auto operator<=>(const YearMonth&) const = default;
};

/// The month of a day; the day must be in the range of a date value.
YearMonth month_of(int32_t day);
/// `by` months later, or earlier; stays within the range of a date value.
YearMonth month_moved(YearMonth month, int64_t by);
/// Months from `a` to `b`.
int months_between(YearMonth a, YearMonth b);
int32_t first_day(YearMonth month);
int32_t last_day(YearMonth month);
/// The same day some months later, the month's last one where it has no such day; nothing beyond
/// the range.
std::optional<int32_t> day_months_later(int32_t day, int months);

/// The day in the first cell of a month's grid, whose rows begin with `first_weekday` (1 Sunday to
/// 7 Saturday; anything else is Sunday). May lie before the range of a date value.
int32_t grid_start(YearMonth month, int first_weekday);
/// The weekday at the head of a grid's column.
int column_weekday(int column, int first_weekday);

struct IsoWeek {
  int year = 0;
  int week = 0;  // 1 to 53
  bool operator==(const IsoWeek&) const = default;
};
/// The week that most of the seven days from `row_start` on belong to: weeks run from Monday, and
/// the first of a year holds its first Thursday. `row_start` may lie just outside the range.
IsoWeek iso_week_of_row(int32_t row_start);
IsoWeek iso_week(int32_t day);

}  // namespace kestrelon
