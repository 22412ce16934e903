// Everything that tells how a grid is drawn and not what it shows. Colours are translated.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "frame/kit/pixel_view.h"
#include "grid/layout/cell_rects.h"

namespace kestrelon::grid_paint {

using grid_layout::FocusMode;

enum class FocusStyle { kLight = 0, kHeavy = 1, kMedium = 2 };
enum class HighlightStyle { kSolid = 0, kVerticalGradient = 1, kHorizontalGradient = 2 };

/// `GRID_LINES`.
struct GridLineSet {
  bool vertical = true;
  bool horizontal = true;
};
GridLineSet grid_lines(int lines);

struct GridColors {
  ColorRef back = 0xFFFFFF, background = 0xFFFFFF, even_rows = 0xF9F9F9;
  ColorRef selected1 = 0xFDF4E2, selected2 = 0xFDF4E2;
  ColorRef fore = 0, fore_selected = 0x80, fore_disabled = 0x99A8AC;
  ColorRef fore_header = 0x917069, fore_header_over = 0x917069;
  ColorRef header1 = 0xFDF7F2, header2 = 0xF9F3EF;
  ColorRef caption1 = 0xFDF7F2, caption2 = 0xF9F3EF;
  ColorRef header_shine = 0xFFFFFF;  ///< the light lines of a heading
  ColorRef header_over = 0xF3F8FA, header_down = 0xD8E9EC;
  std::array<ColorRef, 3> header_accent = {0x19B1F9, 0x47C2FC, 0xA9F8};  ///< from the bottom up
  ColorRef sort_arrow = 0x696969;
  ColorRef grid = 0xF7EADF, border = 0xDBC9BA, focus = 0xE7A665;
  ColorRef check_back = 0xFFFFFF, check_frame = 0x8A8A8A, check_tick = 0x303030;
  ColorRef progress1 = 0xFFFFFF, progress2 = 0xE7A665, progress_border = 0xDBC9BA;
};

struct PaintLook {
  GridColors colors;
  int theme = 2;  ///< `ENUM_THEME`
  bool even_rows = true;
  bool alpha_blend_selection = false;
  bool full_row_select = true;
  bool keep_text_color = true;
  bool row_check_boxes = false;
  bool center_row_image = true;
  bool selection_on_images = false;
  bool headers_react = true;  ///< hover and press are drawn
  bool word_wrap = false;
  bool enabled = true;
  bool right_to_left = false;  ///< reading order; nothing is mirrored
  bool high_contrast = false;
  bool caption_wraps = false;
  int caption_alignment = 5;
  int header_lines = 2;
  HighlightStyle highlight = HighlightStyle::kVerticalGradient;
  GridLineSet lines;
  FocusMode focus_mode = FocusMode::kRow;
  FocusStyle focus_style = FocusStyle::kLight;
};

/// The colours of a high contrast scheme.
struct SystemColors {
  ColorRef window = 0, window_text = 0xFFFFFF;
  ColorRef face = 0, face_text = 0xFFFFFF;
  ColorRef highlight = 0, highlight_text = 0, gray_text = 0, hot = 0;
};

/// The same grid in the system's colours; cells lose theirs, marks stay visible.
PaintLook high_contrast(PaintLook look, const SystemColors& system);

/// The colour that divides headings.
ColorRef header_divider(const GridColors& colors);

}  // namespace kestrelon::grid_paint
