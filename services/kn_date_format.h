// The date format routine: reads a date written with any of three separators and writes it in
// another order, without the system's date parser.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/calendar.h"

namespace kestrelon {

/// Members of ENUM_DATE_FORMAT, numbered from 0.
inline constexpr int kDateFormatCount = 78;

/// The literal text of a format ("yyyy/mm/dd" for 0); empty for a number outside 0 to 77.
std::wstring_view date_format_text(int format);

/// The number of a format written in any case; nothing when it is not one of the 78.
std::optional<int> find_date_format(std::wstring_view format);

/// Rewrites the date in `text` as `format`. The numbers are kept as given, real date or not. An
/// unknown format gives the text back; a text that lacks a part or holds a part that is no number
/// gives "".
///
/// Parts are read in the order of the format, but a part of four digits is the year wherever it
/// stands: in front it is followed by month and day; behind, day and month stand before it unless
/// the format puts the month first. Three parts given to a format of two fields are day, month and
/// year (year, month, day if the first has four digits). What follows the first blank is ignored.
std::wstring format_date(std::wstring_view text, std::wstring_view format);
std::wstring format_date(std::wstring_view text, int format);

/// A real date in `format`, with the year that the text itself tells, if any. Without a year the
/// 29th of February passes; a day the format leaves out is checked when the text has it.
bool is_valid_date(std::wstring_view text, int format);

/// The whole date that `text` holds, read by the rules of `format`; nothing unless day, month and
/// year are there and make a real date. Serves comparison and sorting.
std::optional<CalendarDate> parse_date(std::wstring_view text, int format);

}  // namespace kestrelon
