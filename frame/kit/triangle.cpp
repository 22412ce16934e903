#include "frame/kit/triangle.h"

#include "frame/kit/lines.h"

namespace kestrelon {

void draw_triangle(const PixelView& view, const PixelRect& area, Pointing pointing, int rows,
                   ColorRef color) {
  const bool upright = pointing == Pointing::kUp || pointing == Pointing::kDown;
  const bool tip_first = pointing == Pointing::kUp || pointing == Pointing::kLeft;
  const int middle = upright ? (area.left + area.right) / 2 : (area.top + area.bottom) / 2;
  const int start = (upright ? area.top + area.bottom - rows : area.left + area.right - rows) / 2;
  for (int i = 0; i < rows; ++i) {
    const int half = tip_first ? i : rows - 1 - i;
    const int at = start + i, from = middle - half, to = middle + half + 1;
    fill_rect(view, upright ? PixelRect{from, at, to, at + 1} : PixelRect{at, from, at + 1, to},
              color);
  }
}

}  // namespace kestrelon
