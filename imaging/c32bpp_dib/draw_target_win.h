// Where an automation call draws: another image or a device context.
#pragma once

#include "imaging/c32bpp_dib/native_image_win.h"
#include "imaging/dc_surface_win.h"

namespace kestrelon {

/// A Long holds all of a handle: the rest is its sign.
template <class Handle>
Handle handle_of(long number) {
  return reinterpret_cast<Handle>(static_cast<LONG_PTR>(number));
}

inline long number_of(void* handle) {
  return static_cast<long>(reinterpret_cast<INT_PTR>(handle));
}

/// The destination for the time of a call; an image wins over a context.
class DrawTarget {
 public:
  DrawTarget(long dc, IDispatch* host)
      : host_(native_image_of(host)), surface_(handle_of<HDC>(dc)), wrong_(host && !host_) {
    GdiFlush();  // what is still to be drawn on either image comes first
  }
  ~DrawTarget() {
    if (host_) host_->after_change();
  }
  DrawTarget(const DrawTarget&) = delete;
  DrawTarget& operator=(const DrawTarget&) = delete;
  /// A host was given that is no image.
  bool wrong() const { return wrong_; }
  c32bppDIB* host() const { return host_ ? &host_->native_image() : nullptr; }
  DrawingSurface* surface() { return surface_.dc() != nullptr ? &surface_ : nullptr; }

 private:
  ComPtr<NativeImage> host_;
  DcSurface surface_;
  bool wrong_;
};

}  // namespace kestrelon
