#include "imaging/ico_parser.h"

#include <gtest/gtest.h>

#include "tests/imaging/hostile.h"
#include "tests/imaging/pictures.h"

namespace kestrelon::test {
namespace {

using Pixels = std::vector<uint32_t>;

struct Entry {
  uint32_t width, height;
  uint32_t directory_bits;
  Bytes picture;
};

Bytes make_ico(const std::vector<Entry>& entries, uint32_t kind = 1) {
  Bytes out = wire({{0, 2}, {kind, 2}, {entries.size(), 2}});
  size_t offset = 6 + 16 * entries.size();
  for (const Entry& e : entries) {
    out = out + wire({{e.width & 255, 1},
                      {e.height & 255, 1},
                      {0, 2},
                      {7, 2},
                      {e.directory_bits, 2},
                      {e.picture.size(), 4},
                      {offset, 4}});
    offset += e.picture.size();
  }
  for (const Entry& e : entries) out = out + e.picture;
  return out;
}

Bytes header(uint32_t width, uint32_t height, uint32_t bits) {
  return wire({{40, 4}, {width, 4}, {2 * height, 4}, {1, 2}, {bits, 2}, {0, 24}});
}

/// A square icon of one colour; `mask` is the byte that fills the AND mask.
Entry solid(uint32_t size, uint32_t bits, uint32_t argb, uint8_t mask = 0) {
  Bytes picture = header(size, size, bits);
  if (bits < 16) {
    Bytes palette = wire({{argb & 0xFFFFFF, 4}});
    palette.resize(size_t{4} << bits);
    picture = picture + palette + Bytes((bits * size + 31) / 32 * 4 * size);
  } else {
    const uint32_t stride = (bits * size + 31) / 32 * 4;
    for (uint32_t y = 0; y < size; ++y) {
      Bytes row;
      for (uint32_t x = 0; x < size; ++x) row = row + wire({{argb, static_cast<int>(bits / 8)}});
      row.resize(stride);
      picture = picture + row;
    }
  }
  return {size, size, bits, picture + Bytes((size + 31) / 32 * 4 * size, mask)};
}

Bytes png_head(uint32_t width, uint32_t height, uint8_t depth, uint8_t colour_type) {
  Bytes png = {0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R'};
  for (const uint32_t size : {width, height}) {
    for (int shift = 24; shift >= 0; shift -= 8) png.push_back(static_cast<uint8_t>(size >> shift));
  }
  return png + Bytes{depth, colour_type, 0, 0, 0};
}

bool fake_png(std::span<const uint8_t> data, c32bppDIB& out) {
  return data.size() >= 26 && out.InitializeDIB(3, static_cast<int32_t>(data.size()));
}

bool read_default(std::span<const uint8_t> data, c32bppDIB& out) {
  return cICOparser::LoadStream(data, {.read_png = fake_png}, out);
}

int32_t chosen(std::initializer_list<std::pair<int, int>> size_and_depth, int wanted, int depth) {
  std::vector<IconEntry> entries;
  for (const auto& [size, bits] : size_and_depth) {
    IconEntry entry;
    entry.Width = entry.Height = size;
    entry.bitDepth = bits;
    entries.push_back(entry);
  }
  return choose_icon_entry(entries, wanted, wanted, depth);
}

TEST(IconChoice, TakesTheNearestLargerElseTheNearestSmaller) {
  EXPECT_EQ(chosen({{16, 32}, {32, 32}, {48, 32}}, 32, 32), 1);
  EXPECT_EQ(chosen({{16, 32}, {48, 32}}, 32, 32), 1);
  EXPECT_EQ(chosen({{256, 32}, {64, 32}, {48, 32}}, 40, 32), 2);
  EXPECT_EQ(chosen({{16, 32}, {24, 32}, {8, 32}}, 64, 32), 1);
  // Depth counts like a pixel of size.
  EXPECT_EQ(chosen({{32, 4}, {32, 8}, {32, 24}}, 32, 8), 1);
  EXPECT_EQ(chosen({{32, 32}, {32, 4}}, 32, 4), 1);
  // Among the smaller ones colours decide a tie.
  EXPECT_EQ(chosen({{16, 4}, {16, 32}}, 32, 32), 1);
}

TEST(IconChoice, NeverTakesABrokenEntry) {
  EXPECT_EQ(chosen({{32, 0}}, 32, 32), -1);
  EXPECT_EQ(chosen({{32, 0}, {32, 0}}, 32, 32), -1);
  EXPECT_EQ(chosen({{32, 0}, {16, 32}}, 32, 32), 1);
  EXPECT_EQ(chosen({{32, 0}, {16, 32}, {24, 8}}, 1 << 30, 32), 1);  // too far off for any score
  EXPECT_EQ(chosen({{32, 33}, {16, 32}}, 32, 32), 1);
  EXPECT_EQ(chosen({}, 32, 32), -1);
}

TEST(IcoReader, TakesWidthAndDepthFromThePictures) {
  std::vector<Entry> entries = {solid(16, 8, 0x112233), {256, 256, 0, png_head(256, 256, 8, 6)}};
  entries[0].directory_bits = 24;  // the picture's own header knows better
  const auto directory = icon_entries(make_ico(entries));
  ASSERT_TRUE(directory);
  ASSERT_EQ(directory->entries.size(), 2u);
  const IconEntry& plain = directory->entries[0];
  EXPECT_EQ(plain.bitDepth, 8);
  EXPECT_EQ(plain.ColorCount(), 256);
  EXPECT_EQ(plain.ColorByteOffset(), 6u + 32 + 40 + 1024);
  const IconEntry& png = directory->entries[1];
  EXPECT_TRUE(png.IsIconPNG);
  EXPECT_EQ(png.Width, 256);
  EXPECT_EQ(png.bitDepth, 32);
}

TEST(IcoReader, TellsTheDepthOfPngPictures) {
  const auto depth = [](const Bytes& picture, uint32_t directory_bits, uint32_t kind) {
    const auto directory = icon_entries(make_ico({{16, 16, directory_bits, picture}}, kind));
    return directory ? directory->entries[0].bitDepth : -1;
  };
  EXPECT_EQ(depth(png_head(16, 16, 8, 6), 0, 1), 32);
  EXPECT_EQ(depth(png_head(16, 16, 8, 4), 0, 1), 32);
  EXPECT_EQ(depth(png_head(16, 16, 16, 0), 0, 1), 32);
  EXPECT_EQ(depth(png_head(16, 16, 8, 2), 0, 1), 24);
  EXPECT_EQ(depth(png_head(16, 16, 4, 3), 0, 1), 4);
  EXPECT_EQ(depth(png_head(16, 16, 4, 3), 8, 1), 8);
  EXPECT_EQ(depth(png_head(16, 16, 8, 2), 11, 2), 24);  // a hot spot is no depth
  EXPECT_EQ(depth(png_head(257, 16, 8, 6), 32, 1), 0);
  EXPECT_EQ(depth(png_head(16, 0, 8, 6), 32, 1), 0);
  Bytes damaged = png_head(16, 16, 8, 6);
  damaged[1] = 'p';
  EXPECT_EQ(depth(damaged, 32, 1), 0);
}

TEST(IcoReader, AppliesTheMaskBelow32Bits) {
  for (const uint32_t bits : {1u, 4u, 8u, 24u}) {
    c32bppDIB image;
    // 0x5A from the left: clear, masked, clear, masked, masked, clear, masked, clear.
    ASSERT_TRUE(read_default(make_ico({solid(8, bits, 0x112233, 0x5A)}), image));
    EXPECT_EQ(image.ImageType(), ImageFormat::Icon);
    EXPECT_EQ(image.Alpha(), AlphaType::Simple);
    constexpr uint32_t c = 0xFF112233;
    const Pixels all = pixels(image);
    ASSERT_EQ(all.size(), 64u);
    EXPECT_EQ(Pixels(all.begin(), all.begin() + 8), (Pixels{c, 0, c, 0, 0, c, 0, c})) << bits;
  }
  c32bppDIB image;
  ASSERT_TRUE(read_default(make_ico({solid(8, 24, 0x112233)}, 2), image));
  EXPECT_EQ(image.ImageType(), ImageFormat::Cursor);
  EXPECT_EQ(image.Alpha(), AlphaType::None);
}

TEST(IcoReader, RunsRowsFromTheBottom) {
  Entry entry = {1, 2, 24, header(1, 2, 24) + wire({{0x01, 4}, {0x02, 4}, {0x80, 4}, {0, 4}})};
  c32bppDIB image;
  ASSERT_TRUE(read_default(make_ico({entry}), image));
  EXPECT_EQ(pixels(image), (Pixels{0xFF000002, 0}));
}

TEST(IcoReader, TakesTheAlphaOf32BitsAndNoMask) {
  c32bppDIB image;
  ASSERT_TRUE(read_default(make_ico({solid(4, 32, 0x80FF4020, 0xFF)}), image));
  EXPECT_EQ(image.ImageType(), ImageFormat::IconArgb);
  EXPECT_EQ(image.Alpha(), AlphaType::Complex);
  EXPECT_EQ(pixel(image, 0, 0), 0x80802010u);
  ASSERT_TRUE(read_default(make_ico({solid(4, 32, 0x00FF4020)}, 2), image));
  EXPECT_EQ(image.ImageType(), ImageFormat::CursorArgb);
  EXPECT_EQ(pixels(image), Pixels(16, 0));
}

TEST(IcoReader, PicksTheWantedPicture) {
  const Bytes file = make_ico({solid(16, 32, 0xFF000010),
                               solid(48, 32, 0xFF000030),
                               {64, 64, 32, png_head(64, 64, 8, 6)},
                               solid(32, 8, 0x20)});
  const auto read = [&](IcoOptions options, c32bppDIB& image) {
    options.read_png = fake_png;
    EXPECT_TRUE(cICOparser::LoadStream(file, options, image));
  };
  c32bppDIB image;
  read({.cx = 16, .cy = 16}, image);
  EXPECT_EQ(pixel(image, 0, 0), 0xFF000010u);
  read({}, image);  // 32 by 32 unless wanted otherwise, at the cost of 24 bits of depth
  EXPECT_EQ(image.Width(), 32);
  read({.cx = 40, .cy = 40}, image);
  EXPECT_EQ(image.Width(), 48);
  read({.cx = 60, .cy = 60}, image);
  EXPECT_EQ(image.ImageType(), ImageFormat::PngIcon);
  EXPECT_EQ(image.Height(), 29);  // the reader got the bytes of its own picture only
}

TEST(IcoReader, AnswersTrueForAnIconThatItCannotDecode) {
  c32bppDIB image;
  image.InitializeDIB(5, 5);
  EXPECT_TRUE(cICOparser::LoadStream(make_ico({{64, 64, 32, png_head(64, 64, 8, 6)}}), {}, image));
  EXPECT_FALSE(image.has_image());
  const auto recognises_only = [](std::span<const uint8_t>, c32bppDIB&) { return true; };
  EXPECT_TRUE(cICOparser::LoadStream(make_ico({{64, 64, 32, png_head(64, 64, 8, 6)}}),
                                     {.read_png = recognises_only}, image));
  EXPECT_FALSE(image.has_image());
  EXPECT_EQ(image.ImageType(), ImageFormat::Error);
  EXPECT_TRUE(read_default(make_ico({{8, 8, 24, header(8, 8, 24)}}), image));
  EXPECT_FALSE(image.has_image());
  EXPECT_TRUE(read_default(make_ico({{8, 8, 3, header(8, 8, 3) + Bytes(600)}}), image));
  EXPECT_FALSE(image.has_image());
}

TEST(IcoReader, DeclinesWhatIsNoIcon) {
  const Bytes good = make_ico({solid(4, 24, 1)});
  const auto with = [&](size_t at, uint8_t value) {
    Bytes file = good;
    file[at] = value;
    c32bppDIB image;
    return read_default(file, image);
  };
  EXPECT_TRUE(with(0, 0));
  EXPECT_FALSE(with(0, 1));       // reserved word
  EXPECT_FALSE(with(2, 3));       // kind
  EXPECT_FALSE(with(4, 0));       // count
  EXPECT_FALSE(with(4, 200));     // directory passes the end
  EXPECT_FALSE(with(6 + 10, 1));  // pictures pass the end
  EXPECT_FALSE(with(6 + 14, 1));  // offset passes the end
  Bytes no_depth = good;
  no_depth[6 + 6] = no_depth[22 + 14] = 0;
  c32bppDIB image;
  EXPECT_FALSE(read_default(no_depth, image));
}

TEST(IcoReader, SurvivesHostileBytes) {
  const Bytes files[] = {make_ico({solid(8, 4, 0x112233, 0x5A), solid(4, 32, 0x80FF4020)}),
                         make_ico({solid(8, 1, 0xFFFFFF), {16, 16, 0, png_head(16, 16, 8, 6)}}, 2)};
  for (const Bytes& file : files) {
    // True without an image is a sound answer here, so only a crash or an overrun can fail this.
    const Reader read = [](std::span<const uint8_t> data, c32bppDIB& out) {
      return read_default(data, out);
    };
    expect_survives_hostile_bytes(read, file);
  }
}

#if !defined(_WIN32)
TEST(IcoReader, AgreesWithImageMagickOnItsFiles) {
  if (!Workshop::has("convert")) GTEST_SKIP() << "needs ImageMagick";
  const Workshop shop;
  ASSERT_TRUE(shop.run("convert -size 24x24 -seed 7 plasma:red-blue source.png"));
  ASSERT_TRUE(
      shop.run("convert -size 24x24 radial-gradient:white-none -channel A "
               "-threshold 50% mask.png"));
  const char* const commands[] = {
      "convert source.png mask.png -compose DstIn -composite x.ico",
      "convert source.png -colors 200 -type palette x.ico",
      "convert source.png -colors 12 +dither -type palette x.ico",
      "convert source.png -monochrome x.ico",
  };
  for (const char* const command : commands) {
    ASSERT_TRUE(shop.run(command)) << command;
    c32bppDIB image;
    ASSERT_TRUE(cICOparser::LoadStream(shop.read("x.ico"), {}, image)) << command;
    Pixels expected = shop.reference("x.ico");
    for (uint32_t& p : expected) p = p >> 24 == 0 ? 0 : p;
    EXPECT_EQ(pixels(image), expected) << command;
  }
}
#endif

}  // namespace
}  // namespace kestrelon::test
