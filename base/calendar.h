// The Gregorian calendar and the day numbers that hosts use for dates: whole days since 30 December
// 1899, with the time as a fraction of a day. Years 100 to 9999, the range of a date value.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>

namespace kestrelon {

inline constexpr int kFirstYear = 100;
inline constexpr int kLastYear = 9999;

struct CalendarDate {
  int year = 0;
  int month = 0;  // 1 to 12
  int day = 0;    // 1 to 31
  auto operator<=>(const CalendarDate&) const = default;
};

struct DateTime {
  CalendarDate date;
  int hour = 0;    // 0 to 23
  int minute = 0;  // 0 to 59
  int second = 0;  // 0 to 59
  auto operator<=>(const DateTime&) const = default;
};

constexpr bool is_leap_year(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// 28 to 31; 0 for a month outside 1 to 12.
int days_in_month(int year, int month);

/// True when the day exists and the year lies in the range of a date value.
bool is_real_date(const CalendarDate& date);

/// Days since 30 December 1899. The date must be a real one.
int32_t day_number(const CalendarDate& date);

/// The inverse of `day_number`; nothing outside the range of a date value.
std::optional<CalendarDate> date_of_day_number(int32_t number);

/// 1 Sunday to 7 Saturday.
int weekday(int32_t number);

/// The date and time of a date value, to the nearest second. Nothing for NaN and values out of
/// range. The fraction of a value before the epoch counts forward in its day, as hosts define it.
std::optional<DateTime> date_time_of_value(double value);

/// The date value of a real date and time.
double date_value(const DateTime& moment);

}  // namespace kestrelon
