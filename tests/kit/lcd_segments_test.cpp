#include "controls/us_picture_lcd/lcd_segments.h"

#include <gtest/gtest.h>

#include <set>

#include "controls/us_picture_lcd/lcd_text.h"
#include "grid/values/number_format.h"

namespace kestrelon {
namespace {

TEST(LcdText, WritesNumbersAsInBrazil) {
  EXPECT_EQ(lcd_number(number_of(1234.5), 2, L""), L"1.234,50");
  EXPECT_EQ(lcd_number(number_of(-0.005), 2, L""), L"-0,01");
  EXPECT_EQ(lcd_number(number_of(1e15), -4, L""), L"1.000.000.000.000.000");
  EXPECT_EQ(lcd_number(number_of(7.25), 2, L"000.0"), L"007,3");
}

TEST(LcdText, FillsPlacesAndShowsDashesForTooMany) {
  EXPECT_EQ(lcd_fitted(L"1.234,50", 0, true), L"1.234,50");
  EXPECT_EQ(lcd_fitted(L"1.234,50", 8, false), L"  1.234,50");
  EXPECT_EQ(lcd_fitted(L"-5,25", 6, true),
            L"-00"
            L"5,25");
  EXPECT_EQ(lcd_fitted(L"1.234,50", 6, false), L"1.234,50");
  EXPECT_EQ(lcd_fitted(L"1.234,50", 5, true), L"-----");
  EXPECT_EQ(lcd_fitted(L"ABC", 5, true), L"  ABC");
  EXPECT_EQ(lcd_fitted(L"", 3, true), L"   ");
  EXPECT_EQ(lcd_fitted(L"12", -3, true), L"12");
  EXPECT_EQ(lcd_fitted(std::wstring(100000, L'8'), 0, false).size(), 256u);
  EXPECT_EQ(lcd_fitted(L"1", 2000000000, true).size(), 256u);
}

TEST(LcdCells, JoinsMarksToThePlaceBeforeThem) {
  const LcdCells plain = lcd_cells(L"1.234,5");
  EXPECT_EQ(plain.cells.size(), 5u);
  EXPECT_TRUE(plain.cells[0].point);
  EXPECT_TRUE(plain.cells[3].comma);
  EXPECT_FALSE(plain.fourteen);
  const LcdCells odd = lcd_cells(L",5..:");
  ASSERT_EQ(odd.cells.size(), 3u);
  EXPECT_EQ(odd.cells[0].lit, 0);
  EXPECT_TRUE(odd.cells[0].comma);
  EXPECT_TRUE(odd.cells[1].point);
  EXPECT_TRUE(odd.cells[2].point);
  EXPECT_TRUE(odd.cells[2].colon);
}

TEST(LcdCells, ShowsEveryDigitAndLetterByBarsOfItsOwn) {
  std::set<uint16_t> digits, letters;
  for (wchar_t c = L'0'; c <= L'9'; ++c) digits.insert(lcd_cells({&c, 1}).cells[0].lit);
  for (wchar_t c = L'A'; c <= L'Z'; ++c) letters.insert(lcd_cells({&c, 1}).cells[0].lit);
  EXPECT_EQ(digits.size(), 10u);
  EXPECT_EQ(letters.size(), 26u);
  for (const uint16_t lit : digits) EXPECT_EQ(lit & ~kSevenBars, 0);
  EXPECT_TRUE(lcd_cells(L"1a").fourteen);
  EXPECT_FALSE(lcd_cells(L"-1 2_").fourteen);
  EXPECT_EQ(lcd_cells(L"\u00E7\u00C3").cells, lcd_cells(L"CA").cells);
  EXPECT_EQ(lcd_cells(L"\u4E00").cells[0].lit, 0);
}

TEST(LcdLayout, FillsTheHeightOrTheWidthAndKeepsPlacesApart) {
  const PixelRect wide{10, 10, 510, 60}, narrow{10, 10, 110, 60};
  EXPECT_FLOAT_EQ(lcd_layout(5, wide, LcdSide::kLeft).height, 50);
  const LcdLayout small = lcd_layout(5, narrow, LcdSide::kCenter);
  EXPECT_LT(small.height, 50);
  for (const LcdSide side : {LcdSide::kLeft, LcdSide::kCenter, LcdSide::kRight})
    for (int count = 1; count < 40; ++count) {
      const LcdLayout layout = lcd_layout(count, wide, side);
      for (int i = 0; i < count; ++i) {
        std::vector<LcdShape> shapes;
        append_bars(shapes, kFourteenBars, true, layout, i);
        append_bars(shapes, kSevenBars, false, layout, i);
        for (const LcdShape& shape : shapes)
          for (const LcdPoint& point : shape) {
            EXPECT_GE(point.x, static_cast<float>(wide.left));
            EXPECT_LE(point.x, static_cast<float>(wide.right));
            EXPECT_GE(point.y, static_cast<float>(wide.top) - 0.01f);
            EXPECT_LE(point.y, static_cast<float>(wide.bottom) + 0.01f);
            EXPECT_GE(point.x, static_cast<float>(layout.cell(i).left));
            EXPECT_LE(point.x, static_cast<float>(layout.cell(i).right));
          }
        if (i > 0) {
          EXPECT_EQ(layout.cell(i - 1).right, layout.cell(i).left);
        }
      }
    }
  EXPECT_EQ(lcd_layout(0, wide, LcdSide::kLeft), LcdLayout{});
  EXPECT_EQ(lcd_layout(3, {5, 5, 5, 50}, LcdSide::kLeft), LcdLayout{});
}

TEST(FillShape, CoversByAreaWithinItsClip) {
  std::vector<uint32_t> pixels(10 * 10);
  const PixelView view{pixels.data(), 10, 10, 10};
  const LcdPoint square[] = {{2, 2}, {6.5f, 2}, {6.5f, 6}, {2, 6}};
  fill_shape(view, view.bounds(), square, 0xFFFFFF, 1);
  EXPECT_EQ(view.row(3)[2], 0xFFFFFFu);
  EXPECT_EQ(view.row(3)[1], 0u);
  EXPECT_NEAR(static_cast<double>(view.row(3)[6] & 0xFF), 127.5, 2);
  EXPECT_EQ(view.row(6)[3], 0u);
  std::ranges::fill(pixels, 0u);
  fill_shape(view, {3, 3, 4, 4}, square, 0x0000FF, 0.5f);
  EXPECT_EQ(std::ranges::count(pixels, 0u), 99);
  EXPECT_NEAR(static_cast<double>(view.row(3)[3] >> 16), 127.5, 2);
  std::ranges::fill(pixels, 0u);
  const LcdPoint outside[] = {{-90, -90}, {-5, -90}, {-5, 90}};
  fill_shape(view, view.bounds(), outside, 0xFFFFFF, 1);
  const LcdPoint line[] = {{1, 1}, {9, 1}};
  fill_shape(view, view.bounds(), line, 0xFFFFFF, 1);
  EXPECT_EQ(std::ranges::count(pixels, 0u), 100);
  const LcdPoint around[] = {{-50, -50}, {50, -50}, {50, 50}, {-50, 50}};
  fill_shape(view, view.bounds(), around, 0x00FF00, 1);
  EXPECT_EQ(std::ranges::count(pixels, 0x00FF00u), 100);
}

}  // namespace
}  // namespace kestrelon
