// A date as it is typed into a field: digits are enough, the separators come by themselves.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/calendar.h"

namespace kestrelon {

/// The date a field's text means, by the order of a format (number of ENUM_DATE_FORMAT). Parts may
/// be separated or not: "1511", "15/11", "15112026", "15/11/26", "15". What is missing comes from
/// `today`; of a format without day the first of the month is meant. Years of two digits are 1930
/// to 2029. Nothing for a text that is no real date.
std::optional<CalendarDate> read_typed_date(std::wstring_view text, int format,
                                            const CalendarDate& today);

/// The text with a separator behind a part that is full and has another to follow; for use when a
/// digit has just been typed at the end.
std::wstring with_separator(std::wstring_view text, int format);

/// Whether a character may be typed into the field: digits and the separators.
bool is_date_character(wchar_t c);

/// The date in a format.
std::wstring date_field_text(const CalendarDate& date, int format);

}  // namespace kestrelon
