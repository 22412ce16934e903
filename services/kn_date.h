// Dates, times and day names of the utility class.
#pragma once

#include <string>
#include <string_view>

#include "base/calendar.h"

namespace kestrelon {

/// True for "h:m" or "h:m:s" with plain digits, 0 to 23 and 0 to 59, parted by `delimiter`.
bool is_valid_time(std::wstring_view text, std::wstring_view delimiter = L":");

/// "Domingo" to "Sábado" for a date value, three letters when `abbreviated`; "" out of range.
std::wstring day_name(double date_value, bool abbreviated = false);

/// Days of a month; year 0 means `current_year`. 0 for a month or year that no calendar has.
int month_length(int month, int year, int current_year);

/// "dd/mm/yyyy hh:mm:ss".
std::wstring date_time_text(const DateTime& moment);

}  // namespace kestrelon
