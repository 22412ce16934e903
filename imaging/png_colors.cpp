#include "imaging/png_colors.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "imaging/premultiply.h"

namespace kestrelon::png {
namespace {

constexpr size_t kMaxPalette = 256;
constexpr uint32_t kOpaque = 0xFF000000u;

uint32_t get(const uint8_t* p) {
  uint32_t value;
  std::memcpy(&value, p, 4);
  return value;
}

// The distinct pixels in rising order, or nothing if there are more than a palette holds.
std::optional<std::vector<uint32_t>> count_colors(const c32bppDIB& image) {
  std::vector<uint32_t> colors;
  colors.reserve(kMaxPalette + 1);
  uint32_t last = ~get(image.row(0));
  for (int32_t y = 0; y < image.Height(); ++y) {
    const uint8_t* row = image.row(y);
    for (int32_t x = 0; x < image.Width(); ++x) {
      const uint32_t value = get(row + size_t{4} * static_cast<size_t>(x));
      if (value == last) continue;
      last = value;
      const auto place = std::lower_bound(colors.begin(), colors.end(), value);
      if (place != colors.end() && *place == value) continue;
      if (colors.size() == kMaxPalette) return std::nullopt;
      colors.insert(place, value);
    }
  }
  return colors;
}

struct AlphaUse {
  bool any = false;      // below 255 somewhere
  bool partial = false;  // neither 0 nor 255 somewhere
};

AlphaUse scan_alpha(const c32bppDIB& image) {
  AlphaUse use;
  for (int32_t y = 0; y < image.Height(); ++y) {
    const uint8_t* row = image.row(y);
    uint32_t least = 255, partial = 0;
    for (size_t x = 0; x < image.scanWidth(); x += 4) {
      const uint32_t alpha = row[x + 3];
      least = std::min(least, alpha);
      partial |= (alpha + 1) & 0xFE;  // 0 for 0 and 255 alone
    }
    use.any |= least != 255;
    use.partial |= partial != 0;
    if (use.partial) break;
  }
  return use;
}

// A byte value that no opaque pixel has in some channel.
std::optional<uint8_t> find_key(const c32bppDIB& image) {
  std::array<std::array<bool, 256>, 3> used{};
  for (int32_t y = 0; y < image.Height(); ++y) {
    const uint8_t* row = image.row(y);
    for (size_t x = 0; x < image.scanWidth(); x += 4) {
      if (row[x + 3] == 0) continue;
      for (size_t c = 0; c < 3; ++c) used[c][row[x + c]] = true;
    }
  }
  for (const auto& channel : used) {
    const auto free = std::find(channel.begin(), channel.end(), false);
    if (free != channel.end()) return static_cast<uint8_t>(free - channel.begin());
  }
  return std::nullopt;
}

uint32_t opaque_pixel(uint32_t bgr) {
  return kOpaque | __builtin_bswap32(bgr) >> 8;
}

void pack_rgb(uint8_t* dst, const uint8_t* src, size_t pixels) {
  for (size_t i = 0; i < pixels; ++i, dst += 3, src += 4) {
    dst[0] = src[2];
    dst[1] = src[1];
    dst[2] = src[0];
  }
}

void pack_keyed(uint8_t* dst, const uint8_t* src, size_t pixels, uint8_t key) {
  for (size_t i = 0; i < pixels; ++i, dst += 3, src += 4) {
    const bool clear = src[3] == 0;
    dst[0] = clear ? key : src[2];
    dst[1] = clear ? key : src[1];
    dst[2] = clear ? key : src[0];
  }
}

void exact_straight_row(uint8_t* dst, const uint8_t* src, size_t pixels) {
  for (size_t i = 0; i < pixels; ++i, dst += 4, src += 4) {
    for (size_t c = 0; c < 3; ++c) dst[c] = exact_straight_byte(src[c], src[3]);
    dst[3] = src[3];
  }
}

void pack_rgba(uint8_t* dst, const uint8_t* straight, size_t pixels) {
  for (size_t i = 0; i < pixels; ++i, dst += 4, straight += 4) {
    dst[0] = straight[2];
    dst[1] = straight[1];
    dst[2] = straight[0];
    dst[3] = straight[3];
  }
}

}  // namespace

uint32_t straight_color(uint32_t premultiplied, bool exact) {
  const uint32_t alpha = premultiplied >> 24;
  uint32_t color = alpha << 24;
  for (unsigned shift : {0u, 8u, 16u}) {
    const uint32_t stored = premultiplied >> shift & 255;
    const uint32_t byte =
        exact ? exact_straight_byte(stored, alpha) : unpremultiply_byte(stored, alpha);
    color |= byte << shift;
  }
  return color;
}

ColorPlan plan_colors(const c32bppDIB& image, std::optional<uint32_t> background) {
  ColorPlan plan;
  if (auto colors = count_colors(image)) {
    plan.type = ColorType::Palette;
    plan.palette = std::move(*colors);
    if (background && plan.palette.size() < kMaxPalette) {
      const uint32_t value = opaque_pixel(*background);
      const auto place = std::lower_bound(plan.palette.begin(), plan.palette.end(), value);
      if (place == plan.palette.end() || *place != value) plan.palette.insert(place, value);
    }
    return plan;
  }
  const AlphaUse alpha = scan_alpha(image);
  if (alpha.any && !alpha.partial) plan.key = find_key(image);
  plan.type = alpha.any && !plan.key ? ColorType::Rgba : ColorType::Rgb;
  return plan;
}

SampleRows::SampleRows(const c32bppDIB& image, const ColorPlan& plan)
    : image_(image),
      plan_(plan),
      row_bytes_(static_cast<size_t>(image.Width()) * samples_per_pixel(plan.type)) {
  if (plan.type == ColorType::Rgba) straight_.resize(image.scanWidth());
}

void SampleRows::read(uint8_t* dst, int32_t y) {
  const uint8_t* const src = image_.row(y);
  const auto pixels = static_cast<size_t>(image_.Width());
  switch (plan_.type) {
    case ColorType::Palette:
      return read_indices(dst, src);
    case ColorType::Rgb:
      return plan_.key ? pack_keyed(dst, src, pixels, *plan_.key) : pack_rgb(dst, src, pixels);
    default:
      if (plan_.exact) {
        exact_straight_row(straight_.data(), src, pixels);
      } else {
        unpremultiply_row(straight_.data(), src, pixels);
      }
      return pack_rgba(dst, straight_.data(), pixels);
  }
}

void SampleRows::read_indices(uint8_t* dst, const uint8_t* src) const {
  uint32_t last = get(src);
  auto index_of = [this](uint32_t value) {
    const auto place = std::lower_bound(plan_.palette.begin(), plan_.palette.end(), value);
    return static_cast<uint8_t>(place - plan_.palette.begin());
  };
  uint8_t index = index_of(last);
  for (size_t i = 0; i < row_bytes_; ++i) {
    const uint32_t value = get(src + i * 4);
    if (value != last) {
      last = value;
      index = index_of(value);
    }
    dst[i] = index;
  }
}

}  // namespace kestrelon::png
