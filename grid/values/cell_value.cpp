#include "grid/values/cell_value.h"
#include "base/decimal.h"

#include <algorithm>
#include <cmath>

#include "base/calendar.h"
#include "base/rounding.h"
#include "base/text.h"
#include "grid/values/cell_number.h"
#include "grid/values/date_text.h"
#include "grid/values/number_format.h"
#include "services/kn_date_format.h"

namespace kestrelon {
namespace {

// The form of a date that the date format routine reads alike for every format.
std::wstring iso_date(double value) {
  const auto moment = date_time_of_value(value);
  if (!moment) return {};
  const auto two = [](int number) {
    return std::wstring{L'-', static_cast<wchar_t>(L'0' + number / 10),
                        static_cast<wchar_t>(L'0' + number % 10)};
  };
  std::wstring year = decimal_text(moment->date.year);
  year.insert(0, 4 - std::min<size_t>(year.size(), 4), L'0');
  return year + two(moment->date.month) + two(moment->date.day);
}

std::wstring shown_date(std::wstring_view text, std::wstring_view format,
                        const LocaleRules& rules) {
  if (!find_date_format(format)) return std::wstring(text);
  const auto value = cell_date(text, rules);
  // What the locale cannot read may still fit the format, such as a day and a month alone.
  std::wstring shown = format_date(value ? iso_date(*value) : std::wstring(text), format);
  return shown.empty() ? std::wstring(text) : shown;
}

std::wstring shown_number(std::wstring_view text, std::wstring_view format,
                          const LocaleRules& rules) {
  const CellNumber number = read_number(text, rules.facts());
  return number.whole_text() ? format_number(number, format, rules.facts()) : std::wstring(text);
}

}  // namespace

GridValue cell_value(std::wstring_view text, bool checked, GridDataType type,
                     const LocaleRules& rules) {
  if (type == GridDataType::Numeric) return cell_number(text, rules.facts());
  if (type == GridDataType::Boolean) return checked;
  if (type == GridDataType::Date)
    if (const auto value = cell_date(text, rules)) return GridDate{*value};
  return std::wstring(text);
}

std::wstring text_of_value(const GridValue& value, const LocaleRules& rules) {
  if (const auto* number = std::get_if<double>(&value)) return plain_number(*number, rules.facts());
  if (const auto* date = std::get_if<GridDate>(&value))
    return date_text(date->value, rules.facts());
  if (const auto* state = std::get_if<bool>(&value)) return std::wstring(boolean_text(*state));
  return std::get<std::wstring>(value);
}

std::wstring display_text(std::wstring_view text, GridDataType type, std::wstring_view format,
                          const LocaleRules& rules) {
  if (!is_formatted(type, format) || text.empty()) return std::wstring(text);
  return type == GridDataType::Date ? shown_date(text, format, rules)
                                    : shown_number(text, format, rules);
}

GridProgress cell_progress(std::wstring_view text, int16_t word, const LocaleFacts& facts) {
  constexpr double kFull = 100;
  std::wstring_view figure = trim_blanks(text);
  if (figure.ends_with(L'%')) figure.remove_suffix(1);
  const CellNumber number = read_number(figure, facts);
  const double value = number.whole_text() ? number.to_double() : word;
  const auto percent = round_half_even(std::min(value, kFull));
  return {std::max(percent, -1), number.whole_text() ? std::wstring_view() : text};
}

}  // namespace kestrelon
