// A cell's text as a value and a value as a cell's text, by the column's type.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "grid/grid_types.h"
#include "grid/locale_rules.h"

namespace kestrelon {

/// A date value: days since 30 December 1899.
struct GridDate {
  double value = 0;
  bool operator==(const GridDate&) const = default;
};

using GridValue = std::variant<std::wstring, double, GridDate, bool>;

/// Numeric columns give a number, date columns a date (the text where it is none), Boolean columns
/// the checked bit; the others their text.
GridValue cell_value(std::wstring_view text, bool checked, GridDataType type,
                     const LocaleRules& rules);

/// The text that reads back as the value: numbers with all their digits and no exponent, dates as
/// the locale writes them, "True" and "False".
std::wstring text_of_value(const GridValue& value, const LocaleRules& rules);

inline constexpr std::wstring_view boolean_text(bool value) {
  return value ? L"True" : L"False";
}

/// What a cell shows: the text through the column's format. What is no number or no date, and what
/// has no format, is shown as it stands.
std::wstring display_text(std::wstring_view text, GridDataType type, std::wstring_view format,
                          const LocaleRules& rules);

/// True where `display_text` may differ from the text; a painter may skip the call otherwise.
constexpr bool is_formatted(GridDataType type, std::wstring_view format) {
  return !format.empty() && (type == GridDataType::Numeric || type == GridDataType::Date);
}

struct GridProgress {
  int percent = -1;  ///< 0 to 100; -1 paints no bar
  std::wstring_view caption;
};

/// A progress bar shows the number in its text (a percent sign may follow), else its word with the
/// text as caption.
GridProgress cell_progress(std::wstring_view text, int16_t word, const LocaleFacts& facts);

}  // namespace kestrelon
