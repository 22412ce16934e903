#include <gtest/gtest.h>

#include <random>

#include "grid/paint/measure_win.h"
#include "tests/grid/paint_fixture_win.h"

namespace kestrelon {
namespace {

// Looks that differ in every way a painter asks for.
void vary(PaintedGrid& grid, unsigned seed) {
  std::mt19937 random(seed);
  const auto coin = [&] { return random() % 2 == 0; };
  grid.look.alpha_blend_selection = coin();
  grid.look.row_check_boxes = coin();
  grid.look.word_wrap = coin();
  grid.look.enabled = random() % 4 != 0;
  grid.look.right_to_left = coin();
  grid.look.even_rows = coin();
  grid.look.highlight = static_cast<HighlightStyle>(random() % 3);
  grid.look.lines = grid_lines(static_cast<int>(random() % 4));
  grid.look.focus_mode = static_cast<FocusMode>(random() % 3);
  grid.look.focus_style = static_cast<FocusStyle>(random() % 3);
  grid.look.colors.selected2 = 0x80C0FF;
  grid.input.freeze_at = static_cast<int32_t>(random() % 3) - 1;
  grid.input.first_column = static_cast<int32_t>(random() % 4);
  grid.input.row_numbers = coin();
  grid.input.border = coin();
  grid.input.total_line = coin();
  grid.metrics.display_ellipsis = coin();
  grid.metrics.grid_line_width = static_cast<int>(random() % 3);
  grid.contents.hovered = static_cast<int>(random() % 9) - 1;
  if (random() % 5 == 0)
    grid.look = high_contrast(grid.look,
                              {0, 0xFFFFFF, 0x202020, 0xFFFFFF, 0xFFEB1A, 0, 0x3FF23F, 0xFFFF00});
}

TEST(GridPaint, SheetsToLookAt) {
  const auto sheet = [](const std::string& name, int dpi, int theme, auto change) {
    PaintedGrid grid(dpi, theme);
    change(grid);
    grid.draw();
    grid.save(name.c_str());
    EXPECT_NE(grid.at(grid.input.width / 2, grid.input.height / 2), 0xFF00FFu);
  };
  for (int theme = 0; theme < 3; ++theme)
    sheet("theme" + std::to_string(theme), 96, theme, [&](PaintedGrid& grid) {
      grid.contents.hovered = theme == 0 ? 2 : -1;
      grid.contents.pressed = theme == 1 ? 0 : 3;
      grid.look.focus_style = static_cast<FocusStyle>(theme);
    });
  for (const int dpi : {120, 144, 192, 288})
    sheet("dpi" + std::to_string(dpi), dpi, 2, [&](PaintedGrid& grid) {
      grid.look.focus_mode = FocusMode::kCell;
      grid.look.focus_style = dpi == 192 ? FocusStyle::kHeavy : FocusStyle::kMedium;
    });
  for (unsigned seed = 0; seed < 8; ++seed)
    sheet("varied" + std::to_string(seed), 96, static_cast<int>(seed % 3),
          [&](PaintedGrid& grid) { vary(grid, seed); });
  sheet("right", 96, 2, [](PaintedGrid& grid) {
    grid.input.freeze_at = 0;
    grid.input.first_column = 4;
    grid.look.highlight = HighlightStyle::kHorizontalGradient;
    grid.look.colors.selected2 = 0xE7C0A0;
    grid.rows.heights = {20, 36, 20, 36, 20, 48};
  });
}

TEST(GridPaint, PiecesMakeTheWhole) {
  for (unsigned seed = 0; seed < 12; ++seed) {
    PaintedGrid grid(seed % 3 == 0 ? 144 : 96, static_cast<int>(seed % 3));
    vary(grid, seed);
    grid.draw();
    const std::vector<uint32_t> whole = grid.pixels();
    grid.surface.clear(0xFF00FF);
    DrawGrid(grid.surface, grid.scene(), grid.look.colors.border);
    EXPECT_TRUE(grid.pixels() == whole) << "a second paint differs, seed " << seed;
    // Cell by cell over a picture that shows rubbish.
    const PixelRect inner = grid.page.inner;
    fill_rect(grid.surface.pixels(), inner, 0xFF00FF);
    for (const PixelRect& band : {grid.page.caption, grid.page.header, grid.page.total_line})
      draw_area(grid.surface, grid.scene(), band);
    for (const PlacedRow& row : grid.page.rows)
      for (int x = inner.left; x < inner.right; x += 61)
        draw_area(grid.surface, grid.scene(),
                  intersect({x, row.top, x + 61, row.bottom()}, grid.page.rows_area));
    draw_area(grid.surface, grid.scene(),
              {0, grid.page.rows_bottom, inner.right, grid.page.rows_area.bottom});
    EXPECT_TRUE(grid.pixels() == whole) << "seed " << seed;
  }
}

Shown shown_now(PaintedGrid& grid) {
  grid.lay();
  Shown shown = shown_page(grid.page);
  for (size_t i = 0; i < shown.headers.size(); ++i)
    shown.headers[i] =
        static_cast<uint32_t>(grid.contents.heading(grid.page.columns[i].store).state);
  for (ShownRow& row : shown.rows) row.state = grid.contents.row(row.place.position).selected;
  shown.focus = grid.scene().focus;
  return shown;
}

std::string first_difference(const std::vector<uint32_t>& a, const std::vector<uint32_t>& b,
                             int width) {
  const auto at = std::mismatch(a.begin(), a.end(), b.begin()).first;
  if (at == a.end()) return "";
  const int64_t index = at - a.begin();
  return std::to_string(index % width) + ", " + std::to_string(index / width);
}

TEST(GridPaint, DrawingWhatChangedLooksLikeDrawingAll) {
  for (unsigned seed = 20; seed < 26; ++seed) {
    PaintedGrid grid(96, static_cast<int>(seed % 3));
    vary(grid, seed);
    grid.rows.rows = 60;
    std::mt19937 random(seed);
    Shown before = shown_now(grid);
    grid.draw();
    for (int round = 0; round < 25; ++round) {
      const int what = static_cast<int>(random() % 5);
      if (what == 0)
        grid.input.first_row = grid.page.first_row + static_cast<int>(random() % 5) - 2;
      if (what == 1) grid.caret_row = grid.page.first_row + static_cast<int>(random() % 8);
      if (what == 2) grid.caret_column = static_cast<int>(random() % 8);
      if (what == 3) grid.contents.hovered = static_cast<int>(random() % 8);
      if (what == 4) grid.contents.selected = {grid.caret_row, static_cast<int>(random() % 20)};
      const Shown now = shown_now(grid);
      draw_damage(grid.surface, grid.scene(), damage_between(before, now));
      const std::vector<uint32_t> partial = grid.pixels();
      grid.draw();
      ASSERT_EQ(first_difference(grid.pixels(), partial, grid.surface.width()), "")
          << "seed " << seed << " round " << round << ": " << what;
      before = now;
    }
  }
}

// The rightmost column of pixels in an area that differ from its first pixel.
int ink_end(PaintedGrid& grid, const PixelRect& area) {
  for (int x = area.right - 1; x >= area.left; --x)
    for (int y = area.top; y < area.bottom; ++y)
      if (grid.at(x, y) != grid.at(area.left, area.top)) return x;
  return -1;
}

TEST(GridPaint, FiguresStandUnderEachOther) {
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

TEST(GridPaint, LinesOfHeadingsAndRowsMeet) {
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

TEST(GridPaint, LongTextsStayInTheirCell) {
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

TEST(GridPaint, FocusIsSeenOnEveryRow) {
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

TEST(GridPaint, SelectedTextsKeepTheirOwnColorOnlyWhenAsked) {
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

TEST(GridPaint, MeasuredRowsShowAllTheirLines) {
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

TEST(GridPaint, AutomaticWidthCutsNothingAndWastesLittle) {
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

TEST(GridPaint, EmptyAndTinyGridsAreDrawn) {
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

}  // namespace
}  // namespace kestrelon
