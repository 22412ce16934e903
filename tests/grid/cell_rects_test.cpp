#include "grid/layout/cell_rects.h"

#include <gtest/gtest.h>

#include <cmath>

#include "grid/layout/hit_test.h"

namespace kestrelon {
namespace {

using namespace grid_layout;

constexpr int kAlignments[] = {0, 1, 2, 4, 5, 6, 8, 9, 10};

GridMetrics metrics_at(int dpi) {
  MetricsInput input;
  input.scale.dpi = dpi;
  input.text_height = dpi * 13 / 96;
  input.min_row_height = input.text_height;
  return ComputeMetrics(input);
}

bool within(const PixelRect& inner, const PixelRect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

TEST(GridCellRects, PartsStayInTheCellAndApartAtEveryScale) {
  for (const int dpi : {96, 120, 144, 192, 288})
    for (const int alignment : kAlignments) {
      const GridMetrics metrics = metrics_at(dpi);
      CellShape shape;
      shape.cell = {100, 50, 100 + 2 * dpi, 50 + dpi / 2};
      shape.alignment = shape.image_alignment = alignment;
      shape.image = {metrics.scale.px(16), metrics.scale.px(16)};
      const CellParts parts = cell_parts(metrics, shape);
      const PixelRect face = cell_face(metrics, shape.cell);
      EXPECT_TRUE(within(parts.text, face)) << dpi << " " << alignment;
      EXPECT_TRUE(within(parts.image, face)) << dpi << " " << alignment;
      EXPECT_TRUE(within(parts.check, face)) << dpi << " " << alignment;
      EXPECT_EQ(parts.image.right - parts.image.left, shape.image.width);
      if (across(alignment) != 1) {
        EXPECT_TRUE(intersect(parts.text, parts.image).empty()) << "text under the image";
      }
      // A focus mark of two lines leaves text alone.
      EXPECT_GE(parts.text.left - shape.cell.left, 2 * metrics.scale.line(1));
      EXPECT_GE(face.right - parts.text.right,
                across(alignment) == 2 ? 0 : 2 * metrics.scale.line(1));
    }
}

TEST(GridCellRects, NineAlignmentsAreNinePlaces) {
  const PixelRect area = {10, 20, 111, 71};
  for (const int alignment : kAlignments) {
    const PixelRect at = aligned(area, {10, 10}, alignment);
    const int column = alignment & 3;
    const int row = alignment >> 2;
    EXPECT_EQ(at.left, column == 0 ? 10 : column == 1 ? 55 : 101);
    EXPECT_EQ(at.top, row == 0 ? 20 : row == 1 ? 40 : 61);
  }
  EXPECT_EQ(aligned(area, {10, 10}, 3).left, 10);
  EXPECT_EQ(aligned(area, {10, 10}, 15).top, 20);
  EXPECT_EQ(aligned(area, {10, 10}, -1).left, 10);
}

TEST(GridCellRects, PicturesShrinkInProportionAndNeverGrow) {
  EXPECT_EQ(fitted({100, 50}, {200, 200}).width, 100);
  EXPECT_EQ(fitted({100, 50}, {50, 200}).height, 25);
  EXPECT_EQ(fitted({100, 50}, {200, 10}).width, 20);
  EXPECT_EQ(fitted({30000, 1}, {10, 10}).height, 1);
  EXPECT_TRUE(fitted({0, 50}, {10, 10}).empty());
  EXPECT_TRUE(fitted({10, 50}, {10, -1}).empty());
}

TEST(GridCellRects, BarsAreHeldToTheirCell) {
  EXPECT_EQ(progress_width(99, 50), 50);
  EXPECT_EQ(progress_width(99, 1e300), 99);
  EXPECT_EQ(progress_width(99, -5), 0);
  EXPECT_EQ(progress_width(99, std::nan("")), 0);
  EXPECT_EQ(progress_width(0, 50), 0);
}

TEST(GridCellRects, CellsTooNarrowForAnythingGiveEmptyParts) {
  for (int width = 0; width < 30; ++width) {
    CellShape shape;
    shape.cell = {100, 50, 100 + width, 69};
    shape.leads_row = true;
    shape.image = {16, 16};
    shape.mark = {9, 9};
    const CellParts parts = cell_parts(metrics_at(96), shape);
    EXPECT_LE(parts.text.left, parts.text.right);
    EXPECT_LE(parts.content.left, parts.content.right);
    EXPECT_GE(parts.text.right, 100);
  }
}

TEST(GridCellRects, HitsFindWhatIsDrawn) {
  const GridMetrics metrics = metrics_at(96);
  CellShape shape;
  shape.cell = {100, 50, 200, 90};
  shape.alignment = 5;
  shape.image = {16, 16};
  shape.image_alignment = 6;
  shape.mark = {9, 9};
  const CellParts parts = cell_parts(metrics, shape);
  const auto middle = [&](const PixelRect& area, bool boolean) {
    return cell_part_at(parts, boolean, (area.left + area.right) / 2, (area.top + area.bottom) / 2);
  };
  EXPECT_EQ(middle(parts.check, true), CellPart::kCheckBox);
  EXPECT_EQ(middle(parts.check, false), CellPart::kText);
  EXPECT_EQ(middle(parts.image, false), CellPart::kImage);
  EXPECT_EQ(middle(parts.mark, false), CellPart::kExpandMark);
  EXPECT_EQ(cell_part_at(parts, true, 101, 51), CellPart::kText);
}

TEST(GridCellRects, SortArrowTakesRoomFromTheHeading) {
  GridPage page;
  page.metrics = metrics_at(96);
  page.header = {0, 0, 500, 21};
  const HeaderParts with = header_parts(page, 100, 200, true);
  const HeaderParts without = header_parts(page, 100, 200, false);
  EXPECT_LT(with.text.right, with.arrow.left);
  EXPECT_LT(with.arrow.right, 200);
  EXPECT_GT(without.text.right, with.text.right);
  EXPECT_EQ((with.arrow.right - with.arrow.left) % 2, 1) << "the tip is one pixel";
  EXPECT_LE(header_parts(page, 100, 105, true).text.left,
            header_parts(page, 100, 105, true).text.right);
}

}  // namespace
}  // namespace kestrelon
