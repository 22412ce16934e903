// Holidays and business days, as the program asks for them.
#include "controls/us_calendar/today.h"
#include "controls/us_calendar/us_calendar.h"
#include "lists/calendar/date_entry.h"
#include "services/record_rows_win.h"

namespace kestrelon {
namespace {

// The date in a field of a table: a date value, or a text in the control's format.
std::optional<CalendarDate> date_of(Variant value, int format) {
  if (V_VT(&value) == VT_BSTR)
    return read_typed_date(to_wstring(V_BSTR(&value)), format, today_date());
  if (V_VT(&value) == VT_NULL || V_VT(&value) == VT_EMPTY || !value.change(VT_DATE)) return {};
  const auto day = day_of_value(V_DATE(&value));
  return day ? date_of_day_number(*day) : std::nullopt;
}

}  // namespace

void USCalendar::add_holiday(short day, short month, const std::wstring& name, short year,
                             bool optional) {
  Holidays.change([&](auto& days) { days.add(day, month, name, year, optional); });
}

void USCalendar::remove_holiday(short day, short month, short year) {
  Holidays.change([&](auto& days) { days.remove(day, month, year); });
}

void USCalendar::clear_holidays() {
  Holidays.change([](auto& days) { days.clear(); });
}

long USCalendar::fill_holidays_from_query(IDispatch* records, const std::wstring& date_field,
                                          const std::wstring& name_field) {
  std::vector<std::pair<CalendarDate, std::wstring>> found;
  const bool read = read_records(records, {date_field, name_field}, [&](RecordFields& fields) {
    if (const auto date = date_of(fields.value(0), DateFormat.get()))
      found.emplace_back(*date, fields.text(1));
  });
  if (!read || date_field.empty()) return -1;
  long taken = 0;
  Holidays.change([&](auto& days) {
    for (const auto& [date, name] : found) taken += days.add(date.day, date.month, name, date.year);
  });
  return taken;
}

bool USCalendar::is_holiday(double value) const {
  const auto day = day_of_value(value);
  return day && is_day_off(Holidays.days().note(*day), count());
}

std::wstring USCalendar::holiday_name(double value) const {
  const auto day = day_of_value(value);
  return day ? Holidays.days().note(*day).name : std::wstring();
}

double USCalendar::easter_date(long year) const {
  return year >= kFirstYear && year <= kLastYear ? easter_day(static_cast<int>(year)) : 0;
}

bool USCalendar::is_business_day(double value) const {
  const auto day = day_of_value(value);
  return day && business_.is_business_day(*day);
}

// A day beyond the calendar reads as 0.
double USCalendar::add_business_days(double value, long count) const {
  const auto day = day_of_value(value);
  return day ? business_.add(*day, count).value_or(0) : 0;
}

double USCalendar::next_business_day(double value, bool backwards) const {
  const auto day = day_of_value(value);
  return day ? business_.next(*day, backwards).value_or(0) : 0;
}

long USCalendar::business_days_between(double from, double to) const {
  const auto first = day_of_value(from), last = day_of_value(to);
  return first && last ? static_cast<long>(business_.between(*first, *last)) : 0;
}

}  // namespace kestrelon
