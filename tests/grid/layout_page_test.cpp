#include <gtest/gtest.h>

#include "grid/layout/hit_test.h"
#include "tests/grid/layout_rows.h"

namespace kestrelon {
namespace {

using namespace grid_layout;

GridMetrics metrics_for(const MetricsInput& input) {
  return ComputeMetrics(input);
}

MetricsInput usual() {
  MetricsInput input;
  input.text_height = 13;
  input.min_row_height = 13;
  return input;
}

struct PageTest : testing::Test {
  PageTest() : rows(100) {
    input.metrics = metrics_for(usual());
    input.width = 300;
    input.height = 200;
    input.bar_size = 17;
    input.digit_width = 7;
    columns = {{0, 100}, {1, 100}, {2, 60}};
  }
  GridPage lay() {
    input.columns = columns;
    input.rows = &rows;
    return lay_out(input);
  }
  PageInput input;
  TestRows rows;
  std::vector<Column> columns;
};

TEST(GridMetrics, HeaderAndRowsFollowTheFont) {
  MetricsInput input = usual();
  EXPECT_EQ(metrics_for(input).header_height, 2 * 13 / 3 + 13);
  input.small_headers = false;
  input.has_caption = true;
  input.caption_height = 25.5;  // halves go to the even number
  EXPECT_EQ(metrics_for(input).header_height, 39 + 26);
  input.headers = false;
  EXPECT_EQ(metrics_for(input).header_height, 26);
  input.has_caption = false;
  EXPECT_EQ(metrics_for(input).header_height, 0);
  EXPECT_EQ(metrics_for(input).row_h, 13 + 4 + 2);
  input.min_row_height = 40;
  EXPECT_EQ(metrics_for(input).row_h, 46);
  input.min_row_height = 1e12;
  input.min_vertical_offset = -3;
  EXPECT_LE(metrics_for(input).row_h, 32767);
}

TEST(GridMetrics, FirstColumnLeavesRoomForBoxAndImage) {
  MetricsInput input = usual();
  EXPECT_EQ(metrics_for(input).row_content_left, 3);
  input.row_check_boxes = true;
  EXPECT_EQ(metrics_for(input).row_content_left, 18);
  input.any_row_image = true;
  input.image_width = 16;
  EXPECT_EQ(metrics_for(input).row_image_left, 18);
  EXPECT_EQ(metrics_for(input).row_content_left, 18 + 20);
  input.row_check_boxes = false;
  EXPECT_EQ(metrics_for(input).row_content_left, 3 + 20);
  input.text_height = 8;
  input.min_row_height = 0;
  EXPECT_EQ(metrics_for(input).check_box_size, 14 - 4);
}

TEST(GridMetrics, RowNumbersWidenByDigits) {
  EXPECT_EQ(row_number_width(false, 100, 7, {}), 0);
  EXPECT_EQ(row_number_width(true, 9, 7, {}), 19);
  EXPECT_EQ(row_number_width(true, 999, 7, {}), 26);
  EXPECT_EQ(row_number_width(true, 1000, 7, {}), 33);
  EXPECT_EQ(row_number_width(true, -1, 7, Scale{192}), 38);
}

TEST(GridMetrics, MeasuredRowsStayBetweenOneLineAndTheLimit) {
  const GridMetrics metrics = metrics_for(usual());
  EXPECT_EQ(measured_row_height(metrics, 5, 0), 17);
  EXPECT_EQ(measured_row_height(metrics, 39, 0), 43);
  EXPECT_EQ(measured_row_height(metrics, 39, 2), 30);
  EXPECT_EQ(measured_row_height(metrics, INT32_MAX, INT32_MAX), 32767);
}

TEST_F(PageTest, EachBarMayCallForTheOther) {
  rows.other_height = 19;
  rows.rows = 9;  // 9 * 19 = 171 of 200 - 21 - 1: fits until a horizontal bar takes its share
  GridPage page = lay();
  EXPECT_FALSE(page.vertical_bar);
  EXPECT_FALSE(page.horizontal_bar);
  columns[2].width = 100;  // 300 of 299
  page = lay();
  EXPECT_TRUE(page.horizontal_bar);
  EXPECT_TRUE(page.vertical_bar);
  columns[2].width = 90;  // fits without a vertical bar only
  page = lay();
  EXPECT_FALSE(page.horizontal_bar || page.vertical_bar);
  rows.rows = 10;
  page = lay();
  EXPECT_TRUE(page.horizontal_bar && page.vertical_bar);
  input.vertical_bar = false;
  page = lay();
  EXPECT_FALSE(page.horizontal_bar || page.vertical_bar);
  EXPECT_EQ(page.vertical.max, 1);  // keys still scroll
}

TEST_F(PageTest, TotalLineTakesItsHeightFromTheRows) {
  rows.rows = 9;
  input.total_line = true;
  const GridPage page = lay();
  EXPECT_TRUE(page.vertical_bar);
  EXPECT_EQ(page.total_line.bottom, page.inner.bottom);
  EXPECT_EQ(page.total_line.top, page.rows_area.bottom);
  EXPECT_EQ(page.total_line.bottom - page.total_line.top, input.metrics.row_h);
}

TEST_F(PageTest, NumbersInViewDecideTheirColumn) {
  input.row_numbers = true;
  EXPECT_EQ(lay().number_width, 19);
  input.first_row = 99;
  const GridPage page = lay();
  EXPECT_EQ(page.number_width, 3 * 7 + 5);
  EXPECT_EQ(page.columns.front().left, page.number_width);
  EXPECT_EQ(page.last_row, 99);
  input.first_row = 0;
  input.numbers_vary = false;
  EXPECT_EQ(lay().number_width, 26);
}

TEST_F(PageTest, TinyAndEmptyGridsAreLaidOut) {
  for (const int side : {0, 1, 5, 30}) {
    input.width = input.height = side;
    const GridPage page = lay();
    EXPECT_LE(page.rows_area.top, page.rows_area.bottom);
    EXPECT_GE(page.first_row, 0);
  }
  input.width = input.height = 200;
  rows.rows = 0;
  columns.clear();
  const GridPage page = lay();
  EXPECT_EQ(page.last_row, -1);
  EXPECT_EQ(page.rows_bottom, page.rows_area.top);
  EXPECT_EQ(hit_test(page, {}, 50, 100).part, GridPart::kNone);
  EXPECT_EQ(hit_test(page, {}, 50, 10).part, GridPart::kHeader);
}

TEST_F(PageTest, EveryPixelOfACellIsThatCell) {
  rows.rows = 5;
  input.row_numbers = true;
  const GridPage page = lay();
  for (int y = 0; y < input.height; ++y)
    for (int x = 0; x < input.width; ++x) {
      const GridHit hit = hit_test(page, {}, x, y);
      if (hit.part != GridPart::kCell) continue;
      const PixelRect cell = cell_rect(*page.column(hit.column), *page.row(hit.row));
      ASSERT_TRUE(contains(cell, x, y)) << x << ", " << y;
    }
  const PlacedRow& last = page.rows.back();
  EXPECT_EQ(hit_test(page, {}, 100, last.bottom() - 1).row, 4);
  EXPECT_EQ(hit_test(page, {}, 100, last.bottom()).part, GridPart::kNone);
  EXPECT_EQ(hit_test(page, {}, 18, last.top).part, GridPart::kRowNumber);
  EXPECT_EQ(hit_test(page, {}, page.columns_right, last.top).part, GridPart::kNone);
  EXPECT_EQ(hit_test(page, {}, -1, 50).part, GridPart::kNone);
}

TEST_F(PageTest, ResizeBandsComeFirstAndOnlyWhereTheyBelong) {
  HitOptions options = {true, true, true, true};
  const GridPage page = lay();
  const PlacedRow& row = page.rows[1];
  EXPECT_EQ(hit_test(page, options, 50, row.bottom() - 4).part, GridPart::kRowEdge);
  EXPECT_EQ(hit_test(page, options, 50, row.bottom() + 4).row, row.position);
  EXPECT_EQ(hit_test(page, options, 96, 5).part, GridPart::kColumnEdge);
  EXPECT_EQ(hit_test(page, options, 104, 5).column, 0);
  EXPECT_EQ(hit_test(page, options, 105, 5).part, GridPart::kHeader);
  EXPECT_EQ(hit_test(page, options, 100, row.top + 9).part, GridPart::kCell);
  EXPECT_EQ(hit_test(page, options, 15, row.top + 9).part, GridPart::kRowCheck);
  EXPECT_EQ(hit_test(page, options, 16, row.top + 9).part, GridPart::kCell);
  options.row_check_boxes = false;
  EXPECT_EQ(hit_test(page, options, 15, row.top + 9).part, GridPart::kCell);
  // The last row in view may end below the area; its band ends with the area.
  EXPECT_NE(hit_test(page, options, 50, page.rows_area.bottom).part, GridPart::kRowEdge);
}

TEST_F(PageTest, FocusMarksStayInsideTheirRowAndOutsideTheLines) {
  input.row_numbers = true;
  const GridPage page = lay();
  const PlacedRow& row = page.rows[2];
  const PixelRect band = focus_rect(page, FocusMode::kRow, 2, -1);
  EXPECT_EQ(band, (PixelRect{19, row.top, page.columns_right - 1, row.bottom() - 1}));
  const PixelRect cell = focus_rect(page, FocusMode::kCell, 2, 1);
  EXPECT_EQ(cell, (PixelRect{119, row.top, 218, row.bottom() - 1}));
  EXPECT_TRUE(focus_rect(page, FocusMode::kCell, 2, 9).empty());
  EXPECT_TRUE(focus_rect(page, FocusMode::kRow, 99, 1).empty());
  EXPECT_TRUE(focus_rect(page, FocusMode::kNone, 2, 1).empty());
}

}  // namespace
}  // namespace kestrelon
