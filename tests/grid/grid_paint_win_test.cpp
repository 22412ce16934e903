#include <gtest/gtest.h>

#include "tests/grid/paint_fixture_win.h"

namespace kestrelon {
namespace {

TEST(GridPaint, SheetsToLookAt) {
  for (int theme = 0; theme < 3; ++theme) {
    PaintedGrid grid(96, theme);
    grid.contents.hovered = theme == 0 ? 2 : -1;
    grid.contents.pressed = theme == 1 ? 0 : 3;
    grid.look.focus_style = static_cast<FocusStyle>(theme);
    grid.draw();
    grid.save(("theme" + std::to_string(theme)).c_str());
  }
  for (const int dpi : {120, 144, 192, 288}) {
    PaintedGrid grid(dpi, 2);
    grid.look.focus_mode = FocusMode::kCell;
    grid.look.focus_style = dpi == 192 ? FocusStyle::kHeavy : FocusStyle::kMedium;
    grid.draw();
    grid.save(("dpi" + std::to_string(dpi)).c_str());
  }
  PaintedGrid grid(96, 2);
  grid.look = high_contrast(grid.look, {0, 0xFFFFFF, 0, 0xFFFFFF, 0xFFEB1A, 0, 0x3FF23F, 0xFFFF00});
  grid.draw();
  grid.save("contrast");
  PaintedGrid right(96, 2);
  right.input.freeze_at = 0;
  right.input.first_column = 4;
  right.look.highlight = HighlightStyle::kHorizontalGradient;
  right.look.colors.selected2 = 0xE7C0A0;
  right.rows.heights = {20, 36, 20, 36, 20, 48};
  right.draw();
  right.save("right");
  PaintedGrid blend(120, 1);
  blend.look.alpha_blend_selection = true;
  blend.contents.selected = {2, 3, 4, 5};
  blend.look.enabled = true;
  blend.draw();
  blend.save("blend");
  blend.look.enabled = false;
  blend.draw();
  blend.save("disabled");
}

}  // namespace
}  // namespace kestrelon
