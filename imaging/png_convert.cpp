#include "imaging/png_convert.h"

#include <algorithm>
#include <cstring>

#include "imaging/png_unfilter.h"
#include "imaging/premultiply.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kestrelon::png {
namespace {

constexpr uint32_t kOpaque = 0xFF000000u;

uint32_t pixel(uint32_t red, uint32_t green, uint32_t blue) {
  return kOpaque | red << 16 | green << 8 | blue;
}

void put(uint8_t* dst, uint32_t value) {
  std::memcpy(dst, &value, 4);
}

uint32_t get(const uint8_t* src) {
  uint32_t value;
  std::memcpy(&value, src, 4);
  return value;
}

// Red, green, blue in memory and a byte that is not looked at.
uint32_t rgb_pixel(const uint8_t* src) {
  return kOpaque | __builtin_bswap32(get(src)) >> 8;
}

void convert_rgb(uint8_t* dst, const uint8_t* src, size_t pixels) {
  for (size_t i = 0; i < pixels; ++i) put(dst + i * 4, rgb_pixel(src + i * 3));
}

void convert_rgb_keyed(uint8_t* dst, const uint8_t* src, size_t pixels, uint32_t key) {
  for (size_t i = 0; i < pixels; ++i) {
    const uint32_t value = rgb_pixel(src + i * 3);
    put(dst + i * 4, value == key ? 0 : value);
  }
}

// 16-bit samples; the key is compared with the high bytes alone.
void convert_rgb16_keyed(uint8_t* dst, const uint8_t* src, size_t pixels,
                         const std::array<uint8_t, 3>& key) {
  for (size_t i = 0; i < pixels; ++i, src += 6) {
    const bool clear = src[0] == key[0] && src[2] == key[1] && src[4] == key[2];
    put(dst + i * 4, clear ? 0 : pixel(src[0], src[2], src[4]));
  }
}

void convert_gray16_keyed(uint8_t* dst, const uint8_t* src, size_t pixels, uint32_t key) {
  for (size_t i = 0; i < pixels; ++i, src += 2) {
    const uint32_t sample = uint32_t{src[0]} << 8 | src[1];
    put(dst + i * 4, sample == key ? 0 : pixel(src[0], src[0], src[0]));
  }
}

void convert_gray_alpha(uint8_t* dst, const uint8_t* src, size_t pixels) {
  for (size_t i = 0; i < pixels; ++i) {
    const uint32_t alpha = src[i * 2 + 1];
    const uint32_t gray = div255(src[i * 2] * alpha);
    put(dst + i * 4, alpha << 24 | gray * 0x010101u);
  }
}

void swap_red_blue(uint8_t* pixels, size_t count) {
  size_t i = 0;
#if defined(__SSE2__)
  const __m128i ends = _mm_set1_epi32(0x00FF00FF);
  for (; i + 4 <= count; i += 4) {
    __m128i* const p = reinterpret_cast<__m128i*>(pixels + i * 4);
    const __m128i value = _mm_loadu_si128(p);
    const __m128i moved = _mm_and_si128(value, ends);
    const __m128i swapped = _mm_or_si128(_mm_slli_epi32(moved, 16), _mm_srli_epi32(moved, 16));
    _mm_storeu_si128(p, _mm_or_si128(_mm_andnot_si128(ends, value), swapped));
  }
#endif
  for (; i < count; ++i) std::swap(pixels[i * 4], pixels[i * 4 + 2]);
}

// Premultiplying treats the three colours alike, so their order can change afterwards.
void convert_rgba(uint8_t* dst, const uint8_t* src, size_t pixels) {
  premultiply_row(dst, src, pixels);
  swap_red_blue(dst, pixels);
}

void convert_indexed(uint8_t* dst, const uint8_t* src, size_t pixels, const uint32_t* table) {
  for (size_t i = 0; i < pixels; ++i) put(dst + i * 4, table[src[i]]);
}

template <unsigned Depth>
void unpack(uint8_t* dst, const uint8_t* src, size_t samples, uint8_t factor) {
  constexpr unsigned kPerByte = 8 / Depth;
  constexpr unsigned kMask = (1u << Depth) - 1;
  for (size_t i = 0; i < samples; ++i) {
    const unsigned shift = 8 - Depth - static_cast<unsigned>(i % kPerByte) * Depth;
    dst[i] = static_cast<uint8_t>((src[i / kPerByte] >> shift & kMask) * factor);
  }
}

// Largest sample times this is white.
uint8_t depth_factor(unsigned depth) {
  return depth >= 8 ? 1 : static_cast<uint8_t>(255 / ((1u << depth) - 1));
}

}  // namespace

RowConverter::RowConverter(const Description& picture, uint32_t longest_row)
    : bit_depth_(picture.header.bit_depth), samples_(samples_per_pixel(picture.header.color_type)) {
  const std::span<const uint8_t> key = picture.transparency;
  const bool deep = bit_depth_ == 16;
  switch (picture.header.color_type) {
    case ColorType::Gray:
      kind_ = deep && !key.empty() ? Kind::Gray16Keyed : Kind::Indexed;
      make_gray_table(picture);
      break;
    case ColorType::Palette:
      kind_ = Kind::Indexed;
      make_palette_table(picture);
      break;
    case ColorType::Rgb:
      kind_ = deep && !key.empty() ? Kind::Rgb16Keyed : Kind::Rgb;
      if (!key.empty()) {
        const uint32_t factor = depth_factor(bit_depth_);
        rgb_key_ = pixel(key[1] * factor & 255, key[3] * factor & 255, key[5] * factor & 255);
        high_key_ = {key[0], key[2], key[4]};
      }
      break;
    case ColorType::GrayAlpha:
      kind_ = Kind::GrayAlpha;
      break;
    case ColorType::Rgba:
      kind_ = Kind::Rgba;
      break;
  }
  const bool keyed16 = kind_ == Kind::Gray16Keyed || kind_ == Kind::Rgb16Keyed;
  if (bit_depth_ != 8 && !keyed16) bytes_.resize(size_t{longest_row} * samples_ + kRowSlack);
}

void RowConverter::make_gray_table(const Description& picture) {
  const uint32_t top = bit_depth_ >= 8 ? 255 : (1u << bit_depth_) - 1;
  const uint32_t factor = depth_factor(bit_depth_);
  for (uint32_t i = 0; i <= top; ++i) pixels_[i] = pixel(i * factor, i * factor, i * factor);
  const std::span<const uint8_t> key = picture.transparency;
  if (key.empty()) return;
  if (bit_depth_ == 16) {
    gray_key_ = uint32_t{key[0]} << 8 | key[1];
  } else {
    pixels_[key[1] & top] = 0;
  }
}

void RowConverter::make_palette_table(const Description& picture) {
  std::array<uint8_t, 256 * 3> rgb = picture.palette;
  // Without a palette two colours are black and white, more are black.
  if (!picture.has_palette && bit_depth_ == 1) std::fill_n(rgb.begin() + 3, 3, uint8_t{255});
  for (size_t i = 0; i < pixels_.size(); ++i) {
    const uint32_t alpha = i < picture.transparency.size() ? picture.transparency[i] : 255;
    const uint8_t* c = &rgb[i * 3];
    pixels_[i] =
        alpha << 24 | div255(c[0] * alpha) << 16 | div255(c[1] * alpha) << 8 | div255(c[2] * alpha);
  }
}

// The row with one byte for each sample: indices and gray values as they are, colours scaled.
const uint8_t* RowConverter::to_bytes(const uint8_t* src, size_t samples) {
  const uint8_t factor = kind_ == Kind::Indexed ? 1 : depth_factor(bit_depth_);
  uint8_t* const dst = bytes_.data();
  switch (bit_depth_) {
    case 1:
      unpack<1>(dst, src, samples, factor);
      break;
    case 2:
      unpack<2>(dst, src, samples, factor);
      break;
    case 4:
      unpack<4>(dst, src, samples, factor);
      break;
    case 16:
      for (size_t i = 0; i < samples; ++i) dst[i] = src[i * 2];
      break;
    default:
      return src;
  }
  return dst;
}

void RowConverter::convert(uint8_t* dst, const uint8_t* src, size_t pixels) {
  if (kind_ == Kind::Gray16Keyed) return convert_gray16_keyed(dst, src, pixels, gray_key_);
  if (kind_ == Kind::Rgb16Keyed) return convert_rgb16_keyed(dst, src, pixels, high_key_);
  const uint8_t* const bytes = to_bytes(src, pixels * samples_);
  switch (kind_) {
    case Kind::Indexed:
      return convert_indexed(dst, bytes, pixels, pixels_.data());
    case Kind::Rgb:
      return rgb_key_ ? convert_rgb_keyed(dst, bytes, pixels, *rgb_key_)
                      : convert_rgb(dst, bytes, pixels);
    case Kind::GrayAlpha:
      return convert_gray_alpha(dst, bytes, pixels);
    default:
      return convert_rgba(dst, bytes, pixels);
  }
}

}  // namespace kestrelon::png
