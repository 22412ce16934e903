// Columns as one line of text: columns parted by "|", in each eleven fields parted by ";", the
// arguments of AddColumn. A field that holds ";", "|" or a quote stands in quotes, those inside
// doubled.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "grid/grid_source.h"
#include "grid/store/column_set.h"

namespace kestrelon {

/// The columns up to the first one with a bad text (or without any). A field that is empty or
/// missing has its default. No more than 32,767 columns.
std::vector<GridNewColumn> parse_header_format(std::wstring_view text);

/// The columns in the order of creation. The width is in pixels, which is not what the parser makes
/// of it, and word wrap is 256 or 0; with `exact` the text gives the same columns again.
std::wstring build_header_format(const GridSource& source, bool exact);

/// A number as callers write it: one decimal mark, a point or a comma; an exponent. Nothing for
/// other texts.
std::optional<double> parse_plain_number(std::wstring_view text);

/// The shortest text that reads as the same Single.
std::wstring single_text(float value, wchar_t mark);

}  // namespace kestrelon
