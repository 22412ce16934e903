// What the image engine asks of the platform. The portable half needs none of it: every request may
// be declined, and the engine's own code serves.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "imaging/image_view.h"
#include "imaging/tones.h"

namespace kestrelon {

class c32bppDIB;

/// The system an image lives on; decides its flags at construction.
struct PlatformFacts {
  enum class Family { Other, Windows9x, WindowsNt };
  Family family = Family::Other;
  int32_t major = 0, minor = 0;
  int32_t service_pack = 0;
};

/// Something other than an image that can be drawn on: a device context in the Windows half.
class DrawingSurface {
 public:
  virtual ~DrawingSurface() = default;
  /// The surface's pixels inside `wanted`, clipped to what is visible, in `got`; the view covers
  /// `got` and is valid until the matching end_pixels. False if nothing can be had.
  virtual bool begin_pixels(const ImageRect& wanted, ImageRect& got, MutableImageView& view) = 0;
  /// Puts the pixels of the last begin_pixels back. Their alpha bytes have not been touched.
  virtual void end_pixels() = 0;
};

/// One drawing for an engine of the platform. Exactly one of `surface` and `host` is set.
struct DrawRequest {
  const c32bppDIB* source = nullptr;
  DrawingSurface* surface = nullptr;
  c32bppDIB* host = nullptr;
  int32_t dest_x = 0, dest_y = 0;
  int32_t dest_width = 0, dest_height = 0;  ///< negative: mirrored
  ImageRect area;                           ///< of the source
  int32_t opacity = 100;                    ///< 1 to 100
  bool high_quality = false;                ///< the caller's SetHalfTone
  GrayScale gray_scale = GrayScale::None;
  float light = 0;      ///< -100 to 100
  int32_t degrees = 0;  ///< clockwise, whole
};

/// The platform's services to the engine. The base class declines everything.
class ImagingBridge {
 public:
  virtual ~ImagingBridge() = default;

  virtual PlatformFacts facts() const { return {}; }
  /// The optional imaging library can be started (`isGDIplusOk`).
  virtual bool library_ok() { return false; }
  /// Starts the imaging library; 0 on failure.
  virtual intptr_t start_library() { return 0; }
  virtual void stop_library(intptr_t token) { (void)token; }
  /// Draws any file the library knows into `out` as raw pixels; the caller classifies their alpha.
  virtual bool library_load(std::span<const uint8_t> data, c32bppDIB& out) {
    (void)data, (void)out;
    return false;
  }
  virtual bool library_draw(const DrawRequest& request) {
    (void)request;
    return false;
  }
  virtual bool library_save_png(const c32bppDIB& image, std::vector<uint8_t>& out) {
    (void)image, (void)out;
    return false;
  }
  /// `quality` 0 to 100, `fill` 0x00BBGGRR.
  virtual bool library_save_jpeg(const c32bppDIB& image, int32_t quality, int32_t fill,
                                 std::vector<uint8_t>& out) {
    (void)image, (void)quality, (void)fill, (void)out;
    return false;
  }

  /// The system's own alpha blend with a constant alpha of 1 to 255; `request.high_quality` asks
  /// for halftone stretching, `source_alpha` for blending by the pixels' alpha.
  virtual bool alpha_blend(const DrawRequest& request, uint32_t constant_alpha, bool source_alpha) {
    (void)request, (void)constant_alpha, (void)source_alpha;
    return false;
  }

  /// The system's picture decoder, for what no reader here takes (JPEG, metafiles). Leaves finished
  /// premultiplied pixels with their types in `out`.
  virtual bool decode_picture(std::span<const uint8_t> data, c32bppDIB& out) {
    (void)data, (void)out;
    return false;
  }

  /// zlib is at hand as an external library (`isZlibEnabled`).
  virtual bool zlib_available() { return false; }
  /// Tells the user something; nothing is shown unless a bridge shows it.
  virtual void show_message(const std::wstring& text) { (void)text; }
};

/// The bridge of this process; never null.
ImagingBridge& imaging_bridge();
/// Installs a bridge that outlives its use, or the declining one for null. Returns the previous
/// one, null for the declining one.
ImagingBridge* set_imaging_bridge(ImagingBridge* bridge);

}  // namespace kestrelon
