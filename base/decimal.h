// Decimal texts of numbers, independent of the machine's locale.
#pragma once

#include <string>

namespace kestrelon {

/// `value` with exactly `decimals` places (0 to 15), `mark` between the whole part and the places.
/// The number is taken to 15 significant digits and halves of the last place go away from zero,
/// which is how the hosts' own formatting reads a Double. A result of zero carries no sign. Not a
/// number and infinities give the empty text.
std::wstring format_fixed(double value, int decimals, wchar_t mark = L'.');

}  // namespace kestrelon
