// Business-day arithmetic: Monday to Friday without the days off. Counts across centuries cost a
// search in a table of years, not a walk over days.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "lists/calendar/holidays.h"

namespace kestrelon {

constexpr bool is_weekend(int weekday) {
  return weekday == 1 || weekday == 7;
}

class BusinessDays {
 public:
  /// The holidays must outlive this; what they change is noticed by their version.
  explicit BusinessDays(const Holidays& holidays) : holidays_(holidays) {}

  void set_count(BusinessCount count);
  BusinessCount count() const { return count_; }

  bool is_business_day(int32_t day) const;
  /// The `n`th business day after `day`, before it for a negative n, the day itself for 0. Nothing
  /// beyond the range of a date value.
  std::optional<int32_t> add(int32_t day, int64_t n) const;
  /// The day itself if it is one, else the next, or the last before it.
  std::optional<int32_t> next(int32_t day, bool backwards) const;
  /// Business days after `from` up to and with `to`; negative when `to` comes first.
  int64_t between(int32_t from, int32_t to) const;

 private:
  struct YearDays {
    int year = 0;
    std::vector<int32_t> off;  // days off that are no weekend
  };
  int64_t up_to(int32_t day) const;
  std::optional<int32_t> day_with_number(int64_t number) const;
  const YearDays& days_of(int year) const;
  void prepare() const;

  const Holidays& holidays_;
  BusinessCount count_ = BusinessCount::kNational;
  // Made on demand: business days before each year of the range, one entry more at the end.
  mutable std::vector<int32_t> before_year_;
  mutable YearDays year_;
  mutable uint32_t version_ = 0;
};

}  // namespace kestrelon
