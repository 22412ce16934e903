#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {
namespace {

using Pixel = std::array<int, 4>;

Pixel at(const c32bppDIB& image, int32_t x, int32_t y) {
  const uint8_t* p = image.view().pixel(x, y);
  return {p[0], p[1], p[2], p[3]};
}

void put(c32bppDIB& image, int32_t x, int32_t y, Pixel value) {
  for (size_t c = 0; c < 4; ++c) image.view().pixel(x, y)[c] = static_cast<uint8_t>(value[c]);
}

// Every alpha by every colour at or below it, as a square of 256; above it the pixel is empty.
void fill_all_valid(c32bppDIB& image) {
  image.InitializeDIB(256, 256);
  for (int32_t a = 0; a < 256; ++a) {
    for (int32_t c = 0; c <= a; ++c) put(image, c, a, {c, a - c, c / 2, a});
  }
}

// '#' opaque, '+' half, anything else empty.
void draw(c32bppDIB& image, std::vector<std::string_view> rows) {
  image.InitializeDIB(static_cast<int32_t>(rows[0].size()), static_cast<int32_t>(rows.size()));
  for (int32_t y = 0; y < image.Height(); ++y) {
    for (int32_t x = 0; x < image.Width(); ++x) {
      const char c = rows[static_cast<size_t>(y)][static_cast<size_t>(x)];
      if (c == '#') put(image, x, y, {x, y, 0, 255});
      if (c == '+') put(image, x, y, {0, 0, 0, 1});
    }
  }
}

TEST(Adjust, InverseBlendAndCheckAgainstTheirFormulasOverAllValidPixels) {
  c32bppDIB image, original;
  fill_all_valid(original);
  ASSERT_TRUE(original.CopyImageTo(image));
  ASSERT_TRUE(image.MakeImageInverse());
  for (int32_t a = 0; a < 256; ++a) {
    for (int32_t c = 0; c < 256; ++c) {
      Pixel expected = at(original, c, a);
      for (size_t k = 0; k < 3; ++k) expected[k] = expected[3] - expected[k];
      ASSERT_EQ(at(image, c, a), expected);
    }
  }
  for (int32_t percent : {1, 33, 50, 99, 100, 250}) {
    original.CopyImageTo(image);
    ASSERT_TRUE(image.BlendToColor(0x80FF10, percent));
    const int share = std::min(percent, 100), target[3] = {0x80, 0xFF, 0x10};
    for (int32_t a = 1; a < 256; ++a) {
      for (int32_t c = 0; c <= a; ++c) {
        Pixel expected = at(original, c, a);
        for (size_t k = 0; k < 3; ++k)
          expected[k] = (expected[k] * (100 - share) + target[k] * share) * a / 25500;
        ASSERT_EQ(at(image, c, a), expected) << percent;
      }
    }
  }
  original.CopyImageTo(image);
  EXPECT_TRUE(image.BlendToColor(0xFFFFFF, 0));
  EXPECT_TRUE(image.MakeLighterDarker(101));
  EXPECT_TRUE(image.MakeGrayScale(GrayScale::None));
  EXPECT_TRUE(image.MirrorImage(false, false));
  EXPECT_TRUE(std::equal(image.bits(), image.bits() + 256 * 256 * 4, original.bits()));
  c32bppDIB none;
  EXPECT_FALSE(none.BlendToColor(0, 5) || none.MakeImageInverse() || none.MakeLighterDarker(5) ||
               none.MakeGrayScale(GrayScale::NtscPal) || none.MirrorImage(true, true) ||
               none.MakeTransparent(0) || none.CreateCheckerBoard(4, 0, 1));
}

TEST(Adjust, GrayAndLightKeepColourAtOrBelowAlpha) {
  c32bppDIB image, original;
  fill_all_valid(original);
  for (int step = -1; step < 12; ++step) {
    original.CopyImageTo(image);
    if (step < 9) {
      image.MakeGrayScale(static_cast<GrayScale>(step));
    } else {
      image.MakeLighterDarker(step == 9 ? 100.f : step == 10 ? 37.5f : -60.f);
    }
    for (size_t i = 0; i < image.pixel_count() * 4; ++i)
      ASSERT_LE(image.bits()[i], image.bits()[i | 3]) << step;
  }
}

TEST(Adjust, ColourKeysChangeTypesAsPixelsChange) {
  c32bppDIB image;
  image.InitializeDIB(3, 1);
  put(image, 0, 0, {1, 2, 3, 255});
  put(image, 1, 0, {1, 2, 3, 254});
  put(image, 2, 0, {9, 9, 9, 255});
  image.set_image_type(ImageFormat::Bitmap);
  image.set_alpha(AlphaType::Complex);
  ASSERT_TRUE(image.MakeTransparent(0x070707));
  EXPECT_EQ(image.Alpha(), AlphaType::Complex);  // nothing had that colour
  ASSERT_TRUE(image.MakeTransparent(0x010203));
  EXPECT_EQ(at(image, 0, 0), (Pixel{}));
  EXPECT_EQ(at(image, 1, 0), (Pixel{1, 2, 3, 254}));
  EXPECT_EQ(image.Alpha(), AlphaType::Simple);
  EXPECT_EQ(image.ImageType(), ImageFormat::BitmapPargb);
  put(image, 1, 0, {});
  ASSERT_TRUE(image.MakeTransparent(0x0A0B0C, true));
  EXPECT_EQ(at(image, 1, 0), (Pixel{10, 11, 12, 255}));
  EXPECT_EQ(image.Alpha(), AlphaType::None);
  EXPECT_EQ(image.ImageType(), ImageFormat::Bitmap);
}

TEST(Adjust, MirrorsAndCheckerBoardsHaveTheRightCorners) {
  for (int32_t height : {1, 2, 5}) {
    for (int mirror = 1; mirror < 4; ++mirror) {
      c32bppDIB image, turned;
      image.InitializeDIB(11, height);
      for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < 11; ++x) put(image, x, y, {x, y, 0, 255});
      }
      image.CopyImageTo(turned);
      ASSERT_TRUE(turned.MirrorImage(mirror & 1, mirror & 2));
      for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < 11; ++x) {
          ASSERT_EQ(at(turned, x, y),
                    at(image, mirror & 1 ? 10 - x : x, mirror & 2 ? height - 1 - y : y));
        }
      }
    }
  }
  c32bppDIB board;
  board.InitializeDIB(7, 5);
  ASSERT_TRUE(board.CreateCheckerBoard(2, 0x0000FF, 0xFF0000));
  const Pixel red{0, 0, 255, 255}, blue{255, 0, 0, 255};
  EXPECT_EQ(at(board, 0, 0), red);
  EXPECT_EQ(at(board, 1, 1), red);
  EXPECT_EQ(at(board, 2, 1), blue);
  EXPECT_EQ(at(board, 0, 2), blue);
  EXPECT_EQ(at(board, 6, 4), blue);
  EXPECT_EQ(board.ImageType(), ImageFormat::CheckerBoard);
  EXPECT_EQ(board.Alpha(), AlphaType::None);
  EXPECT_FALSE(board.CreateCheckerBoard(0, 0, 0));
}

TEST(Shadow, IsTheMeanAlphaOfTheSquareUpAndLeft) {
  c32bppDIB image, shadow;
  image.InitializeDIB(9, 6);
  std::mt19937 random(3);
  for (size_t i = 3; i < image.pixel_count() * 4; i += 4)
    image.bits()[i] = static_cast<uint8_t>(random());
  for (int32_t depth : {-1, 0, 1, 4, 10, 50}) {
    ASSERT_TRUE(image.CreateDropShadow(depth, 0x4080FF, shadow));
    const int32_t d = 2 * std::clamp(depth, 0, 10);
    ASSERT_EQ(shadow.Width(), 9 + d);
    ASSERT_EQ(shadow.Height(), 6 + d);
    for (int32_t y = 0; y < shadow.Height(); ++y) {
      for (int32_t x = 0; x < shadow.Width(); ++x) {
        int sum = 0;
        for (int32_t j = std::max(y - d, 0); j <= std::min(y, 5); ++j) {
          for (int32_t i = std::max(x - d, 0); i <= std::min(x, 8); ++i) sum += at(image, i, j)[3];
        }
        const int a = sum / ((d + 1) * (d + 1));
        ASSERT_EQ(at(shadow, x, y), (Pixel{0x40 * a / 255, 0x80 * a / 255, a, a})) << depth;
      }
    }
  }
  EXPECT_FALSE(c32bppDIB().CreateDropShadow(3, 0, shadow));
}

TEST(Trim, CutsOnlyTheSidesAskedFor) {
  struct Case {
    int32_t method;
    ImageRect found;
  };
  for (const Case& c :
       {Case{kTrimAll, {1, 2, 3, 2}}, Case{15, {1, 2, 3, 2}}, Case{kTrimLeft, {1, 0, 5, 5}},
        Case{kTrimTop, {0, 2, 6, 3}}, Case{kTrimRight, {0, 0, 4, 5}},
        Case{kTrimBottom, {0, 0, 6, 4}}, Case{kTrimLeft | kTrimBottom, {1, 0, 5, 4}}}) {
    c32bppDIB image;
    draw(image, {"......", "......", "..#...", ".+.#..", "......"});
    image.set_original_bytes({1});
    ImageRect found;
    ASSERT_TRUE(image.TrimImage(false, c.method, found));
    EXPECT_EQ(found, c.found) << c.method;
    EXPECT_EQ(image.Width(), 6);
    ASSERT_TRUE(image.TrimImage(true, c.method, found));
    EXPECT_EQ(image.Width(), c.found.width);
    EXPECT_EQ(image.Height(), c.found.height);
    EXPECT_EQ(at(image, 2 - c.found.x, 2 - c.found.y), (Pixel{2, 2, 0, 255}));
    EXPECT_TRUE(image.original_bytes().empty());
  }
  c32bppDIB empty;
  ImageRect found{1, 1, 1, 1};
  EXPECT_FALSE(empty.TrimImage(false, 0, found));
  empty.InitializeDIB(4, 4);
  EXPECT_FALSE(empty.TrimImage(true, -1, found));
  EXPECT_TRUE(empty.TrimImage(true, 0, found));
  EXPECT_EQ(found, ImageRect{});
  EXPECT_EQ(empty.Width(), 4);
}

// A region painted back: what a pixel is covered by, at most once.
std::vector<std::string> painted(const std::vector<ImageRect>& region, int32_t width,
                                 int32_t height) {
  std::vector<std::string> rows(static_cast<size_t>(height),
                                std::string(static_cast<size_t>(width), '.'));
  for (const ImageRect& r : region) {
    for (int32_t y = r.y; y < r.y + r.height; ++y) {
      for (int32_t x = r.x; x < r.x + r.width; ++x) {
        char& cell = rows.at(static_cast<size_t>(y)).at(static_cast<size_t>(x));
        cell = cell == '.' ? '#' : '!';
      }
    }
  }
  return rows;
}

TEST(Region, FollowsThePixelsItsHolesOrItsBounds) {
  c32bppDIB image;
  draw(image, {".###..", "#..+..", "##.###", ".#....", ".####.", "......"});
  using Rows = std::vector<std::string>;
  auto shape = [&](RegionStyle style) {
    const auto region = image.CreateRegion(style);
    return region ? painted(*region, 6, 6) : Rows{};
  };
  EXPECT_EQ(shape(RegionStyle::Shaped),
            (Rows{".###..", "#..#..", "##.###", ".#....", ".####.", "......"}));
  // The inside opens to the edge through (2, 2): no hole.
  EXPECT_EQ(shape(RegionStyle::Enclosed),
            (Rows{".###..", "#..#..", "##.###", ".#....", ".####.", "......"}));
  EXPECT_EQ(shape(RegionStyle::Bounds),
            (Rows{"######", "######", "######", "######", "######", "......"}));
  draw(image, {".###..", "#..#..", "##.#..", ".###..", "......", "......"});
  EXPECT_EQ(shape(RegionStyle::Enclosed),
            (Rows{".###..", "####..", "####..", ".###..", "......", "......"}));
  EXPECT_EQ(image.CreateRegion(RegionStyle::Bounds, 5, -7),
            (std::vector<ImageRect>{{5, -7, 4, 4}}));
  EXPECT_FALSE(image.CreateRegion(static_cast<RegionStyle>(3)));
  image.EraseDIB();
  EXPECT_TRUE(image.CreateRegion(RegionStyle::Enclosed)->empty());
  EXPECT_FALSE(c32bppDIB().CreateRegion(RegionStyle::Bounds));
}

TEST(Sizes, ScaleImageKeepsTheExactRatioAndNeverVanishes) {
  c32bppDIB image;
  int32_t w = -5, h = -5;
  EXPECT_FALSE(image.ScaleImage(10, 10, w, h, ScaleOption::ToSize));
  EXPECT_EQ(w, -5);
  image.InitializeDIB(49, 98);
  struct Case {
    ScaleOption option;
    int32_t dw, dh, w, h;
  };
  for (const Case& c :
       {Case{ScaleOption::ToSize, 98, 500, 98, 196}, Case{ScaleOption::ToSize, 500, 49, 24, 49},
        Case{ScaleOption::ToSize, 1, 1, 1, 1}, Case{ScaleOption::ToSize, 0, 30, 1, 1},
        Case{ScaleOption::DownAsNeeded, 49, 98, 49, 98},
        Case{ScaleOption::DownAsNeeded, 400, 400, 49, 98},
        Case{ScaleOption::DownAsNeeded, 400, 97, 48, 97}, Case{ScaleOption::Stretched, 7, 3, 7, 3},
        Case{static_cast<ScaleOption>(9), 7, 3, 49, 98}}) {
    ASSERT_TRUE(image.ScaleImage(c.dw, c.dh, w, h, c.option));
    EXPECT_EQ(w, c.w) << c.dw << 'x' << c.dh;
    EXPECT_EQ(h, c.h) << c.dw << 'x' << c.dh;
  }
}

TEST(Sizes, CopyAndResizeScaleMirrorAndCarryTheirState) {
  c32bppDIB image, copy;
  draw(image, {"#.", "##"});
  image.set_image_type(ImageFormat::Png);
  image.set_original_bytes({1, 2});
  copy.set_original_bytes({3});
  ASSERT_TRUE(image.CopyImageTo(copy, -4, 2));
  EXPECT_EQ(copy.Width(), 4);
  EXPECT_EQ(at(copy, 3, 0), at(image, 0, 0));
  EXPECT_EQ(at(copy, 0, 0), (Pixel{}));
  EXPECT_EQ(copy.ImageType(), ImageFormat::Png);
  EXPECT_TRUE(copy.original_bytes().empty());
  ASSERT_TRUE(image.CopyImageTo(copy, 0, 0, true));
  EXPECT_EQ(copy.original_bytes().size(), 2u);
  ASSERT_TRUE(image.Resize(0, -4));
  EXPECT_EQ(image.Height(), 4);
  EXPECT_EQ(at(image, 1, 3), (Pixel{}));
  EXPECT_EQ(at(image, 1, 0), (Pixel{1, 1, 0, 255}));
  EXPECT_EQ(image.original_bytes().size(), 2u);
  EXPECT_EQ(image.ImageType(), ImageFormat::Png);
  const uint8_t* bits = image.bits();
  EXPECT_TRUE(image.Resize(2, 4));
  EXPECT_EQ(image.bits(), bits);
  EXPECT_FALSE(image.Resize(INT32_MIN, 2));
  EXPECT_FALSE(image.Resize(INT32_MAX, INT32_MAX));
  EXPECT_EQ(image.Width(), 2);
  ASSERT_TRUE(image.CopyImageTo(image, 4, 4));
  EXPECT_EQ(image.Width(), 4);
}

}  // namespace
}  // namespace kestrelon
