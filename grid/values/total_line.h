// The figures of the total line.
#pragma once

#include <string>
#include <string_view>

#include "grid/grid_source.h"
#include "grid/locale_rules.h"

namespace kestrelon {

struct TotalRules {
  bool visible_only = false;  ///< hidden rows do not count
  bool exact = false;         ///< averages are divided by the rows, else by one less
};

/// The column's sum or average, as its total line asks. An average over one row is that row's
/// value.
double shown_total(const GridSource& source, int column, const TotalRules& rules);

/// A sum as text, to the fifteen digits that are sure in a Double, through `format` if there is
/// one.
std::wstring total_text(double total, std::wstring_view format, const LocaleFacts& facts);

/// What stands in a column of the total line: caption and figure with a blank between, either
/// alone, or nothing. Only numeric columns have a figure; one by `format` or, without one, plain.
std::wstring total_cell(const GridSource& source, int column, const TotalRules& rules,
                        std::wstring_view format, const LocaleFacts& facts);

}  // namespace kestrelon
