// The entries of gdiplus.dll that we call, found at run time.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <algorithm>

namespace Gdiplus {
using std::max;  // its headers want the macros that we keep out
using std::min;
}  // namespace Gdiplus
#include <gdiplus/gdiplus.h>

namespace kestrelon {

namespace gdi_plus {
namespace flat = Gdiplus::DllExports;

/// All null-checked when loaded: a table is whole or does not exist.
struct Api {
  decltype(&Gdiplus::GdiplusStartup) startup;
  decltype(&Gdiplus::GdiplusShutdown) shutdown;
  decltype(&flat::GdipLoadImageFromStream) load_image;
  decltype(&flat::GdipDisposeImage) dispose_image;
  decltype(&flat::GdipGetImageWidth) image_width;
  decltype(&flat::GdipGetImageHeight) image_height;
  decltype(&flat::GdipCreateBitmapFromScan0) bitmap_over;
  decltype(&flat::GdipGetImageGraphicsContext) graphics_of_image;
  decltype(&flat::GdipCreateFromHDC) graphics_of_dc;
  decltype(&flat::GdipDeleteGraphics) delete_graphics;
  decltype(&flat::GdipSetInterpolationMode) set_interpolation;
  decltype(&flat::GdipSetPixelOffsetMode) set_pixel_offset;
  decltype(&flat::GdipCreateImageAttributes) create_attributes;
  decltype(&flat::GdipDisposeImageAttributes) dispose_attributes;
  decltype(&flat::GdipSetImageAttributesColorMatrix) set_color_matrix;
  decltype(&flat::GdipSetImageAttributesWrapMode) set_wrap_mode;
  decltype(&flat::GdipRotateWorldTransform) rotate_world;
  decltype(&flat::GdipTranslateWorldTransform) translate_world;
  decltype(&flat::GdipDrawImageRectRectI) draw_image;
  decltype(&flat::GdipGetImageEncodersSize) encoders_size;
  decltype(&flat::GdipGetImageEncoders) encoders;
  decltype(&flat::GdipSaveImageToStream) save_image;
};

/// The entries, or null without the library; it stays loaded.
const Api* api();

/// An object of the library and how it ends.
template <class T>
class Owner {
 public:
  using Free = Gdiplus::GpStatus(WINGDIPAPI*)(T*);
  explicit Owner(Free free) : free_(free) {}
  ~Owner() {
    if (object_ != nullptr) free_(object_);
  }
  Owner(const Owner&) = delete;
  Owner& operator=(const Owner&) = delete;
  T** put() { return &object_; }
  T* get() const { return object_; }

 private:
  Free free_;
  T* object_ = nullptr;
};

}  // namespace gdi_plus
}  // namespace kestrelon
