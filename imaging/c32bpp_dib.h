// The image class of the library: a rectangle of premultiplied 32-bit pixels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "imaging/image_types.h"

namespace kestrelon {

/// Memory behind an image: the heap in the portable half, a DIB section where Windows is.
class PixelStore {
 public:
  virtual ~PixelStore() = default;
  /// First byte of the bottom row; width * height * 4 zeroed bytes, owned by the store.
  virtual uint8_t* bits() = 0;
  /// The platform's bitmap handle, or any value other than 0.
  virtual intptr_t handle() = 0;
};

/// Makes a zero-filled store for width * height pixels (both above 0), or null when memory is
/// short.
using PixelStoreFactory = std::function<std::unique_ptr<PixelStore>(int32_t width, int32_t height)>;

/// 32-bit premultiplied pixels: bytes blue, green, red, alpha; rows bottom-up in memory, without
/// gaps. Invariant: every colour byte is at most the pixel's alpha. Public coordinates are top-left
/// based.
class c32bppDIB {
 public:
  /// No image has more pixels than this; every reader checks it before memory is taken.
  static constexpr int64_t kMaxPixels = int64_t{1} << 28;

  c32bppDIB();
  explicit c32bppDIB(PixelStoreFactory factory);
  ~c32bppDIB();
  c32bppDIB(const c32bppDIB&) = delete;
  c32bppDIB& operator=(const c32bppDIB&) = delete;

  /// Replaces any image by a zeroed one of `width` by |`height`|: format None, alpha Simple.
  /// A height of 0 or a width below 1, more than kMaxPixels or lack of memory: false, and no image.
  bool InitializeDIB(int32_t width, int32_t height);
  /// Frees the image: sizes 0, format Error, alpha None.
  void DestroyDIB();
  /// Zeroes all pixels: format None, alpha Simple.
  void EraseDIB();

  bool has_image() const { return store_ != nullptr; }
  int32_t Width() const { return width_; }
  int32_t Height() const { return height_; }
  /// Bytes of a row; rows have no padding.
  size_t scanWidth() const { return static_cast<size_t>(width_) * 4; }

  /// First byte of the bottom row, or null without an image.
  uint8_t* bits() { return bits_; }
  const uint8_t* bits() const { return bits_; }
  /// First byte of picture row `y`, counted from the top; `y` must lie in the image.
  uint8_t* row(int32_t y) { return bits_ + static_cast<size_t>(height_ - 1 - y) * scanWidth(); }
  const uint8_t* row(int32_t y) const {
    return bits_ + static_cast<size_t>(height_ - 1 - y) * scanWidth();
  }

  ImageFormat ImageType() const { return image_type_; }
  void set_image_type(ImageFormat type) { image_type_ = type; }
  AlphaType Alpha() const { return alpha_; }
  void set_alpha(AlphaType alpha) { alpha_ = alpha; }

 private:
  PixelStoreFactory factory_;
  std::unique_ptr<PixelStore> store_;
  uint8_t* bits_ = nullptr;
  int32_t width_ = 0;
  int32_t height_ = 0;
  ImageFormat image_type_ = ImageFormat::Error;
  AlphaType alpha_ = AlphaType::None;
};

}  // namespace kestrelon
