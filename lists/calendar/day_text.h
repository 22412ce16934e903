// How a calendar speaks of its days.
#pragma once

#include <string>

#include "lists/calendar/holidays.h"
#include "lists/calendar/month_grid.h"

namespace kestrelon {

/// "domingo, 15 de novembro de 2026"; "" outside the range of a date value.
std::wstring long_day(int32_t day);
/// The same with what the day is: "..., feriado: Proclamação da República".
std::wstring day_description(int32_t day, const DayNote& note, BusinessCount count);
/// "Novembro de 2026".
std::wstring month_title(YearMonth month);
/// "nov" for 11, "dom" for 1.
std::wstring short_month(int month);
std::wstring short_weekday(int weekday);

}  // namespace kestrelon
