#include "frame/region.h"

#include <cstddef>
#include <cstring>

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
  if (rects.empty()) return CreateRectRgn(0, 0, 0, 0);
  const size_t bytes = rects.size() * sizeof(RECT);
  std::vector<std::byte> block(sizeof(RGNDATAHEADER) + bytes);
  PixelRect bound = rects.front();
  for (const PixelRect& r : rects)
    bound = {std::min(bound.left, r.left), std::min(bound.top, r.top),
             std::max(bound.right, r.right), std::max(bound.bottom, r.bottom)};
  RGNDATAHEADER header = {};
  header.dwSize = sizeof header;
  header.iType = RDH_RECTANGLES;
  header.nCount = static_cast<DWORD>(rects.size());
  header.nRgnSize = static_cast<DWORD>(bytes);
  header.rcBound = {bound.left, bound.top, bound.right, bound.bottom};
  std::memcpy(block.data(), &header, sizeof header);
  std::memcpy(block.data() + sizeof header, rects.data(), bytes);
  return ExtCreateRegion(nullptr, static_cast<DWORD>(block.size()),
                         reinterpret_cast<const RGNDATA*>(block.data()));
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
