#include "lists/column_widths.h"

#include <algorithm>

#include "base/text.h"
#include "lists/item_layout.h"

namespace kestrelon {

namespace {

constexpr int kWidest = 32767;

int width_of(std::wstring_view text) {
  text = trim_blanks(text);
  if (!is_all_digits(text)) return 0;
  int width = 0;
  for (const wchar_t c : text)
    if ((width = width * 10 + hex_digit_value(c)) > kWidest) return kWidest;
  return width;
}

}  // namespace

std::vector<int> parse_column_widths(std::wstring_view widths, int dpi) {
  if (trim_blanks(widths).empty()) return {};
  std::vector<int> parsed;
  for (const std::wstring_view part : split(widths, L";"))
    parsed.push_back(scale_pixels(width_of(part), dpi));
  return parsed;
}

std::vector<ColumnPiece> split_columns(std::wstring_view text, const std::vector<int>& widths,
                                       const PixelRect& area, bool mirrored) {
  if (widths.empty()) return {{text, area}};
  std::vector<ColumnPiece> pieces;
  PixelRect left = area;
  for (size_t i = 0; i < widths.size(); ++i) {
    PixelRect cell = left;
    if (i + 1 < widths.size()) cell.right = std::min(left.left + widths[i], area.right);
    left.left = cell.right;
    const std::wstring_view piece = column_text(text, static_cast<int>(i));
    if (!cell.empty() && !piece.empty())
      pieces.push_back({piece, mirrored ? mirror_rect(cell, area) : cell});
  }
  return pieces;
}

std::wstring_view column_text(std::wstring_view text, int column) {
  if (column == kWholeText) return text;
  for (; column > 0; --column) {
    const size_t tab = text.find(L'\t');
    if (tab == std::wstring_view::npos) return {};
    text.remove_prefix(tab + 1);
  }
  return text.substr(0, text.find(L'\t'));
}

}  // namespace kestrelon
