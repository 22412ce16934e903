#include "base/calendar.h"

#include <chrono>
#include <cmath>

namespace kestrelon {
namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr sys_days kEpoch{year{1899} / 12 / 30};
constexpr int32_t kFirstDay = (sys_days{year{kFirstYear} / 1 / 1} - kEpoch).count();
constexpr int32_t kLastDay = (sys_days{year{kLastYear} / 12 / 31} - kEpoch).count();
constexpr int kSecondsPerDay = 86400;

}  // namespace

int days_in_month(int year, int month) {
  constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12) return 0;
  return month == 2 && is_leap_year(year) ? 29 : kDays[month - 1];
}

bool is_real_date(const CalendarDate& date) {
  return date.year >= kFirstYear && date.year <= kLastYear && date.day >= 1 &&
         date.day <= days_in_month(date.year, date.month);
}

int32_t day_number(const CalendarDate& date) {
  const year_month_day civil{year{date.year}, month{static_cast<unsigned>(date.month)},
                             day{static_cast<unsigned>(date.day)}};
  return static_cast<int32_t>((sys_days{civil} - kEpoch).count());
}

std::optional<CalendarDate> date_of_day_number(int32_t number) {
  if (number < kFirstDay || number > kLastDay) return std::nullopt;
  const year_month_day civil{kEpoch + days{number}};
  return CalendarDate{static_cast<int>(civil.year()),
                      static_cast<int>(static_cast<unsigned>(civil.month())),
                      static_cast<int>(static_cast<unsigned>(civil.day()))};
}

int weekday(int32_t number) {
  return static_cast<int>(std::chrono::weekday{kEpoch + days{number}}.c_encoding()) + 1;
}

std::optional<DateTime> date_time_of_value(double value) {
  const double whole = std::trunc(value);
  if (!(whole >= kFirstDay && whole <= kLastDay)) return std::nullopt;
  auto number = static_cast<int32_t>(whole);
  auto seconds = static_cast<int>(std::lround(std::fabs(value - whole) * kSecondsPerDay));
  if (seconds == kSecondsPerDay) {
    seconds = 0;
    ++number;
  }
  const auto date = date_of_day_number(number);
  if (!date) return std::nullopt;
  return DateTime{*date, seconds / 3600, seconds / 60 % 60, seconds % 60};
}

double date_value(const DateTime& moment) {
  const int32_t number = day_number(moment.date);
  const double fraction =
      static_cast<double>(moment.hour * 3600 + moment.minute * 60 + moment.second) / kSecondsPerDay;
  return number < 0 ? number - fraction : number + fraction;
}

}  // namespace kestrelon
