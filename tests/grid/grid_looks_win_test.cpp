#include <gtest/gtest.h>

#include "grid/fixed_locale_rules.h"
#include "grid/layout/source_rows.h"
#include "grid/paint/measure_win.h"
#include "grid/paint/source_contents.h"
#include "grid/store/grid_store.h"
#include "tests/grid/paint_fixture_win.h"

namespace kestrelon {
namespace {

// The rightmost column of pixels in an area that differ from its first pixel.
int ink_end(PaintedGrid& grid, const PixelRect& area) {
  for (int x = area.right - 1; x >= area.left; --x)
    for (int y = area.top; y < area.bottom; ++y)
      if (grid.at(x, y) != grid.at(area.left, area.top)) return x;
  return -1;
}

TEST(GridLooks, FiguresStandUnderEachOther) {
  for (const int dpi : {96, 144, 192, 288}) {
    PaintedGrid grid(dpi, 2);
    grid.look.focus_mode = FocusMode::kNone;
    grid.contents.selected = {};
    grid.draw();
    const PlacedColumn& column = *grid.page.column(1);
    const auto end_of = [&](int32_t row) {
      const PixelRect cell = cell_face(grid.page.metrics, cell_rect(column, *grid.page.row(row)));
      return ink_end(grid, cell);
    };
    // 1.234,56 twice and 7,50 against 100.000,00: equal last digits end alike.
    EXPECT_EQ(end_of(0), end_of(4)) << dpi;
    EXPECT_EQ(end_of(2), end_of(3)) << dpi;
    EXPECT_LE(end_of(0), column.right() - grid.page.metrics.line_width - grid.scale.px(2));
  }
}

TEST(GridLooks, LinesOfHeadingsAndRowsMeet) {
  for (const int dpi : {96, 120, 144, 192, 288}) {
    PaintedGrid grid(dpi, 0);
    grid.look.focus_mode = FocusMode::kNone;
    grid.draw();
    const GridColors& colors = grid.look.colors;
    for (const PlacedColumn& column : grid.page.columns) {
      const int x = column.right() - 1;
      if (x >= grid.page.inner.right) continue;
      const int middle = (grid.page.header.top + grid.page.header.bottom) / 2;
      EXPECT_EQ(grid.at(x, middle), to_pixel(header_divider(colors))) << dpi;
      for (int y = grid.page.header.bottom; y < grid.page.rows.front().bottom(); ++y)
        ASSERT_EQ(grid.at(x, y), to_pixel(colors.grid)) << dpi << " at " << y;
      EXPECT_EQ(grid.at(x, grid.page.header.bottom - 1), to_pixel(colors.grid))
          << "a gap between header and body";
    }
  }
}

TEST(GridLooks, LongTextsStayInTheirCell) {
  PaintedGrid wide(96, 2), narrow(96, 2);
  for (PaintedGrid* grid : {&wide, &narrow}) {
    grid->look.focus_mode = FocusMode::kNone;
    grid->metrics.display_ellipsis = false;
  }
  wide.draw();
  narrow.columns[0].width = 45;
  narrow.columns[1].width += 170 - 45;
  narrow.contents.sorted = -1;
  wide.contents.sorted = -1;
  wide.draw();
  narrow.draw();
  const PlacedColumn& column = *narrow.page.column(1);
  const PlacedRow& row = *narrow.page.row(1);
  for (int y = row.top; y < row.bottom(); ++y)
    for (int x = column.left; x < column.left + 60; ++x)
      ASSERT_EQ(narrow.at(x, y), narrow.at(column.left + 5, y)) << "the product runs over";
}

TEST(GridLooks, FocusIsSeenOnEveryRow) {
  for (int theme = 0; theme < 3; ++theme)
    for (const int style : {0, 1, 2})
      for (const int32_t row : {0, 1, 3}) {  // plain, even, selected
        PaintedGrid grid(96, theme);
        grid.look.focus_style = static_cast<FocusStyle>(style);
        grid.caret_row = row;
        grid.draw();
        const PixelRect mark = grid.scene().focus;
        int strong = 0;
        for (int x = mark.left; x < mark.right; ++x) {
          const Channels on = SplitRGB(to_color(grid.at(x, mark.top)));
          const Channels below = SplitRGB(to_color(grid.at(x, mark.top + 4)));
          strong +=
              std::abs(on.r - below.r) + std::abs(on.g - below.g) + std::abs(on.b - below.b) > 60;
        }
        EXPECT_GT(strong, (mark.right - mark.left) / 3) << theme << style << row;
      }
}

TEST(GridLooks, SelectedTextsKeepTheirOwnColorOnlyWhenAsked) {
  PaintedGrid grid(192, 2);
  grid.contents.selected = {1};  // "-10,00" in red of its own
  grid.look.focus_mode = FocusMode::kNone;
  const auto has = [&](ColorRef color) {
    const PlacedColumn& column = *grid.page.column(1);
    const PlacedRow& row = *grid.page.row(1);
    for (int y = row.top; y < row.bottom(); ++y)
      for (int x = column.left; x < column.right(); ++x)
        if (grid.at(x, y) == to_pixel(color)) return true;
    return false;
  };
  grid.look.colors.fore_selected = 0x008000;
  grid.draw();
  EXPECT_TRUE(has(0x0000C0));
  grid.look.keep_text_color = false;
  grid.draw();
  EXPECT_TRUE(has(0x008000));
  EXPECT_FALSE(has(0x0000C0));
  grid.look.enabled = false;
  grid.draw();
  EXPECT_TRUE(has(grid.look.colors.fore_disabled));
  EXPECT_FALSE(has(0x008000));
}

TEST(GridLooks, MeasuredRowsShowAllTheirLines) {
  for (const int dpi : {96, 144, 288}) {
    PaintedGrid grid(dpi, 2);
    grid.look.focus_mode = FocusMode::kNone;
    grid.input.first_column = 4;
    grid.input.height = grid.scale.px(600);
    grid.lay();
    grid.draw();
    const Measuring with = {grid.surface.dc(), grid.page.metrics, grid.look,
                            grid.contents,     grid.fonts,        &grid.pictures};
    const int height = MeasureRowHeight(with, grid.columns, 1, 0);
    EXPECT_GT(height, 2 * grid.page.metrics.text_height);
    EXPECT_EQ(MeasureRowHeight(with, grid.columns, 1, 1),
              measured_row_height(grid.page.metrics, 0, 0));
    // A row of that height shows what a much higher one shows, and no mark to expand it.
    const auto ink = [&](int row_height) {
      grid.rows.heights = {grid.rows.high, row_height};
      grid.contents.selected = {};
      grid.draw();
      int pixels = 0;
      const PixelRect cell =
          cell_face(grid.page.metrics, cell_rect(*grid.page.column(7), *grid.page.row(1)));
      for (int y = cell.top; y < cell.bottom; ++y)
        for (int x = cell.left; x < cell.right; ++x)
          pixels += grid.at(x, y) != grid.at(cell.left, cell.top);
      return pixels;
    };
    const int all = ink(3 * height);
    EXPECT_EQ(ink(height + grid.page.metrics.line_width), all) << dpi;
    EXPECT_NE(ink(height / 2), all) << dpi;
  }
}

TEST(GridLooks, AutomaticWidthCutsNothingAndWastesLittle) {
  PaintedGrid grid(96, 2);
  grid.draw();
  const Measuring with = {grid.surface.dc(), grid.page.metrics, grid.look,
                          grid.contents,     grid.fonts,        &grid.pictures};
  const int width = auto_column_width(with, 0, grid.rows.rows, true);
  grid.look.word_wrap = false;
  const auto picture = [&](int column_width) {
    grid.columns[0].width = column_width;
    grid.input.first_column = 0;
    grid.draw();
    std::vector<uint32_t> pixels;
    for (int x = 40; x < 40 + std::min(width, column_width) - 30; ++x)
      pixels.push_back(grid.at(x, grid.page.row(1)->top + 10));
    return pixels;
  };
  EXPECT_EQ(picture(width), picture(width + 1)) << "shortened at the measured width";
  const std::vector<uint32_t> narrow = picture(width - 2);
  const std::vector<uint32_t> full = picture(width);
  EXPECT_FALSE(std::equal(narrow.begin(), narrow.end(), full.begin())) << "too wide";
}

TEST(GridLooks, EmptyAndTinyGridsAreDrawn) {
  PaintedGrid grid(96, 2);
  grid.rows.rows = 0;
  grid.draw();
  const int x = grid.page.column(0)->right() - 1;
  EXPECT_EQ(grid.at(x, grid.page.rows_area.top + 10), to_pixel(grid.look.colors.background))
      << "no lines without rows";
  for (const int side : {1, 2, 7, 40}) {
    grid.rows.rows = 9;
    grid.input.width = grid.input.height = side;
    grid.draw();
    EXPECT_EQ(grid.at(0, 0), to_pixel(grid.look.colors.border));
  }
}

// Dark pixels of a cell, which are its text's.
int ink_in(PaintedGrid& grid, const PixelRect& cell) {
  int pixels = 0;
  for (int y = cell.top; y < cell.bottom; ++y)
    for (int x = cell.left; x < cell.right; ++x) pixels += (grid.at(x, y) & 0xFF) < 0x80;
  return pixels;
}

TEST(GridLooks, StoreIsShownWithMostOfItsRowsHidden) {
  const FixedLocaleRules rules = brazilian_locale_rules();
  GridStore store([](std::wstring_view) { return 0.0; });
  store.add_column({.heading = L"Produto"});
  store.set_default_row_height(20);
  for (int i = 0; i < 20'000; ++i) store.add_item(i == 19'990 ? L"WWWWW" : L"");
  for (int i = 0; i < 20'000; ++i) store.set_row_visible(i, i % 9'990 == 0 || i == 19'990);
  store.set_column_width_pixels(0, 200);
  const ContentsState state;
  const SourceContents contents(store, rules, state);
  const SourceRows rows(store);
  PaintedGrid grid(96, 2);
  grid.lay();
  const std::vector<Column> columns = source_columns(store);
  grid.input.columns = columns;
  grid.input.rows = &rows;
  grid.look.row_check_boxes = false;
  grid.page = lay_out(grid.input);
  ASSERT_EQ(grid.page.rows.size(), 4u);
  EXPECT_FALSE(grid.page.vertical_bar);
  grid.surface.resize(grid.input.width, grid.input.height);
  DrawGrid(grid.surface, {grid.page, grid.look, contents, grid.fonts}, 0);
  for (const PlacedRow& row : grid.page.rows) {
    const PixelRect cell = cell_face(grid.page.metrics, cell_rect(grid.page.columns[0], row));
    EXPECT_EQ(ink_in(grid, cell) > 0, row.position == 19'990) << row.position;
  }
}

}  // namespace
}  // namespace kestrelon
