#include "frame/region.h"

#include <cstddef>
#include <span>

#include "imaging/region_win.h"

namespace kestrelon {
namespace {

static_assert(sizeof(PixelRect) == sizeof(RECT) &&
              offsetof(PixelRect, bottom) == offsetof(RECT, bottom));

void add_rect(HRGN region, int left, int top, int right, int bottom) {
  const HRGN part = CreateRectRgn(left, top, right, bottom);
  CombineRgn(region, region, part, RGN_OR);
  DeleteObject(part);
}

}  // namespace

HRGN region_from_rects(const std::vector<PixelRect>& rects) {
  return region_from_rects(std::span(reinterpret_cast<const RECT*>(rects.data()), rects.size()));
}

HRGN round_region(int width, int height, int rx, int ry, SquareSides square) {
  const HRGN region = CreateRoundRectRgn(0, 0, width + 1, height + 1, rx, ry);
  if (region == nullptr) return nullptr;
  if (square == SquareSides::kLeft || square == SquareSides::kBoth)
    add_rect(region, 0, 0, width / 2, height + 1);
  if (square == SquareSides::kRight || square == SquareSides::kBoth)
    add_rect(region, width / 2, 0, width + 1, height + 1);
  return region;
}

void SetRoundRegion(HWND window, int width, int height, int rx, int ry, SquareSides square) {
  const HRGN region = round_region(width, height, rx, ry, square);
  // The window owns the region from here on, unless it refuses it.
  if (region != nullptr && !SetWindowRgn(window, region, TRUE)) DeleteObject(region);
}

}  // namespace kestrelon
