#include "imaging/row_sampler.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace kestrelon {
namespace {

struct Picture {
  int32_t width, height;
  std::vector<uint8_t> bytes;

  Picture(int32_t w, int32_t h, unsigned seed) : width(w), height(h) {
    std::mt19937 random(seed);
    bytes.resize(static_cast<size_t>(w) * static_cast<size_t>(h) * 4);
    // Few distinct values make whole-number sums frequent, which is where truncation errs.
    for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random() % 5 * 51 + random() % 2);
  }
  ImageView view() const { return {bytes.data(), ptrdiff_t{width} * 4, width, height}; }
  int at(int32_t x, int32_t y, size_t c) const { return view().pixel(x, y)[c]; }
};

// Bilinear as a fraction of whole numbers.
int exact_bilinear(const Picture& p, const ImageRect& area, int64_t x, int64_t y, int32_t dw,
                   int32_t dh, size_t c, bool mirror_x, bool mirror_y) {
  auto source = [&](int64_t i, int64_t j) {
    const int64_t sx = mirror_x ? area.width - 1 - i : i, sy = mirror_y ? area.height - 1 - j : j;
    return p.at(static_cast<int32_t>(area.x + sx), static_cast<int32_t>(area.y + sy), c);
  };
  const int64_t ix = x * area.width / dw, iy = y * area.height / dh;
  int64_t fx = x * area.width % dw, fy = y * area.height % dh;
  if (ix == area.width - 1) fx = 0;
  if (iy == area.height - 1) fy = 0;
  const int64_t jx = fx == 0 ? ix : ix + 1, jy = fy == 0 ? iy : iy + 1;
  const int64_t sum = (dh - fy) * ((dw - fx) * source(ix, iy) + fx * source(jx, iy)) +
                      fy * ((dw - fx) * source(ix, jy) + fx * source(jx, jy));
  return static_cast<int>(sum / (int64_t{dw} * dh));
}

struct Case {
  int32_t dw, dh;
};

class RowSamplerTest : public ::testing::TestWithParam<Case> {};

// Up, down, nice and ugly ratios: the last ones leave the range where single precision is exact.
INSTANTIATE_TEST_SUITE_P(Sizes, RowSamplerTest,
                         ::testing::Values(Case{1, 1}, Case{31, 17}, Case{30, 18}, Case{93, 51},
                                           Case{62, 17}, Case{31, 34}, Case{7, 5}, Case{100, 1},
                                           Case{64, 64}, Case{63, 65}, Case{211, 199},
                                           Case{997, 499}, Case{3, 1009}));

TEST_P(RowSamplerTest, BilinearTruncatesTheExactSumInEveryOrientation) {
  const Picture picture(37, 23, 3);
  for (const ImageRect& area :
       {ImageRect{3, 2, 31, 17}, ImageRect{0, 0, 37, 23}, ImageRect{5, 5, 1, 1},
        ImageRect{7, 3, 2, 2}, ImageRect{36, 0, 1, 23}}) {
    for (int mirror = 0; mirror < 4; ++mirror) {
      SamplingShape shape;
      shape.dest_width = GetParam().dw;
      shape.dest_height = GetParam().dh;
      shape.first_column = shape.dest_width / 5;
      shape.columns = shape.dest_width - shape.first_column;
      shape.mirror_x = (mirror & 1) != 0;
      shape.mirror_y = (mirror & 2) != 0;
      shape.high_quality = true;
      RowSampler sampler(picture.view().part(area), shape);
      for (int32_t y = 0; y < shape.dest_height; ++y) {
        const uint8_t* row = sampler.row(y);
        for (int32_t x = 0; x < shape.columns; ++x) {
          for (size_t c = 0; c < 4; ++c) {
            const int expected =
                exact_bilinear(picture, area, x + shape.first_column, y, shape.dest_width,
                               shape.dest_height, c, shape.mirror_x, shape.mirror_y);
            ASSERT_EQ(row[static_cast<size_t>(x) * 4 + c], expected)
                << area.width << " to " << GetParam().dw << 'x' << GetParam().dh << " at " << x
                << ',' << y << " mirror " << mirror;
          }
        }
      }
    }
  }
}

TEST_P(RowSamplerTest, NearestTakesThePixelTheRatioInDoublePrecisionNames) {
  const Picture picture(37, 23, 5);
  const ImageRect area{3, 2, 31, 17};
  SamplingShape shape;
  shape.dest_width = GetParam().dw;
  shape.dest_height = GetParam().dh;
  shape.columns = shape.dest_width;
  shape.origin_x = area.x;
  shape.origin_y = area.y;
  RowSampler sampler(picture.view().part(area), shape);
  const double x_ratio = static_cast<double>(area.width) / shape.dest_width;
  const double y_ratio = static_cast<double>(area.height) / shape.dest_height;
  for (int32_t y = 0; y < shape.dest_height; ++y) {
    const uint8_t* row = sampler.row(y);
    const auto sy = static_cast<int32_t>(std::floor(y * y_ratio + area.y));
    for (int32_t x = 0; x < shape.columns; ++x) {
      const auto sx = static_cast<int32_t>(std::floor(x * x_ratio + area.x));
      ASSERT_EQ(row[static_cast<size_t>(x) * 4], picture.at(sx, sy, 0)) << x << ',' << y;
    }
  }
}

// Rows may be asked for in any order, as clipping and mirrored surfaces do.
TEST(RowSampler, RowsDoNotDependOnTheRowsBefore) {
  const Picture picture(37, 23, 7);
  for (const bool smooth : {false, true}) {
    for (const Case size : {Case{100, 51}, Case{150, 301}, Case{17, 11}, Case{331, 9}}) {
      SamplingShape shape;
      shape.dest_width = shape.columns = size.dw;
      shape.dest_height = size.dh;
      shape.high_quality = smooth;
      RowSampler used(picture.view(), shape);
      const auto bytes = static_cast<size_t>(size.dw) * 4;
      std::vector<uint8_t> written[2];
      written[0].resize(bytes);
      written[1].resize(bytes);
      std::mt19937 random(1);
      for (int k = 0; k < 300; ++k) {
        const auto y = static_cast<int32_t>(random() % static_cast<uint32_t>(size.dh));
        std::vector<uint8_t>& to = written[k % 2];
        used.write(to.data(), y);
        RowSampler fresh(picture.view(), shape);
        const uint8_t* expected = fresh.row(y);
        ASSERT_TRUE(std::equal(to.begin(), to.end(), expected)) << size.dw << " row " << y;
      }
    }
  }
}

// Rounding errors must not darken an even area, whatever the ratio.
TEST(RowSampler, FlatAreasStayFlatAtAwkwardRatios) {
  Picture picture(13, 11, 1);
  for (uint8_t& byte : picture.bytes) byte = 199;
  for (int32_t size : {3, 7, 12, 14, 49, 97, 1021, 2048, 40009}) {
    SamplingShape shape;
    shape.dest_width = size;
    shape.dest_height = size + 2;
    shape.columns = std::min(size, 3000);
    shape.high_quality = true;
    RowSampler sampler(picture.view(), shape);
    for (int32_t y = 0; y < size; y += 1 + size / 40) {
      const uint8_t* row = sampler.row(y);
      for (int32_t i = 0; i < shape.columns * 4; ++i) ASSERT_EQ(row[i], 199) << size << " at " << i;
    }
  }
}

}  // namespace
}  // namespace kestrelon
