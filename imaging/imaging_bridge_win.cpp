#include "imaging/imaging_bridge_win.h"

#include <utility>

#include "base/com_win.h"
#include "imaging/alpha_classify.h"
#include "imaging/dc_surface_win.h"
#include "imaging/gdi_plus_win.h"
#include "imaging/jpeg_size.h"
#include "imaging/memory_stream_win.h"
#include "imaging/picture_convert_win.h"
#include "imaging/png_parser.h"
#include "imaging/zlib_api.h"
#include "imaging/zlib_api_win.h"

namespace kestrelon {
namespace {

MessageHook& message_hook() {
  static MessageHook hook;
  return hook;
}

bool& png_first() {
  static bool on = false;
  return on;
}

class WindowsBridge final : public ImagingBridge {
 public:
  // Every system this library can be loaded on is of the NT family, version 6.1 or later; asking it
  // would bring its compatibility answers.
  PlatformFacts facts() const override { return {PlatformFacts::Family::WindowsNt, 6, 1, 0}; }
  bool library_ok() override { return cGDIPlus::isGDIplusOk(); }
  intptr_t start_library() override { return start_gdi_plus(); }
  void stop_library(intptr_t token) override { stop_gdi_plus(token); }
  bool library_load(std::span<const uint8_t> data, c32bppDIB& out) override {
    return cGDIPlus::load(data, out);
  }
  bool library_draw(const DrawRequest& request) override { return cGDIPlus::render(request); }
  bool library_save_png(const c32bppDIB& image, std::vector<uint8_t>& out) override {
    return cGDIPlus::SaveToPNG(image, out);
  }
  bool library_save_jpeg(const c32bppDIB& image, int32_t quality, int32_t fill,
                         std::vector<uint8_t>& out) override {
    return cGDIPlus::SaveToJPG(image, quality, fill, out);
  }
  bool alpha_blend(const DrawRequest& request, uint32_t constant_alpha, bool source_alpha) override;
  bool decode_picture(std::span<const uint8_t> data, c32bppDIB& out) override;
  bool zlib_available() override;
  void show_message(const std::wstring& text) override;
};

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

bool WindowsBridge::decode_picture(std::span<const uint8_t> data, c32bppDIB& out) {
  // The system takes the memory before it tells a size.
  const auto size = jpeg_size(data);
  if (size && int64_t{size->width} * size->height > c32bppDIB::kMaxPixels) return false;
  const ComPtr<IStream> stream = stream_over(data);
  ComPtr<IPicture> picture;
  return stream &&
         SUCCEEDED(OleLoadPicture(stream.get(), static_cast<LONG>(data.size()), FALSE, IID_IPicture,
                                  picture.put_void())) &&
         picture && convert_picture(*picture, out);
}

bool WindowsBridge::zlib_available() {
  const ZlibApi* const zlib = find_zlib();
  return zlib != nullptr && zlib->crc32 != nullptr;
}

void WindowsBridge::show_message(const std::wstring& text) {
  if (message_hook()) {
    message_hook()(text);
  } else {
    MessageBoxW(GetActiveWindow(), text.c_str(), L"Kestrelon", MB_OK | MB_ICONEXCLAMATION);
  }
}

bool decode_png(std::span<const uint8_t> file, c32bppDIB& out) {
  if (!cGDIPlus::load(file, out)) {
    out.DestroyDIB();
    return false;
  }
  ImageFormat type = ImageFormat::None;
  out.set_alpha(classify_alpha(out.bits(), out.pixel_count(), true, type));
  out.set_image_type(ImageFormat::Png);
  return true;
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

MessageHook set_message_hook(MessageHook hook) {
  return std::exchange(message_hook(), std::move(hook));
}

bool platform_png_first() {
  return png_first();
}

void set_platform_png_first(bool on) {
  png_first() = on;
  set_platform_png_decoder(on ? PlatformPngDecoder(decode_png) : PlatformPngDecoder());
}

}  // namespace kestrelon
