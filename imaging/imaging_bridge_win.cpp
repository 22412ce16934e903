// The system behind the image engine.
#include "imaging/dib_win.h"
#include "imaging/zlib_api.h"
#include "imaging/zlib_api_win.h"

namespace kestrelon {
namespace {

class WindowsBridge final : public ImagingBridge {
 public:
  PlatformFacts facts() const override;
  bool alpha_blend(const DrawRequest& request, uint32_t constant_alpha, bool source_alpha) override;
  bool zlib_available() override {
    const ZlibApi* const zlib = find_zlib();
    return zlib != nullptr && zlib->crc32 != nullptr;
  }
};

// Every system this library can be loaded on is of the NT family, version 6.1 or later; asking it
// would bring its compatibility answers.
PlatformFacts WindowsBridge::facts() const {
  return {PlatformFacts::Family::WindowsNt, 6, 1, 0};
}

bool WindowsBridge::alpha_blend(const DrawRequest& request, uint32_t constant_alpha,
                                bool source_alpha) {
  // Only our own arithmetic is exact in a host's alpha channel.
  const auto* const surface = dynamic_cast<DcSurface*>(request.surface);
  if (surface == nullptr || request.dest_width <= 0 || request.dest_height <= 0) return false;
  const BitmapDc source(bitmap_of(*request.source));
  if (!source) return false;
  const int mode = SetStretchBltMode(surface->dc(), request.high_quality ? HALFTONE : COLORONCOLOR);
  const BLENDFUNCTION blend = {AC_SRC_OVER, 0, static_cast<BYTE>(constant_alpha),
                               static_cast<BYTE>(source_alpha ? AC_SRC_ALPHA : 0)};
  const BOOL done = AlphaBlend(surface->dc(), request.dest_x, request.dest_y, request.dest_width,
                               request.dest_height, source.get(), request.area.x, request.area.y,
                               request.area.width, request.area.height, blend);
  if (mode != 0) SetStretchBltMode(surface->dc(), mode);
  return done;
}

}  // namespace

void start_imaging() {
  static WindowsBridge bridge;
  static const bool started = [] {
    set_imaging_bridge(&bridge);
    use_zlibwapi();
    return true;
  }();
  static_cast<void>(started);
}

}  // namespace kestrelon
