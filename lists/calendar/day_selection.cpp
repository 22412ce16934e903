#include "lists/calendar/day_selection.h"

#include <algorithm>

namespace kestrelon {

void DaySelection::set_mode(DaySelectMode mode) {
  mode_ = mode == DaySelectMode::kRange || mode == DaySelectMode::kManyDays
              ? mode
              : DaySelectMode::kOneDay;
  if (!days_.empty()) select(days_.front());
}

std::optional<int32_t> DaySelection::first() const {
  return days_.empty() ? std::nullopt : std::optional(days_.front());
}

std::optional<int32_t> DaySelection::last() const {
  return days_.empty() ? std::nullopt : std::optional(days_.back());
}

bool DaySelection::contains(int32_t day) const {
  if (days_.empty()) return false;
  if (mode_ == DaySelectMode::kRange) return day >= days_.front() && day <= days_.back();
  return std::binary_search(days_.begin(), days_.end(), day);
}

size_t DaySelection::count() const {
  if (mode_ != DaySelectMode::kRange || days_.empty()) return days_.size();
  return static_cast<size_t>(days_.back() - days_.front()) + 1;
}

void DaySelection::select(int32_t day) {
  days_.assign(mode_ == DaySelectMode::kRange ? 2 : 1, day);
  anchor_ = day;
}

void DaySelection::select_range(int32_t from, int32_t to) {
  select(from);
  if (mode_ == DaySelectMode::kRange) days_ = {std::min(from, to), std::max(from, to)};
}

void DaySelection::extend_to(int32_t day, const std::function<bool(int32_t)>& allowed) {
  if (mode_ == DaySelectMode::kOneDay || days_.empty()) return select(day);
  if (mode_ == DaySelectMode::kRange) {
    days_ = {std::min(anchor_, day), std::max(anchor_, day)};
    return;
  }
  for (int32_t at = std::min(anchor_, day); at <= std::max(anchor_, day); ++at)
    if (allowed(at)) days_.push_back(at);
  std::sort(days_.begin(), days_.end());
  days_.erase(std::unique(days_.begin(), days_.end()), days_.end());
}

void DaySelection::set_selected(int32_t day, bool selected) {
  if (mode_ != DaySelectMode::kManyDays) {
    if (selected)
      select(day);
    else if (count() == 1 && contains(day))
      clear();
    return;
  }
  const auto place = std::lower_bound(days_.begin(), days_.end(), day);
  const bool present = place != days_.end() && *place == day;
  anchor_ = day;
  if (selected && !present) days_.insert(place, day);
  if (!selected && present) days_.erase(place);
}

}  // namespace kestrelon
