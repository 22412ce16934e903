// Every kind of PNG, written and judged by libpng.
#include <gtest/gtest.h>

#include "imaging/png_parser.h"
#include "imaging/png_writer.h"
#include "imaging/premultiply.h"
#include "png_test_tools.h"

#ifdef KESTRELON_HAS_LIBPNG
#include <png.h>

namespace kestrelon {
namespace {

using png_test::Bytes;

struct Kind {
  int color;
  int depth;
  bool interlaced;
  bool transparency;
};

std::vector<Kind> all_kinds() {
  std::vector<Kind> kinds;
  auto add = [&](int color, std::initializer_list<int> depths) {
    for (int depth : depths) {
      for (int flags = 0; flags < (color & 4 ? 2 : 4); ++flags) {
        kinds.push_back({color, depth, (flags & 1) != 0, (flags & 2) != 0});
      }
    }
  };
  add(0, {1, 2, 4, 8, 16});
  add(2, {8, 16});
  add(3, {1, 2, 4, 8});
  add(4, {8, 16});
  add(6, {8, 16});
  return kinds;
}

// Few sample values, so that keys and palette entries are met; 16-bit samples repeat their byte, so
// that a key in full and by its high bytes is the same.
Bytes random_samples(std::mt19937& random, const Kind& kind, size_t row_bytes, uint32_t height) {
  Bytes rows(row_bytes * height);
  for (size_t i = 0; i < rows.size(); ++i) {
    rows[i] = kind.depth == 16 && i % 2 ? rows[i - 1] : static_cast<uint8_t>(random());
    if (kind.color < 4 && kind.depth >= 8 && !(kind.depth == 16 && i % 2)) rows[i] %= 3;
  }
  return rows;
}

void append(png_structp png, png_bytep bytes, size_t size) {
  Bytes& out = *static_cast<Bytes*>(png_get_io_ptr(png));
  out.insert(out.end(), bytes, bytes + size);
}

Bytes encode(std::mt19937& random, const Kind& kind, uint32_t width, uint32_t height) {
  Bytes out;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &out, append, nullptr);
  png_set_IHDR(png, info, width, height, kind.depth, kind.color, kind.interlaced, 0, 0);
  png_color palette[256];
  png_byte alphas[256];
  for (int i = 0; i < 256; ++i) {
    const uint32_t r = random();
    palette[i] = {static_cast<png_byte>(r), static_cast<png_byte>(r >> 8),
                  static_cast<png_byte>(r >> 16)};
    alphas[i] = static_cast<png_byte>(r >> 24);
  }
  if (kind.color == 3) png_set_PLTE(png, info, palette, 1 << kind.depth);
  if (kind.transparency) {
    png_color_16 key{};
    const png_uint_16 v = kind.depth == 16 ? 0x0101 : 1;
    key.red = key.green = key.blue = key.gray = v;
    png_set_tRNS(png, info, alphas, kind.color == 3 ? (1 << kind.depth) / 2 : 0, &key);
  }
  png_set_filter(png, 0, kind.depth < 8 ? PNG_FILTER_NONE : PNG_ALL_FILTERS);
  png_set_compression_buffer_size(png, 100);
  png_write_info(png, info);
  const size_t row_bytes = png_get_rowbytes(png, info);
  Bytes samples = random_samples(random, kind, row_bytes, height);
  std::vector<png_bytep> rows;
  for (uint32_t y = 0; y < height; ++y) rows.push_back(&samples[y * row_bytes]);
  png_write_image(png, rows.data());
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return out;
}

// Straight blue, green, red, alpha from the top; 16-bit samples by their high bytes.
Bytes decode(const Bytes& file, uint32_t& width, uint32_t& height) {
  const uint8_t* cursor = file.data();
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_read_fn(png, &cursor, [](png_structp p, png_bytep out, size_t size) {
    auto* at = static_cast<const uint8_t**>(png_get_io_ptr(p));
    std::memcpy(out, *at, size);
    *at += size;
  });
  png_read_info(png, info);
  png_set_expand(png);
  png_set_strip_16(png);
  png_set_gray_to_rgb(png);
  png_set_bgr(png);
  png_set_filler(png, 255, PNG_FILLER_AFTER);
  png_set_interlace_handling(png);
  png_read_update_info(png, info);
  width = png_get_image_width(png, info);
  height = png_get_image_height(png, info);
  const size_t stride = png_get_rowbytes(png, info);
  EXPECT_EQ(stride, width * 4);
  Bytes pixels(stride * height);
  std::vector<png_bytep> rows;
  for (uint32_t y = 0; y < height; ++y) rows.push_back(&pixels[y * stride]);
  png_read_image(png, rows.data());
  png_destroy_read_struct(&png, &info, nullptr);
  return pixels;
}

void expect_same(const c32bppDIB& image, const Bytes& file, const std::string& what) {
  uint32_t width = 0, height = 0;
  const Bytes straight = decode(file, width, height);
  ASSERT_EQ(image.Width(), static_cast<int32_t>(width)) << what;
  ASSERT_EQ(image.Height(), static_cast<int32_t>(height)) << what;
  for (uint32_t y = 0; y < height; ++y) {
    Bytes row(straight.begin() + y * width * 4, straight.begin() + (y + 1) * width * 4);
    for (size_t i = 0; i < row.size(); ++i) {
      const uint32_t alpha = straight[y * width * 4 + i / 4 * 4 + 3];
      if (i % 4 != 3) row[i] = static_cast<uint8_t>(row[i] * alpha / 255);
    }
    ASSERT_EQ(std::memcmp(row.data(), image.row(static_cast<int32_t>(y)), row.size()), 0)
        << what << " row " << y;
  }
}

TEST(PngAgainstLibpng, EveryKindAtEverySize) {
  std::mt19937 random(1);
  for (const Kind& kind : all_kinds()) {
    for (uint32_t width = 1; width <= 40; ++width) {
      const uint32_t height = width <= 9 ? 1 + random() % 9 : 1 + random() % 40;
      const Bytes file = encode(random, kind, width, height);
      const std::string what = testing::PrintToString(std::vector<uint32_t>{
          static_cast<uint32_t>(kind.color), static_cast<uint32_t>(kind.depth), kind.interlaced,
          kind.transparency, width, height});
      for (ZlibLoader loader : png_test::kLoaders) {
        const png_test::WithZlib zlib(loader);
        c32bppDIB image;
        ASSERT_TRUE(cPNGparser::LoadStream(file, image)) << what;
        ASSERT_TRUE(image.has_image()) << what;
        expect_same(image, file, what);
        const AlphaType expected = kind.color & 4      ? AlphaType::Complex
                                   : kind.transparency ? AlphaType::Simple
                                                       : AlphaType::None;
        EXPECT_EQ(image.Alpha(), expected);
      }
    }
  }
}

// Larger than the decompressor's runs, and rows longer than them.
TEST(PngAgainstLibpng, LargePictures) {
  std::mt19937 random(6);
  for (auto [width, height] : {std::pair{777u, 300u}, {70000u, 3u}, {3u, 70000u}}) {
    for (bool interlaced : {false, true}) {
      for (int color : {2, 6}) {
        const Bytes file = encode(random, {color, 8, interlaced, false}, width, height);
        c32bppDIB image;
        ASSERT_TRUE(cPNGparser::LoadStream(file, image));
        ASSERT_TRUE(image.has_image());
        expect_same(image, file, std::to_string(width));
      }
    }
  }
}

// Whatever type the writer chooses, libpng must see the straight colours of the image.
TEST(PngAgainstLibpng, WrittenFilesHoldTheStraightColours) {
  const png_test::WithZlib zlib;
  std::mt19937 random(3);
  for (int colors : {2, 256, 257, 100000}) {
    for (int alphas : {1, 2, 256}) {
      for (int32_t filter = 0; filter <= 6; ++filter) {
        c32bppDIB image;
        ASSERT_TRUE(image.InitializeDIB(61, 47));
        for (int32_t y = 0; y < 47; ++y) {
          for (int32_t x = 0; x < 61; ++x) {
            std::mt19937 pick(static_cast<uint32_t>(random() % static_cast<uint32_t>(colors)));
            const uint32_t value = pick(), a = pick() >> 8;
            const uint32_t alpha = alphas == 1 ? 255 : alphas == 2 ? (a & 1) * 255 : a & 255;
            uint8_t* p = image.row(y) + x * 4;
            for (int c = 0; c < 3; ++c) {
              p[c] = premultiply_byte((value >> (8 * c) & 255) | 1, alpha);
            }
            p[3] = static_cast<uint8_t>(alpha);
          }
        }
        PngProperties properties;
        properties.set(PngProperty::FilterMethod, filter);
        Bytes file;
        ASSERT_TRUE(cPNGwriter::Save(image, properties, file));
        uint32_t width = 0, height = 0;
        const Bytes straight = decode(file, width, height);
        ASSERT_EQ(width, 61u);
        ASSERT_EQ(height, 47u);
        for (int32_t y = 0; y < 47; ++y) {
          for (size_t i = 0; i < 61 * 4; i += 4) {
            const uint8_t* p = image.row(y) + i;
            const uint8_t* s = &straight[static_cast<size_t>(y) * 61 * 4 + i];
            ASSERT_EQ(s[3], p[3]);
            for (int c = 0; c < 3 && p[3]; ++c) ASSERT_EQ(s[c], p[c] * 255 / p[3]);
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace kestrelon

#else

TEST(PngAgainstLibpng, IsInstalled) {
  GTEST_SKIP() << "libpng is not part of this build";
}

#endif
