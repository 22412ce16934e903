#include "chrome/us_status_bar/status_clock.h"

#include "services/kn_format_ex.h"

namespace kestrelon::status_bar {
namespace {

constexpr int64_t kMinute = 60, kHour = 60 * kMinute, kHalfDay = 12 * kHour, kDay = 24 * kHour;

std::wstring_view usual_pattern(Clock clock) {
  switch (clock) {
    case Clock::kDate:
      return L"dd/mm/yyyy";
    case Clock::kTime:
      return L"hh:mm";
    case Clock::kDateTime:
      return L"dd/mm/yyyy hh:mm";
  }
  return {};
}

int64_t second_of_day(const DateTime& moment) {
  return moment.hour * kHour + moment.minute * kMinute + moment.second;
}

// `second` counts from the beginning of the day of `start` and stays below two days.
DateTime at_second(const DateTime& start, int64_t second) {
  DateTime out = start;
  if (second >= kDay) {
    const auto next = date_of_day_number(day_number(start.date) + 1);
    if (next) out.date = *next;
    second -= kDay;
  }
  out.hour = static_cast<int>(second / kHour);
  out.minute = static_cast<int>(second % kHour / kMinute);
  out.second = static_cast<int>(second % kMinute);
  return out;
}

}  // namespace

std::wstring clock_text(Clock clock, std::wstring_view pattern, const DateTime& now) {
  return format_moment(now, pattern.empty() ? usual_pattern(clock) : pattern);
}

int seconds_to_change(Clock clock, std::wstring_view pattern, const DateTime& now) {
  const std::wstring present = clock_text(clock, pattern, now);
  const int64_t second = second_of_day(now);
  int64_t next = second;
  for (const int64_t step : {int64_t{1}, kMinute, kHour, kHalfDay, kDay}) {
    next = (second / step + 1) * step;
    if (clock_text(clock, pattern, at_second(now, next)) != present) break;
  }
  return static_cast<int>(next - second);
}

}  // namespace kestrelon::status_bar
