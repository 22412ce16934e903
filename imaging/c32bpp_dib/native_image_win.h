// The image inside a c32bppDIB object, for the other classes of the library.
#pragma once

#include <windows.h>

#include "base/com_win.h"
#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// What every c32bppDIB object answers inside this library. Not part of the public contract.
class NativeImage : public IUnknown {
 public:
  virtual c32bppDIB& native_image() = 0;
  /// To be called before the image is replaced: takes its bitmap out of the memory context.
  virtual void before_replace() = 0;
  /// And afterwards.
  virtual void after_replace() = 0;
  /// To be called after pixels have been changed in place.
  virtual void after_change() = 0;
};

inline constexpr IID IID_NativeImage = {
    0xB5C3F1A0, 0x7D42, 0x4E19, {0x9C, 0x0B, 0x2F, 0x6A, 0x51, 0xD0, 0x21, 0x12}};

/// The object behind an automation reference, or empty if it is no c32bppDIB.
inline ComPtr<NativeImage> native_image_of(IUnknown* object) {
  ComPtr<NativeImage> out;
  if (object != nullptr) object->QueryInterface(IID_NativeImage, out.put_void());
  return out;
}

/// The time in which an object's image is replaced.
class Replacing {
 public:
  explicit Replacing(NativeImage& object) : object_(object) { object_.before_replace(); }
  ~Replacing() { object_.after_replace(); }
  Replacing(const Replacing&) = delete;
  Replacing& operator=(const Replacing&) = delete;

 private:
  NativeImage& object_;
};

}  // namespace kestrelon
