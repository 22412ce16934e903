#include "grid/paint/paint_look.h"

#include "grid/paint/paper.h"

namespace kestrelon::grid_paint {

GridLineSet grid_lines(int lines) {
  return {lines == 1 || lines == 2, lines == 1 || lines == 3};
}

PaintLook high_contrast(PaintLook look, const SystemColors& system) {
  GridColors& colors = look.colors;
  colors.back = colors.background = colors.even_rows = system.window;
  colors.fore = system.window_text;
  colors.fore_disabled = system.gray_text;
  colors.selected1 = colors.selected2 = system.highlight;
  colors.fore_selected = system.highlight_text;
  colors.header1 = colors.header2 = colors.caption1 = colors.caption2 = system.face;
  colors.fore_header = system.face_text;
  colors.fore_header_over = system.highlight_text;
  colors.header_over = colors.header_down = system.highlight;
  colors.header_shine = system.face;
  colors.header_accent = {system.hot, system.hot, system.hot};
  colors.sort_arrow = system.face_text;
  colors.grid = colors.border = system.window_text;
  colors.focus = system.hot;
  colors.check_back = system.window;
  colors.check_frame = colors.check_tick = system.window_text;
  colors.progress1 = colors.progress2 = system.highlight;
  colors.progress_border = system.window_text;
  look.high_contrast = true;
  look.keep_text_color = false;
  look.alpha_blend_selection = false;
  return look;
}

ColorRef header_divider(const GridColors& colors) {
  return darkened(mix_colors(colors.header1, colors.header2, 128), 40);
}

}  // namespace kestrelon::grid_paint
