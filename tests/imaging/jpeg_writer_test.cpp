#include "imaging/jpeg_writer.h"

#include <gtest/gtest.h>

#include <cmath>

#include "imaging/huffman.h"
#include "imaging/jpeg_blocks.h"
#include "imaging/jpeg_format.h"
#include "tests/imaging/pictures.h"

namespace kestrelon::test {
namespace {

TEST(Huffman, GivesPrefixCodesWithinSixteenBits) {
  // Fibonacci weights make an unlimited code as deep as it can get.
  for (const int symbols : {1, 2, 3, 20, 40, 256}) {
    cHuffman huffman;
    uint32_t a = 1, b = 1;
    for (int symbol = 0; symbol < symbols; ++symbol) {
      for (uint32_t i = 0; i < a; ++i) huffman.count(static_cast<uint8_t>(symbol));
      if (symbol < 22) a = std::exchange(b, a + b);
    }
    huffman.build();
    double room = 0;
    for (int i = 0; i < symbols; ++i) {
      const auto s = static_cast<uint8_t>(i);
      ASSERT_GE(huffman.code_bits(s), 1);
      ASSERT_LE(huffman.code_bits(s), 16);
      ASSERT_NE(huffman.code(s), (1u << huffman.code_bits(s)) - 1) << "all ones";
      room += std::ldexp(1.0, -huffman.code_bits(s));
      for (int k = 0; k < i; ++k) {
        const auto t = static_cast<uint8_t>(k);
        const int shared = std::min(huffman.code_bits(s), huffman.code_bits(t));
        ASSERT_NE(huffman.code(s) >> (huffman.code_bits(s) - shared),
                  huffman.code(t) >> (huffman.code_bits(t) - shared));
      }
    }
    EXPECT_LT(room, 1.0);
    EXPECT_EQ(huffman.symbols().size(), static_cast<size_t>(symbols));
  }
}

TEST(JpegBlocks, TransformsLikeTheDefinition) {
  uint32_t state = 3;
  const double pi = std::acos(-1.0);
  for (int round = 0; round < 200; ++round) {
    jpeg::Block samples;
    for (int16_t& s : samples) {
      state = state * 1664525 + 1013904223;
      s = static_cast<int16_t>(round == 0   ? -128
                               : round == 1 ? 127
                                            : static_cast<int>(state >> 24) - 128);
    }
    jpeg::Block result = samples;
    jpeg::Divisors ones;
    ones.fill(1);
    jpeg::transform_and_quantise(result, ones);
    for (size_t v = 0; v < 8; ++v) {
      for (size_t u = 0; u < 8; ++u) {
        double sum = 0;
        for (size_t y = 0; y < 8; ++y) {
          for (size_t x = 0; x < 8; ++x)
            sum += samples[8 * y + x] * std::cos((2.0 * double(x) + 1) * double(u) * pi / 16) *
                   std::cos((2.0 * double(y) + 1) * double(v) * pi / 16);
        }
        sum *= (u == 0 ? std::sqrt(0.5) : 1) * (v == 0 ? std::sqrt(0.5) : 1) / 4;
        EXPECT_NEAR(result[8 * v + u], std::max(sum, -1023.0), 0.55) << u << ' ' << v;
      }
    }
  }
}

TEST(JpegBlocks, KeepsGraysNeutralAndSaturatedColoursInRange) {
  for (int gray = 0; gray < 256; ++gray) {
    const auto g = static_cast<uint8_t>(gray);
    const uint8_t pixel[4] = {g, g, g, 255};
    uint8_t y, cb, cr;
    jpeg::split_row(pixel, 1, &y, &cb, &cr);
    EXPECT_EQ(y, gray);
    EXPECT_EQ(cb, 128);
    EXPECT_EQ(cr, 128);
  }
  const uint8_t blue[4] = {255, 0, 0, 255}, red[4] = {0, 0, 255, 255};
  uint8_t y, cb, cr;
  jpeg::split_row(blue, 1, &y, &cb, &cr);
  EXPECT_EQ(cb, 255);
  jpeg::split_row(red, 1, &y, &cb, &cr);
  EXPECT_EQ(cr, 255);
}

#if !defined(_WIN32)
void fill_photo(c32bppDIB& image, int32_t width, int32_t height) {
  image.InitializeDIB(width, height);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const auto wave = [&](double fx, double fy, double phase) {
        return static_cast<uint32_t>(127.5 + 120 * std::sin(x * fx + y * fy + phase));
      };
      set_pixel(image, x, y,
                0xFF000000u | wave(.05, .02, 0) << 16 | wave(.01, .07, 1) << 8 | wave(.03, .03, 2));
    }
  }
}

double psnr(const std::vector<uint32_t>& a, const std::vector<uint32_t>& b) {
  double sum = 0;
  for (size_t i = 0; i < a.size(); ++i) {
    for (int shift = 0; shift < 24; shift += 8) {
      const double d = double(a[i] >> shift & 255) - double(b[i] >> shift & 255);
      sum += d * d;
    }
  }
  return 10 * std::log10(255 * 255 * 3 * double(a.size()) / std::max(sum, 1e-9));
}

TEST(JpegWriter, WritesWhatOthersReadCloseToThePicture) {
  if (!Workshop::has("convert") || !Workshop::has("djpeg")) GTEST_SKIP() << "needs both";
  const Workshop shop;
  // Sizes around the blocks' edges; the floors are a little below what the qualities reach.
  const std::pair<int32_t, int32_t> sizes[] = {{1, 1},   {7, 9},   {8, 8},
                                               {16, 16}, {17, 33}, {250, 131}};
  for (const auto& [width, height] : sizes) {
    c32bppDIB image;
    fill_photo(image, width, height);
    for (const auto& [quality, floor] :
         {std::pair{1, 12.0}, {50, 28.0}, {75, 32.0}, {89, 35.0}, {90, 38.0}, {100, 46.0}}) {
      Bytes file;
      ASSERT_TRUE(write_jpeg(image, {.quality = quality}, file));
      shop.write("x.jpg", file);
      ASSERT_TRUE(shop.run("djpeg -strict x.jpg > x.ppm 2>warnings && test ! -s warnings"))
          << width << ' ' << quality;
      const auto decoded = shop.reference("x.jpg");
      ASSERT_EQ(decoded.size(), pixels(image).size());
      EXPECT_GT(psnr(decoded, pixels(image)), floor) << width << 'x' << height << " at " << quality;
    }
  }
}

TEST(JpegWriter, IsNoLargerThanLibjpegAtTheSameSettings) {
  if (!Workshop::has("convert") || !Workshop::has("cjpeg")) GTEST_SKIP() << "needs both";
  const Workshop shop;
  ASSERT_TRUE(shop.run("convert -size 256x256 -seed 7 plasma:red-blue source.ppm"));
  const auto source = shop.reference("source.ppm");
  c32bppDIB image;
  image.InitializeDIB(256, 256);
  for (int32_t i = 0; i < 65536; ++i)
    set_pixel(image, i % 256, i / 256, source[static_cast<size_t>(i)]);
  for (const int quality : {30, 75, 85}) {
    Bytes file;
    write_jpeg(image, {.quality = quality}, file);
    ASSERT_TRUE(shop.run("cjpeg -optimize -quality " + std::to_string(quality) +
                         " -outfile y.jpg source.ppm"));
    const Bytes peer = shop.read("y.jpg");
    ASSERT_FALSE(peer.empty());
    EXPECT_LT(static_cast<double>(file.size()), static_cast<double>(peer.size()) * 1.02) << quality;
  }
}

TEST(JpegWriter, LaysTransparencyOverTheFillColour) {
  if (!Workshop::has("convert")) GTEST_SKIP() << "needs ImageMagick";
  const Workshop shop;
  c32bppDIB image;
  image.InitializeDIB(16, 16);
  Bytes file;
  write_jpeg(image, {.quality = 100, .fill_colour = 0x000080FF}, file);
  shop.write("x.jpg", file);
  const uint32_t p = shop.reference("x.jpg").at(0);
  EXPECT_NEAR(static_cast<int>(p >> 16 & 255), 255, 2);
  EXPECT_NEAR(static_cast<int>(p >> 8 & 255), 128, 2);
  EXPECT_NEAR(static_cast<int>(p & 255), 0, 2);
}
#endif

}  // namespace
}  // namespace kestrelon::test
