// Where a text that is too wide is cut.
#pragma once

#include <cstddef>
#include <string_view>

namespace kestrelon::grid_paint {

inline constexpr std::wstring_view kEllipsis = L"...";

/// How much of a text stays in front of "..." when `fitting` of its characters have room there: up
/// to the last one that is neither letter nor underscore, without blanks at its end. A text without
/// such a break is cut by characters. Never parts a surrogate pair; at least one character stays.
size_t ShortenToWidth(std::wstring_view text, size_t fitting);

}  // namespace kestrelon::grid_paint
