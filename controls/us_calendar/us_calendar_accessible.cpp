// What screen readers are told: a table of days, or a field with one.
#include "controls/us_calendar/us_calendar.h"
#include "lists/calendar/day_text.h"

namespace kestrelon {

void USCalendar::describe(AccessibleItem& item) const {
  item.state = STATE_SYSTEM_FOCUSABLE;
  const auto day = shown_day();
  item.value = day ? long_day(*day) : std::wstring();
  if (!is_field()) {
    item.role = ROLE_SYSTEM_TABLE;
    if (item.name.empty()) item.name = month_title(panel_.first_month());
    return;
  }
  item.role = ROLE_SYSTEM_COMBOBOX;
  item.state |= STATE_SYSTEM_HASPOPUP;
  item.state |= popup_.is_open() ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED;
  item.default_action = popup_.is_open() ? L"Fechar" : L"Abrir";
}

long USCalendar::accessible_count() const {
  return panel_shows() ? panel_.month_count() * kCellsOfMonth : 0;
}

std::optional<int32_t> USCalendar::day_of_child(long child) const {
  if (child < 1 || child > accessible_count() || panel_.view() != CalendarView::kDays)
    return std::nullopt;
  const int at = static_cast<int>(child) - 1;
  return panel_.day_at(at / kCellsOfMonth, at % kCellsOfMonth);
}

// Where the panel lies in the control's pixels.
POINT USCalendar::panel_origin() const {
  POINT origin{0, 0};
  if (popup_.is_open()) MapWindowPoints(popup_.hwnd(), window(), &origin, 1);
  return origin;
}

bool USCalendar::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ItemControl::accessible_item(child, item);
  const auto day = day_of_child(child);
  if (!day) return false;
  const int at = static_cast<int>(child) - 1;
  const auto& month = panel_.places().months[static_cast<size_t>(at / kCellsOfMonth)];
  const PixelRect cell = day_cell(month, at % kCellsOfMonth);
  const POINT origin = panel_origin();
  item.role = ROLE_SYSTEM_CELL;
  item.name = day_description(*day, Holidays.days().note(*day), count());
  item.state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  if (day_selected(*day)) item.state |= STATE_SYSTEM_SELECTED;
  if (!rules().can_choose(*day)) item.state |= STATE_SYSTEM_UNAVAILABLE;
  item.default_action = L"Escolher";
  item.place = {cell.left + origin.x, cell.top + origin.y, cell.right + origin.x,
                cell.bottom + origin.y};
  return true;
}

long USCalendar::accessible_at(POINT point) const {
  if (!panel_shows()) return CHILDID_SELF;
  const POINT origin = panel_origin();
  const CalendarHit hit = panel_.hit(point.x - origin.x, point.y - origin.y);
  return hit.part == CalendarPart::kDay ? child_of(hit) : CHILDID_SELF;
}

long USCalendar::accessible_focus() const {
  const auto hit = panel_shows() ? panel_.find_day(panel_.mark()) : std::nullopt;
  return hit ? child_of(*hit) : CHILDID_SELF;
}

std::vector<long> USCalendar::accessible_selection() const {
  std::vector<long> children;
  for (long child = 1; child <= accessible_count(); ++child)
    if (const auto day = day_of_child(child); day && day_selected(*day)) children.push_back(child);
  return children;
}

void USCalendar::accessible_default_action(long child) {
  if (const auto day = day_of_child(child)) {
    pick_day(*day, selection_.mode() == DaySelectMode::kManyDays ? Pick::kFlip : Pick::kTake);
    return;
  }
  if (child == CHILDID_SELF && is_field()) set_dropped_down(!dropped_down());
}

}  // namespace kestrelon
