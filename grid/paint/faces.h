// The faces of a grid's parts, without texts: functions of place, state and look.
#pragma once

#include "grid/paint/paint_look.h"
#include "grid/paint/paper.h"

namespace kestrelon::grid_paint {

using grid_layout::Scale;

enum class HeaderState { kNormal = 1, kOver = 2, kDown = 3, kDisabled = 4 };
enum class FaceKind { kHeading, kCaption };

/// One heading; also the total line and, where the system has none to give, a button's face.
void DrawHeaderCell(const Paper& paper, const PixelRect& cell, HeaderState state,
                    const PaintLook& look, const Scale& scale, FaceKind kind = FaceKind::kHeading);

/// The line between two headings, over the pixels that the vertical grid lines below go on in.
void draw_header_divider(const Paper& paper, const PixelRect& cell, int line_width,
                         const PaintLook& look, const Scale& scale);

/// A triangle of lines that fills the rectangle, its tip at the top when `up`.
void DrawSortArrow(const Paper& paper, const PixelRect& area, bool up, ColorRef color);

/// A frame filled up to `value` per cent; a value below 0 or no number at all draws nothing. Under
/// high contrast the bar is low, so that no text stands on it.
void draw_progress(const Paper& paper, const PixelRect& area, double value, const PaintLook& look,
                   const Scale& scale);

/// A check box that is sharp at any size.
void draw_check_box(const Paper& paper, const PixelRect& area, bool checked, const PaintLook& look,
                    const Scale& scale);

/// A button as the headings look.
void draw_button(const Paper& paper, const PixelRect& area, bool pressed, const PaintLook& look,
                 const Scale& scale);

/// The highlight of a selected row, unless selections are mixed into the cells.
void draw_highlight(const Paper& paper, const PixelRect& area, const PaintLook& look);

/// The mark of the current row or cell.
void draw_focus(const Paper& paper, const PixelRect& area, const PaintLook& look,
                const Scale& scale);

}  // namespace kestrelon::grid_paint
