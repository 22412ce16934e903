// Dates written in plain numbers, read and written by the locale's order.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "grid/locale_rules.h"

namespace kestrelon {

/// The date value (days since 30 December 1899) of a text: yyyy-mm-dd everywhere, else day, month
/// and year in the locale's order, parted by one of "/-."; a time hh:mm[:ss] may follow behind a
/// blank or a T, or stand alone. A part of three or four digits is a year wherever it stands;
/// shorter years belong to 1930 to 2029. Day and month that fit only the other way round are taken
/// so. What is not plain numbers goes to the rules' own reader.
std::optional<double> cell_date(std::wstring_view text, const LocaleRules& rules);

/// A date value as the locale writes it, in a form that `cell_date` reads back; the time only where
/// there is one, and alone for the first day. "" out of range.
std::wstring date_text(double value, const LocaleFacts& facts);

}  // namespace kestrelon
