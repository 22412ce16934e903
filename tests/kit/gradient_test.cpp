#include "frame/kit/gradient.h"

#include <gtest/gtest.h>

#include "tests/kit/picture.h"

namespace kestrelon {
namespace {

// The red channel of each row; the picture must hold level rows in columns x1 to x2 only.
std::vector<int> red_rows(Picture picture, int x1, int x2) {
  std::vector<int> rows;
  const PixelView view = picture.view();
  for (int y = 0; y < view.height; ++y) {
    for (int x = 0; x < view.width; ++x)
      EXPECT_EQ(view.row(y)[x], x < x1 || x > x2 ? 0 : view.row(y)[x1]) << x << ',' << y;
    rows.push_back(static_cast<int>(view.row(y)[x1] >> 16));
  }
  EXPECT_TRUE(picture.margin_untouched());
  return rows;
}

std::vector<int> gradient_rows(int height, int from, int to, double mid, int y1, int y2) {
  Picture picture(9, height);
  DrawGradient(picture.view(), PackRGB(from, 0, 0), PackRGB(to, 0, 0), mid, 1, y1, 7, y2);
  return red_rows(picture, 1, 7);
}

using Rows = std::vector<int>;

TEST(Gradient, HalfWayRowStandsWhereThePercentageSays) {
  // Rows 0 to 8: the middle row is 0.5 * 7 = 3.5; rows up to 3 run 0..100 over 3.5, the others
  // 100..200 over 4.5.
  EXPECT_EQ(gradient_rows(9, 0, 200, 50, 0, 8), (Rows{0, 29, 57, 86, 111, 133, 156, 178, 200}));
  // All of it in the lower half: a middle row of 0 becomes 1.
  EXPECT_EQ(gradient_rows(5, 0, 200, 0, 0, 4), (Rows{0, 100, 133, 167, 200}));
  // At 100 percent the last row alone is below the middle.
  EXPECT_EQ(gradient_rows(5, 0, 200, 100, 0, 4), (Rows{0, 33, 67, 100, 200}));
  EXPECT_EQ(gradient_rows(5, 0, 200, 250, 0, 4), gradient_rows(5, 0, 200, 100, 0, 4));
  EXPECT_EQ(gradient_rows(5, 0, 200, -3, 0, 4), gradient_rows(5, 0, 200, 0, 0, 4));
}

TEST(Gradient, ABandFurtherDownStartsPartWayAlongItsUpperHalf) {
  // Middle row 6 + 0.5 * 2 = 7: row 6 is 6/7 of the way there, row 8 half of the rest.
  EXPECT_EQ(gradient_rows(10, 0, 200, 50, 6, -1), (Rows{0, 0, 0, 0, 0, 0, 86, 100, 150, 200}));
  // 6 + 0 percent is 6: the first row has the half-way colour.
  EXPECT_EQ(gradient_rows(8, 0, 200, 0, 6, 7), (Rows{0, 0, 0, 0, 0, 0, 100, 200}));
}

TEST(Gradient, EndsStopAtTheSurfaceBeforeTheMiddleIsFound) {
  EXPECT_EQ(gradient_rows(9, 0, 200, 50, 0, 1000), gradient_rows(9, 0, 200, 50, 0, 8));
  EXPECT_EQ(gradient_rows(9, 0, 200, 50, 0, -2), gradient_rows(9, 0, 200, 50, 0, 8));
  Picture ends(4, 3), written_out(4, 3);
  DrawGradient(ends.view(), 0x10, 0xF0, 50, 0, 0, -1, -1);
  DrawGradient(written_out.view(), 0x10, 0xF0, 50, 0, 0, 3, 2);
  EXPECT_EQ(ends, written_out);
}

TEST(Gradient, OneRowOneColumnAndOneColour) {
  EXPECT_EQ(gradient_rows(3, 10, 200, 50, 1, 1), (Rows{0, 200, 0}));
  EXPECT_EQ(gradient_rows(3, 77, 77, 30, 0, -1), (Rows{77, 77, 77}));
  Picture column(3, 3);
  DrawGradient(column.view(), 200, 200, 50, 1, 0, 1, -1);
  EXPECT_EQ(red_rows(column, 1, 1), (Rows{200, 200, 200}));
}

TEST(Gradient, OutsideCoordinatesDrawOnlyWhatIsInside) {
  Picture picture(5, 5, 1);
  const Picture before = picture;
  DrawGradient(picture.view(), 1, 2, 50, 9, 0, -1, -1);  // starts right of the surface
  DrawGradient(picture.view(), 1, 2, 50, 0, 7, -1, -1);  // or below it
  DrawGradient(PixelView(), 1, 2, 50, 0, 0, -1, -1);
  EXPECT_EQ(picture, before);
  DrawGradient(picture.view(), 0xFF, 0xFF, 50, INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX);
  EXPECT_EQ(picture, Picture(5, 5, 0xFF0000));
}

// The middle row of a long band is held with a single's precision.
TEST(Gradient, EveryRowFollowsTheFormula) {
  Picture picture(1, 997);
  DrawGradient(picture.view(), 0x0A64FF, 0xFA3200, 33, 0, 101, 0, 900);
  const float mid = static_cast<float>(101 + 33 * (900 - 101 - 1) / 100.0);
  for (int y = 101; y <= 900; ++y) {
    const bool lower = y > mid;
    const ColorRef half = BlendColor(0x0A64FF, 0xFA3200, 0.5);
    const double t = lower ? (y - double{mid}) / (900 - double{mid}) : y / double{mid};
    const ColorRef want = lower ? BlendColor(half, 0xFA3200, t) : BlendColor(0x0A64FF, half, t);
    ASSERT_EQ(to_color(picture.at(0, y)), want) << y;
  }
}

TEST(SystemGradient, StopsShortOfTheSecondColourAndKeepsItsScaleWhenCut) {
  Picture rows(2, 4);
  fill_system_gradient(rows.view(), {0, 0, 2, 4}, 0, 200, GradientDirection::TopToBottom);
  EXPECT_EQ(red_rows(rows, 0, 1), (Rows{0, 50, 100, 150}));
  Picture cut(2, 2);
  fill_system_gradient(cut.view(), {-5, -1, 9, 3}, 0, 200, GradientDirection::TopToBottom);
  EXPECT_EQ(red_rows(cut, 0, 1), (Rows{50, 100}));
  Picture turned(4, 2);
  fill_system_gradient(turned.view(), {4, 0, 0, 2}, 0, 200, GradientDirection::LeftToRight);
  for (int x = 0; x < 4; ++x) EXPECT_EQ(turned.at(x, 1), uint32_t(200 - 50 * x) << 16);
  fill_system_gradient(turned.view(), {INT32_MIN, 0, INT32_MAX, 2}, 7, 7,
                       GradientDirection::LeftToRight);
  EXPECT_EQ(turned, Picture(4, 2, 0x070000));
}

}  // namespace
}  // namespace kestrelon
