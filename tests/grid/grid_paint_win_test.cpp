#include <gtest/gtest.h>

#include <random>

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

}  // namespace
}  // namespace kestrelon
