// Texts with tabs, shown in columns.
#pragma once

#include <string_view>
#include <vector>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// Widths by ";" such as "120;80", in pixels of 96 dpi scaled to `dpi`. What is no number, and what
/// is below 0, is 0, which hides its column.
std::vector<int> parse_column_widths(std::wstring_view widths, int dpi);

struct ColumnPiece {
  std::wstring_view text;
  PixelRect area;
};

/// The pieces of a text between its tabs and where they show within `area`. The last column takes
/// the room that is left, whatever its width says; pieces beyond the widths are not shown, hidden
/// and clipped away ones neither. Without widths the whole text is one piece.
std::vector<ColumnPiece> split_columns(std::wstring_view text, const std::vector<int>& widths,
                                       const PixelRect& area, bool mirrored);

/// In place of a column: the text with all of them.
inline constexpr int kWholeText = -1;
/// The piece of a column, empty beyond the last; of column 0 without a tab the whole text.
std::wstring_view column_text(std::wstring_view text, int column);

}  // namespace kestrelon
