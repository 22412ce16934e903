#include "imaging/gdi_plus_win.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "base/com_win.h"
#include "imaging/dc_surface_win.h"
#include "imaging/drawing.h"
#include "imaging/flatten.h"
#include "imaging/gdi_plus_api_win.h"
#include "imaging/memory_stream_win.h"

namespace kestrelon {
namespace {

using gdi_plus::Owner;
using Gdiplus::GpBitmap;
using Gdiplus::GpGraphics;
using Gdiplus::GpImage;
using Gdiplus::GpImageAttributes;

constexpr Gdiplus::PixelFormat kPremultiplied = 925707;  // PixelFormat32bppPARGB
static_assert(kPremultiplied == PixelFormat32bppPARGB);
constexpr CLSID kEncoderQuality = {
    0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};

bool ok(Gdiplus::GpStatus status) {
  return status == Gdiplus::Ok;
}

// The library's view of pixels that are ours; bottom-up rows have a negative stride.
bool bitmap_over(const gdi_plus::Api& api, const ImageView& view, Owner<GpImage>& out) {
  return ok(api.bitmap_over(view.width, view.height, static_cast<INT>(view.stride), kPremultiplied,
                            const_cast<BYTE*>(view.top), reinterpret_cast<GpBitmap**>(out.put())));
}

Gdiplus::ColorMatrix color_matrix(const DrawRequest& request) {
  Gdiplus::ColorMatrix matrix = {};
  for (int i = 0; i < 5; ++i) matrix.m[i][i] = 1;
  if (request.gray_scale != GrayScale::None) {
    const GrayFormula weights = gray_formula(request.gray_scale);
    for (int to = 0; to < 3; ++to) {
      matrix.m[0][to] = weights.red;
      matrix.m[1][to] = weights.green;
      matrix.m[2][to] = weights.blue;
    }
  }
  matrix.m[3][3] = static_cast<float>(request.opacity) / 100;
  for (int to = 0; to < 3; ++to) matrix.m[4][to] = request.light / 100;
  return matrix;
}

// Moves the origin to the picture's own corner where it is turned.
bool place(const gdi_plus::Api& api, const DrawRequest& request, GpGraphics* graphics) {
  if (request.degrees == 0) return false;
  const auto width = static_cast<float>(request.dest_width);
  const auto height = static_cast<float>(request.dest_height);
  api.translate_world(graphics, static_cast<float>(request.dest_x) + width / 2,
                      static_cast<float>(request.dest_y) + height / 2, Gdiplus::MatrixOrderPrepend);
  api.rotate_world(graphics, static_cast<float>(request.degrees), Gdiplus::MatrixOrderPrepend);
  api.translate_world(graphics, -width / 2, -height / 2, Gdiplus::MatrixOrderPrepend);
  return true;
}

bool draw_on(const gdi_plus::Api& api, const DrawRequest& request, GpImage* source,
             GpGraphics* graphics) {
  Owner<GpImageAttributes> attributes(api.dispose_attributes);
  if (!ok(api.create_attributes(attributes.put()))) return false;
  const Gdiplus::ColorMatrix matrix = color_matrix(request);
  // Pixels beyond the edge repeat the picture, so that its border does not fade.
  api.set_wrap_mode(attributes.get(), Gdiplus::WrapModeTileFlipXY, 0, FALSE);
  api.set_color_matrix(attributes.get(), Gdiplus::ColorAdjustTypeDefault, TRUE, &matrix, nullptr,
                       Gdiplus::ColorMatrixFlagsDefault);
  api.set_interpolation(graphics, request.high_quality
                                      ? Gdiplus::InterpolationModeHighQualityBicubic
                                      : Gdiplus::InterpolationModeNearestNeighbor);
  api.set_pixel_offset(graphics, Gdiplus::PixelOffsetModeHalf);
  const bool moved = place(api, request, graphics);
  const ImageRect& area = request.area;
  return ok(api.draw_image(graphics, source, moved ? 0 : request.dest_x, moved ? 0 : request.dest_y,
                           request.dest_width, request.dest_height, area.x, area.y, area.width,
                           area.height, Gdiplus::UnitPixel, attributes.get(), nullptr, nullptr));
}

bool find_encoder(const gdi_plus::Api& api, const wchar_t* type, CLSID& encoder) {
  UINT count = 0, bytes = 0;
  if (!ok(api.encoders_size(&count, &bytes)) || bytes < count * sizeof(Gdiplus::ImageCodecInfo))
    return false;
  std::vector<uint8_t> block(bytes);
  auto* const infos = reinterpret_cast<Gdiplus::ImageCodecInfo*>(block.data());
  if (!ok(api.encoders(count, bytes, infos))) return false;
  for (UINT i = 0; i < count; ++i) {
    if (std::wcscmp(infos[i].MimeType, type) != 0) continue;
    encoder = infos[i].Clsid;
    return true;
  }
  return false;
}

bool encode(const gdi_plus::Api& api, GpImage* image, const wchar_t* type,
            const Gdiplus::EncoderParameters* parameters, std::vector<uint8_t>& out) {
  CLSID encoder = {};
  const ComPtr<IStream> stream = stream_over({});
  return stream && find_encoder(api, type, encoder) &&
         ok(api.save_image(image, stream.get(), &encoder, parameters)) &&
         stream_content(*stream, out) && !out.empty();
}

// Not every system's library mirrors to the pixel; our own copies do.
bool render_mirrored(DrawRequest request) {
  ScaledSource from;
  from.pixels = request.source->view().part(request.area);
  from.dest_width = request.area.width;
  from.dest_height = request.area.height;
  from.mirror_x = request.dest_width < 0;
  from.mirror_y = request.dest_height < 0;
  c32bppDIB mirrored;
  if (!mirrored.InitializeDIB(from.dest_width, from.dest_height)) return false;
  copy_scaled(from, mirrored.view());
  request.source = &mirrored;
  request.area.x = request.area.y = 0;
  request.dest_width = std::abs(request.dest_width);
  request.dest_height = std::abs(request.dest_height);
  return cGDIPlus::render(request);
}

}  // namespace

bool cGDIPlus::load(std::span<const uint8_t> file, c32bppDIB& out) {
  const GdiPlusSession session;
  const ComPtr<IStream> stream = stream_over(file);
  if (!session || !stream) return false;
  const gdi_plus::Api& api = *gdi_plus::api();
  Owner<GpImage> image(api.dispose_image), canvas(api.dispose_image);
  Owner<GpGraphics> graphics(api.delete_graphics);
  UINT width = 0, height = 0;
  if (!ok(api.load_image(stream.get(), image.put())) || !ok(api.image_width(image.get(), &width)) ||
      !ok(api.image_height(image.get(), &height)) || width > INT32_MAX || height > INT32_MAX ||
      !out.InitializeDIB(static_cast<int32_t>(width), static_cast<int32_t>(height))) {
    return false;
  }
  return bitmap_over(api, std::as_const(out).view(), canvas) &&
         ok(api.graphics_of_image(canvas.get(), graphics.put())) &&
         ok(api.draw_image(graphics.get(), image.get(), 0, 0, out.Width(), out.Height(), 0, 0,
                           out.Width(), out.Height(), Gdiplus::UnitPixel, nullptr, nullptr,
                           nullptr));
}

bool cGDIPlus::render(const DrawRequest& request) {
  if (request.dest_width < 0 || request.dest_height < 0) return render_mirrored(request);
  const auto* const surface = dynamic_cast<DcSurface*>(request.surface);
  if (surface == nullptr && request.host == nullptr) return false;
  const GdiPlusSession session;
  if (!session) return false;
  const gdi_plus::Api& api = *gdi_plus::api();
  Owner<GpImage> source(api.dispose_image), canvas(api.dispose_image);
  Owner<GpGraphics> graphics(api.delete_graphics);
  if (!bitmap_over(api, request.source->view(), source)) return false;
  const bool opened = request.host != nullptr
                          ? bitmap_over(api, std::as_const(*request.host).view(), canvas) &&
                                ok(api.graphics_of_image(canvas.get(), graphics.put()))
                          : ok(api.graphics_of_dc(surface->dc(), graphics.put()));
  return opened && draw_on(api, request, source.get(), graphics.get());
}

bool cGDIPlus::SaveToPNG(const c32bppDIB& image, std::vector<uint8_t>& out) {
  const GdiPlusSession session;
  if (!session || !image.has_image()) return false;
  const gdi_plus::Api& api = *gdi_plus::api();
  Owner<GpImage> source(api.dispose_image);
  return bitmap_over(api, image.view(), source) &&
         encode(api, source.get(), L"image/png", nullptr, out);
}

bool cGDIPlus::SaveToJPG(const c32bppDIB& image, int32_t quality, int32_t fill,
                         std::vector<uint8_t>& out) {
  const GdiPlusSession session;
  if (!session || !image.has_image()) return false;
  const gdi_plus::Api& api = *gdi_plus::api();
  const auto row_bytes = static_cast<size_t>(bitmap_row_length(24, image.Width()));
  std::vector<uint8_t> flat(row_bytes * image.Height());
  for (int32_t y = 0; y < image.Height(); ++y)
    flatten_row_24(flat.data() + y * row_bytes, image.row(y), static_cast<size_t>(image.Width()),
                   static_cast<uint32_t>(fill));
  Owner<GpImage> source(api.dispose_image);
  if (!ok(api.bitmap_over(image.Width(), image.Height(), static_cast<INT>(row_bytes),
                          PixelFormat24bppRGB, flat.data(),
                          reinterpret_cast<GpBitmap**>(source.put())))) {
    return false;
  }
  ULONG level = static_cast<ULONG>(quality);
  Gdiplus::EncoderParameters parameters = {};
  parameters.Count = 1;
  parameters.Parameter[0].Guid = kEncoderQuality;
  parameters.Parameter[0].NumberOfValues = 1;
  parameters.Parameter[0].Type = Gdiplus::EncoderParameterValueTypeLong;
  parameters.Parameter[0].Value = &level;
  return encode(api, source.get(), L"image/jpeg", &parameters, out);
}

}  // namespace kestrelon
