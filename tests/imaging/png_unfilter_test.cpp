#include "imaging/png_unfilter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "imaging/png_filter.h"

namespace kestrelon::png {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes random_row(std::mt19937& random, size_t size) {
  Bytes row(size + kRowSlack);
  for (uint8_t& b : row) b = static_cast<uint8_t>(random() % 3 ? random() : 255 * (random() & 1));
  return row;
}

TEST(PngUnfilter, PaethOfAllNeighbours) {
  uint8_t src[16 + kRowSlack] = {}, above[16 + kRowSlack], dst[16 + kRowSlack];
  for (int c = 0; c < 256; ++c) {
    for (int b = 0; b < 256; ++b) {
      std::memset(above, c, 8);
      std::memset(above + 8, b, 8);
      for (int a = 0; a < 256; a += 8) {
        // Next to nothing on the left, the predictor is what stands above.
        for (int i = 0; i < 8; ++i) src[i] = static_cast<uint8_t>(a + i - c);
        unfilter_row(4, dst, src, above, 16, 8);
        for (int i = 0; i < 8; ++i) {
          ASSERT_EQ(dst[i], a + i);
          ASSERT_EQ(dst[8 + i], paeth(a + i, b, c)) << a + i << ' ' << b << ' ' << c;
        }
      }
    }
  }
}

TEST(PngUnfilter, FastRowsEqualPlainRows) {
  std::mt19937 random(2);
  for (size_t step : {1, 2, 3, 4, 6, 8}) {
    for (size_t pixels = 1; pixels < 40; ++pixels) {
      for (uint8_t filter : {0, 1, 2, 3, 4, 5, 255}) {
        const size_t size = pixels * step;
        const Bytes src = random_row(random, size), above = random_row(random, size);
        for (const uint8_t* up : {above.data(), static_cast<const uint8_t*>(nullptr)}) {
          Bytes fast(size + kRowSlack), plain(size + kRowSlack);
          unfilter_row(filter, fast.data(), src.data(), up, size, step);
          unfilter_row_plain(filter, plain.data(), src.data(), up, size, step);
          ASSERT_TRUE(
              std::equal(plain.begin(), plain.begin() + static_cast<ptrdiff_t>(size), fast.begin()))
              << step << ' ' << pixels << ' ' << int{filter} << ' ' << (up != nullptr);
        }
      }
    }
  }
}

TEST(PngFilter, EveryMethodIsUndone) {
  std::mt19937 random(9);
  for (ColorType type : {ColorType::Palette, ColorType::Rgb, ColorType::Rgba}) {
    const size_t step = samples_per_pixel(type);
    for (int32_t method = -1; method <= 7; ++method) {
      for (size_t pixels : {1, 5, 6, 16, 33}) {
        const size_t size = pixels * step;
        RowFilter filter(static_cast<PngFilter>(method), type, size);
        Bytes above(size + kRowSlack);
        for (int y = 0; y < 4; ++y) {
          const Bytes row = random_row(random, size);
          std::memcpy(filter.next_row(), row.data(), size);
          Bytes filtered(size + 1 + kRowSlack), undone(size + kRowSlack);
          filter.filter(filtered.data());
          const int plain_default = type == ColorType::Palette ? 0 : 4;
          if (method != 6) {
            ASSERT_EQ(filtered[0], method >= 1 && method <= 5 ? method - 1 : plain_default);
          }
          unfilter_row_plain(filtered[0], undone.data(), filtered.data() + 1,
                             y ? above.data() : nullptr, size, step);
          ASSERT_TRUE(std::equal(undone.begin(), undone.begin() + static_cast<ptrdiff_t>(size),
                                 row.begin()));
          above = undone;
        }
      }
    }
  }
}

TEST(PngFilter, AdaptiveTakesTheLowestSumAndTheEarlierOfEquals) {
  RowFilter filter(PngFilter::Adaptive, ColorType::Palette, 4);
  uint8_t out[5];
  auto next = [&](std::initializer_list<uint8_t> row) {
    std::copy(row.begin(), row.end(), filter.next_row());
    filter.filter(out);
    return int{out[0]};
  };
  EXPECT_EQ(next({0, 0, 0, 0}), 0);         // every filter scores 0
  EXPECT_EQ(next({9, 9, 9, 9}), 1);         // Sub 9; Paeth the same, later
  EXPECT_EQ(next({9, 9, 9, 9}), 2);         // Up 0
  EXPECT_EQ(next({1, 255, 1, 255}), 0);     // residues count by their distance to 0
  EXPECT_EQ(next({100, 200, 100, 50}), 3);  // above are 1, 255, 1, 255
}

}  // namespace
}  // namespace kestrelon::png
