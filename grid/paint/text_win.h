// Texts of cells and headings on a device context.
#pragma once

#include <windows.h>

#include <string_view>

#include "frame/kit/pixel_view.h"
#include "grid/paint/fonts_win.h"

namespace kestrelon::grid_paint {

struct TextPlace {
  PixelRect area;
  PixelRect clip;     ///< nothing is drawn outside
  int alignment = 4;  ///< `GRID_ALIGNMENT`
  bool ellipsis = true;
  bool right_to_left = false;  ///< reading order
};

inline RECT to_rect(const PixelRect& area) {
  return {area.left, area.top, area.right, area.bottom};
}

/// Sets the font of a device context for a while.
class FontInUse {
 public:
  FontInUse(HDC dc, const CellFont& font) : dc_(dc), before_(SelectObject(dc, font.handle)) {}
  FontInUse(const FontInUse&) = delete;
  ~FontInUse() { SelectObject(dc_, before_); }

 private:
  HDC dc_;
  HGDIOBJ before_;
};

/// One line in the font and colour of the device context; a text that is too wide is shortened.
void draw_line(HDC dc, const CellFont& font, std::wstring_view text, const TextPlace& place);

/// Several lines, wrapped at words, at most `max_lines` of them (no limit below 1) and never more
/// than the area has room for, but for the first.
void draw_lines(HDC dc, const CellFont& font, std::wstring_view text, const TextPlace& place,
                int max_lines);

/// Height of a text that is wrapped into a width.
int wrapped_height(HDC dc, std::wstring_view text, int width, bool ellipsis);

/// Width of a line.
int line_width(HDC dc, std::wstring_view text);

}  // namespace kestrelon::grid_paint
