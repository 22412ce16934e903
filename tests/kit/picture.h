// A picture in memory for the tests of the drawing kit, with a margin that nothing may touch.
#pragma once

#include <random>
#include <vector>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

class Picture {
 public:
  static constexpr uint32_t kMargin = 0xA5A5A5A5;

  Picture(int width, int height, uint32_t pixel = 0)
      : width_(width), height_(height), pixels_((width + 2) * (height + 2), kMargin) {
    for (int y = 0; y < height; ++y) std::fill_n(view().row(y), width, pixel);
  }

  PixelView view() { return {pixels_.data() + width_ + 3, width_, height_, width_ + 2}; }
  /// The same pixels seen with row 0 at the other end.
  PixelView flipped() {
    PixelView other = view();
    other.bits = other.row(height_ - 1);
    other.stride = -other.stride;
    return other;
  }
  uint32_t at(int x, int y) { return view().row(y)[x]; }
  bool operator==(const Picture&) const = default;

  bool margin_untouched() {
    const int across = width_ + 2;
    for (int y = 0; y < height_ + 2; ++y)
      for (int x = 0; x < across; ++x)
        if ((x == 0 || y == 0 || x == across - 1 || y == height_ + 1) &&
            pixels_[y * across + x] != kMargin)
          return false;
    return true;
  }

  /// Random pixels out of the first `colors` of a fixed set, alpha bytes random too.
  void randomize(std::mt19937& random, int colors) {
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x)
        view().row(y)[x] = random() % colors * 0x204060 | (random() & 0xFF) << 24;
  }

 private:
  int width_, height_;
  std::vector<uint32_t> pixels_;
};

}  // namespace kestrelon
