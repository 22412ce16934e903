// Bitmaps among the library's resources.
#pragma once

#include <windows.h>

#include "base/module_win.h"

namespace kestrelon {

/// A bitmap resource, loaded as a DIB section and owned.
class BitmapResource {
 public:
  explicit BitmapResource(int id) : BitmapResource(MAKEINTRESOURCEW(id)) {}
  explicit BitmapResource(const wchar_t* name)
      : bitmap_(static_cast<HBITMAP>(
            LoadImageW(module_instance(), name, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION))) {}
  ~BitmapResource() {
    if (bitmap_ != nullptr) DeleteObject(bitmap_);
  }
  BitmapResource(const BitmapResource&) = delete;
  BitmapResource& operator=(const BitmapResource&) = delete;

  /// Null when the resource is missing.
  HBITMAP get() const { return bitmap_; }

 private:
  HBITMAP bitmap_;
};

}  // namespace kestrelon
