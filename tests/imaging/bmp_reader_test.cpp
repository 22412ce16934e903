#include "imaging/bmp_parser.h"

#include <gtest/gtest.h>

#include "tests/imaging/hostile.h"
#include "tests/imaging/pictures.h"

namespace kestrelon::test {
namespace {

struct BmpSpec {
  int32_t width = 2, height = 2;
  uint32_t bits = 24, compression = 0, colours = 0;
  uint32_t header_size = 40;
  Bytes after_header = {};  // masks and palette
  Bytes rows = {};
  uint32_t gap = 0;  // between palette and pixels
};

Bytes make_bmp(const BmpSpec& spec) {
  Bytes header = wire({{spec.header_size, 4}});
  if (spec.header_size == 12) {
    header = header + wire({{static_cast<uint32_t>(spec.width), 2},
                            {static_cast<uint32_t>(spec.height), 2},
                            {1, 2},
                            {spec.bits, 2}});
  } else {
    header = header + wire({{static_cast<uint32_t>(spec.width), 4},
                            {static_cast<uint32_t>(spec.height), 4},
                            {1, 2},
                            {spec.bits, 2},
                            {spec.compression, 4},
                            {spec.rows.size(), 4},
                            {0, 8},
                            {spec.colours, 4},
                            {0, 4}});
    if (spec.header_size < 40) header.resize(spec.header_size);
  }
  const size_t offset = 14 + header.size() + spec.after_header.size() + spec.gap;
  return wire({{19778, 2}, {offset + spec.rows.size(), 4}, {0, 4}, {offset, 4}}) + header +
         spec.after_header + Bytes(spec.gap, 0xEE) + spec.rows;
}

std::vector<uint32_t> read_pixels(const BmpSpec& spec) {
  c32bppDIB image;
  return cBMPparser::LoadStream(make_bmp(spec), image) ? pixels(image) : std::vector<uint32_t>{};
}

const Bytes kFourColours =
    wire({{0x000000, 4}, {0xFF0000, 4}, {0x00FF00, 4}, {0x0000FF, 4}});  // black red green blue
constexpr uint32_t kBlack = 0xFF000000, kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;
using Pixels = std::vector<uint32_t>;

TEST(BmpReader, TellsStraightFromPremultipliedAlphaIn32Bits) {
  c32bppDIB image;
  // Colour above its alpha: straight. From the bottom row up.
  ASSERT_TRUE(cBMPparser::LoadStream(
      make_bmp({.width = 1, .bits = 32, .rows = wire({{0x80FF4000, 4}, {0xFF102030, 4}})}), image));
  EXPECT_EQ(image.ImageType(), ImageFormat::BitmapArgb);
  EXPECT_EQ(image.Alpha(), AlphaType::Complex);
  EXPECT_EQ(pixels(image), (Pixels{0xFF102030, 0x80802000}));

  ASSERT_TRUE(cBMPparser::LoadStream(
      make_bmp({.width = 1, .bits = 32, .rows = wire({{0x80804000, 4}, {0xFF102030, 4}})}), image));
  EXPECT_EQ(image.ImageType(), ImageFormat::BitmapPargb);
  EXPECT_EQ(pixels(image), (Pixels{0xFF102030, 0x80804000}));

  ASSERT_TRUE(cBMPparser::LoadStream(
      make_bmp({.width = 1, .bits = 32, .rows = wire({{0x00FF4000, 4}, {0x00102030, 4}})}), image));
  EXPECT_EQ(image.ImageType(), ImageFormat::Bitmap);
  EXPECT_EQ(image.Alpha(), AlphaType::None);
  EXPECT_EQ(pixels(image), (Pixels{0xFF102030, 0xFFFF4000}));

  ASSERT_TRUE(cBMPparser::LoadStream(
      make_bmp({.width = 1, .bits = 32, .rows = wire({{0xFFFF4000, 4}, {0xFF102030, 4}})}), image));
  EXPECT_EQ(image.ImageType(), ImageFormat::Bitmap);
  EXPECT_EQ(image.Alpha(), AlphaType::None);
}

TEST(BmpReader, TurnsTopDownRows) {
  EXPECT_EQ(
      read_pixels({.width = 1, .height = -2, .bits = 32, .rows = wire({{0x01, 4}, {0x02, 4}})}),
      (Pixels{0xFF000001, 0xFF000002}));
  EXPECT_EQ(read_pixels({.width = 1, .height = -2, .rows = wire({{0x01, 4}, {0x02, 4}})}),
            (Pixels{0xFF000001, 0xFF000002}));
}

TEST(BmpReader, TakesPixelsFromTheHighBitsOfPaletteBytes) {
  const Pixels expected = {kRed, kBlack, kRed};
  EXPECT_EQ(read_pixels({.width = 3,
                         .height = 1,
                         .bits = 1,
                         .after_header = Bytes(kFourColours.begin(), kFourColours.begin() + 8),
                         .rows = {0xA0, 0, 0, 0}}),
            expected);
  EXPECT_EQ(read_pixels({.width = 5,
                         .height = 1,
                         .bits = 2,
                         .after_header = kFourColours,
                         .rows = {0x1B, 0x40, 0, 0}}),
            (Pixels{kBlack, kRed, kGreen, kBlue, kRed}));
  EXPECT_EQ(read_pixels({.width = 3,
                         .height = 1,
                         .bits = 4,
                         .colours = 4,
                         .after_header = kFourColours,
                         .rows = {0x12, 0x30, 0, 0}}),
            (Pixels{kRed, kGreen, kBlue}));
}

TEST(BmpReader, CopesWithPalettesOfTheWrongLength) {
  // Shorter than promised: what the file does not hold is black.
  EXPECT_EQ(read_pixels({.width = 4,
                         .height = 1,
                         .bits = 8,
                         .colours = 256,
                         .after_header = kFourColours,
                         .rows = {3, 4, 255, 1}}),
            (Pixels{kBlue, kBlack, kBlack, kRed}));
  // Longer than the depth can use: pixels still start where the file says.
  Bytes long_palette = kFourColours;
  long_palette.resize(300 * 4);
  EXPECT_EQ(read_pixels({.width = 4,
                         .height = 1,
                         .bits = 8,
                         .colours = 300,
                         .after_header = long_palette,
                         .rows = {0, 1, 2, 3}}),
            (Pixels{kBlack, kRed, kGreen, kBlue}));
  EXPECT_EQ(read_pixels({.width = 4,
                         .height = 1,
                         .bits = 8,
                         .colours = 0xFFFFFFFF,
                         .after_header = kFourColours,
                         .rows = {0, 1, 2, 3},
                         .gap = 9}),
            (Pixels{kBlack, kRed, kGreen, kBlue}));
}

TEST(BmpReader, ReadsOs2Headers) {
  const Bytes palette = {0, 0, 0, 0, 0, 255, 0, 255, 0, 255, 0, 0};
  EXPECT_EQ(read_pixels({.width = 4,
                         .height = 1,
                         .bits = 8,
                         .header_size = 12,
                         .after_header = palette,
                         .rows = {0, 1, 2, 3}}),
            (Pixels{kBlack, kRed, kGreen, kBlue}));
  // A header cut off after its depth: the rest counts as zero.
  EXPECT_EQ(read_pixels({.width = 4,
                         .height = 1,
                         .bits = 8,
                         .header_size = 16,
                         .after_header = kFourColours,
                         .rows = {0, 1, 2, 3}}),
            (Pixels{kBlack, kRed, kGreen, kBlue}));
}

TEST(BmpReader, WidensShortChannelsToTheFullRange) {
  EXPECT_EQ(read_pixels({.width = 4,
                         .height = 1,
                         .bits = 16,
                         .rows = wire({{0x7FFF, 2}, {0x8000, 2}, {0x7C00, 2}, {0x0010, 2}})}),
            (Pixels{0xFFFFFFFF, kBlack, kRed, 0xFF000084}));
  EXPECT_EQ(read_pixels({.width = 2,
                         .height = 1,
                         .bits = 16,
                         .compression = 3,
                         .after_header = wire({{0xF800, 4}, {0x07E0, 4}, {0x001F, 4}}),
                         .rows = wire({{0xFFFF, 2}, {0x0400, 2}})}),
            (Pixels{0xFFFFFFFF, 0xFF008200}));
  // Ten bits a channel lose the low two; one bit is all or nothing; a missing channel is 0.
  EXPECT_EQ(read_pixels({.width = 2,
                         .height = 1,
                         .bits = 32,
                         .compression = 3,
                         .after_header = wire({{0x3FF00000, 4}, {0x00000001, 4}, {0, 4}}),
                         .rows = wire({{0x20100001, 4}, {0x3FF00000, 4}})}),
            (Pixels{0xFF80FF00, kRed}));
}

TEST(BmpReader, TakesAlphaFromItsMask) {
  c32bppDIB image;
  const Bytes masks = wire({{0x0F00, 4}, {0x00F0, 4}, {0x000F, 4}, {0xF000, 4}});
  ASSERT_TRUE(cBMPparser::LoadStream(make_bmp({.width = 2,
                                               .height = 1,
                                               .bits = 16,
                                               .compression = 6,
                                               .after_header = masks,
                                               .rows = wire({{0x8F00, 2}, {0xF0F0, 2}})}),
                                     image));
  EXPECT_EQ(image.ImageType(), ImageFormat::BitmapArgb);
  EXPECT_EQ(pixels(image), (Pixels{0x88880000, kGreen}));
  // Bit fields without an alpha mask ignore the spare byte.
  EXPECT_EQ(read_pixels({.width = 2,
                         .height = 1,
                         .bits = 32,
                         .compression = 3,
                         .after_header = wire({{0xFF0000, 4}, {0xFF00, 4}, {0xFF, 4}}),
                         .rows = wire({{0x80FF0000, 4}, {0x0000FF00, 4}})}),
            (Pixels{kRed, kGreen}));
}

TEST(BmpReader, RefusesMasksThatAreNone) {
  const auto masked = [](uint32_t red, uint32_t bits) {
    return read_pixels({.width = 1,
                        .height = 1,
                        .bits = bits,
                        .compression = 3,
                        .after_header = wire({{red, 4}, {0xE0, 4}, {0x1F, 4}}),
                        .rows = wire({{0, 4}})});
  };
  EXPECT_FALSE(masked(0x0700, 16).empty());
  EXPECT_TRUE(masked(0x0500, 16).empty());   // a gap
  EXPECT_TRUE(masked(0x10000, 16).empty());  // outside the pixel
  EXPECT_FALSE(masked(0xFFFF0000, 32).empty());
  EXPECT_TRUE(masked(0x0700, 24).empty());
}

TEST(BmpReader, ExpandsRunLengths) {
  const auto rle8 = [](int32_t width, int32_t height, Bytes codes) {
    return read_pixels({.width = width,
                        .height = height,
                        .bits = 8,
                        .compression = 1,
                        .colours = 4,
                        .after_header = kFourColours,
                        .rows = std::move(codes)});
  };
  // A run, a literal padded to an even length, an early end of the line, a delta over two rows.
  EXPECT_EQ(rle8(4, 1, {1, 3, 0, 3, 1, 2, 1, 0, 0, 1}), (Pixels{kBlue, kRed, kGreen, kRed}));
  EXPECT_EQ(rle8(3, 2, {1, 1, 0, 0, 2, 2, 0, 1}),
            (Pixels{kGreen, kGreen, kBlack, kRed, kBlack, kBlack}));
  EXPECT_EQ(rle8(2, 3, {1, 1, 0, 2, 0, 2, 1, 3, 0, 1}),
            (Pixels{kBlack, kBlue, kBlack, kBlack, kRed, kBlack}));
  // Runs do not wrap; a run past the last row writes nothing; no end mark is needed at the end.
  EXPECT_EQ(rle8(2, 2, {9, 1, 0, 0, 9, 2, 0, 0, 9, 3, 0, 1}), (Pixels{kGreen, kGreen, kRed, kRed}));
  EXPECT_EQ(rle8(2, 1, {2, 1}), (Pixels{kRed, kRed}));
  EXPECT_TRUE(rle8(2, 1, {1, 1, 1}).empty());
  EXPECT_TRUE(rle8(2, 2, {0, 4, 1, 1}).empty());

  const auto rle4 = [](int32_t width, Bytes codes) {
    return read_pixels({.width = width,
                        .height = 1,
                        .bits = 4,
                        .compression = 2,
                        .colours = 4,
                        .after_header = kFourColours,
                        .rows = std::move(codes)});
  };
  EXPECT_EQ(rle4(5, {5, 0x12, 0, 1}), (Pixels{kRed, kGreen, kRed, kGreen, kRed}));
  EXPECT_EQ(rle4(5, {0, 5, 0x12, 0x31, 0x20, 0, 0, 1}),
            (Pixels{kRed, kGreen, kBlue, kRed, kGreen}));
}

TEST(BmpReader, RefusesMoreThanItsBytesCanMean) {
  c32bppDIB image;
  const Bytes end = {0, 1};
  EXPECT_FALSE(cBMPparser::LoadStream(
      make_bmp({.width = 16000, .height = 16000, .bits = 8, .compression = 1, .rows = end}),
      image));
  EXPECT_FALSE(cBMPparser::LoadStream(
      make_bmp({.width = 16000, .height = 16000, .rows = Bytes(64)}), image));
  EXPECT_FALSE(
      cBMPparser::LoadStream(make_bmp({.width = 1 << 30, .height = 1 << 30, .bits = 0}), image));
  EXPECT_FALSE(
      cBMPparser::LoadStream(make_bmp({.width = 2, .height = INT32_MIN, .bits = 1}), image));
  EXPECT_FALSE(cBMPparser::LoadStream(make_bmp({.width = 0, .rows = Bytes(64)}), image));
  EXPECT_FALSE(cBMPparser::LoadStream(make_bmp({.height = 0, .rows = Bytes(64)}), image));
  EXPECT_FALSE(cBMPparser::LoadStream(make_bmp({.compression = 4, .rows = Bytes(64)}),
                                      image));  // JPEG inside
}

TEST(BmpReader, DoesNotNeedThePaddingOfTheLastRow) {
  EXPECT_EQ(read_pixels({.width = 1, .height = 2, .rows = {1, 0, 0, 0, 2, 0, 0}}),
            (Pixels{0xFF000002, 0xFF000001}));
  EXPECT_TRUE(read_pixels({.width = 1, .height = 2, .rows = {1, 0, 0, 0, 2, 0}}).empty());
}

TEST(BmpReader, SurvivesHostileBytes) {
  Bytes palette = kFourColours;
  palette.resize(1024);
  const BmpSpec samples[] = {
      {.width = 5, .height = 3, .bits = 32, .rows = Bytes(60, 0x77)},
      {.width = 5,
       .height = 3,
       .bits = 8,
       .header_size = 12,
       .after_header = Bytes(768),
       .rows = Bytes(24, 9)},
      {.width = 9,
       .height = 3,
       .bits = 8,
       .compression = 1,
       .colours = 4,
       .after_header = kFourColours,
       .rows = {0, 5, 1, 2, 3, 1, 2, 0, 3, 1, 0, 2, 1, 1, 2, 2, 0, 0, 9, 3, 0, 1}},
      {.width = 3,
       .height = 2,
       .bits = 16,
       .compression = 6,
       .after_header = wire({{0xF800, 4}, {0x07E0, 4}, {0x1E, 4}, {1, 4}}),
       .rows = Bytes(16, 0x5A)},
  };
  for (const BmpSpec& spec : samples)
    expect_survives_hostile_bytes(cBMPparser::LoadStream, make_bmp(spec));
}

#if !defined(_WIN32)
TEST(BmpReader, AgreesWithImageMagickOnItsFiles) {
  if (!Workshop::has("convert")) GTEST_SKIP() << "needs ImageMagick";
  const Workshop shop;
  ASSERT_TRUE(shop.run("convert -size 37x21 -seed 7 plasma:red-blue source.png"));
  const char* const commands[] = {
      "convert source.png bmp3:x.bmp",
      "convert source.png bmp2:x.bmp",
      "convert source.png -colors 200 -type palette -compress none bmp3:x.bmp",
      "convert source.png -colors 200 -type palette -compress RLE bmp3:x.bmp",
      "convert source.png -colors 13 -type palette bmp3:x.bmp",
      "convert source.png -monochrome bmp3:x.bmp",
      "convert source.png -define bmp:subtype=RGB565 bmp:x.bmp",
      "convert source.png -define bmp:subtype=RGB555 bmp:x.bmp",
  };
  for (const char* const command : commands) {
    ASSERT_TRUE(shop.run(command)) << command;
    c32bppDIB image;
    ASSERT_TRUE(cBMPparser::LoadStream(shop.read("x.bmp"), image)) << command;
    EXPECT_EQ(image.Width(), 37);
    EXPECT_EQ(image.Alpha(), AlphaType::None);
    EXPECT_EQ(pixels(image), shop.reference("x.bmp")) << command;
  }
}
#endif

}  // namespace
}  // namespace kestrelon::test
