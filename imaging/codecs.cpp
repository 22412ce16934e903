#include "imaging/codecs.h"

#include <utility>

#include "imaging/bmp_parser.h"
#include "imaging/c32bpp_dib.h"
#include "imaging/gif_parser.h"
#include "imaging/ico_parser.h"
#include "imaging/jpeg_writer.h"
#include "imaging/png_parser.h"
#include "imaging/png_writer.h"
#include "imaging/tga_parser.h"

namespace kestrelon {
namespace {

bool png(std::span<const uint8_t> data, c32bppDIB& out) {
  return cPNGparser::LoadStream(data, out);
}

bool icon(std::span<const uint8_t> data, const LoadOptions& options, c32bppDIB& out) {
  return cICOparser::LoadStream(
      data, {options.icon_cx, options.icon_cy, options.icon_bit_depth, png}, out);
}

bool bmp_to(const c32bppDIB& image, bool keep_premultiplied, int32_t fill_color,
            std::vector<uint8_t>& out) {
  return cBMPparser::SaveAsBMP(image, {keep_premultiplied, static_cast<uint32_t>(fill_color)}, out);
}

bool png_to(const c32bppDIB& image, std::vector<uint8_t>& out) {
  const PngProperties* const properties = image.png_properties();
  return cPNGwriter::Save(image, properties ? *properties : PngProperties(), out);
}

bool jpeg_to(const c32bppDIB& image, uint8_t quality, int32_t fill_color,
             std::vector<uint8_t>& out) {
  return write_jpeg(image, {quality, static_cast<uint32_t>(fill_color)}, out);
}

bool gif_to(const c32bppDIB& image, bool adaptive_palette, int32_t tolerance,
            std::vector<uint8_t>& out) {
  return cGIFparser::SaveAsGIF(image, {adaptive_palette, tolerance}, out);
}

bool tga_to(const c32bppDIB& image, bool compress, bool reduce_depth, bool premultiplied,
            std::vector<uint8_t>& out) {
  return cTGAparser::SaveAsTGA(image, {compress, reduce_depth, premultiplied}, out);
}

ImageCodecs own_codecs() {
  ImageCodecs codecs;
  codecs.read_png = png;
  codecs.read_gif = cGIFparser::LoadStream;
  codecs.read_ico = icon;
  codecs.read_bmp = cBMPparser::LoadStream;
  codecs.read_tga = cTGAparser::LoadStream;
  codecs.write_bmp = bmp_to;
  codecs.write_png = png_to;
  codecs.write_jpeg = jpeg_to;
  codecs.write_gif = gif_to;
  codecs.write_tga = tga_to;
  return codecs;
}

ImageCodecs& codecs_in_force() {
  static ImageCodecs codecs = own_codecs();
  return codecs;
}

}  // namespace

const ImageCodecs& image_codecs() {
  return codecs_in_force();
}

ImageCodecs set_image_codecs(const ImageCodecs& codecs) {
  return std::exchange(codecs_in_force(), codecs);
}

}  // namespace kestrelon
