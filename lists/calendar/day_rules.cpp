#include "lists/calendar/day_rules.h"

#include <algorithm>

namespace kestrelon {
namespace {

// Virtual keys; the numbers are Windows' own.
enum : int {
  kKeyEnter = 0x0D,
  kKeyEscape = 0x1B,
  kKeySpace = 0x20,
  kKeyPageUp = 0x21,
  kKeyPageDown = 0x22,
  kKeyEnd = 0x23,
  kKeyHome = 0x24,
  kKeyLeft = 0x25,
  kKeyUp = 0x26,
  kKeyRight = 0x27,
  kKeyDown = 0x28,
  kKeyH = 0x48,
  kKeyAdd = 0x6B,
  kKeySubtract = 0x6D,
  kKeyPlus = 0xBB,
  kKeyMinus = 0xBD,
};

constexpr int kLongestSearch = 1500;  // days or steps that may all be blocked
constexpr int kMonthsPerYear = 12;

CalendarAction go_to(std::optional<int32_t> day, const CalendarKey& key) {
  if (!day) return {CalendarAction::kStay, 0, false};
  return {CalendarAction::kMark, *day, key.shift};
}

// A jump to a place that may be blocked ends beside it, but never back at or behind the start.
CalendarAction jump(std::optional<int32_t> target, int32_t mark, int direction,
                    const CalendarKey& key, const DayRules& rules) {
  if (!target) return {CalendarAction::kStay, 0, false};
  const int32_t wanted = std::clamp(*target, std::min(rules.bounds.min, rules.bounds.max),
                                    std::max(rules.bounds.min, rules.bounds.max));
  const auto day = rules.nearest(wanted, direction);
  const bool onward = day && (int64_t{*day} - mark) * direction > 0;
  return go_to(onward ? day : std::nullopt, key);
}

CalendarAction step(int32_t mark, int days, const CalendarKey& key, const DayRules& rules) {
  return go_to(rules.search(mark + days, days), key);
}

CalendarAction edge(int32_t from, int direction, const CalendarKey& key, const DayRules& rules) {
  const auto day = rules.search(std::clamp(from, rules.bounds.min, rules.bounds.max), direction);
  if (day && month_of(*day) != month_of(from)) return go_to(std::nullopt, key);
  return go_to(day, key);
}

CalendarAction day_key(const CalendarKey& key, int32_t mark, int32_t today, const DayRules& rules) {
  const int page = key.ctrl ? kMonthsPerYear : 1;
  const YearMonth month = month_of(mark);
  switch (key.key) {
    case kKeyLeft:
      return step(mark, -1, key, rules);
    case kKeyRight:
      return step(mark, 1, key, rules);
    case kKeySubtract:
    case kKeyMinus:
      return step(mark, -1, {key.key, false, key.ctrl}, rules);
    case kKeyAdd:
    case kKeyPlus:
      return step(mark, 1, {key.key, false, key.ctrl}, rules);
    case kKeyUp:
      return step(mark, -kWeekDays, key, rules);
    case kKeyDown:
      return step(mark, kWeekDays, key, rules);
    case kKeyPageUp:
      return jump(day_months_later(mark, -page), mark, -1, key, rules);
    case kKeyPageDown:
      return jump(day_months_later(mark, page), mark, 1, key, rules);
    case kKeyHome:
      if (key.ctrl) return go_to(rules.search(today, 1), key);
      return edge(first_day(month), 1, key, rules);
    case kKeyEnd:
      return edge(last_day(month), -1, key, rules);
    case kKeyH:
      return go_to(rules.search(today, 1), {key.key, false, key.ctrl});
    case kKeyEnter:
      return {CalendarAction::kTake, mark, false};
    case kKeySpace:
      return {CalendarAction::kFlip, mark, false};
    default:
      return {};
  }
}

// The choosers of months and years move the mark by whole months; blocked days do not matter until
// a day is to be taken.
CalendarAction chooser_key(const CalendarKey& key, int32_t mark, int32_t today, int unit,
                           const DayRules& rules) {
  const auto by = [&](int units) -> CalendarAction {
    const auto day = day_months_later(mark, units * unit);
    return day && rules.bounds.min <= rules.bounds.max
               ? CalendarAction{CalendarAction::kMark,
                                std::clamp(*day, rules.bounds.min, rules.bounds.max), false}
               : CalendarAction{CalendarAction::kStay, 0, false};
  };
  const YearMonth at = month_of(mark);
  const int cell = unit == 1 ? at.month - 1 : at.year - first_year_shown(at.year);
  switch (key.key) {
    case kKeyLeft:
    case kKeySubtract:
    case kKeyMinus:
      return by(-1);
    case kKeyRight:
    case kKeyAdd:
    case kKeyPlus:
      return by(1);
    case kKeyUp:
      return by(-kChooserColumns);
    case kKeyDown:
      return by(kChooserColumns);
    case kKeyPageUp:
      return by(-kChooserCells);
    case kKeyPageDown:
      return by(kChooserCells);
    case kKeyHome:
      return by(-cell);
    case kKeyEnd:
      return by(kChooserCells - 1 - cell);
    case kKeyH:
      return {CalendarAction::kMark, today, false};
    case kKeyEnter:
    case kKeySpace:
      return {CalendarAction::kEnter, mark, false};
    default:
      return {};
  }
}

}  // namespace

bool DayRules::can_choose(int32_t day) const {
  if (!bounds.contains(day)) return false;
  if (block_weekends && is_weekend(weekday(day))) return false;
  return !block_holidays || !holidays || !is_day_off(holidays->note(day), count);
}

std::optional<int32_t> DayRules::search(int32_t day, int step) const {
  for (int tries = 0; tries < kLongestSearch; ++tries, day += step) {
    if (can_choose(day)) return day;
    if (step < 0 ? day < bounds.min : day > bounds.max) return std::nullopt;
  }
  return std::nullopt;
}

std::optional<int32_t> DayRules::nearest(int32_t day, int step) const {
  const auto onward = search(day, step);
  return onward ? onward : search(day, -step);
}

int first_year_shown(int year) {
  return std::clamp(year - year % kChooserCells, kFirstYear, kLastYear - kChooserCells + 1);
}

CalendarAction calendar_key(const CalendarKey& key, int32_t mark, int32_t today, CalendarView view,
                            const DayRules& rules) {
  if (key.key == kKeyEscape) return {CalendarAction::kClose, mark, false};
  if (view == CalendarView::kDays) return day_key(key, mark, today, rules);
  return chooser_key(key, mark, today, view == CalendarView::kMonths ? 1 : kMonthsPerYear, rules);
}

}  // namespace kestrelon
