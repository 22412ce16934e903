// Date patterns of the hosts' language (its `Format` function) with Brazilian names and order, the
// same on every machine.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/calendar.h"

namespace kestrelon {

/// A date value as its digits, a date (day first; year first if it has four digits; month first
/// where only that makes a real date; the year may be missing and is then `current_year`), a time,
/// or both parted by blanks or "T". Nothing for any other text.
std::optional<DateTime> read_moment(std::wstring_view text, int current_year);

/// Writes `moment` by a pattern of the host language, in any case: d to dddddd, m to mmmm, y to
/// yyyy, w, ww, q, h, hh, n, nn, s, ss, ttttt, c, AM/PM, A/P, quoted and backslashed literals; m
/// right after hours means minutes. The names "General Date", "Long Date", "Short Date", "Long
/// Time" and their like stand for patterns. Other characters are copied.
std::wstring format_moment(const DateTime& moment, std::wstring_view pattern);

/// Formats a text as a date; a text that is no date comes back as it is, an empty one empty.
std::wstring format_date_ex(std::wstring_view text, std::wstring_view pattern, int current_year);

}  // namespace kestrelon
