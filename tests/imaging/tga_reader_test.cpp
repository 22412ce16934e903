#include "imaging/tga_parser.h"

#include <gtest/gtest.h>

#include "tests/imaging/hostile.h"
#include "tests/imaging/pictures.h"

namespace kestrelon::test {
namespace {

struct TgaSpec {
  uint32_t kind = 2, depth = 24, descriptor = 0x20;
  uint32_t width = 2, height = 2;
  uint32_t map_first = 0, map_length = 0, map_depth = 0;
  Bytes body = {};  // id, map and pixels
  uint32_t id_length = 0;
};

Bytes make_tga(const TgaSpec& spec) {
  return wire({{spec.id_length, 1},
               {spec.map_depth != 0 ? 1u : 0u, 1},
               {spec.kind, 1},
               {spec.map_first, 2},
               {spec.map_length, 2},
               {spec.map_depth, 1},
               {0, 4},
               {spec.width, 2},
               {spec.height, 2},
               {spec.depth, 1},
               {spec.descriptor, 1}}) +
         spec.body;
}

Bytes with_extension(const Bytes& file, uint8_t attribute_kind) {
  const size_t at = file.size();
  Bytes extension = wire({{495, 2}});
  extension.resize(495);
  extension[494] = attribute_kind;
  const std::string signature("TRUEVISION-XFILE.\0", 18);
  return file + extension + wire({{at, 4}, {0, 4}}) + Bytes(signature.begin(), signature.end());
}

using Pixels = std::vector<uint32_t>;

Pixels read_pixels(const TgaSpec& spec) {
  c32bppDIB image;
  return cTGAparser::LoadStream(make_tga(spec), image) ? pixels(image) : Pixels{};
}

TEST(TgaReader, PutsRowsAndColumnsWhereTheOriginSays) {
  const Bytes four = wire({{1, 3}, {2, 3}, {3, 3}, {4, 3}});
  const auto blues = [&](uint32_t descriptor) {
    Pixels out = read_pixels({.descriptor = descriptor, .body = four});
    for (uint32_t& p : out) p &= 0xFF;
    return out;
  };
  EXPECT_EQ(blues(0x00), (Pixels{3, 4, 1, 2}));
  EXPECT_EQ(blues(0x10), (Pixels{4, 3, 2, 1}));
  EXPECT_EQ(blues(0x20), (Pixels{1, 2, 3, 4}));
  EXPECT_EQ(blues(0x30), (Pixels{2, 1, 4, 3}));
  EXPECT_TRUE(blues(0x40).empty());  // interleaved
}

TEST(TgaReader, ReadsEveryPixelKind) {
  EXPECT_EQ(
      read_pixels({.depth = 15, .width = 2, .height = 1, .body = wire({{0xFC00, 2}, {0x001F, 2}})}),
      (Pixels{0xFFFF0000, 0xFF0000FF}));
  EXPECT_EQ(
      read_pixels({.depth = 16, .width = 2, .height = 1, .body = wire({{0xFC00, 2}, {0x001F, 2}})}),
      (Pixels{0xFFFF0000, 0xFF0000FF}));
  // One attribute bit: the second pixel is transparent.
  EXPECT_EQ(read_pixels({.depth = 16,
                         .descriptor = 0x21,
                         .width = 2,
                         .height = 1,
                         .body = wire({{0xFC00, 2}, {0x001F, 2}})}),
            (Pixels{0xFFFF0000, 0}));
  EXPECT_EQ(read_pixels({.kind = 3, .depth = 8, .width = 2, .height = 1, .body = {7, 200}}),
            (Pixels{0xFF070707, 0xFFC8C8C8}));
  EXPECT_EQ(read_pixels({.kind = 3,
                         .depth = 16,
                         .descriptor = 0x28,
                         .width = 2,
                         .height = 1,
                         .body = {200, 128, 9, 255}}),
            (Pixels{0x80646464, 0xFF090909}));
  EXPECT_EQ(read_pixels({.depth = 32,
                         .descriptor = 0x28,
                         .width = 2,
                         .height = 1,
                         .body = wire({{0x80FF0000, 4}, {0xFF010203, 4}})}),
            (Pixels{0x80800000, 0xFF010203}));
}

TEST(TgaReader, CountsPaletteIndexesFromTheFirstEntry) {
  EXPECT_EQ(read_pixels({.kind = 1,
                         .depth = 8,
                         .width = 4,
                         .height = 1,
                         .map_first = 10,
                         .map_length = 2,
                         .map_depth = 24,
                         .body = Bytes{0, 0, 255, 0, 255, 0} + Bytes{10, 11, 12, 0}}),
            (Pixels{0xFFFF0000, 0xFF00FF00, 0xFF000000, 0xFF000000}));
  EXPECT_EQ(read_pixels({.kind = 1,
                         .depth = 8,
                         .width = 2,
                         .height = 1,
                         .map_length = 2,
                         .map_depth = 32,
                         .body = wire({{0x80FF0000, 4}, {0xFF0000FF, 4}}) + Bytes{0, 1}}),
            (Pixels{0x80800000, 0xFF0000FF}));
  // A colour map beside true colour is skipped, and so is the id.
  EXPECT_EQ(read_pixels({.width = 1,
                         .height = 1,
                         .map_length = 2,
                         .map_depth = 16,
                         .body = Bytes{9, 9, 9} + Bytes{1, 1, 2, 2} + Bytes{3, 2, 1},
                         .id_length = 3}),
            (Pixels{0xFF010203}));
}

TEST(TgaReader, LetsPacketsRunIntoTheNextRow) {
  EXPECT_EQ(read_pixels({.kind = 10,
                         .width = 3,
                         .height = 2,
                         .body = Bytes{0x83, 1, 0, 0} + Bytes{0x01, 2, 0, 0, 3, 0, 0}}),
            (Pixels{0xFF000001, 0xFF000001, 0xFF000001, 0xFF000001, 0xFF000002, 0xFF000003}));
  // A packet that goes on past the last pixel is cut.
  EXPECT_EQ(read_pixels({.kind = 11, .depth = 8, .width = 2, .height = 1, .body = {0xFF, 5}}),
            (Pixels{0xFF050505, 0xFF050505}));
}

TEST(TgaReader, FollowsWhatTheExtensionSaysOfAlpha) {
  const Bytes file = make_tga({.depth = 32,
                               .descriptor = 0x28,
                               .width = 2,
                               .height = 1,
                               .body = wire({{0x80402010, 4}, {0xFF010203, 4}})});
  const auto first = [&](uint8_t kind) {
    c32bppDIB image;
    EXPECT_TRUE(cTGAparser::LoadStream(with_extension(file, kind), image));
    EXPECT_EQ(image.ImageType(), ImageFormat::Tga);
    return pixel(image, 0, 0);
  };
  EXPECT_EQ(first(3), 0x80201008u);  // straight, though it could pass for premultiplied
  EXPECT_EQ(first(4), 0x80402010u);
  EXPECT_EQ(first(1), 0xFF402010u);
  const Bytes broken = make_tga({.depth = 32,
                                 .descriptor = 0x28,
                                 .width = 2,
                                 .height = 1,
                                 .body = wire({{0x80FF2010, 4}, {0xFF010203, 4}})});
  c32bppDIB image;
  ASSERT_TRUE(cTGAparser::LoadStream(with_extension(broken, 4), image));
  EXPECT_EQ(pixel(image, 0, 0), 0x80802010u);  // colour never exceeds alpha
  const Bytes clear = make_tga(
      {.depth = 32, .descriptor = 0x28, .width = 1, .height = 1, .body = wire({{0x00402010, 4}})});
  ASSERT_TRUE(cTGAparser::LoadStream(with_extension(clear, 3), image));
  EXPECT_EQ(pixel(image, 0, 0), 0xFF402010u);
}

TEST(TgaReader, DeclinesWhatIsNoTga) {
  const Bytes full(64, 0);
  EXPECT_TRUE(read_pixels({.kind = 0, .body = full}).empty());
  EXPECT_TRUE(read_pixels({.kind = 4, .body = full}).empty());
  EXPECT_TRUE(read_pixels({.kind = 32, .body = full}).empty());
  EXPECT_TRUE(read_pixels({.kind = 1, .depth = 8, .body = full}).empty());  // no map
  EXPECT_TRUE(read_pixels({.depth = 8, .body = full}).empty());
  EXPECT_TRUE(read_pixels({.width = 0, .body = full}).empty());
  EXPECT_TRUE(read_pixels({.width = 65535, .height = 65535, .body = full}).empty());
  EXPECT_TRUE(read_pixels({.kind = 10, .width = 4000, .height = 4000, .body = full}).empty());
}

TEST(TgaReader, SurvivesHostileBytes) {
  const TgaSpec samples[] = {
      {.depth = 32, .width = 3, .height = 3, .body = Bytes(36, 0x66)},
      {.kind = 10,
       .width = 5,
       .height = 2,
       .body = Bytes{0x84, 1, 2, 3, 0x02, 4, 5, 6, 7, 8, 9, 1, 2, 3, 0x81, 4, 5, 6}},
      {.kind = 9,
       .depth = 8,
       .width = 4,
       .height = 2,
       .map_length = 3,
       .map_depth = 24,
       .body = Bytes(9, 77) + Bytes{0x83, 1, 0x03, 0, 1, 2, 0}},
  };
  for (const TgaSpec& spec : samples) {
    expect_survives_hostile_bytes(cTGAparser::LoadStream, make_tga(spec));
    expect_survives_bit_flips(cTGAparser::LoadStream, with_extension(make_tga(spec), 3));
  }
}

#if !defined(_WIN32)
TEST(TgaReader, AgreesWithImageMagickAndNetpbm) {
  if (!Workshop::has("convert") || !Workshop::has("pamtotga")) GTEST_SKIP() << "needs both";
  const Workshop shop;
  ASSERT_TRUE(shop.run("convert -size 37x21 -seed 7 plasma:red-blue source.png"));
  const char* const commands[] = {
      "convert source.png -compress none x.tga",
      "convert source.png -compress RLE x.tga",
      "convert source.png -colors 60 -type palette x.tga",
      "convert source.png -colorspace gray x.tga",
      "convert source.png -orient bottom-left x.tga",
      "convert source.png ppm:- | pamtotga -rgb > x.tga",
      "convert source.png -colors 60 ppm:- | pamtotga -cmap > x.tga",
      "convert source.png -colors 6 ppm:- | pamtotga -rgb > x.tga",
  };
  for (const char* const command : commands) {
    ASSERT_TRUE(shop.run(command)) << command;
    c32bppDIB image;
    ASSERT_TRUE(cTGAparser::LoadStream(shop.read("x.tga"), image)) << command;
    EXPECT_EQ(image.Width(), 37);
    EXPECT_EQ(pixels(image), shop.reference("x.tga")) << command;
  }
}
#endif

}  // namespace
}  // namespace kestrelon::test
