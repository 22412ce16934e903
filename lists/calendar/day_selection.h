// The days that are selected in a calendar: one, a range, or many single ones.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace kestrelon {

/// The numbers of ENUM_CALENDAR_SELECT.
enum class DaySelectMode { kOneDay = 0, kRange = 1, kManyDays = 2 };

class DaySelection {
 public:
  DaySelectMode mode() const { return mode_; }
  /// Keeps the first selected day alone; an unknown number selects one day.
  void set_mode(DaySelectMode mode);

  bool empty() const { return days_.empty(); }
  /// The first and the last selected day; nothing when none is.
  std::optional<int32_t> first() const;
  std::optional<int32_t> last() const;
  bool contains(int32_t day) const;
  size_t count() const;

  void clear() { days_.clear(); }
  /// This day alone; it is where a range that is drawn from now on begins.
  void select(int32_t day);
  /// Both ends, in either order; the first alone outside the mode for ranges.
  void select_range(int32_t from, int32_t to);
  /// Draws to `day` from where the last single selection was made. Of many days those are added
  /// that `allowed` admits; one day just moves.
  void extend_to(int32_t day, const std::function<bool(int32_t)>& allowed);
  /// Of many days, adds or takes away one; otherwise selects it, or clears what was only it.
  void set_selected(int32_t day, bool selected);
  bool same_days(const DaySelection& other) const { return days_ == other.days_; }

 private:
  DaySelectMode mode_ = DaySelectMode::kOneDay;
  std::vector<int32_t> days_;  // many: all, in order; a range: its two ends; one day: itself
  int32_t anchor_ = 0;
};

}  // namespace kestrelon
