#include "grid/values/date_text.h"
#include "base/decimal.h"

#include <cmath>
#include <utility>

#include "base/calendar.h"
#include "base/text.h"

namespace kestrelon {
namespace {

constexpr CalendarDate kEpochDay{1899, 12, 30};

struct Part {
  int value = 0;
  size_t digits = 0;  // as written
};

// Takes up to four digits off the front.
std::optional<Part> take_part(std::wstring_view& text) {
  Part part;
  while (part.digits < text.size() && is_digit(text[part.digits]))
    if (++part.digits > 4) return std::nullopt;
  if (part.digits == 0) return std::nullopt;
  for (size_t i = 0; i < part.digits; ++i) part.value = part.value * 10 + (text[i] - L'0');
  text.remove_prefix(part.digits);
  return part;
}

bool take(std::wstring_view& text, wchar_t c) {
  if (text.empty() || text.front() != c) return false;
  text.remove_prefix(1);
  return true;
}

// "AM" and "PM" behind a time of twelve hours.
bool take_half_day(std::wstring_view& text, int& hour) {
  text = trim_blanks(text);
  if (text.empty()) return true;
  const bool after_noon = equals_ignoring_case(text, L"PM");
  if (!after_noon && !equals_ignoring_case(text, L"AM")) return false;
  if (hour < 1 || hour > 12) return false;
  hour = hour % 12 + (after_noon ? 12 : 0);
  text = {};
  return true;
}

bool read_time(std::wstring_view text, DateTime& moment) {
  const auto hour = take_part(text);
  if (!hour || hour->digits > 2 || !take(text, L':')) return false;
  const auto minute = take_part(text);
  if (!minute || minute->digits > 2) return false;
  Part second;
  if (take(text, L':')) {
    const auto part = take_part(text);
    if (!part || part->digits > 2) return false;
    second = *part;
  }
  moment.hour = hour->value;
  moment.minute = minute->value;
  moment.second = second.value;
  return take_half_day(text, moment.hour) && moment.hour < 24 && moment.minute < 60 &&
         moment.second < 60;
}

int full_year(const Part& year) {
  if (year.digits > 2) return year.value;
  return year.value + (year.value < 30 ? 2000 : 1900);
}

// The year's place among three parts: where one is too long for anything else, else the locale's.
size_t year_place(const Part (&parts)[3], DateOrder order) {
  for (size_t i = 0; i < 3; ++i)
    if (parts[i].digits > 2) return i;
  return order == DateOrder::kYearMonthDay ? 0 : 2;
}

std::optional<CalendarDate> date_of(const Part (&parts)[3], DateOrder order) {
  const size_t year = year_place(parts, order);
  if (year == 1) return std::nullopt;
  Part first = parts[year == 0 ? 1 : 0], second = parts[year == 0 ? 2 : 1];
  if (first.digits > 2 || second.digits > 2) return std::nullopt;
  // Behind a year the month comes first, as in the one form that all locales know.
  const bool month_first = year == 0 || order != DateOrder::kDayMonthYear;
  if (!month_first) std::swap(first, second);
  const CalendarDate date{full_year(parts[year]), first.value, second.value};
  if (is_real_date(date)) return date;
  const CalendarDate turned{date.year, date.day, date.month};
  if (year != 0 && is_real_date(turned)) return turned;
  return std::nullopt;
}

bool read_date(std::wstring_view& text, DateOrder order, CalendarDate& date) {
  Part parts[3];
  wchar_t separator = 0;
  for (size_t i = 0; i < 3; ++i) {
    if (i == 1) separator = text.empty() ? L'\0' : text.front();
    if (i > 0 && !take(text, separator)) return false;
    const auto part = take_part(text);
    if (!part) return false;
    parts[i] = *part;
  }
  const auto found = date_of(parts, order);
  if (found) date = *found;
  return found && (separator == L'/' || separator == L'-' || separator == L'.');
}

std::optional<double> plain_date(std::wstring_view text, DateOrder order) {
  DateTime moment{kEpochDay};
  if (read_time(text, moment)) return date_value(moment);
  moment = {};
  if (!read_date(text, order, moment.date)) return std::nullopt;
  if (text.empty()) return date_value(moment);
  if (!take(text, L' ') && !take(text, L'T')) return std::nullopt;
  if (!read_time(trim_blanks(text), moment)) return std::nullopt;
  return date_value(moment);
}

void append_padded(std::wstring& text, int value, size_t width) {
  const std::wstring digits = decimal_text(value);
  text.append(width > digits.size() ? width - digits.size() : 0, L'0').append(digits);
}

void append_date(std::wstring& text, const CalendarDate& date, const LocaleFacts& facts) {
  const bool year_first = facts.date_order == DateOrder::kYearMonthDay;
  const bool month_first = facts.date_order != DateOrder::kDayMonthYear;
  const auto year = [&] { append_padded(text, date.year, 4); };
  if (year_first) year(), text += facts.date_separator;
  append_padded(text, month_first ? date.month : date.day, 2);
  text += facts.date_separator;
  append_padded(text, month_first ? date.day : date.month, 2);
  if (!year_first) text += facts.date_separator, year();
}

}  // namespace

std::optional<double> cell_date(std::wstring_view text, const LocaleRules& rules) {
  text = trim_blanks(text);
  if (text.empty()) return std::nullopt;
  if (const auto value = plain_date(text, rules.facts().date_order)) return value;
  return rules.wordy_date(text);
}

std::wstring date_text(double value, const LocaleFacts& facts) {
  const auto moment = date_time_of_value(value);
  if (!moment) return {};
  std::wstring text;
  const bool timed = moment->hour != 0 || moment->minute != 0 || moment->second != 0;
  const bool dated = moment->date != kEpochDay || !timed;
  if (dated) append_date(text, moment->date, facts);
  if (!timed) return text;
  if (dated) text += L' ';
  append_padded(text, moment->hour, 2);
  text += L':';
  append_padded(text, moment->minute, 2);
  text += L':';
  append_padded(text, moment->second, 2);
  return text;
}

}  // namespace kestrelon
