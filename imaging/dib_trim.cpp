// What part of an image can be seen: trimming and regions.
#include <algorithm>
#include <cstring>
#include <utility>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {
namespace {

bool is_visible(const uint8_t* row, int32_t x) {
  return row[ptrdiff_t{x} * 4 + 3] != 0;
}

// The smallest rectangle around all pixels whose alpha is not 0; empty if there are none.
ImageRect visible_bounds(const ImageView& view) {
  int32_t left = view.width, right = -1, top = -1, bottom = -1;
  for (int32_t y = 0; y < view.height; ++y) {
    const uint8_t* row = view.row(y);
    int32_t first = 0;
    while (first < view.width && !is_visible(row, first)) ++first;
    if (first == view.width) continue;
    int32_t last = view.width - 1;
    while (!is_visible(row, last)) --last;
    left = std::min(left, first);
    right = std::max(right, last);
    if (top < 0) top = y;
    bottom = y;
  }
  if (top < 0) return {};
  return {left, top, right - left + 1, bottom - top + 1};
}

// One byte a pixel: 1 where the picture or one of its inner holes is.
class Mask {
 public:
  explicit Mask(const ImageView& view) : width_(view.width), height_(view.height) {
    inside_.resize(static_cast<size_t>(width_) * static_cast<size_t>(height_));
    for (int32_t y = 0; y < height_; ++y) {
      for (int32_t x = 0; x < width_; ++x) inside_[index(x, y)] = is_visible(view.row(y), x);
    }
  }

  const uint8_t* row(int32_t y) const { return inside_.data() + index(0, y); }

  /// A hole is what cannot be reached from the edge by steps along transparent pixels.
  void fill_holes() {
    for (int32_t x = 0; x < width_; ++x) {
      reach(x, 0);
      reach(x, height_ - 1);
    }
    for (int32_t y = 0; y < height_; ++y) {
      reach(0, y);
      reach(width_ - 1, y);
    }
    while (!pending_.empty()) {
      const auto [x, y] = pending_.back();
      pending_.pop_back();
      if (x > 0) reach(x - 1, y);
      if (x + 1 < width_) reach(x + 1, y);
      if (y > 0) reach(x, y - 1);
      if (y + 1 < height_) reach(x, y + 1);
    }
    for (uint8_t& value : inside_) value = value != kOutside;
  }

 private:
  static constexpr uint8_t kOutside = 2;

  size_t index(int32_t x, int32_t y) const {
    return static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x);
  }
  void reach(int32_t x, int32_t y) {
    uint8_t& value = inside_[index(x, y)];
    if (value != 0) return;
    value = kOutside;
    pending_.emplace_back(x, y);
  }

  int32_t width_, height_;
  std::vector<uint8_t> inside_;
  std::vector<std::pair<int32_t, int32_t>> pending_;
};

void add_spans(const Mask& mask, const ImageRect& bounds, std::vector<ImageRect>& out) {
  for (int32_t y = bounds.y; y < bounds.y + bounds.height; ++y) {
    const uint8_t* row = mask.row(y);
    const int32_t end = bounds.x + bounds.width;
    for (int32_t x = bounds.x; x < end;) {
      if (row[x] == 0) {
        ++x;
        continue;
      }
      const int32_t start = x;
      while (x < end && row[x] != 0) ++x;
      out.push_back({start, y, x - start, 1});
    }
  }
}

}  // namespace

bool c32bppDIB::TrimImage(bool update, int32_t method, ImageRect& found) {
  if (!has_image() || method < 0) return false;
  if (method == kTrimAll) method = kTrimLeft | kTrimTop | kTrimRight | kTrimBottom;
  found = visible_bounds(std::as_const(*this).view());
  if (found.empty()) return true;
  if (!(method & kTrimLeft)) {
    found.width += found.x;
    found.x = 0;
  }
  if (!(method & kTrimTop)) {
    found.height += found.y;
    found.y = 0;
  }
  if (!(method & kTrimRight)) found.width = width_ - found.x;
  if (!(method & kTrimBottom)) found.height = height_ - found.y;
  if (!update || found == ImageRect{0, 0, width_, height_}) return true;

  c32bppDIB trimmed(factory_);
  if (!trimmed.InitializeDIB(found.width, found.height)) return false;
  for (int32_t y = 0; y < found.height; ++y)
    std::memcpy(trimmed.row(y), row(found.y + y) + ptrdiff_t{found.x} * 4, trimmed.scanWidth());
  trimmed.alpha_ = alpha_;
  SwapDIBs(trimmed);
  return true;
}

std::optional<std::vector<ImageRect>> c32bppDIB::CreateRegion(RegionStyle style, int32_t offset_x,
                                                              int32_t offset_y) const {
  const bool known = style == RegionStyle::Bounds || style == RegionStyle::Enclosed ||
                     style == RegionStyle::Shaped;
  if (!has_image() || !known) return std::nullopt;
  std::vector<ImageRect> region;
  const ImageRect bounds = visible_bounds(view());
  if (bounds.empty()) return region;
  if (style == RegionStyle::Bounds) {
    region.push_back(bounds);
  } else {
    Mask mask(std::as_const(*this).view());
    if (style == RegionStyle::Enclosed) mask.fill_holes();
    add_spans(mask, bounds, region);
  }
  for (ImageRect& rect : region) {
    rect.x += offset_x;
    rect.y += offset_y;
  }
  return region;
}

}  // namespace kestrelon
