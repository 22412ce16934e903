// Drop shadows: the mean alpha of a square of pixels, in one colour.
#include <algorithm>
#include <array>
#include <vector>

#include "imaging/c32bpp_dib.h"
#include "imaging/premultiply.h"

namespace kestrelon {
namespace {

std::array<uint32_t, 256> shadow_pixels(int32_t color) {
  std::array<uint32_t, 256> pixels{};
  const auto c = static_cast<uint32_t>(color);
  for (uint32_t alpha = 0; alpha < 256; ++alpha) {
    pixels[alpha] = uint32_t{premultiply_byte(c >> 16 & 0xFF, alpha)} |
                    uint32_t{premultiply_byte(c >> 8 & 0xFF, alpha)} << 8 |
                    uint32_t{premultiply_byte(c & 0xFF, alpha)} << 16 | alpha << 24;
  }
  return pixels;
}

// Adds (sign 1) or takes off (sign -1) the alphas of a row.
void add_alphas(std::vector<int32_t>& sums, const uint8_t* row, int32_t sign) {
  for (size_t x = 0; x < sums.size(); ++x) sums[x] += sign * row[x * 4 + 3];
}

}  // namespace

bool c32bppDIB::CreateDropShadow(int32_t depth, int32_t color, c32bppDIB& out) const {
  if (!has_image() || &out == this) return false;
  depth = std::clamp(depth, 0, 10);
  const int32_t spread = 2 * depth;
  if (width_ > INT32_MAX - spread || !out.InitializeDIB(width_ + spread, height_ + spread))
    return false;
  const std::array<uint32_t, 256> pixels = shadow_pixels(color);
  const uint64_t area = static_cast<uint64_t>(spread + 1) * static_cast<uint64_t>(spread + 1);
  // Sums stay below 2^17, so this reciprocal divides them exactly.
  const uint64_t reciprocal = ((uint64_t{1} << 32) + area - 1) / area;
  std::vector<int32_t> columns(static_cast<size_t>(width_));
  for (int32_t y = 0; y < out.height_; ++y) {
    if (y < height_) add_alphas(columns, row(y), 1);
    if (const int32_t gone = y - spread - 1; gone >= 0) add_alphas(columns, row(gone), -1);
    int32_t sum = 0;
    uint8_t* to = out.row(y);
    for (int32_t x = 0; x < out.width_; ++x, to += 4) {
      if (x < width_) sum += columns[static_cast<size_t>(x)];
      if (const int32_t gone = x - spread - 1; gone >= 0) sum -= columns[static_cast<size_t>(gone)];
      const uint32_t pixel = pixels[static_cast<uint64_t>(sum) * reciprocal >> 32];
      for (int c = 0; c < 4; ++c) to[c] = static_cast<uint8_t>(pixel >> (8 * c));
    }
  }
  out.image_type_ = ImageFormat::BitmapPargb;
  out.alpha_ = depth == 0 ? alpha_ : AlphaType::Complex;
  return true;
}

bool c32bppDIB::RenderDropShadow_JIT(DrawingSurface* destination, int32_t dest_x, int32_t dest_y,
                                     int32_t depth, int32_t color, int32_t opacity, float light,
                                     GrayScale gray, c32bppDIB* host) const {
  c32bppDIB shadow(factory_);
  shadow.take_settings(*this);
  if (!CreateDropShadow(depth, color, shadow)) return false;
  RenderArguments args;
  args.destX = dest_x;
  args.destY = dest_y;
  args.Opacity = opacity;
  args.LightAdjustment = light;
  args.grayScale = gray;
  args.destHostDIB = host;
  return shadow.Render(destination, args);
}

}  // namespace kestrelon
