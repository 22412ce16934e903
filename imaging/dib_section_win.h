// DIB sections as the memory of images: what the engine computes on, GDI can draw on.
#pragma once

#include <windows.h>

#include <memory>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// A bottom-up 32-bit DIB section, or null when memory is short.
std::unique_ptr<PixelStore> make_dib_section_store(int32_t width, int32_t height);

/// The bitmap behind `image`, which stays the image's, or null without an image or with pixels that
/// GDI does not know.
HBITMAP bitmap_of(const c32bppDIB& image);

/// Owns a memory device context with a bitmap selected, which it does not own.
class BitmapDc {
 public:
  BitmapDc() = default;
  /// Empty if `bitmap` is null, or selected elsewhere.
  explicit BitmapDc(HBITMAP bitmap);
  ~BitmapDc() { reset(); }
  BitmapDc(const BitmapDc&) = delete;
  BitmapDc& operator=(const BitmapDc&) = delete;

  /// A bitmap is selected.
  explicit operator bool() const { return previous_ != nullptr; }
  HDC get() const { return dc_; }
  /// Makes the context, without a bitmap, if there is none.
  bool make();
  /// Makes the context if there is none and selects `bitmap` in place of any other.
  bool select(HBITMAP bitmap);
  /// Gives the bitmap back; the context stays.
  void deselect();
  void reset();

 private:
  HDC dc_ = nullptr;
  HGDIOBJ previous_ = nullptr;
};

}  // namespace kestrelon
