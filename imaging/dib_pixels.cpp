// Single pixels and rectangles of bytes, in and out.
#include <cstring>

#include "imaging/c32bpp_dib.h"
#include "imaging/premultiply.h"

namespace kestrelon {
namespace {

// A width or height of 0 means the whole; the rest is cut at the edges. Empty on bad arguments.
ImageRect area_of(const c32bppDIB& image, const ImageRect& area) {
  if (!image.has_image() || area.x < 0 || area.y < 0) return {};
  return clip_to(area.x, area.y, area.width == 0 ? image.Width() : area.width,
                 area.height == 0 ? image.Height() : area.height, image.Width(), image.Height());
}

// Row `y` of `rows` rows counted from the top, as the block orders them.
size_t block_row(int32_t y, int32_t rows, bool bottom_up) {
  return static_cast<size_t>(bottom_up ? rows - 1 - y : y);
}

void pack_pixel(uint8_t* out, const uint8_t* pixel, const BitsFormat& format) {
  const uint8_t alpha = pixel[3];
  if (alpha == 0) return;
  uint8_t colour[3] = {pixel[0], pixel[1], pixel[2]};
  if (!format.premultiplied && alpha != 255) {
    for (uint8_t& c : colour) c = unpremultiply_byte(c, alpha);
  }
  out[0] = colour[format.bgr ? 0 : 2];
  out[1] = colour[1];
  out[2] = colour[format.bgr ? 2 : 0];
  if (format.with_alpha) out[3] = alpha;
}

}  // namespace

int32_t c32bppDIB::GetPixel(int32_t x, int32_t y, int32_t* alpha, bool as_premultiplied) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return -1;
  const uint8_t* pixel = view().pixel(x, y);
  const uint8_t a = pixel[3];
  if (alpha) *alpha = a;
  const bool straight = !as_premultiplied && a != 0 && a != 255;
  int32_t colour = 0;
  for (int c = 0; c < 3; ++c)
    colour = colour << 8 | (straight ? unpremultiply_byte(pixel[c], a) : pixel[c]);
  return colour;
}

intptr_t c32bppDIB::SetPixel(int32_t x, int32_t y, int32_t color, int32_t alpha,
                             bool is_premultiplied) {
  if (x < 0 || y < 0 || x >= width_ || y >= height_ || alpha < 0 || alpha > 255) return 0;
  uint8_t* pixel = view().pixel(x, y);
  const auto a = static_cast<uint32_t>(alpha);
  for (int c = 0; c < 3; ++c) {
    const uint32_t value = static_cast<uint32_t>(color) >> (16 - 8 * c) & 0xFF;
    const bool scale = !is_premultiplied || value > a;
    pixel[c] = scale ? premultiply_byte(value, a) : static_cast<uint8_t>(value);
  }
  pixel[3] = static_cast<uint8_t>(alpha);
  if (alpha != 255) alpha_ = AlphaType::Complex;
  return reinterpret_cast<intptr_t>(pixel);
}

bool c32bppDIB::GetDIBbits(std::vector<uint8_t>& out, const BitsFormat& format,
                           const ImageRect& wanted) const {
  const ImageRect area = area_of(*this, wanted);
  if (area.empty()) return false;
  const size_t length = format.row_length(area.width);
  out.assign(length * static_cast<size_t>(area.height), 0);
  const bool whole = area == ImageRect{0, 0, width_, height_};
  if (whole && format.with_alpha && format.bgr && format.bottom_up && format.premultiplied) {
    std::memcpy(out.data(), bits_, out.size());
    return true;
  }
  const size_t step = format.with_alpha ? 4 : 3;
  for (int32_t y = 0; y < area.height; ++y) {
    const uint8_t* pixel = view().pixel(area.x, area.y + y);
    uint8_t* to = out.data() + block_row(y, area.height, format.bottom_up) * length;
    for (int32_t x = 0; x < area.width; ++x, pixel += 4, to += step) pack_pixel(to, pixel, format);
  }
  return true;
}

bool c32bppDIB::SetDIBbits(std::span<const uint8_t> bytes, const BitsFormat& format,
                           const ImageRect& wanted) {
  const ImageRect area = area_of(*this, wanted);
  if (area.empty()) return false;
  const size_t length = format.row_length(area.width);
  if (bytes.size() / length < static_cast<size_t>(area.height)) return false;
  const size_t step = format.with_alpha ? 4 : 3;
  const int blue = format.bgr ? 0 : 2;
  for (int32_t y = 0; y < area.height; ++y) {
    uint8_t* pixel = view().pixel(area.x, area.y + y);
    const uint8_t* from = bytes.data() + block_row(y, area.height, format.bottom_up) * length;
    for (int32_t x = 0; x < area.width; ++x, pixel += 4, from += step) {
      pixel[0] = from[blue];
      pixel[1] = from[1];
      pixel[2] = from[2 - blue];
      if (format.with_alpha) pixel[3] = from[3];
    }
  }
  return true;
}

bool c32bppDIB::GetAlphaMask(std::vector<uint8_t>& out, bool dword_aligned, bool bottom_up,
                             const ImageRect& wanted) const {
  const ImageRect area = area_of(*this, wanted);
  if (area.empty()) return false;
  const auto length =
      static_cast<size_t>(dword_aligned ? bitmap_row_length(8, area.width) : int64_t{area.width});
  out.assign(length * static_cast<size_t>(area.height), 0);
  for (int32_t y = 0; y < area.height; ++y) {
    const uint8_t* pixel = view().pixel(area.x, area.y + y);
    uint8_t* to = out.data() + block_row(y, area.height, bottom_up) * length;
    for (int32_t x = 0; x < area.width; ++x) to[x] = pixel[ptrdiff_t{x} * 4 + 3];
  }
  return true;
}

}  // namespace kestrelon
