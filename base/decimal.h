// Decimal texts of numbers, independent of the machine's locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestrelon {

/// `value` with exactly `decimals` places (0 to 15), `mark` between the whole part and the places.
/// The number is taken to 15 significant digits and halves of the last place go away from zero,
/// which is how the hosts' own formatting reads a Double. A result of zero carries no sign. Not a
/// number and infinities give the empty text.
std::wstring format_fixed(double value, int decimals, wchar_t mark = L'.');

/// A whole number in decimal digits.
std::wstring decimal_text(int64_t value);

/// A number in at most `digits` (1 or more) significant digits without zeros at the end, with
/// "E+20" behind it where that or 10^-5 and below would need more places. Rounded from the exact
/// value, ties to the even digit. What is not finite is "inf" or "nan".
std::string general_text(double value, int digits);

/// The number that such a text reads as.
double rounded_to(double value, int digits);

/// The double nearest to a text of digits that may hold one '.' and begin with '-'. Nothing for
/// any other text or beyond the range.
std::optional<double> parse_fixed(std::string_view text);
/// The same with an exponent allowed behind it ("1.5e-3") and '+' in front.
std::optional<double> parse_scientific(std::string_view text);

}  // namespace kestrelon
