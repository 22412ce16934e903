#include "services/kn_date.h"

#include "base/text.h"
#include "services/kn_format_ex.h"

namespace kestrelon {
namespace {

// A plain number of at most `limit`; leading zeros are welcome.
bool is_number_up_to(std::wstring_view text, int limit) {
  if (!is_all_digits(text)) return false;
  int number = 0;
  for (const wchar_t c : text) {
    number = number * 10 + (c - L'0');
    if (number > limit) return false;
  }
  return true;
}

}  // namespace

bool is_valid_time(std::wstring_view text, std::wstring_view delimiter) {
  constexpr int kLimits[] = {23, 59, 59};
  const auto parts = split(trim_blanks(text), delimiter);
  if (parts.size() < 2 || parts.size() > 3) return false;
  for (size_t i = 0; i < parts.size(); ++i)
    if (!is_number_up_to(parts[i], kLimits[i])) return false;
  return true;
}

std::wstring day_name(double date_value, bool abbreviated) {
  const auto moment = date_time_of_value(date_value);
  if (!moment) return {};
  std::wstring name = format_moment(*moment, abbreviated ? L"ddd" : L"dddd");
  name[0] = static_cast<wchar_t>(name[0] - L'a' + L'A');
  return name;
}

int month_length(int month, int year, int current_year) {
  if (year == 0) year = current_year;
  if (year < 0 || year > kLastYear) return 0;
  return days_in_month(year, month);
}

std::wstring date_time_text(const DateTime& moment) {
  return format_moment(moment, L"dd/mm/yyyy hh:nn:ss");
}

}  // namespace kestrelon
