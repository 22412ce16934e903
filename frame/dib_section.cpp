#include "frame/dib_section.h"

#include <utility>

namespace kestrelon {

bool DibSection::create(int width, int height) {
  reset();
  // The most that a DIB's 32-bit size field can name.
  if (width <= 0 || height <= 0 || int64_t{width} * height > INT32_MAX / 4) return false;
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  dc_ = CreateCompatibleDC(nullptr);
  if (dc_ != nullptr) bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap_ != nullptr) previous_ = SelectObject(dc_, bitmap_);
  if (previous_ == nullptr) {
    reset();
    return false;
  }
  view_ = {static_cast<uint32_t*>(bits), width, height, width};
  return true;
}

void DibSection::reset() {
  if (previous_ != nullptr) SelectObject(dc_, previous_);
  if (bitmap_ != nullptr) DeleteObject(bitmap_);
  if (dc_ != nullptr) DeleteDC(dc_);
  dc_ = nullptr;
  bitmap_ = nullptr;
  previous_ = nullptr;
  view_ = {};
}

PixelView DibSection::pixels() const {
  GdiFlush();  // calls may still be waiting in the thread's batch
  return view_;
}

void DibSection::swap(DibSection& other) noexcept {
  std::swap(dc_, other.dc_);
  std::swap(bitmap_, other.bitmap_);
  std::swap(previous_, other.previous_);
  std::swap(view_, other.view_);
}

}  // namespace kestrelon
