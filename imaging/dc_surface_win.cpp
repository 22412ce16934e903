#include "imaging/dc_surface_win.h"

#include <cstdlib>
#include <cstring>
#include <optional>

namespace kestrelon {
namespace {

HBITMAP bitmap_in(const PixelStore& store) {
  return reinterpret_cast<HBITMAP>(const_cast<PixelStore&>(store).handle());
}

// The shift from logical to device pixels, if there is no other difference between them.
std::optional<POINT> shift_of(HDC dc) {
  POINT corners[2] = {{0, 0}, {64, 64}};
  if ((GetLayout(dc) & LAYOUT_RTL) != 0 || !LPtoDP(dc, corners, 2)) return {};
  if (corners[1].x - corners[0].x != 64 || corners[1].y - corners[0].y != 64) return {};
  return corners[0];
}

// Whether `candidate` is the memory of the pixel at `at`. Systems do not tell alike which way up
// the rows of a DIB section lie, so the pixel is made unlike its rival's for the time of a look.
bool is_pixel(HDC dc, uint8_t* candidate, const uint8_t* rival, POINT at) {
  const uint8_t before[3] = {candidate[0], candidate[1], candidate[2]};
  for (int c = 0; c < 3; ++c) candidate[c] = static_cast<uint8_t>(~rival[c]);
  const COLORREF changed = RGB(candidate[2], candidate[1], candidate[0]);
  const bool seen = GetPixel(dc, at.x, at.y) == changed;
  std::memcpy(candidate, before, sizeof before);
  return seen;
}

}  // namespace

bool DcSurface::begin_pixels(const ImageRect& wanted, ImageRect& got, MutableImageView& view) {
  RECT clip = {};
  const int kind = GetClipBox(dc_, &clip);
  if (kind == ERROR) return false;
  got = {};
  if (kind == NULLREGION) return true;
  const RECT area = {wanted.x, wanted.y, wanted.x + wanted.width, wanted.y + wanted.height};
  RECT visible = {};
  if (!IntersectRect(&visible, &area, &clip)) return true;
  got = {visible.left, visible.top, visible.right - visible.left, visible.bottom - visible.top};
  if (kind == SIMPLEREGION && open_memory(got, view)) return true;
  return open_copy(got, view);
}

bool DcSurface::open_memory(const ImageRect& area, MutableImageView& view) const {
  if (GetObjectType(dc_) != OBJ_MEMDC) return false;
  DIBSECTION facts = {};
  const HGDIOBJ bitmap = GetCurrentObject(dc_, OBJ_BITMAP);
  if (GetObjectW(bitmap, sizeof facts, &facts) != sizeof facts) return false;
  const BITMAP& memory = facts.dsBm;
  const auto shift = shift_of(dc_);
  if (!shift || memory.bmBits == nullptr || memory.bmBitsPixel != 32 ||
      facts.dsBmih.biCompression != BI_RGB) {
    return false;
  }
  const int64_t x = int64_t{area.x} + shift->x, y = int64_t{area.y} + shift->y;
  if (x < 0 || y < 0 || x + area.width > memory.bmWidth || y + area.height > memory.bmHeight)
    return false;
  GdiFlush();
  const ptrdiff_t stride = memory.bmWidthBytes;
  auto* const first = static_cast<uint8_t*>(memory.bmBits);
  const ImageRect on_bitmap{static_cast<int32_t>(x), static_cast<int32_t>(y), area.width,
                            area.height};
  const MutableImageView top_down{first, stride, memory.bmWidth, memory.bmHeight};
  const MutableImageView bottom_up{first + (memory.bmHeight - 1) * stride, -stride, memory.bmWidth,
                                   memory.bmHeight};
  view = top_down.part(on_bitmap);
  if (is_pixel(dc_, view.top, bottom_up.part(on_bitmap).top, {area.x, area.y})) return true;
  view = bottom_up.part(on_bitmap);
  return is_pixel(dc_, view.top, top_down.part(on_bitmap).top, {area.x, area.y});
}

bool DcSurface::open_copy(const ImageRect& area, MutableImageView& view) {
  copy_ = make_dib_section_store(area.width, area.height);
  if (!copy_) return false;
  copied_ = area;
  const size_t bytes = static_cast<size_t>(area.width) * area.height * 4;
  const BitmapDc memory(bitmap_in(*copy_));
  if (!memory || !BitBlt(memory.get(), 0, 0, area.width, area.height, dc_, area.x, area.y, SRCCOPY))
    std::memset(copy_->bits(), 0xFF, bytes);
  GdiFlush();
  const ptrdiff_t stride = ptrdiff_t{area.width} * 4;
  view = {copy_->bits() + (area.height - 1) * stride, -stride, area.width, area.height};
  return true;
}

void DcSurface::end_pixels() {
  if (!copy_) return;
  const BitmapDc memory(bitmap_in(*copy_));
  if (memory) {
    BitBlt(dc_, copied_.x, copied_.y, copied_.width, copied_.height, memory.get(), 0, 0, SRCCOPY);
  }
  copy_.reset();
}

}  // namespace kestrelon
