#include "lists/calendar/business_days.h"

#include <algorithm>

namespace kestrelon {
namespace {

const int32_t kFirstDay = day_number({kFirstYear, 1, 1});
const int32_t kLastDay = day_number({kLastYear, 12, 31});

// Mondays to Fridays from a fixed Monday up to, but not with, `day`.
int64_t weekdays_before(int32_t day) {
  const int32_t monday = kFirstDay - (weekday(kFirstDay) + 5) % 7;
  const int64_t days = int64_t{day} - monday;
  return days / 7 * 5 + std::min<int64_t>(days % 7, 5);
}

int32_t first_of(int year) {
  return year > kLastYear ? kLastDay + 1 : day_number({year, 1, 1});
}

}  // namespace

void BusinessDays::set_count(BusinessCount count) {
  if (count == count_) return;
  count_ = count;
  before_year_.clear();
}

bool BusinessDays::is_business_day(int32_t day) const {
  return day >= kFirstDay && day <= kLastDay && !is_weekend(weekday(day)) &&
         !is_day_off(holidays_.note(day), count_);
}

std::optional<int32_t> BusinessDays::add(int32_t day, int64_t n) const {
  if (day < kFirstDay || day > kLastDay) return std::nullopt;
  if (n == 0) return day;
  return day_with_number(n > 0 ? up_to(day) + n : up_to(day - 1) + n + 1);
}

std::optional<int32_t> BusinessDays::next(int32_t day, bool backwards) const {
  if (is_business_day(day)) return day;
  return add(day, backwards ? -1 : 1);
}

int64_t BusinessDays::between(int32_t from, int32_t to) const {
  return up_to(to) - up_to(from);
}

// Business days from the beginning of the range up to and with `day`.
int64_t BusinessDays::up_to(int32_t day) const {
  if (day < kFirstDay) return 0;
  day = std::min(day, kLastDay);
  const int year = date_of_day_number(day)->year;
  const YearDays& of_year = days_of(year);
  const auto off = std::upper_bound(of_year.off.begin(), of_year.off.end(), day);
  return before_year_[static_cast<size_t>(year - kFirstYear)] + weekdays_before(day + 1) -
         weekdays_before(first_of(year)) - (off - of_year.off.begin());
}

std::optional<int32_t> BusinessDays::day_with_number(int64_t number) const {
  prepare();
  if (number < 1 || number > before_year_.back()) return std::nullopt;
  const auto later = std::lower_bound(before_year_.begin(), before_year_.end(), number);
  const int year = kFirstYear + static_cast<int>(later - before_year_.begin()) - 1;
  int32_t low = first_of(year), high = first_of(year + 1) - 1;
  while (low < high) {
    const int32_t middle = low + (high - low) / 2;
    if (up_to(middle) >= number)
      high = middle;
    else
      low = middle + 1;
  }
  return low;
}

const BusinessDays::YearDays& BusinessDays::days_of(int year) const {
  prepare();
  if (year_.year != year) {
    year_ = {year, holidays_.days_off(year, count_ == BusinessCount::kBank)};
    std::erase_if(year_.off, [](int32_t day) { return is_weekend(weekday(day)); });
  }
  return year_;
}

void BusinessDays::prepare() const {
  if (!before_year_.empty() && version_ == holidays_.version()) return;
  version_ = holidays_.version();
  year_ = {};
  before_year_.assign(1, 0);
  before_year_.reserve(kLastYear - kFirstYear + 2);
  for (int year = kFirstYear; year <= kLastYear; ++year) {
    int64_t days = weekdays_before(first_of(year + 1)) - weekdays_before(first_of(year));
    for (const int32_t day : holidays_.days_off(year, count_ == BusinessCount::kBank))
      days -= is_weekend(weekday(day)) ? 0 : 1;
    before_year_.push_back(before_year_.back() + static_cast<int32_t>(days));
  }
}

}  // namespace kestrelon
