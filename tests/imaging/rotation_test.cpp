#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {
namespace {

// A source position in pixels, found as one would on paper.
struct Place {
  double x, y;
};

class Rotation {
 public:
  Rotation(int32_t width, int32_t height, int32_t degrees, double scale)
      : width_(width), height_(height), scale_(scale) {
    const double radians = std::numbers::pi * degrees / 180;
    sine_ = std::sin(radians);
    cosine_ = std::cos(radians);
  }
  Place source_of(double x, double y) const {
    return {(x * cosine_ + y * sine_) / scale_ + width_ / 2.0,
            (y * cosine_ - x * sine_) / scale_ + height_ / 2.0};
  }
  bool inside(Place p) const { return p.x >= 0 && p.y >= 0 && p.x < width_ && p.y < height_; }
  bool at_the_border(Place p) const {
    const auto close = [](double a, double b) { return std::abs(a - b) < 1e-5; };
    return close(p.x, 0) || close(p.y, 0) || close(p.x, width_) || close(p.y, height_);
  }

 private:
  int32_t width_, height_;
  double scale_, sine_, cosine_;
};

double bilinear(const c32bppDIB& source, Place p, size_t channel) {
  const double x = std::max(p.x - 0.5, 0.0), y = std::max(p.y - 0.5, 0.0);
  const auto left = static_cast<int32_t>(x), top = static_cast<int32_t>(y);
  const int32_t right = std::min(left + 1, source.Width() - 1);
  const int32_t below = std::min(top + 1, source.Height() - 1);
  const double fx = x - left, fy = y - top;
  const auto at = [&](int32_t i, int32_t j) { return source.view().pixel(i, j)[channel]; };
  return (at(left, top) * (1 - fy) + at(left, below) * fy) * (1 - fx) +
         (at(right, top) * (1 - fy) + at(right, below) * fy) * fx;
}

void fill_opaque(c32bppDIB& image, unsigned seed) {
  std::mt19937 random(seed);
  for (size_t i = 0; i < image.pixel_count() * 4; ++i)
    image.bits()[i] = i % 4 == 3 ? 255 : static_cast<uint8_t>(random());
}

// Wider than what is drawn at a time, at angles that meet every edge, pictures of a column too.
TEST(Rotation, EveryPixelComesFromItsPlaceInTheSource) {
  const struct {
    int32_t width, height, degrees, factor;
  } cases[] = {{300, 40, 30, 1}, {300, 40, 117, 1}, {40, 300, 200, 1}, {150, 150, 331, 2},
               {1, 90, 45, 3},   {90, 1, 5, 3},     {257, 129, 90, 1}};
  for (const auto& c : cases) {
    c32bppDIB source;
    source.InitializeDIB(c.width, c.height);
    fill_opaque(source, 3);
    const Rotation rotation(c.width, c.height, c.degrees, c.factor);
    for (const bool smooth : {false, true}) {
      c32bppDIB out;
      out.InitializeDIB(460, 450);
      source.set_HighQualityInterpolation(smooth);
      RenderArguments args;
      args.destX = 230 - c.width * c.factor / 2;
      args.destY = 225 - c.height * c.factor / 2;
      args.destWidth = c.width * c.factor;
      args.destHeight = c.height * c.factor;
      args.destHostDIB = &out;
      args.Angle = c.degrees;
      ASSERT_TRUE(source.Render(nullptr, args));
      const double centre_x = args.destX + args.destWidth / 2.0;
      const double centre_y = args.destY + args.destHeight / 2.0;
      for (int32_t y = 0; y < out.Height(); ++y) {
        for (int32_t x = 0; x < out.Width(); ++x) {
          const Place p = rotation.source_of(x + 0.5 - centre_x, y + 0.5 - centre_y);
          if (rotation.at_the_border(p)) continue;
          const uint8_t* got = out.view().pixel(x, y);
          ASSERT_EQ(got[3], rotation.inside(p) ? 255 : 0) << x << ',' << y << " of " << c.degrees;
          if (!rotation.inside(p)) continue;
          for (size_t channel = 0; channel < 3; ++channel) {
            if (smooth) {
              const double exact = bilinear(source, p, channel);
              ASSERT_TRUE(got[channel] == static_cast<int>(exact + 1e-2) ||
                          got[channel] == static_cast<int>(exact - 1e-2))
                  << x << ',' << y << " of " << c.degrees;
            } else if (std::abs(p.x - std::nearbyint(p.x)) > 1e-5 &&
                       std::abs(p.y - std::nearbyint(p.y)) > 1e-5) {
              const uint8_t* from =
                  source.view().pixel(static_cast<int32_t>(p.x), static_cast<int32_t>(p.y));
              ASSERT_EQ(got[channel], from[channel]) << x << ',' << y << " of " << c.degrees;
            }
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace kestrelon
