#include "frame/mem_dc.h"

namespace kestrelon {

void pcMemDC::set_Width(int width) {
  if (width > width_) grow(width, height_);
}

void pcMemDC::set_Height(int height) {
  if (height > height_) grow(width_, height);
}

void pcMemDC::grow(int width, int height) {
  picture_.reset();
  width_ = width;
  height_ = height;
  // Until the other size is set there is nothing to make yet.
  if (width == 0 || height == 0 || picture_.create(width, height)) return;
  width_ = height_ = 0;
}

bool pcMemDC::CreateFromPicture(IPicture* picture) {
  const HBITMAP bitmap = bitmap_of(picture);
  return bitmap != nullptr && CreateFromBitmap(bitmap);
}

bool pcMemDC::CreateFromBitmap(HBITMAP bitmap) {
  BITMAP facts = {};
  if (GetObjectW(bitmap, sizeof facts, &facts) != sizeof facts) return false;
  set_Width(facts.bmWidth);
  set_Height(facts.bmHeight);
  if (!picture_) return false;
  const HDC display = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
  const HDC source = CreateCompatibleDC(display);
  const HGDIOBJ previous = SelectObject(source, bitmap);
  const bool copied = previous != nullptr && BitBlt(picture_.dc(), 0, 0, facts.bmWidth,
                                                    facts.bmHeight, source, 0, 0, SRCCOPY);
  if (previous != nullptr) SelectObject(source, previous);
  DeleteDC(source);
  DeleteDC(display);
  if (!copied) {
    picture_.reset();
    width_ = height_ = 0;
  }
  return copied;
}

void pcMemDC::Draw(HDC target, int from_x, int from_y, int width, int height, int x, int y,
                   bool use_mask) const {
  if (width <= 0) width = width_;
  if (height <= 0) height = height_;
  if (!use_mask)
    BitBlt(target, x, y, width, height, picture_.dc(), from_x, from_y, SRCCOPY);
  else
    draw_masked(target, {x, y, width, height, from_x, from_y}, pixels(), kMaskKey);
}

void pcMemDC::StretchDraw(HDC target, int x, int y, int width, int height, int from_x, int from_y,
                          int from_width, int from_height) const {
  if (from_width <= 0) from_width = width_;
  if (from_height <= 0) from_height = height_;
  StretchBlt(target, x, y, width, height, picture_.dc(), from_x, from_y, from_width, from_height,
             SRCCOPY);
}

HBITMAP bitmap_of(IPicture* picture) {
  SHORT type = PICTYPE_NONE;
  OLE_HANDLE handle = 0;
  if (picture == nullptr || FAILED(picture->get_Type(&type)) || type != PICTYPE_BITMAP ||
      FAILED(picture->get_Handle(&handle)))
    return nullptr;
  // Handles have 32 significant bits, which OLE passes in a 32-bit number.
  return reinterpret_cast<HBITMAP>(static_cast<LONG_PTR>(static_cast<LONG>(handle)));
}

void draw_masked(HDC target, const CopyArea& wanted, const PixelView& source, ColorRef key) {
  // The target's bounds are its device context's affair; only the source limits the copy here.
  const CopyArea area = clip_copy(wanted, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, source.bounds());
  DibSection work;
  if (!work.create(area.width, area.height)) return;
  BitBlt(work.dc(), 0, 0, area.width, area.height, target, area.x, area.y, SRCCOPY);
  masked_blit(work.pixels(), {0, 0, area.width, area.height, area.from_x, area.from_y}, source,
              key);
  BitBlt(target, area.x, area.y, area.width, area.height, work.dc(), 0, 0, SRCCOPY);
}

}  // namespace kestrelon
