// The texts and the date of a PNG file in the form that its chunks hold.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "imaging/png_properties.h"

namespace kestrelon::png {

/// The keyword that the standard gives to a text property; for Miscellaneous the application's own,
/// with runs of blanks made one, none at the ends, at most 79 bytes, "Miscellaneous" if nothing is
/// left.
std::string keyword_of(const PngPropertyEntry& entry);

/// `text` in Latin-1, other characters as "?", each line end a single line feed, no zero bytes.
std::string latin1_text(std::wstring_view text);

/// The seven bytes of tIME for a date in days since 30 December 1899, to the nearest second; the
/// year is kept within 1 to 9999.
std::array<uint8_t, 7> time_bytes(double date);

}  // namespace kestrelon::png
