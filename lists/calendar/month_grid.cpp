#include "lists/calendar/month_grid.h"

#include <algorithm>

namespace kestrelon {
namespace {

constexpr int kMonday = 2;
constexpr int kThursday = 5;
const int32_t kFirstDay = day_number({kFirstYear, 1, 1});
const int32_t kLastDay = day_number({kLastYear, 12, 31});

int valid_weekday(int weekday) {
  return weekday >= 1 && weekday <= kWeekDays ? weekday : 1;
}

int64_t months_of(YearMonth month) {
  return int64_t{month.year} * 12 + month.month - 1;
}

}  // namespace

YearMonth month_of(int32_t day) {
  const auto date = date_of_day_number(std::clamp(day, kFirstDay, kLastDay));
  return {date->year, date->month};
}

YearMonth month_moved(YearMonth month, int64_t by) {
  const int64_t months =
      std::clamp(months_of(month) + by, int64_t{kFirstYear} * 12, int64_t{kLastYear} * 12 + 11);
  return {static_cast<int>(months / 12), static_cast<int>(months % 12) + 1};
}

int months_between(YearMonth a, YearMonth b) {
  return static_cast<int>(months_of(b) - months_of(a));
}

int32_t first_day(YearMonth month) {
  return day_number({month.year, month.month, 1});
}

int32_t last_day(YearMonth month) {
  return first_day(month) + days_in_month(month.year, month.month) - 1;
}

std::optional<int32_t> day_months_later(int32_t day, int months) {
  const auto date = date_of_day_number(day);
  if (!date) return std::nullopt;
  const YearMonth from{date->year, date->month};
  const YearMonth to = month_moved(from, months);
  if (months_between(from, to) != months) return std::nullopt;
  return day_number({to.year, to.month, std::min(date->day, days_in_month(to.year, to.month))});
}

int32_t grid_start(YearMonth month, int first_weekday) {
  const int32_t first = first_day(month);
  return first - (weekday(first) - valid_weekday(first_weekday) + kWeekDays) % kWeekDays;
}

int column_weekday(int column, int first_weekday) {
  return (valid_weekday(first_weekday) - 1 + column) % kWeekDays + 1;
}

IsoWeek iso_week_of_row(int32_t row_start) {
  const int32_t thursday = row_start + (kThursday - weekday(row_start) + kWeekDays) % kWeekDays;
  const auto date = date_of_day_number(std::clamp(thursday, kFirstDay, kLastDay));
  return {date->year, (thursday - day_number({date->year, 1, 1})) / kWeekDays + 1};
}

IsoWeek iso_week(int32_t day) {
  return iso_week_of_row(day - (weekday(day) - kMonday + kWeekDays) % kWeekDays);
}

}  // namespace kestrelon
