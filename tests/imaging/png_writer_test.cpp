#include "imaging/png_writer.h"

#include <gtest/gtest.h>

#include "imaging/inflate.h"
#include "imaging/png_parser.h"
#include "imaging/png_texts.h"
#include "png_test_tools.h"

namespace kestrelon {
namespace {

using png_test::Bytes;
using png_test::WithZlib;

struct Chunk {
  std::string type;
  Bytes data;
};

std::vector<Chunk> chunks_of(const Bytes& file) {
  std::vector<Chunk> all;
  for (size_t i = 8; i + 12 <= file.size();) {
    const uint32_t length = png::read_be32(&file[i]);
    const uint8_t* type = &file[i + 4];
    EXPECT_EQ(crc32(0, type, length + 4), png::read_be32(type + 4 + length));
    all.push_back({std::string(type, type + 4), Bytes(type + 4, type + 4 + length)});
    i += size_t{length} + 12;
  }
  return all;
}

std::string types_of(const Bytes& file) {
  std::string types;
  for (const Chunk& chunk : chunks_of(file)) types += (types.empty() ? "" : " ") + chunk.type;
  return types;
}

Bytes data_of(const Bytes& file, const std::string& type) {
  for (const Chunk& chunk : chunks_of(file)) {
    if (chunk.type == type) return chunk.data;
  }
  return {};
}

void set(c32bppDIB& image, int32_t x, int32_t y, uint32_t argb) {
  std::memcpy(image.row(y) + x * 4, &argb, 4);
}

// `colors` distinct opaque pixels in a picture of 20 by 20.
void paint(c32bppDIB& image, uint32_t colors) {
  ASSERT_TRUE(image.InitializeDIB(20, 20));
  for (uint32_t i = 0; i < 400; ++i) {
    const uint32_t value = 0xFF000000u + i % colors * 0x000301;
    set(image, static_cast<int32_t>(i % 20), static_cast<int32_t>(i / 20), value);
  }
}

Bytes written(const c32bppDIB& image, const PngProperties& properties = {}) {
  const WithZlib zlib;
  Bytes file;
  EXPECT_TRUE(cPNGwriter::Save(image, properties, file));
  return file;
}

int color_type(const Bytes& file) {
  return file.size() > 25 ? file[25] : -1;
}

std::string text(const Bytes& data) {
  return std::string(data.begin(), data.end());
}

TEST(PngWriter, ColourTypeFollowsThePixels) {
  c32bppDIB image;
  paint(image, 256);
  EXPECT_EQ(types_of(written(image)), "IHDR PLTE IDAT IEND");
  paint(image, 257);
  EXPECT_EQ(types_of(written(image)), "IHDR IDAT IEND");
  EXPECT_EQ(color_type(written(image)), 2);
  image.set_alpha(AlphaType::Complex);  // a hint, not the pixels
  EXPECT_EQ(color_type(written(image)), 2);
  set(image, 19, 19, 0x80000000u);
  EXPECT_EQ(color_type(written(image)), 6);
  set(image, 19, 19, 0);
  const Bytes keyed = written(image);
  EXPECT_EQ(color_type(keyed), 2);
  EXPECT_EQ(types_of(keyed), "IHDR tRNS IDAT IEND");
}

TEST(PngWriter, KeyIsAByteThatSomeChannelLacks) {
  // Blue and green use every value, red all but 77.
  c32bppDIB image;
  ASSERT_TRUE(image.InitializeDIB(32, 32));
  for (uint32_t i = 1; i < 1024; ++i) {
    const uint32_t red = i % 256 == 77 ? 78 : i % 256;
    const uint32_t value = 0xFF000000u | red << 16 | (i * 7 % 256) << 8 | ((i / 4 + i) % 256);
    set(image, static_cast<int32_t>(i % 32), static_cast<int32_t>(i / 32), value);
  }
  const Bytes file = written(image);
  EXPECT_EQ(data_of(file, "tRNS"), (Bytes{0, 77, 0, 77, 0, 77}));
  c32bppDIB back;
  ASSERT_TRUE(cPNGparser::LoadStream(file, back));
  ASSERT_TRUE(back.has_image());
  EXPECT_EQ(std::memcmp(back.bits(), image.bits(), 32 * 32 * 4), 0);
  // Nothing free: alpha it is.
  set(image, 0, 1, 0xFF4D0000u);
  EXPECT_EQ(color_type(written(image)), 6);
}

TEST(PngWriter, PaletteRisesAndItsAlphasEndWithTheLastPartialOne) {
  c32bppDIB image;
  ASSERT_TRUE(image.InitializeDIB(4, 1));
  set(image, 0, 0, 0xFFFFFFFFu);
  set(image, 1, 0, 0x80402010u);
  set(image, 2, 0, 0xFF000001u);
  const Bytes file = written(image);
  EXPECT_EQ(data_of(file, "PLTE"), (Bytes{0, 0, 0, 127, 63, 31, 0, 0, 1, 255, 255, 255}));
  EXPECT_EQ(data_of(file, "tRNS"), (Bytes{0, 0x80}));
  Bytes rows(5);
  EXPECT_TRUE(inflate_exact(data_of(file, "IDAT"), rows));
  EXPECT_EQ(rows, (Bytes{0, 3, 1, 2, 0}));
}

TEST(PngWriter, DefaultFilterIsPaethForTrueColour) {
  c32bppDIB image;
  paint(image, 300);
  Bytes rows(20 * 61);
  ASSERT_TRUE(inflate_exact(data_of(written(image), "IDAT"), rows));
  for (size_t y = 0; y < 20; ++y) EXPECT_EQ(rows[y * 61], 4);
}

TEST(PngWriter, BackgroundTakesTheFormOfTheType) {
  PngProperties properties;
  properties.set(PngProperty::DefaultBkgColor, 0x0000FF10);  // red 16, green 255
  c32bppDIB image;
  paint(image, 300);
  EXPECT_EQ(types_of(written(image, properties)), "IHDR bKGD IDAT IEND");
  EXPECT_EQ(data_of(written(image, properties), "bKGD"), (Bytes{0, 16, 0, 255, 0, 0}));
  paint(image, 2);  // black and 0x000301
  set(image, 0, 0, 0);
  const Bytes file = written(image, properties);
  EXPECT_EQ(types_of(file), "IHDR PLTE bKGD tRNS IDAT IEND");
  EXPECT_EQ(data_of(file, "PLTE"), (Bytes{0, 0, 0, 0, 0, 0, 0, 3, 1, 16, 255, 0}));
  EXPECT_EQ(data_of(file, "bKGD"), Bytes{3});
  paint(image, 256);  // no room: the nearest, not the first
  properties.set(PngProperty::DefaultBkgColor, 0x00030600);
  EXPECT_EQ(data_of(written(image, properties), "bKGD"), Bytes{2});
}

TEST(PngWriter, TextsStandInTheirPlacesAndForms) {
  PngProperties properties;
  properties.set(PngProperty::Miscellaneous, std::wstring(1025, L'x'), L"  Long   one ");
  properties.set(PngProperty::Miscellaneous, std::wstring(1024, L'y'), L"Short");
  properties.set(PngProperty::Comment, L"a\r\nb\rc\nd\r");
  properties.set(PngProperty::Description, L"");
  properties.set(PngProperty::CreationTime, L"S\u00E3o \u20AC");
  properties.set(PngProperty::Author, L"B");
  properties.set(PngProperty::Title, L"A");
  properties.set(PngProperty::DateTimeModified, 2.75);
  c32bppDIB image;
  paint(image, 300);
  const Bytes file = written(image, properties);
  EXPECT_EQ(types_of(file), "IHDR tEXt tEXt IDAT tIME tEXt tEXt zTXt tEXt IEND");
  const std::vector<Chunk> chunks = chunks_of(file);
  EXPECT_EQ(text(chunks[1].data), std::string("Title\0A", 7));
  EXPECT_EQ(text(chunks[2].data), std::string("Author\0B", 8));
  EXPECT_EQ(chunks[4].data, (Bytes{0x07, 0x6C, 1, 1, 18, 0, 0}));
  EXPECT_EQ(text(chunks[5].data), std::string("Creation Time\0S\xE3o ?", 19));
  EXPECT_EQ(text(chunks[6].data), std::string("Comment\0a\nb\nc\nd\n", 16));
  const Bytes& packed = chunks[7].data;
  ASSERT_EQ(text(packed).substr(0, 10), std::string("Long one\0\0", 10));
  EXPECT_EQ(inflate_all(std::span(packed).subspan(10), 5000), Bytes(1025, 'x'));
  EXPECT_EQ(text(chunks[8].data), std::string("Short\0", 6) + std::string(1024, 'y'));
}

TEST(PngWriter, DatesRoundToSecondsAndKeepTheirDay) {
  using Time = std::array<uint8_t, 7>;
  EXPECT_EQ(png::time_bytes(0), (Time{0x07, 0x6B, 12, 30, 0, 0, 0}));
  EXPECT_EQ(png::time_bytes(36585.999999), (Time{0x07, 0xD0, 3, 1, 0, 0, 0}));  // 29 February
  EXPECT_EQ(png::time_bytes(-1.25), (Time{0x07, 0x6B, 12, 29, 6, 0, 0}));
  EXPECT_EQ(png::time_bytes(1e300), (Time{0x27, 0x0F, 12, 31, 23, 59, 59}));
  EXPECT_EQ(png::time_bytes(-1e300), (Time{0, 1, 1, 1, 0, 0, 0}));
}

TEST(PngWriter, DeclinesWithoutPixelsOrZlibAndStopsWithItsOutput) {
  c32bppDIB image;
  Bytes file(3);
  {
    const WithZlib zlib;
    EXPECT_FALSE(cPNGwriter::Save(image, {}, file));
    EXPECT_TRUE(file.empty());
  }
  paint(image, 3);
  EXPECT_FALSE(cPNGwriter::Save(image, {}, file));
  static ZlibApi partial = *png_test::native_zlib();
  partial.crc32 = nullptr;
  const WithZlib zlib([]() -> const ZlibApi* { return &partial; });
  EXPECT_FALSE(cPNGwriter::Save(image, {}, file));
  partial = *png_test::native_zlib();
  partial.compress2 = [](uint8_t*, unsigned long*, const uint8_t*, unsigned long, int) {
    return -5;
  };
  EXPECT_FALSE(cPNGwriter::Save(image, {}, file));
  partial = *png_test::native_zlib();
  for (int allowed = 0;; ++allowed) {
    int left = allowed;
    const auto limited = [&](std::span<const uint8_t>) { return left-- > 0; };
    if (cPNGwriter::Save(image, {}, limited)) break;
    EXPECT_EQ(left, -1);  // nothing is offered after a refusal
    ASSERT_LT(allowed, 20);
  }
}

}  // namespace
}  // namespace kestrelon
