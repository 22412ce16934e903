#include "imaging/gif_parser.h"

#include <gtest/gtest.h>

#include "tests/imaging/gif_bytes.h"
#include "tests/imaging/hostile.h"

namespace kestrelon::test {
namespace {

using Pixels = std::vector<uint32_t>;

Pixels read_pixels(const Bytes& file) {
  c32bppDIB image;
  return cGIFparser::LoadStream(file, image) ? pixels(image) : Pixels{};
}

TEST(GifReader, ReadsAFileOfAnotherEncoder) {
  const Bytes file = {0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 0x0A, 0x00, 0x0A, 0x00, 0x91, 0x00,
                      0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x00, 0xFF, 0x00, 0x00,
                      0x00, 0x21, 0xF9, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x2C, 0x00, 0x00,
                      0x00, 0x00, 0x0A, 0x00, 0x0A, 0x00, 0x00, 0x02, 0x16, 0x8C, 0x2D, 0x99,
                      0x87, 0x2A, 0x1C, 0xDC, 0x33, 0xA0, 0x02, 0x75, 0xEC, 0x95, 0xFA, 0xA8,
                      0xDE, 0x60, 0x8C, 0x04, 0x91, 0x4C, 0x01, 0x00, 0x3B};
  const char* const rows[] = {"rrrrrbbbbb", "rrrrrbbbbb", "rrrrrbbbbb", "rrrwwwwbbb", "rrrwwwwbbb",
                              "bbbwwwwrrr", "bbbwwwwrrr", "bbbbbrrrrr", "bbbbbrrrrr", "bbbbbrrrrr"};
  Pixels expected;
  for (const char* row : rows) {
    for (; *row != 0; ++row)
      expected.push_back(*row == 'r' ? kRed : *row == 'b' ? kBlue : 0xFFFFFFFF);
  }
  EXPECT_EQ(read_pixels(file), expected);
  expect_survives_hostile_bytes(cGIFparser::LoadStream, file);
}

TEST(GifReader, TakesTheFirstFrameAtItsOwnSize) {
  c32bppDIB image;
  ASSERT_TRUE(
      cGIFparser::LoadStream(screen() + frame(2, 1, {1, 2}) + frame(1, 1, {3}) + kTrailer, image));
  EXPECT_EQ(pixels(image), (Pixels{kRed, kGreen}));
  EXPECT_EQ(image.ImageType(), ImageFormat::Gif);
  EXPECT_EQ(image.Alpha(), AlphaType::None);
  // Neither the trailer nor a signature in small letters is needed.
  EXPECT_EQ(read_pixels(screen() + frame(2, 1, {1, 2})), (Pixels{kRed, kGreen}));
  EXPECT_EQ(read_pixels(screen(kTable, "gIF87A") + frame(2, 1, {1, 2})), (Pixels{kRed, kGreen}));
  EXPECT_TRUE(read_pixels(screen(kTable, "GIF88a") + frame(2, 1, {1, 2})).empty());
}

TEST(GifReader, MakesTheTransparentIndexOfItsOwnTableClear) {
  c32bppDIB image;
  ASSERT_TRUE(cGIFparser::LoadStream(screen() + control(1, 2) + frame(3, 1, {1, 2, 3}), image));
  EXPECT_EQ(pixels(image), (Pixels{kRed, 0, kBlue}));
  EXPECT_EQ(image.Alpha(), AlphaType::Simple);
  // The flag decides, not the index.
  EXPECT_EQ(read_pixels(screen() + control(0, 2) + frame(3, 1, {1, 2, 3})),
            (Pixels{kRed, kGreen, kBlue}));
  // The last control before the frame holds.
  EXPECT_EQ(read_pixels(screen() + control(1, 2) + control(1, 1) + frame(2, 1, {1, 2})),
            (Pixels{0, kGreen}));
  // An index beyond the table hits nothing, even where the codes could name it.
  EXPECT_EQ(read_pixels(screen() + control(1, 5) + frame(2, 1, {1, 5}, 0, {}, 3)),
            (Pixels{kRed, kBlack}));
  // Local colours win over global ones.
  const Bytes local = {9, 9, 9, 0, 0, 255};
  EXPECT_EQ(read_pixels(screen() + control(1, 0) + frame(2, 1, {0, 1}, 0x80, local)),
            (Pixels{0, kBlue}));
}

TEST(GifReader, SkipsWhatStandsBeforeTheFrame) {
  const Bytes comment = {33, 254, 2, 'h', 'i', 1, '!', 0};
  const Bytes application = {33, 255, 3, 'a', 'b', 'c', 2, 44, 59, 0};
  const Bytes text = {33, 1, 1, 44, 0};
  const Bytes strays(3, 0);
  EXPECT_EQ(read_pixels(screen() + comment + strays + application + text + frame(1, 1, {3})),
            (Pixels{kBlue}));
  EXPECT_TRUE(read_pixels(screen() + kTrailer + frame(1, 1, {3})).empty());
  EXPECT_TRUE(read_pixels(screen() + Bytes{7} + frame(1, 1, {3})).empty());
}

TEST(GifReader, UndoesInterlacing) {
  for (uint32_t height = 1; height <= 20; ++height) {
    // Row y of the picture holds index y % 4; the data has the rows in four passes.
    Bytes indexes;
    for (const auto& [start, step] : {std::pair{0u, 8u}, {4u, 8u}, {2u, 4u}, {1u, 2u}}) {
      for (uint32_t y = start; y < height; y += step)
        indexes.push_back(static_cast<uint8_t>(y % 4));
    }
    Pixels expected;
    for (uint32_t y = 0; y < height; ++y)
      expected.push_back(Pixels{kBlack, kRed, kGreen, kBlue}[y % 4]);
    EXPECT_EQ(read_pixels(screen() + frame(1, height, indexes, 0x40)), expected) << height;
  }
}

TEST(GifReader, FillsWhatTheDataDoesNotReach) {
  EXPECT_EQ(read_pixels(screen() + frame(2, 2, {1, 2, 3})), (Pixels{kRed, kGreen, kBlue, kBlack}));
  EXPECT_EQ(read_pixels(screen() + control(1, 3) + frame(2, 2, {1})), (Pixels{kRed, 0, 0, 0}));
  // What is too much is ignored.
  EXPECT_EQ(read_pixels(screen() + frame(1, 1, {1, 2, 3})), (Pixels{kRed}));
  // No table anywhere: black and white.
  EXPECT_EQ(read_pixels(screen({}) + frame(2, 1, {0, 1})), (Pixels{kBlack, 0xFFFFFFFF}));
}

TEST(GifReader, RefusesBrokenData) {
  // Codes of three bits, low bit first: 4 clears, 5 ends, 7 stands for nothing yet.
  const Bytes head = screen() + wire({{44, 1}, {0, 4}, {1, 2}, {1, 2}, {0, 1}, {2, 1}});
  EXPECT_FALSE(read_pixels(head + Bytes{2, 4 | 1 << 3 | (5 & 3) << 6, 5 >> 2, 0}).empty());
  EXPECT_TRUE(read_pixels(head + Bytes{1, 4 | 7 << 3, 0}).empty());
  EXPECT_TRUE(read_pixels(head + Bytes{1, 4 | 6 << 3, 0}).empty());
  EXPECT_TRUE(read_pixels(screen() + frame(0, 1, {1})).empty());
  EXPECT_TRUE(read_pixels(screen() + frame(60000, 60000, {1})).empty());
  Bytes bad_size = screen() + frame(1, 1, {1});
  bad_size[screen().size() + 10] = 9;
  EXPECT_TRUE(read_pixels(bad_size).empty());
}

TEST(GifLzw, RoundTripsThroughFullTables) {
  for (const int code_size : {2, 3, 5, 8}) {
    Bytes noise, runs, one;
    uint32_t state = 1;
    for (int i = 0; i < 60000; ++i) {
      state = state * 1664525 + 1013904223;
      noise.push_back(static_cast<uint8_t>(state >> 24 & ((1u << code_size) - 1)));
      runs.push_back(static_cast<uint8_t>(i / 700 % (1 << code_size)));
      one.push_back(1);
    }
    for (const Bytes* indexes : {&noise, &runs, &one}) {
      Bytes coded;
      gif::lzw_encode(*indexes, code_size, coded);
      gif::LzwDecoder decoder(coded, code_size);
      Bytes decoded;
      for (auto piece = decoder.next(); !piece.empty(); piece = decoder.next())
        decoded.insert(decoded.end(), piece.begin(), piece.end());
      EXPECT_TRUE(decoder.ok());
      EXPECT_EQ(decoded, *indexes) << code_size;
    }
  }
}

#if !defined(_WIN32)
TEST(GifReader, AgreesWithImageMagickAndNetpbm) {
  if (!Workshop::has("convert") || !Workshop::has("ppmtogif")) GTEST_SKIP() << "needs both";
  const Workshop shop;
  ASSERT_TRUE(shop.run("convert -size 137x91 -seed 7 plasma:red-blue source.png"));
  const char* const commands[] = {
      "convert source.png x.gif",
      "convert source.png -interlace GIF x.gif",
      "convert source.png -monochrome x.gif",
      "convert source.png -colors 5 +dither x.gif",
      "convert source.png -colors 200 ppm:- | ppmtogif > x.gif",
      "convert source.png -colors 30 ppm:- | ppmtogif -interlace > x.gif",
      "convert -size 300x300 xc:gray x.gif",
  };
  for (const char* const command : commands) {
    ASSERT_TRUE(shop.run(command)) << command;
    EXPECT_EQ(read_pixels(shop.read("x.gif")), shop.reference("x.gif")) << command;
  }
}
#endif

}  // namespace
}  // namespace kestrelon::test
