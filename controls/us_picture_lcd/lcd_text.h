// What a display panel shows: a value as text, cut into places.
#pragma once

#include <string>
#include <string_view>

#include "grid/values/cell_number.h"

namespace kestrelon {

/// A number as people in Brazil write it, by a format or else with `decimals` places (0 to 15).
std::wstring lcd_number(const CellNumber& number, int decimals, std::wstring_view format);

/// Point, comma and colon take no place of their own.
constexpr bool is_lcd_mark(wchar_t c) {
  return c == L'.' || c == L',' || c == L':';
}

/// A text for exactly `places` places (0: as many as needed, at most kMostPlaces): filled at its
/// front with blanks or, where it is a number, with zeros behind the sign; dashes when it does not
/// fit.
std::wstring lcd_fitted(std::wstring_view text, int places, bool zeros);

inline constexpr int kMostPlaces = 256;

}  // namespace kestrelon
