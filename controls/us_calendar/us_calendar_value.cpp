// The chosen days: as the program sets them, and as the user does.
#include "base/text.h"
#include "controls/us_calendar/today.h"
#include "controls/us_calendar/us_calendar.h"
#include "lists/calendar/date_entry.h"

namespace kestrelon {

// What counts as chosen: without AllowNull an empty calendar means today.
std::optional<int32_t> USCalendar::shown_day() const {
  const auto first = selection_.first();
  return first || AllowNull.get() ? first : std::optional(today());
}

Variant USCalendar::value() {
  // A default button is pressed without taking the focus from the field.
  if (text_typed_ && read_typed_date(edit_.text(), DateFormat.get(), today_date())) take_text();
  return day_variant(shown_day());
}

void USCalendar::set_value(const VARIANT& value) {
  Variant given;
  VariantCopyInd(&given, const_cast<VARIANT*>(&value));
  DaySelection next = selection_;
  next.clear();
  const bool empty = V_VT(&given) == VT_EMPTY || V_VT(&given) == VT_NULL ||
                     V_VT(&given) == VT_ERROR ||
                     (V_VT(&given) == VT_BSTR && trim_blanks(to_wstring(V_BSTR(&given))).empty());
  if (!empty) {
    std::optional<int32_t> day;
    if (V_VT(&given) == VT_BSTR) {
      const auto date = read_typed_date(to_wstring(V_BSTR(&given)), DateFormat.get(), today_date());
      if (date) day = day_number(*date);
    } else if (given.change(VT_DATE)) {
      day = day_of_value(V_DATE(&given));
    }
    if (!day || !accepts(*day)) return;
    next.select(*day);
  }
  commit(std::move(next));
}

bool USCalendar::accepts(int32_t day) const {
  return rules().bounds.contains(day);
}

std::wstring USCalendar::text() {
  if (edit_.hwnd() != nullptr && text_typed_) return edit_.text();
  const auto day = shown_day();
  return day ? date_field_text(*date_of_day_number(*day), DateFormat.get()) : std::wstring();
}

void USCalendar::set_text(const std::wstring& text) {
  set_value(Variant(std::wstring_view(text)));
}

double USCalendar::range_start() const {
  return shown_day().value_or(0);
}

void USCalendar::set_range_start(double value) {
  const auto day = day_of_value(value);
  if (!day || !accepts(*day)) return;
  DaySelection next = selection_;
  next.select_range(*day, std::max(*day, selection_.last().value_or(*day)));
  commit(std::move(next));
}

double USCalendar::range_end() const {
  return selection_.last().value_or(shown_day().value_or(0));
}

void USCalendar::set_range_end(double value) {
  const auto day = day_of_value(value);
  if (!day || !accepts(*day)) return;
  DaySelection next = selection_;
  next.select_range(std::min(*day, selection_.first().value_or(*day)), *day);
  commit(std::move(next));
}

bool USCalendar::day_selected(double value) const {
  const auto day = day_of_value(value);
  return day && (selection_.empty() ? shown_day() == day : selection_.contains(*day));
}

void USCalendar::set_day_selected(double value, bool selected) {
  const auto day = day_of_value(value);
  if (!day || (selected && !accepts(*day))) return;
  DaySelection next = selection_;
  next.set_selected(*day, selected);
  commit(std::move(next));
}

void USCalendar::clear_control() {
  set_value(Variant());
}

// Everything that shows the value, without an event.
void USCalendar::value_shown() {
  const auto day = shown_day();
  panel_.set_mark(day.value_or(today()));
  show_text();
  redraw_panel();
}

void USCalendar::commit(DaySelection selection) {
  text_typed_ = false;
  const YearMonth former = panel_.first_month();
  const bool changed = !selection.same_days(selection_);
  selection_ = std::move(selection);
  Value.assign(selection_.first());
  value_shown();
  if (!changed) return;
  Value.report();
  tell_readers(EVENT_OBJECT_VALUECHANGE);
  raise_change();
  if (panel_.first_month() != former) months_turned();
}

bool USCalendar::propose(DaySelection selection) {
  if (selection.same_days(selection_) && !selection.empty()) return true;
  Variant value = day_variant(selection.first());
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_before_change(value, cancel);
  if (cancel != VARIANT_FALSE) return false;
  commit(std::move(selection));
  return true;
}

bool USCalendar::pick_day(int32_t day, Pick pick) {
  const DayRules rules = this->rules();
  if (!rules.can_choose(day)) return false;
  DaySelection next = selection_;
  if (next.empty() && pick == Pick::kExtend && shown_day()) next.select(*shown_day());
  switch (pick) {
    case Pick::kTake:
      next.select(day);
      break;
    case Pick::kExtend:
      next.extend_to(day, [&](int32_t each) { return rules.can_choose(each); });
      break;
    case Pick::kFlip:
      next.set_selected(day, !next.contains(day));
      break;
  }
  const bool taken = propose(std::move(next));
  // The mark stays where the user went, not where the selection begins.
  if (taken && panel_.set_mark(day)) months_turned();
  redraw_panel();
  return taken;
}

void USCalendar::months_turned() {
  redraw_panel();
  short month = static_cast<short>(panel_.first_month().month);
  short year = static_cast<short>(panel_.first_month().year);
  raise_month_changed(month, year);
}

double USCalendar::visible_month() const {
  return first_day(panel_.first_month());
}

void USCalendar::set_visible_month(double value) {
  const auto day = day_of_value(value);
  if (!day) return;
  panel_.show_days();
  if (panel_.set_first_month(month_of(*day))) months_turned();
}

}  // namespace kestrelon
