// What a text holds: its lines and its fields.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// Lines parted by CR LF, CR or LF; an empty text has none, a line end at the end begins another.
int count_lines(std::wstring_view text);

/// A field of a text parted by tabs, from 0; "" for a column it does not have.
std::wstring_view tab_field(std::wstring_view text, int column);

}  // namespace kestrelon
