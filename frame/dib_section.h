// A 32-bit picture that GDI and the pixel kit share: one memory, two ways to draw.
#pragma once

#include <windows.h>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// A memory device context with a top-down 32-bit DIB section selected. Owns both; move only.
class DibSection {
 public:
  DibSection() = default;
  DibSection(DibSection&& other) noexcept { swap(other); }
  DibSection& operator=(DibSection&& other) noexcept {
    DibSection(std::move(other)).swap(*this);
    return *this;
  }
  DibSection(const DibSection&) = delete;
  ~DibSection() { reset(); }

  /// Makes a black picture. False, and empty, when a size is not positive or memory is short.
  bool create(int width, int height);
  void reset();

  explicit operator bool() const { return dc_ != nullptr; }
  HDC dc() const { return dc_; }
  int width() const { return view_.width; }
  int height() const { return view_.height; }
  /// The pixels, with all that GDI has drawn so far.
  PixelView pixels() const;

 private:
  void swap(DibSection& other) noexcept;

  HDC dc_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ previous_ = nullptr;
  PixelView view_;
};

}  // namespace kestrelon
