// Display formats for numbers: sections of 0, #, marks and literals ("#,##0.00;(#,##0.00)"), and
// the named ones ("Currency", "Standard", "Yes/No"). A format is written with point and comma in
// every locale; what comes out has the locale's marks.
#pragma once

#include <string>
#include <string_view>

#include "grid/values/cell_number.h"

namespace kestrelon {

/// The number by the format; digits are rounded in decimals, halves away from zero, however many
/// there are. An empty format writes the number plainly.
std::wstring format_number(const CellNumber& number, std::wstring_view format,
                           const LocaleFacts& facts);

/// All digits with the locale's decimal mark, no groups and no exponent.
std::wstring plain_number(const CellNumber& number, const LocaleFacts& facts);

/// The shortest plain text that `read_number` turns into the same Double; "" for what is no number.
std::wstring plain_number(double value, const LocaleFacts& facts);

/// A finite Double as decimal number, by its shortest text. 0 for what is no number.
CellNumber number_of(double value);

}  // namespace kestrelon
