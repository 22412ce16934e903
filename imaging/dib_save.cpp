// Saving: the target is cleared, then the writers of the format are asked in their order.
#include <algorithm>

#include "base/file_bytes.h"
#include "imaging/c32bpp_dib.h"
#include "imaging/codecs.h"

namespace kestrelon {
namespace {

// Clears the target, lets `encode` fill a buffer and writes it.
template <class Encode>
bool save_to_file(const c32bppDIB& image, const std::wstring& name, Encode&& encode) {
  if (name.empty() || !image.has_image() || !delete_file(name)) return false;
  std::vector<uint8_t> bytes;
  return encode(bytes) && write_file(name, bytes);
}

// Calls a writer on an emptied buffer; a failure leaves it empty.
template <class Writer, class... Arguments>
bool encode_with(Writer writer, const c32bppDIB& image, std::vector<uint8_t>& out,
                 Arguments... arguments) {
  out.clear();
  if (!image.has_image() || !writer) return false;
  if (writer(image, arguments..., out)) return true;
  out.clear();
  return false;
}

bool library_png(const c32bppDIB& image, std::vector<uint8_t>& out) {
  return image.isGDIplusEnabled() && imaging_bridge().library_save_png(image, out);
}

bool library_jpeg(const c32bppDIB& image, uint8_t quality, int32_t fill_color,
                  std::vector<uint8_t>& out) {
  return image.isGDIplusEnabled() &&
         imaging_bridge().library_save_jpeg(image, quality, fill_color, out);
}

}  // namespace

bool c32bppDIB::SaveToStream_Bitmap(std::vector<uint8_t>& out, bool keep_premultiplied,
                                    int32_t fill_color) const {
  return encode_with(image_codecs().write_bmp, *this, out, keep_premultiplied, fill_color);
}

bool c32bppDIB::SaveToStream_PNG(std::vector<uint8_t>& out) const {
  const auto own = image_codecs().write_png;
  // Only our own writer knows the properties of an image.
  if (png_properties_) return encode_with(own, *this, out) || encode_with(library_png, *this, out);
  return encode_with(library_png, *this, out) || encode_with(own, *this, out);
}

bool c32bppDIB::SaveToStream_JPG(std::vector<uint8_t>& out, int32_t quality,
                                 int32_t fill_color) const {
  const auto q = static_cast<uint8_t>(std::clamp(quality, 0, 100));
  return encode_with(library_jpeg, *this, out, q, fill_color) ||
         encode_with(image_codecs().write_jpeg, *this, out, q, fill_color);
}

bool c32bppDIB::SaveToStream_GIF(std::vector<uint8_t>& out, bool adaptive_palette,
                                 int32_t opaqueness_tolerance) const {
  return encode_with(image_codecs().write_gif, *this, out, adaptive_palette, opaqueness_tolerance);
}

bool c32bppDIB::SaveToStream_TGA(std::vector<uint8_t>& out, bool compress, bool reduce_bit_depth,
                                 bool allow_premultiplied) const {
  return encode_with(image_codecs().write_tga, *this, out, compress, reduce_bit_depth,
                     allow_premultiplied);
}

bool c32bppDIB::SaveToFile_Bitmap(const std::wstring& file_name, bool keep_premultiplied,
                                  int32_t fill_color) const {
  return save_to_file(*this, file_name, [&](auto& out) {
    return SaveToStream_Bitmap(out, keep_premultiplied, fill_color);
  });
}

bool c32bppDIB::SaveToFile_PNG(const std::wstring& file_name) const {
  return save_to_file(*this, file_name, [&](auto& out) { return SaveToStream_PNG(out); });
}

bool c32bppDIB::SaveToFile_JPG(const std::wstring& file_name, int32_t quality,
                               int32_t fill_color) const {
  return save_to_file(*this, file_name,
                      [&](auto& out) { return SaveToStream_JPG(out, quality, fill_color); });
}

bool c32bppDIB::SaveToFile_GIF(const std::wstring& file_name, bool adaptive_palette,
                               int32_t opaqueness_tolerance) const {
  return save_to_file(*this, file_name, [&](auto& out) {
    return SaveToStream_GIF(out, adaptive_palette, opaqueness_tolerance);
  });
}

bool c32bppDIB::SaveToFile_TGA(const std::wstring& file_name, bool compress, bool reduce_bit_depth,
                               bool allow_premultiplied) const {
  return save_to_file(*this, file_name, [&](auto& out) {
    return SaveToStream_TGA(out, compress, reduce_bit_depth, allow_premultiplied);
  });
}

}  // namespace kestrelon
