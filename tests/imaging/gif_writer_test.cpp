#include "imaging/gif_parser.h"

#include <gtest/gtest.h>

#include <set>

#include "imaging/colour_tree.h"
#include "tests/imaging/pictures.h"

namespace kestrelon::test {
namespace {

using Pixels = std::vector<uint32_t>;

Pixels written_and_read(const c32bppDIB& image, const GifOptions& options = {}) {
  Bytes file;
  c32bppDIB back;
  EXPECT_TRUE(cGIFparser::SaveAsGIF(image, options, file));
  EXPECT_TRUE(cGIFparser::LoadStream(file, back));
  return pixels(back);
}

double mean_square_error(const Pixels& a, const Pixels& b) {
  double sum = 0;
  for (size_t i = 0; i < a.size(); ++i) {
    for (int shift = 0; shift < 24; shift += 8) {
      const double d =
          static_cast<double>(a[i] >> shift & 255) - static_cast<double>(b[i] >> shift & 255);
      sum += d * d;
    }
  }
  return sum / static_cast<double>(a.size()) / 3;
}

void fill_photo(c32bppDIB& image) {
  image.InitializeDIB(128, 128);
  for (int32_t y = 0; y < 128; ++y) {
    for (int32_t x = 0; x < 128; ++x)
      set_pixel(image, x, y,
                0xFF000000u | static_cast<uint32_t>(x * 2) << 16 |
                    static_cast<uint32_t>(y * 2) << 8 | static_cast<uint32_t>((x * y) >> 6));
  }
}

TEST(GifWriter, KeepsUpTo256ColoursExactly) {
  for (const uint32_t colours : {1u, 2u, 3u, 4u, 5u, 16u, 17u, 128u, 255u, 256u}) {
    c32bppDIB image;
    fill_opaque(image, 40, 30, colours);
    EXPECT_EQ(written_and_read(image), pixels(image)) << colours;
  }
}

TEST(GifWriter, LeavesAnEntryForTransparency) {
  for (const int32_t opaque : {1, 2, 3, 254, 255}) {
    c32bppDIB image;
    image.InitializeDIB(opaque + 1, 1);
    for (int32_t x = 0; x < opaque; ++x)
      set_pixel(image, x, 0, 0xFF000000u | static_cast<uint32_t>(x) * 0x010203u);
    EXPECT_EQ(written_and_read(image), pixels(image)) << opaque;
  }
  // 256 colours and a transparent pixel are one too many: the pixel stays transparent.
  c32bppDIB image;
  image.InitializeDIB(257, 1);
  for (int32_t x = 0; x < 256; ++x)
    set_pixel(image, x, 0, 0xFF000000u | static_cast<uint32_t>(x) * 0x010101u);
  const Pixels back = written_and_read(image);
  EXPECT_EQ(back[256], 0u);
  EXPECT_TRUE(
      std::all_of(back.begin(), back.begin() + 256, [](uint32_t p) { return p >> 24 == 255; }));
  image.InitializeDIB(5, 5);
  EXPECT_EQ(written_and_read(image), Pixels(25, 0));
}

TEST(GifWriter, DecidesPartialAlphaByTheTolerance) {
  c32bppDIB image;
  image.InitializeDIB(4, 1);
  set_pixel(image, 0, 0, 0x7F7F0000);
  set_pixel(image, 1, 0, 0x80800000);
  set_pixel(image, 2, 0, 0x80400000);
  set_pixel(image, 3, 0, 0xFF00FF00);
  EXPECT_EQ(written_and_read(image), (Pixels{0, 0xFFFF0000, 0xFF7F0000, 0xFF00FF00}));
  EXPECT_EQ(written_and_read(image, {.opaqueness_tolerance = 129}), (Pixels{0, 0, 0, 0xFF00FF00}));
  EXPECT_EQ(written_and_read(image, {.opaqueness_tolerance = 0})[0], 0xFFFF0000u);
}

TEST(GifWriter, StaysCloseToPicturesOfManyColours) {
  c32bppDIB image;
  fill_photo(image);
  const Pixels before = pixels(image);
  const Pixels adaptive = written_and_read(image);
  const Pixels fixed = written_and_read(image, {.use_adaptive_palette = false});
  EXPECT_LE(std::set(adaptive.begin(), adaptive.end()).size(), 256u);
  EXPECT_LT(mean_square_error(before, adaptive), 60);
  EXPECT_LT(mean_square_error(before, fixed), 250);
  EXPECT_LT(mean_square_error(before, adaptive), mean_square_error(before, fixed));
}

TEST(GifWriter, TakesTheNearestEntryOfTheFixedTable) {
  c32bppDIB image;
  fill_opaque(image, 60, 60);
  const Pixels before = pixels(image);
  const Pixels after = written_and_read(image, {.use_adaptive_palette = false});
  std::set<uint32_t> table(after.begin(), after.end());
  const auto distance = [](uint32_t a, uint32_t b) {
    int sum = 0;
    for (int shift = 0; shift < 24; shift += 8) {
      const int d = static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255);
      sum += d * d;
    }
    return sum;
  };
  for (size_t i = 0; i < before.size(); ++i) {
    for (const uint32_t entry : table)
      ASSERT_LE(distance(before[i], after[i]), distance(before[i], entry));
  }
}

TEST(ColourTree, StopsAtTheLimitAndKeepsHeavyColours) {
  for (const size_t limit : {1u, 2u, 7u, 8u, 9u, 255u}) {
    ColourTree tree;
    for (uint32_t i = 0; i < 3000; ++i) tree.add(i * 2654435761u >> 8, 1);
    tree.add(0x0A0B0C, 1000000);
    tree.reduce(limit);
    EXPECT_LE(tree.colours().size(), limit);
    EXPECT_LT(tree.index_of(0x0A0B0C), tree.colours().size());
    if (limit > 8) {
      const uint32_t kept = tree.colours()[tree.index_of(0x0A0B0C)];
      for (int shift = 0; shift < 24; shift += 8)
        EXPECT_NEAR(static_cast<int>(kept >> shift & 255),
                    static_cast<int>(0x0A0B0C >> shift & 255), 2);
    }
  }
}

#if !defined(_WIN32)
TEST(GifWriter, WritesWhatOthersRead) {
  if (!Workshop::has("convert") || !Workshop::has("giftopnm")) GTEST_SKIP() << "needs both";
  const Workshop shop;
  for (const uint32_t colours : {2u, 200u, 100000u}) {
    c32bppDIB image;
    fill_opaque(image, 200, 200, colours);
    Bytes file;
    cGIFparser::SaveAsGIF(image, {}, file);
    shop.write("x.gif", file);
    EXPECT_EQ(shop.reference("x.gif"), written_and_read(image)) << colours;
    ASSERT_TRUE(shop.run("giftopnm x.gif > y.ppm"));
    EXPECT_EQ(shop.reference("y.ppm"), written_and_read(image)) << colours;
  }
}
#endif

}  // namespace
}  // namespace kestrelon::test
