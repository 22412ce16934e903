#include "imaging/tga_parser.h"

#include <gtest/gtest.h>

#include "tests/imaging/pictures.h"

namespace kestrelon::test {
namespace {

void fill_stripes(c32bppDIB& image, bool gray) {
  image.InitializeDIB(300, 4);
  for (int32_t y = 0; y < 4; ++y) {
    for (int32_t x = 0; x < 300; ++x) {
      // Runs of 1, 2, 3 and 200 beside single pixels, so that packets start and end everywhere.
      const uint32_t n = x < 20   ? static_cast<uint32_t>(x)
                         : x < 40 ? static_cast<uint32_t>(x / 2)
                         : x < 70 ? static_cast<uint32_t>(x / 3)
                                  : 99;
      set_pixel(image, x, y, 0xFF000000 | (gray ? n * 0x010101 : n * 0x0103));
    }
  }
}

TEST(TgaWriter, RoundTripsEveryOptionAndKindOfPicture) {
  for (int picture = 0; picture < 5; ++picture) {
    c32bppDIB image;
    switch (picture) {
      case 0:
        fill_opaque(image, 33, 21);
        break;
      case 1:
        fill_opaque(image, 33, 21, 200);
        break;
      case 2:
        fill_stripes(image, true);
        break;
      case 3:
        fill_stripes(image, false);
        break;
      default:
        fill_translucent(image, 33, 21);
    }
    for (int bits = 0; bits < 8; ++bits) {
      const TgaOptions options = {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0};
      Bytes file;
      c32bppDIB back;
      ASSERT_TRUE(cTGAparser::SaveAsTGA(image, options, file));
      ASSERT_TRUE(cTGAparser::LoadStream(file, back));
      ASSERT_EQ(back.Width(), image.Width());
      const auto before = pixels(image), after = pixels(back);
      if (picture < 4 || options.allow_premultiplied) {
        EXPECT_EQ(after, before) << picture << ' ' << bits;
        continue;
      }
      // Straight colours lose at most one step on the way.
      for (size_t i = 0; i < before.size(); ++i) {
        for (int shift = 0; shift < 32; shift += 8)
          EXPECT_NEAR(static_cast<int>(before[i] >> shift & 255),
                      static_cast<int>(after[i] >> shift & 255), shift == 24 ? 0 : 1);
      }
    }
  }
}

TEST(TgaWriter, ReducesTheDepthOnlyWhereNothingIsLost) {
  const auto depth = [](const c32bppDIB& image, bool reduce) {
    Bytes file;
    EXPECT_TRUE(cTGAparser::SaveAsTGA(image, {.reduce_bit_depth = reduce}, file));
    return std::pair<int, int>(file[2], file[16]);
  };
  c32bppDIB image;
  fill_stripes(image, true);
  EXPECT_EQ(depth(image, true), std::pair(3, 8));
  EXPECT_EQ(depth(image, false), std::pair(2, 32));
  fill_opaque(image, 16, 16);
  EXPECT_EQ(depth(image, true), std::pair(1, 8));  // 256 colours
  fill_opaque(image, 16, 17);
  EXPECT_EQ(depth(image, true), std::pair(2, 24));
  fill_translucent(image, 16, 16);
  EXPECT_EQ(depth(image, true), std::pair(2, 32));
}

TEST(TgaWriter, NeverGrowsByCompressing) {
  c32bppDIB image;
  fill_opaque(image, 50, 50);
  Bytes plain, compressed;
  cTGAparser::SaveAsTGA(image, {}, plain);
  cTGAparser::SaveAsTGA(image, {.compress = true}, compressed);
  EXPECT_EQ(compressed.size(), plain.size());
  fill_stripes(image, false);
  cTGAparser::SaveAsTGA(image, {}, plain);
  cTGAparser::SaveAsTGA(image, {.compress = true}, compressed);
  EXPECT_LT(compressed.size(), plain.size() / 2);
}

#if !defined(_WIN32)
TEST(TgaWriter, WritesWhatOthersRead) {
  if (!Workshop::has("convert")) GTEST_SKIP() << "needs ImageMagick";
  const Workshop shop;
  c32bppDIB image;
  fill_opaque(image, 33, 21, 150);
  for (int bits = 0; bits < 4; ++bits) {
    Bytes file;
    cTGAparser::SaveAsTGA(image, {(bits & 1) != 0, (bits & 2) != 0, false}, file);
    shop.write("x.tga", file);
    EXPECT_EQ(shop.reference("x.tga"), pixels(image)) << bits;
  }
}
#endif

}  // namespace
}  // namespace kestrelon::test
