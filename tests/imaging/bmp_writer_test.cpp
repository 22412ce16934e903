#include "imaging/bmp_parser.h"

#include <gtest/gtest.h>

#include "tests/imaging/pictures.h"

namespace kestrelon::test {
namespace {

TEST(BmpWriter, RoundTripsOpaquePicturesOfEveryRowLength) {
  for (int32_t width = 1; width <= 5; ++width) {
    c32bppDIB image, back;
    fill_opaque(image, width, 3);
    Bytes file;
    ASSERT_TRUE(cBMPparser::SaveAsBMP(image, {}, file));
    EXPECT_EQ(file.size(), 54u + static_cast<size_t>((width * 3 + 3) / 4 * 4) * 3);
    ASSERT_TRUE(cBMPparser::LoadStream(file, back));
    EXPECT_EQ(pixels(back), pixels(image));
  }
}

TEST(BmpWriter, KeepsAlphaWhenAsked) {
  c32bppDIB image, back;
  fill_translucent(image, 40, 9);
  Bytes file;
  ASSERT_TRUE(cBMPparser::SaveAsBMP(image, {.keep_premultiplied = true}, file));
  ASSERT_TRUE(cBMPparser::LoadStream(file, back));
  EXPECT_EQ(back.ImageType(), ImageFormat::BitmapPargb);
  EXPECT_EQ(pixels(back), pixels(image));
  // There is no alpha to keep in an opaque picture.
  fill_opaque(image, 4, 1);
  ASSERT_TRUE(cBMPparser::SaveAsBMP(image, {.keep_premultiplied = true}, file));
  EXPECT_EQ(file[28], 24);
}

TEST(BmpWriter, LaysTransparencyOverTheFillColour) {
  c32bppDIB image, back;
  image.InitializeDIB(3, 1);
  set_pixel(image, 0, 0, 0xFF102030);
  set_pixel(image, 1, 0, 0x80400000);
  Bytes file;
  ASSERT_TRUE(cBMPparser::SaveAsBMP(image, {.fill_colour = 0x000000FF}, file));  // red
  ASSERT_TRUE(cBMPparser::LoadStream(file, back));
  EXPECT_EQ(pixels(back), (std::vector<uint32_t>{0xFF102030, 0xFFBF0000, 0xFFFF0000}));
}

TEST(BmpWriter, FailsWithoutAnImage) {
  c32bppDIB image;
  Bytes file = {1};
  EXPECT_FALSE(cBMPparser::SaveAsBMP(image, {}, file));
  EXPECT_TRUE(file.empty());
}

#if !defined(_WIN32)
TEST(BmpWriter, WritesWhatOthersRead) {
  if (!Workshop::has("convert")) GTEST_SKIP() << "needs ImageMagick";
  const Workshop shop;
  c32bppDIB image;
  fill_opaque(image, 31, 17);
  Bytes file;
  cBMPparser::SaveAsBMP(image, {}, file);
  shop.write("x.bmp", file);
  EXPECT_EQ(shop.reference("x.bmp"), pixels(image));
}
#endif

}  // namespace
}  // namespace kestrelon::test
