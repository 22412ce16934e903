// Transforms that change pixels where they are.
#include <algorithm>
#include <cstring>
#include <vector>

#include "imaging/alpha_classify.h"
#include "imaging/c32bpp_dib.h"
#include "imaging/drawing.h"
#include "imaging/row_kernels.h"

namespace kestrelon {
namespace {

// 0x00BBGGRR as an opaque pixel in memory order.
uint32_t opaque_pixel(int32_t color) {
  const auto c = static_cast<uint32_t>(color);
  return 0xFF000000u | (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
}

uint32_t load_pixel(const uint8_t* p) {
  return uint32_t{p[0]} | uint32_t{p[1]} << 8 | uint32_t{p[2]} << 16 | uint32_t{p[3]} << 24;
}

void store_pixel(uint8_t* p, uint32_t value) {
  for (int c = 0; c < 4; ++c) p[c] = static_cast<uint8_t>(value >> (8 * c));
}

}  // namespace

bool c32bppDIB::MakeGrayScale(GrayScale formula) {
  if (!has_image()) return false;
  if (formula == GrayScale::None) return true;
  row_kernels().gray(bits_, bits_, pixel_count(), gray_weights(formula));
  return true;
}

bool c32bppDIB::MakeLighterDarker(float percent) {
  if (!has_image()) return false;
  if (!(percent >= -100 && percent <= 100) || percent == 0) return true;
  row_kernels().light(bits_, bits_, pixel_count(), light_table(static_cast<double>(percent)));
  return true;
}

bool c32bppDIB::MakeImageInverse() {
  if (!has_image()) return false;
  const size_t count = pixel_count();
  for (size_t i = 0; i < count; ++i) {
    uint8_t* p = bits_ + i * 4;
    const int alpha = p[3];
    if (alpha == 0) continue;
    for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(std::max(alpha - p[c], 0));
  }
  return true;
}

bool c32bppDIB::MakeTransparent(int32_t color, bool reverse) {
  if (!has_image()) return false;
  const uint32_t key = opaque_pixel(color);
  const uint32_t from = reverse ? 0 : key, to = reverse ? key : 0;
  const size_t count = pixel_count();
  bool changed = false;
  for (size_t i = 0; i < count; ++i) {
    uint8_t* p = bits_ + i * 4;
    if (load_pixel(p) != from) continue;
    store_pixel(p, to);
    changed = true;
  }
  if (!reverse) {
    if (!changed) return true;
    alpha_ = AlphaType::Simple;
    if (image_type_ == ImageFormat::Bitmap) image_type_ = ImageFormat::BitmapPargb;
    return true;
  }
  ImageFormat told = image_type_ == ImageFormat::Error ? ImageFormat::None : image_type_;
  alpha_ = classify_alpha(bits_, count, false, told);
  const bool had_alpha =
      image_type_ == ImageFormat::BitmapArgb || image_type_ == ImageFormat::BitmapPargb;
  if (alpha_ == AlphaType::None && had_alpha) image_type_ = ImageFormat::Bitmap;
  return true;
}

bool c32bppDIB::BlendToColor(int32_t color, int32_t blend_percent) {
  if (!has_image()) return false;
  if (blend_percent < 1) return true;
  const auto share = static_cast<uint32_t>(std::min(blend_percent, 100));
  const uint32_t target = opaque_pixel(color);
  const uint32_t added[3] = {(target & 0xFF) * share, (target >> 8 & 0xFF) * share,
                             (target >> 16 & 0xFF) * share};
  const size_t count = pixel_count();
  for (size_t i = 0; i < count; ++i) {
    uint8_t* p = bits_ + i * 4;
    const uint32_t alpha = p[3];
    for (int c = 0; c < 3; ++c) {
      const uint32_t mixed = (p[c] * (100 - share) + added[c]) * alpha / 25500;
      p[c] = alpha == 0 ? p[c] : static_cast<uint8_t>(mixed);
    }
  }
  return true;
}

bool c32bppDIB::MirrorImage(bool mirror_x, bool mirror_y) {
  if (!has_image()) return false;
  const size_t bytes = scanWidth();
  std::vector<uint8_t> upper(bytes), lower(bytes);
  auto take = [&](std::vector<uint8_t>& to, const uint8_t* from) {
    if (mirror_x) {
      row_kernels().reverse(to.data(), from, static_cast<size_t>(width_));
    } else {
      std::memcpy(to.data(), from, bytes);
    }
  };
  if (!mirror_x && !mirror_y) return true;
  // With mirror_y rows change places in pairs; the middle row is its own partner.
  const int32_t rows = mirror_y ? (height_ + 1) / 2 : height_;
  for (int32_t y = 0; y < rows; ++y) {
    const int32_t partner = mirror_y ? height_ - 1 - y : y;
    take(upper, row(y));
    take(lower, row(partner));
    std::memcpy(row(partner), upper.data(), bytes);
    std::memcpy(row(y), lower.data(), bytes);
  }
  return true;
}

bool c32bppDIB::CreateCheckerBoard(int32_t size, int32_t color1, int32_t color2) {
  if (!has_image() || size < 1) return false;
  const uint32_t colours[2] = {opaque_pixel(color1), opaque_pixel(color2)};
  for (int32_t y = 0; y < height_; ++y) {
    const int32_t first = y / size;
    uint8_t* out = row(y);
    for (int32_t x = 0; x < width_; ++x, out += 4)
      store_pixel(out, colours[(first + x / size) & 1]);
  }
  alpha_ = AlphaType::None;
  image_type_ = ImageFormat::CheckerBoard;
  return true;
}

}  // namespace kestrelon
