#include "imaging/png_parser.h"

#include <gtest/gtest.h>

#include "png_test_tools.h"

namespace kestrelon {
namespace {

using png_test::at;
using png_test::Bytes;
using png_test::File;
using png_test::packed;
using png_test::WithZlib;

bool loads(const Bytes& file) {
  c32bppDIB image;
  EXPECT_TRUE(cPNGparser::LoadStream(file, image));
  EXPECT_EQ(image.ImageType(), image.has_image() ? ImageFormat::Png : ImageFormat::Error);
  return image.has_image();
}

uint32_t first_pixel(const Bytes& file) {
  c32bppDIB image;
  cPNGparser::LoadStream(file, image);
  return image.has_image() ? at(image, 0, 0) : 0xDEADu;
}

const Bytes kGray2 = {0, 0x80};  // one row, two gray pixels of depth 1: white, black

File gray_2x1() {
  return File().header(2, 1, 1, 0);
}

TEST(PngReader, OnlyTheSignatureDecidesWhetherOthersMayTry) {
  Bytes file = gray_2x1().data(kGray2).end().bytes;
  c32bppDIB image;
  ASSERT_TRUE(image.InitializeDIB(1, 1));
  for (size_t i = 0; i < 8; ++i) {
    Bytes other = file;
    other[i] ^= 0x20;
    EXPECT_FALSE(cPNGparser::LoadStream(other, image));
    EXPECT_TRUE(image.has_image());
  }
  EXPECT_FALSE(cPNGparser::LoadStream(std::span(file).first(7), image));
  EXPECT_TRUE(cPNGparser::LoadStream(std::span(file).first(8), image));
  EXPECT_FALSE(image.has_image());
  EXPECT_EQ(image.ImageType(), ImageFormat::Error);
}

TEST(PngReader, SmallFilesAreDeclinedButSmallStreamsAreNot) {
  // 8 + 25 + 12 leave 11 bytes for data chunk and padding in a file of 56 bytes: a skipped chunk.
  Bytes stored = {0x78, 1, 1, 2, 0, 0xFD, 0xFF, 0, 0x80, 0, 0, 0, 0};
  Bytes file = File().header(2, 1, 1, 0).chunk("IDAT", stored).bytes;
  ASSERT_EQ(file.size(), 58u);
  c32bppDIB image;
  EXPECT_TRUE(cPNGparser::LoadStream(file, image, PngSource::File));
  EXPECT_TRUE(image.has_image());
  for (size_t size : {56u, 57u}) {
    EXPECT_EQ(cPNGparser::LoadStream(std::span(file).first(size), image, PngSource::File),
              size == 57);
    EXPECT_TRUE(cPNGparser::LoadStream(std::span(file).first(size), image, PngSource::Stream));
  }
}

TEST(PngReader, CheckValuesCountOnlyWithZlibAndOnlyWhereRead) {
  const Bytes stream = packed(kGray2);
  auto with_bad = [&](int which) {
    auto bad = [&](int i) { return i == which ? 0x100u : 0u; };
    return File()
        .chunk("IHDR", {0, 0, 0, 2, 0, 0, 0, 1, 1, 0, 0, 0, 0}, bad(0))
        .chunk("gAMA", {0, 0, 1, 0}, bad(1))
        .chunk("tRNS", {0, 1}, bad(2))
        .chunk("IDAT", stream, bad(3))
        .chunk("IEND", {}, bad(4))
        .bytes;
  };
  for (int which = -1; which < 5; ++which) EXPECT_TRUE(loads(with_bad(which)));
  const WithZlib zlib;
  for (int which : {-1, 1, 4}) EXPECT_TRUE(loads(with_bad(which))) << which;
  for (int which : {0, 2, 3}) EXPECT_FALSE(loads(with_bad(which))) << which;
  EXPECT_TRUE(loads(gray_2x1().chunk("IDAT", stream).zero_last_crc().end().bytes));
}

TEST(PngReader, HeaderIsChecked) {
  auto file = [](uint32_t w, uint32_t h, Bytes rest) {
    Bytes head;
    png_test::put32(head, w);
    png_test::put32(head, h);
    head.insert(head.end(), rest.begin(), rest.end());
    return File().chunk("IHDR", head).data(Bytes(64)).end().bytes;
  };
  EXPECT_TRUE(loads(file(2, 2, {8, 0, 0, 0, 0})));
  EXPECT_FALSE(loads(file(0, 2, {8, 0, 0, 0, 0})));
  EXPECT_FALSE(loads(file(2, 0, {8, 0, 0, 0, 0})));
  EXPECT_FALSE(loads(file(0x80000001u, 1, {8, 0, 0, 0, 0})));
  for (uint8_t depth : {0, 3, 5, 7, 12, 32, 255})
    EXPECT_FALSE(loads(file(2, 2, {depth, 0, 0, 0, 0})));
  for (uint8_t color : {1, 5, 7, 255}) EXPECT_FALSE(loads(file(2, 2, {8, color, 0, 0, 0})));
  EXPECT_FALSE(loads(file(2, 2, {8, 0, 1, 0, 0})));
  EXPECT_FALSE(loads(file(2, 2, {8, 0, 0, 1, 0})));
  EXPECT_FALSE(loads(file(2, 2, {8, 0, 0, 0, 2})));
  EXPECT_FALSE(loads(File().data(kGray2).end().bytes));
  EXPECT_FALSE(loads(gray_2x1().end().bytes));
}

TEST(PngReader, PixelLimitIsExactAndMemoryFollowsTheData) {
  // 2^26 - 1 pixels of depth 1 are 8 MiB of zeros, which pack a thousandfold; one row more is over.
  c32bppDIB image;
  const Bytes rows(((8191 + 7) / 8 + 1) * 8193);
  EXPECT_TRUE(loads(File().header(8191, 8193, 1, 0).data(rows).end().bytes));
  EXPECT_FALSE(loads(File().header(8192, 8192, 1, 0).data(rows).end().bytes));
  EXPECT_FALSE(loads(File().header(67108863, 1, 16, 6).data(rows).end().bytes));
}

TEST(PngReader, ChunksMayNotLeaveTheFile) {
  const Bytes good = gray_2x1().data(kGray2).end().bytes;
  for (uint32_t length : {0xFFFFFFFFu, 0x7FFFFFFFu, 0xFFFFFFF4u, 100u}) {
    Bytes bad = good;
    for (int i = 0; i < 4; ++i)
      bad[8 + 25 + static_cast<size_t>(i)] = static_cast<uint8_t>(length >> (24 - 8 * i));
    EXPECT_FALSE(loads(bad)) << length;
  }
  EXPECT_FALSE(
      loads(File().header(2, 1, 1, 3).chunk("PLTE", {1, 2, 3, 4}).data(kGray2).end().bytes));
  EXPECT_TRUE(
      loads(File().header(2, 1, 1, 0).chunk("PLTE", {1, 2, 3, 4}).data(kGray2).end().bytes));
}

TEST(PngReader, DataMayComeInManyChunksAndEmptyOnes) {
  const Bytes stream = packed(kGray2);
  for (ZlibLoader loader : png_test::kLoaders) {
    const WithZlib zlib(loader);
    File file = gray_2x1();
    file.chunk("IDAT", {});
    for (uint8_t byte : stream) file.chunk("IDAT", {byte}).chunk("IDAT", {});
    EXPECT_EQ(first_pixel(file.end().bytes), 0xFFFFFFFFu);
    EXPECT_FALSE(loads(gray_2x1().data({0}).end().bytes));  // a byte short
    EXPECT_TRUE(loads(gray_2x1().data({0, 0x80, 1}).end().bytes));
  }
}

TEST(PngReader, OwnInflateStepsInWhereZlibRefuses) {
  Bytes stream = packed(kGray2);
  stream.back() ^= 1;  // the checksum of the data, which the own inflate leaves alone
  for (ZlibLoader loader : png_test::kLoaders) {
    const WithZlib zlib(loader);
    EXPECT_EQ(first_pixel(gray_2x1().chunk("IDAT", stream).end().bytes), 0xFFFFFFFFu);
  }
}

TEST(PngReader, UnknownFilterCountsAsNone) {
  EXPECT_EQ(first_pixel(gray_2x1().data({7, 0x80}).end().bytes), 0xFFFFFFFFu);
}

TEST(PngReader, MissingPaletteIsBlackAndWhiteOrBlack) {
  EXPECT_EQ(first_pixel(File().header(2, 1, 1, 3).data({0, 0x80}).end().bytes), 0xFFFFFFFFu);
  EXPECT_EQ(first_pixel(File().header(2, 1, 2, 3).data({0, 0xC0}).end().bytes), 0xFF000000u);
}

TEST(PngReader, IndexBehindThePaletteIsBlack) {
  const Bytes file = File()
                         .header(2, 1, 8, 3)
                         .chunk("PLTE", {10, 20, 30})
                         .chunk("tRNS", {128})
                         .data({0, 0, 1})
                         .end()
                         .bytes;
  c32bppDIB image;
  ASSERT_TRUE(cPNGparser::LoadStream(file, image));
  EXPECT_EQ(at(image, 0, 0), 0x80050A0Fu);
  EXPECT_EQ(at(image, 1, 0), 0xFF000000u);
  // The hint is by the presence of the chunk, not by its values.
  EXPECT_EQ(image.Alpha(), AlphaType::Simple);
}

TEST(PngReader, ColourKeyOf8BitUsesLowBytesAndOf16BitHighBytes) {
  const Bytes key = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66};
  auto pixel = [&](uint8_t depth, Bytes samples) {
    samples.insert(samples.begin(), 0);
    return first_pixel(File().header(1, 1, depth, 2).chunk("tRNS", key).data(samples).end().bytes);
  };
  EXPECT_EQ(pixel(8, {0x22, 0x44, 0x66}), 0u);
  EXPECT_EQ(pixel(8, {0x11, 0x33, 0x55}), 0xFF113355u);
  EXPECT_EQ(pixel(16, {0x11, 0x22, 0x33, 0x44, 0x55, 0x66}), 0u);
  EXPECT_EQ(pixel(16, {0x11, 0, 0x33, 0, 0x55, 0}), 0u);
  EXPECT_EQ(pixel(16, {0x22, 0x22, 0x44, 0x44, 0x66, 0x66}), 0xFF224466u);
}

TEST(PngReader, GrayKeyIsMaskedToTheDepth) {
  auto pixel = [](uint8_t depth, const Bytes& key, Bytes row) {
    row.insert(row.begin(), 0);
    return first_pixel(File().header(1, 1, depth, 0).chunk("tRNS", key).data(row).end().bytes);
  };
  EXPECT_EQ(pixel(2, {0, 0x0E}, {0x80}), 0u);
  EXPECT_EQ(pixel(2, {0, 0x0E}, {0x40}), 0xFF555555u);
  EXPECT_EQ(pixel(16, {0x12, 0x34}, {0x12, 0x34}), 0u);
  EXPECT_EQ(pixel(16, {0x12, 0x34}, {0x12, 0x35}), 0xFF121212u);
  EXPECT_EQ(pixel(8, {0x34}, {0x34}), 0xFF343434u);  // too short a chunk is no key
}

TEST(PngReader, CombinationsOutsideTheStandardStillGiveAnImage) {
  EXPECT_EQ(first_pixel(File().header(1, 1, 4, 2).data({0, 0xF0, 0x80}).end().bytes), 0xFFFF0088u);
  EXPECT_EQ(first_pixel(File().header(1, 1, 4, 6).data({0, 0xF0, 0x8F}).end().bytes), 0xFFFF0088u);
  EXPECT_EQ(first_pixel(File().header(1, 1, 1, 4).data({0, 0xC0}).end().bytes), 0xFFFFFFFFu);
  EXPECT_EQ(
      first_pixel(
          File().header(1, 1, 16, 3).chunk("PLTE", {0, 0, 0, 1, 2, 3}).data({0, 1, 0}).end().bytes),
      0xFF010203u);
}

TEST(PngReader, PlatformDecoderComesFirstWhenTurnedOn) {
  int calls = 0;
  bool answer = true;
  set_platform_png_decoder([&](std::span<const uint8_t>, c32bppDIB& out) {
    ++calls;
    return out.InitializeDIB(5, 5) && answer;
  });
  c32bppDIB image;
  const Bytes file = gray_2x1().data(kGray2).end().bytes;
  EXPECT_TRUE(cPNGparser::LoadStream(file, image));
  EXPECT_EQ(image.Width(), 5);
  answer = false;
  EXPECT_TRUE(cPNGparser::LoadStream(file, image));
  EXPECT_EQ(image.Width(), 2);
  EXPECT_FALSE(cPNGparser::LoadStream(Bytes(100), image));
  EXPECT_EQ(calls, 2);
  set_platform_png_decoder({});
}

// A small file of each kind, cut at every byte and with every early bit flipped.
TEST(PngReader, DamagedFilesGiveAnAnswerAndNothingElse) {
  std::mt19937 random(4);
  for (uint8_t interlace : {0, 1}) {
    for (auto [color, depth] : {std::pair{0, 1}, {0, 16}, {2, 8}, {3, 4}, {4, 8}, {6, 16}}) {
      Bytes rows(9 * 9 * 8 + 60);
      for (uint8_t& b : rows) b = static_cast<uint8_t>(random() % 4);
      File file;
      file.header(9, 9, static_cast<uint8_t>(depth), static_cast<uint8_t>(color), interlace);
      if (color == 3) file.chunk("PLTE", Bytes(30, 7)).chunk("tRNS", {0, 1, 2});
      const Bytes good = file.data(rows).end().bytes;
      ASSERT_TRUE(loads(good));
      const WithZlib zlib(png_test::kLoaders[random() % 3]);
      for (size_t size = 0; size < good.size(); ++size) {
        c32bppDIB image;
        const Bytes cut(good.begin(), good.begin() + static_cast<ptrdiff_t>(size));
        EXPECT_EQ(cPNGparser::LoadStream(cut, image), size >= 8);
        // Only the end chunk is dispensable.
        EXPECT_EQ(image.has_image(), size == good.size() - 12) << size;
      }
      for (size_t bit = 0; bit < std::min<size_t>(200, good.size()) * 8; ++bit) {
        Bytes bad = good;
        bad[bit / 8] ^= static_cast<uint8_t>(1u << bit % 8);
        c32bppDIB image;
        EXPECT_EQ(cPNGparser::LoadStream(bad, image), bit >= 64);
      }
    }
  }
}

}  // namespace
}  // namespace kestrelon
