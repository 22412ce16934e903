// The whole grid, or any part of it, on a surface.
#pragma once

#include "grid/layout/damage.h"
#include "grid/paint/header_painter_win.h"
#include "grid/paint/row_painter_win.h"

namespace kestrelon::grid_paint {

/// Draws everything, the frame included.
void DrawGrid(Surface& surface, const GridScene& scene, ColorRef border);

/// Draws what lies within `area` and nothing else: a heading, a row or a cell, when that is its
/// place.
void draw_area(Surface& surface, const GridScene& scene, const PixelRect& area);

/// Moves and draws what has changed; the surface must show the look that `damage` starts from.
void draw_damage(Surface& surface, const GridScene& scene, const grid_layout::Damage& damage);

}  // namespace kestrelon::grid_paint
