#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {
namespace {

using Pixel = std::array<uint8_t, 4>;

void fill_valid(c32bppDIB& image, unsigned seed) {
  std::mt19937 random(seed);
  for (size_t i = 0; i < image.pixel_count(); ++i) {
    uint8_t* p = image.bits() + i * 4;
    p[3] = static_cast<uint8_t>(random() % 3 == 0 ? 255 : random() % 256);
    for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(random() % (p[3] + 1u));
  }
}

Pixel pixel(const c32bppDIB& image, int32_t x, int32_t y) {
  const uint8_t* p = image.view().pixel(x, y);
  return {p[0], p[1], p[2], p[3]};
}

Pixel over(Pixel src, Pixel dst, int global) {
  if (src[3] == 0) return dst;
  Pixel out;
  const int effective = src[3] * global / 255;
  for (size_t c = 0; c < 4; ++c)
    out[c] = static_cast<uint8_t>(src[c] * global / 255 + dst[c] * (255 - effective) / 255);
  return out;
}

std::vector<uint8_t> bytes_of(const c32bppDIB& image) {
  return {image.bits(), image.bits() + image.pixel_count() * 4};
}

// A surface over memory of its own; notes what was asked of it.
class FakeSurface : public DrawingSurface {
 public:
  FakeSurface(int32_t width, int32_t height) { image.InitializeDIB(width, height); }
  bool begin_pixels(const ImageRect& wanted, ImageRect& got, MutableImageView& view) override {
    ++begun;
    got = clip_to(wanted.x, wanted.y, wanted.width, wanted.height, image.Width(), image.Height());
    if (!got.empty()) view = image.view().part(got);
    return true;
  }
  void end_pixels() override { ++ended; }

  c32bppDIB image;
  int begun = 0, ended = 0;
};

class FakeBridge : public ImagingBridge {
 public:
  FakeBridge() { set_imaging_bridge(this); }
  ~FakeBridge() override { set_imaging_bridge(nullptr); }
  PlatformFacts facts() const override { return {PlatformFacts::Family::WindowsNt, 6, 1, 0}; }
  bool library_ok() override { return true; }
  bool library_draw(const DrawRequest& request) override {
    last = request;
    ++drawn;
    return serves;
  }
  bool alpha_blend(const DrawRequest& request, uint32_t constant_alpha, bool) override {
    last = request;
    constant = constant_alpha;
    ++blended;
    return serves;
  }

  DrawRequest last;
  uint32_t constant = 0;
  int drawn = 0, blended = 0;
  bool serves = true;
};

class RenderTest : public ::testing::Test {
 protected:
  RenderTest() {
    source.InitializeDIB(13, 9);
    fill_valid(source, 1);
    host.InitializeDIB(20, 16);
    fill_valid(host, 2);
    before.InitializeDIB(20, 16);
    fill_valid(before, 2);
    args.destHostDIB = &host;
  }

  // Expects that `sample` of each host pixel relative to the target, if it gives one, was blended.
  template <class Sample>
  void expect_host(int global, Sample&& sample) {
    for (int32_t y = 0; y < host.Height(); ++y) {
      for (int32_t x = 0; x < host.Width(); ++x) {
        Pixel expected = pixel(before, x, y);
        if (const auto from = sample(x, y)) {
          expected = over(pixel(source, from->first, from->second), expected, global);
        }
        ASSERT_EQ(pixel(host, x, y), expected) << x << ',' << y;
      }
    }
  }
  using Place = std::optional<std::pair<int32_t, int32_t>>;
  Place inside(int32_t x, int32_t y) const {
    const bool in = x >= 0 && y >= 0 && x < source.Width() && y < source.Height();
    return in ? Place({x, y}) : std::nullopt;
  }

  c32bppDIB source, host, before;
  RenderArguments args;
};

TEST_F(RenderTest, ClipsAtEveryEdgeAndBlendsAlphaLikeColour) {
  for (const auto& [dx, dy] : {std::pair{-4, -3}, {12, 11}, {-4, 12}, {3, 2}}) {
    std::copy_n(before.bits(), before.pixel_count() * 4, host.bits());
    args.destX = dx;
    args.destY = dy;
    ASSERT_TRUE(source.Render(nullptr, args));
    expect_host(255,
                [&, x0 = dx, y0 = dy](int32_t x, int32_t y) { return inside(x - x0, y - y0); });
  }
}

TEST_F(RenderTest, OpacityWrapsAtHundredAndZeroDrawsNothing) {
  for (const auto& [opacity, global] :
       {std::pair{100, 255}, {200, 255}, {150, 127}, {50, 127}, {1, 2}, {399, 252}}) {
    std::copy_n(before.bits(), before.pixel_count() * 4, host.bits());
    args.Opacity = opacity;
    ASSERT_TRUE(source.Render(nullptr, args));
    expect_host(global, [&](int32_t x, int32_t y) { return inside(x, y); });
  }
  const auto drawn = bytes_of(host);
  args.Opacity = 0;
  EXPECT_TRUE(source.Render(nullptr, args));
  args.Opacity = -50;
  EXPECT_TRUE(source.Render(nullptr, args));
  EXPECT_EQ(bytes_of(host), drawn);
  EXPECT_FALSE(c32bppDIB().Render(nullptr, args));
}

TEST_F(RenderTest, NegativeSizesOfSourceAndTargetMirrorAndCancelOut) {
  struct Signs {
    int32_t dest_w, dest_h, src_w, src_h;
    bool x, y;
  };
  for (const Signs& s : {Signs{-13, 9, 13, 9, true, false}, Signs{13, -9, 0, 0, false, true},
                         Signs{13, 9, -13, -9, true, true}, Signs{-13, 9, -13, 9, false, false},
                         Signs{0, 0, -13, 9, true, false}}) {
    std::copy_n(before.bits(), before.pixel_count() * 4, host.bits());
    args.destWidth = s.dest_w;
    args.destHeight = s.dest_h;
    args.SrcWidth = s.src_w;
    args.SrcHeight = s.src_h;
    ASSERT_TRUE(source.Render(nullptr, args));
    expect_host(255,
                [&](int32_t x, int32_t y) { return inside(s.x ? 12 - x : x, s.y ? 8 - y : y); });
  }
}

TEST_F(RenderTest, ACropReachingPastTheImageIsCutAndStretched) {
  args.SrcX = 10;
  args.SrcWidth = 6;  // three columns remain for six
  args.destWidth = 6;
  ASSERT_TRUE(source.Render(nullptr, args));
  expect_host(255,
              [&](int32_t x, int32_t y) { return x < 6 ? inside(10 + x / 2, y) : std::nullopt; });
  const auto drawn = bytes_of(host);
  args.SrcX = 13;
  EXPECT_TRUE(source.Render(nullptr, args));
  EXPECT_EQ(bytes_of(host), drawn);
}

TEST_F(RenderTest, CentringMovesByHalfTheTruncatedSize) {
  args.destX = 10;
  args.destY = 8;
  args.CenterOnDestXY = true;
  ASSERT_TRUE(source.Render(nullptr, args));
  expect_host(255, [&](int32_t x, int32_t y) { return inside(x - 4, y - 4); });
}

TEST_F(RenderTest, QuarterTurnsAreExactAndAnglesRoundToWholeDegrees) {
  c32bppDIB square;
  square.InitializeDIB(8, 8);
  fill_valid(square, 9);
  for (bool smooth : {false, true}) {
    square.set_HighQualityInterpolation(smooth);
    for (double angle : {90.0, 180.0, 270.0, 450.0, -90.0, 0.5, 0.25, 89.6}) {
      c32bppDIB out;
      out.InitializeDIB(12, 12);
      RenderArguments turned;
      turned.destX = turned.destY = 2;
      turned.destHostDIB = &out;
      turned.Angle = angle;
      ASSERT_TRUE(square.Render(nullptr, turned));
      const int quarter = (static_cast<int>(std::nearbyint(angle / 90)) % 4 + 4) % 4;
      for (int32_t y = 0; y < 8; ++y) {
        for (int32_t x = 0; x < 8; ++x) {
          // Clockwise: the top row becomes the right column.
          int32_t sx = x, sy = y;
          for (int k = 0; k < quarter; ++k) std::tie(sx, sy) = std::pair{sy, 7 - sx};
          ASSERT_EQ(pixel(out, x + 2, y + 2), pixel(square, sx, sy)) << angle << ' ' << smooth;
        }
      }
      EXPECT_EQ(pixel(out, 1, 5), Pixel{});
    }
  }
}

TEST_F(RenderTest, RotationStaysInsideTheDiagonalAndDrawsFlatAreasFlat) {
  c32bppDIB flat, out;
  flat.InitializeDIB(10, 10);
  std::fill_n(flat.bits(), flat.pixel_count() * 4, uint8_t{77});
  flat.set_HighQualityInterpolation(true);
  out.InitializeDIB(40, 40);
  RenderArguments turned;
  turned.destX = turned.destY = 10;
  turned.destWidth = turned.destHeight = 20;
  turned.destHostDIB = &out;
  turned.Angle = 45;
  ASSERT_TRUE(flat.Render(nullptr, turned));
  for (int32_t y = 0; y < 40; ++y) {
    for (int32_t x = 0; x < 40; ++x) {
      const Pixel p = pixel(out, x, y);
      // A square of 20 on its tip: |dx| + |dy| up to half its diagonal.
      const double distance = std::abs(x + .5 - 20) + std::abs(y + .5 - 20);
      const bool in = distance < 10 * std::sqrt(2.0);
      ASSERT_EQ(p, in ? (Pixel{77, 77, 77, 77}) : Pixel{}) << x << ',' << y;
    }
  }
}

TEST_F(RenderTest, ASurfaceKeepsItsAlphaAndIsClosedOnce) {
  FakeSurface surface(20, 16);
  fill_valid(surface.image, 2);
  args.destHostDIB = nullptr;
  args.destX = -2;
  args.Opacity = 60;
  ASSERT_TRUE(source.Render(&surface, args));
  EXPECT_EQ(surface.begun, 1);
  EXPECT_EQ(surface.ended, 1);
  for (int32_t y = 0; y < 16; ++y) {
    for (int32_t x = 0; x < 20; ++x) {
      Pixel expected = pixel(before, x, y);
      const uint8_t alpha = expected[3];
      if (const auto from = inside(x + 2, y))
        expected = over(pixel(source, from->first, from->second), expected, 60 * 255 / 100);
      expected[3] = alpha;
      ASSERT_EQ(pixel(surface.image, x, y), expected);
    }
  }
}

TEST_F(RenderTest, AnImageCanBeDrawnOnItself) {
  c32bppDIB copy;
  ASSERT_TRUE(host.CopyImageTo(copy));
  args.destX = 1;
  args.destY = 1;
  ASSERT_TRUE(host.Render(nullptr, args));
  for (int32_t y = 1; y < 16; ++y) {
    for (int32_t x = 1; x < 20; ++x)
      ASSERT_EQ(pixel(host, x, y), over(pixel(copy, x - 1, y - 1), pixel(copy, x, y), 255));
  }
}

TEST_F(RenderTest, ExtremeArgumentsNeitherOverflowNorHang) {
  for (int32_t extreme : {INT32_MIN, INT32_MIN + 1, INT32_MAX}) {
    for (int field = 0; field < 8; ++field) {
      for (double angle : {0.0, 33.0}) {
        RenderArguments wild;
        wild.destHostDIB = &host;
        wild.Angle = angle;
        int32_t* fields[] = {&wild.destX, &wild.destY, &wild.destWidth, &wild.destHeight,
                             &wild.SrcX,  &wild.SrcY,  &wild.SrcWidth,  &wild.SrcHeight};
        *fields[field] = extreme;
        wild.CenterOnDestXY = field % 2 == 0;
        for (bool smooth : {false, true}) {
          source.set_HighQualityInterpolation(smooth);
          source.Render(nullptr, wild);
        }
      }
    }
  }
  // Colours stay premultiplied through all of it.
  for (size_t i = 0; i < host.pixel_count(); ++i) {
    const uint8_t* p = host.bits() + i * 4;
    ASSERT_TRUE(p[0] <= p[3] && p[1] <= p[3] && p[2] <= p[3]);
  }
}

TEST(RenderEngine, IsChosenByScalingEffectsAndSettings) {
  FakeBridge bridge;
  c32bppDIB image, host;
  image.InitializeDIB(4, 4);
  host.InitializeDIB(8, 8);
  ASSERT_TRUE(image.isAlphaBlendFriendly() && image.isGDIplusEnabled());
  ASSERT_TRUE(image.HighQualityInterpolation());
  RenderArguments args;
  args.destHostDIB = &host;
  args.Opacity = 150;
  auto engine = [&] {
    bridge.drawn = bridge.blended = 0;
    image.Render(nullptr, args);
    return bridge.blended ? 'b' : bridge.drawn ? 'l' : 'o';
  };
  EXPECT_EQ(engine(), 'b');
  EXPECT_EQ(bridge.constant, 127u);
  args.destWidth = 8;
  EXPECT_EQ(engine(), 'l');  // scaled at high quality
  image.set_HighQualityInterpolation(false);
  EXPECT_EQ(engine(), 'b');
  args.destWidth = -4;
  EXPECT_EQ(engine(), 'l');
  args.destWidth = 0;
  args.grayScale = GrayScale::RedMask;
  EXPECT_EQ(engine(), 'l');
  args.grayScale = GrayScale::None;
  args.LightAdjustment = 5;
  EXPECT_EQ(engine(), 'l');
  args.LightAdjustment = 500;  // out of range counts as none
  EXPECT_EQ(engine(), 'b');
  image.set_KeepGDIplusActive(true);
  EXPECT_EQ(engine(), 'l');
  image.set_KeepGDIplusActive(false);
  image.set_gdiToken(7);
  EXPECT_EQ(engine(), 'l');
  image.set_isGDIplusEnabled(false);
  EXPECT_EQ(engine(), 'o');
  image.set_gdiToken(0);
  args.Angle = 30;
  EXPECT_EQ(engine(), 'o');
  image.set_isGDIplusEnabled(true);
  EXPECT_EQ(engine(), 'l');
  EXPECT_EQ(bridge.last.degrees, 30);
}

TEST(RenderEngine, ADecliningPlatformLeavesTheDrawingToUs) {
  FakeBridge bridge;
  bridge.serves = false;
  c32bppDIB image, host;
  image.InitializeDIB(2, 2);
  std::fill_n(image.bits(), 16, uint8_t{255});
  host.InitializeDIB(4, 4);
  RenderArguments args;
  args.destHostDIB = &host;
  EXPECT_TRUE(image.Render(nullptr, args));
  EXPECT_EQ(pixel(host, 1, 1), (Pixel{255, 255, 255, 255}));
}

TEST(TileImage, RepeatsTheTileFromTheTargetsCornerAndCutsTheLastOnes) {
  c32bppDIB tile, host;
  tile.InitializeDIB(5, 3);
  fill_valid(tile, 4);
  for (const auto& [width, height] :
       {std::pair{17, 11}, {5, 11}, {17, 3}, {4, 2}, {6, 2}, {-17, -11}}) {
    host.InitializeDIB(20, 16);
    RenderArguments args;
    args.destHostDIB = &host;
    args.destX = 2;
    args.destY = 1;
    args.destWidth = width;
    args.destHeight = height;
    args.Opacity = 40;
    ASSERT_TRUE(tile.TileImage(nullptr, args));
    for (int32_t y = 0; y < 16; ++y) {
      for (int32_t x = 0; x < 20; ++x) {
        const int32_t tx = x - 2, ty = y - 1;
        const bool in = tx >= 0 && ty >= 0 && tx < std::abs(width) && ty < std::abs(height);
        const Pixel expected = in ? over(pixel(tile, tx % 5, ty % 3), {}, 40 * 255 / 100) : Pixel{};
        ASSERT_EQ(pixel(host, x, y), expected) << width << ' ' << x << ',' << y;
      }
    }
  }
  EXPECT_FALSE(tile.TileImage(nullptr, {}));
  RenderArguments empty;
  empty.destHostDIB = &host;
  EXPECT_FALSE(tile.TileImage(nullptr, empty));
}

}  // namespace
}  // namespace kestrelon
