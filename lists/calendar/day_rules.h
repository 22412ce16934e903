// Which days a user may choose, and where a key takes the mark of a calendar. Pure functions; keys
// are virtual key numbers.
#pragma once

#include <cstdint>
#include <optional>

#include "lists/calendar/business_days.h"
#include "lists/calendar/month_grid.h"

namespace kestrelon {

/// Days from `min` to `max`, both included; none when they are swapped.
struct DayBounds {
  int32_t min = 0;
  int32_t max = 0;
  constexpr bool contains(int32_t day) const { return day >= min && day <= max; }
};

struct DayRules {
  DayBounds bounds;
  bool block_weekends = false;
  bool block_holidays = false;
  BusinessCount count = BusinessCount::kNational;
  const Holidays* holidays = nullptr;  ///< not owned; null: no holidays

  bool can_choose(int32_t day) const;
  /// The first day to choose at `day` or from it in steps of `step` days; nothing within the bounds
  /// and a few years.
  std::optional<int32_t> search(int32_t day, int step) const;
  /// The day to choose next to `day`, first in the direction of `step`, then against it.
  std::optional<int32_t> nearest(int32_t day, int step) const;
};

/// What the panel of a calendar shows: days of a month, months of a year, twelve years.
enum class CalendarView { kDays, kMonths, kYears };

inline constexpr int kChooserColumns = 4;  ///< months and years stand in a grid of 4 by 3
inline constexpr int kChooserCells = 12;
/// The first of the twelve years shown together with `year`.
int first_year_shown(int year);

struct CalendarAction {
  enum Kind {
    kNone,   ///< the key is not the calendar's
    kStay,   ///< the key is the calendar's, but leads nowhere
    kMark,   ///< the mark goes to `day`
    kTake,   ///< the marked day is taken
    kFlip,   ///< the marked day is selected or released
    kClose,  ///< an open calendar closes without taking
    kEnter,  ///< from years to months, from months to days
  };
  Kind kind = kNone;
  int32_t day = 0;
  bool extend = false;  ///< a range is drawn to the new mark
  bool operator==(const CalendarAction&) const = default;
};

struct CalendarKey {
  int key = 0;  ///< virtual key number
  bool shift = false;
  bool ctrl = false;
};

/// Where a key leads from the marked day.
CalendarAction calendar_key(const CalendarKey& key, int32_t mark, int32_t today, CalendarView view,
                            const DayRules& rules);

}  // namespace kestrelon
