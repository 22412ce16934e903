// A grid with every kind of cell, drawn on a real surface.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "grid/paint/grid_painter_win.h"

namespace kestrelon {

using namespace grid_layout;
using namespace grid_paint;

/// Rows of equal heights, some of them hidden.
struct PaintRows final : Rows {
  int32_t rows = 0;
  int32_t high = 20;
  std::vector<int32_t> heights;  // of the first rows, where they differ
  int32_t count() const override { return rows; }
  int32_t next_visible(int32_t position) const override { return std::min(position, rows); }
  int32_t previous_visible(int32_t position) const override { return position; }
  int32_t height(int32_t position) const override {
    return position < static_cast<int32_t>(heights.size()) ? heights[static_cast<size_t>(position)]
                                                           : high;
  }
};

/// An order form: text, number, date, check box, bar, button, image, picture, wrapped remark.
class OrderContents final : public GridContents {
 public:
  RowFacts row(int32_t row) const override;
  void cell(int32_t row, int32_t column, CellFacts& facts) const override;
  void group_cell(int32_t row, CellFacts& facts) const override;
  HeadingFacts heading(int32_t column) const override;
  void total(int32_t column, TotalFacts& facts) const override;
  std::wstring_view caption() const override { return L"Pedidos do mês & contas a receber"; }
  int32_t expand_image() const override { return 2; }

  std::vector<int32_t> selected = {3, 4};
  int32_t group_row = 7;
  int hovered = -1, pressed = -1, sorted = 1;
};

/// Squares and a wide picture of one colour.
struct ColorPictures final : GridPictures {
  Scale scale;
  Size image_size(int32_t image) const override {
    return image > 2 ? Size{} : Size{scale.px(image == 2 ? 9 : 16), scale.px(image == 2 ? 9 : 16)};
  }
  void draw_image(HDC dc, int32_t image, const PixelRect& area, bool selected) const override;
  Size picture_size(const void*) const override { return {scale.px(120), scale.px(40)}; }
  void draw_picture(HDC dc, const void* picture, const PixelRect& area) const override;
};

/// Everything a paint needs, with settings to change before `lay()`.
class PaintedGrid {
 public:
  explicit PaintedGrid(int dpi = 96, int theme = 2);

  void lay();
  GridScene scene();
  void draw();
  uint32_t at(int x, int y) { return surface.pixels().row(y)[x] & kColorBits; }
  /// All pixels, for comparison.
  std::vector<uint32_t> pixels();
  void save(const char* name);

  Scale scale;
  MetricsInput metrics;
  PageInput input;
  std::vector<Column> columns;
  PaintRows rows;
  PaintLook look;
  OrderContents contents;
  ColorPictures pictures;
  GridFonts fonts;
  GridPage page;
  Surface surface;
  int32_t caret_row = 2, caret_column = 1;
};

}  // namespace kestrelon
