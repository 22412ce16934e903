#include "imaging/gdi_plus_api_win.h"

#include "imaging/gdi_plus_win.h"

namespace kestrelon {
namespace gdi_plus {
namespace {

bool load_entries(HMODULE dll, Api& api) {
  bool whole = true;
  auto find = [&](auto& entry, const char* name) {
    const auto address = reinterpret_cast<void*>(GetProcAddress(dll, name));
    entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(address);
    whole = whole && address != nullptr;
  };
  find(api.startup, "GdiplusStartup");
  find(api.shutdown, "GdiplusShutdown");
  find(api.load_image, "GdipLoadImageFromStream");
  find(api.dispose_image, "GdipDisposeImage");
  find(api.image_width, "GdipGetImageWidth");
  find(api.image_height, "GdipGetImageHeight");
  find(api.bitmap_over, "GdipCreateBitmapFromScan0");
  find(api.graphics_of_image, "GdipGetImageGraphicsContext");
  find(api.graphics_of_dc, "GdipCreateFromHDC");
  find(api.delete_graphics, "GdipDeleteGraphics");
  find(api.set_interpolation, "GdipSetInterpolationMode");
  find(api.set_pixel_offset, "GdipSetPixelOffsetMode");
  find(api.create_attributes, "GdipCreateImageAttributes");
  find(api.dispose_attributes, "GdipDisposeImageAttributes");
  find(api.set_color_matrix, "GdipSetImageAttributesColorMatrix");
  find(api.set_wrap_mode, "GdipSetImageAttributesWrapMode");
  find(api.rotate_world, "GdipRotateWorldTransform");
  find(api.translate_world, "GdipTranslateWorldTransform");
  find(api.draw_image, "GdipDrawImageRectRectI");
  find(api.encoders_size, "GdipGetImageEncodersSize");
  find(api.encoders, "GdipGetImageEncoders");
  find(api.save_image, "GdipSaveImageToStream");
  return whole;
}

}  // namespace

const Api* api() {
  static Api entries = {};
  static const bool found = [] {
    const HMODULE dll = LoadLibraryW(L"gdiplus.dll");
    return dll != nullptr && load_entries(dll, entries);
  }();
  return found ? &entries : nullptr;
}

}  // namespace gdi_plus

intptr_t start_gdi_plus() {
  const gdi_plus::Api* const api = gdi_plus::api();
  if (api == nullptr) return 0;
  const Gdiplus::GdiplusStartupInput input;
  ULONG_PTR token = 0;
  return api->startup(&token, &input, nullptr) == Gdiplus::Ok ? static_cast<intptr_t>(token) : 0;
}

void stop_gdi_plus(intptr_t token) {
  const gdi_plus::Api* const api = gdi_plus::api();
  if (api != nullptr && token != 0) api->shutdown(static_cast<ULONG_PTR>(token));
}

GdiPlusSession::GdiPlusSession() : token_(start_gdi_plus()) {}
GdiPlusSession::~GdiPlusSession() {
  stop_gdi_plus(token_);
}

bool cGDIPlus::isGDIplusOk() {
  static const bool ok = static_cast<bool>(GdiPlusSession());
  return ok;
}

}  // namespace kestrelon
