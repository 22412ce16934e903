// Check boxes and push buttons: the system's where it has them in the size wanted, else our own.
#pragma once

#include <windows.h>

#include <uxtheme.h>

#include "frame/surface.h"
#include "grid/paint/faces.h"

namespace kestrelon::grid_paint {

/// Lives for one paint; the theme is opened when the first mark is drawn. Without themes a check
/// box is that of DrawFrameControl and a button looks like a heading. Under high contrast, and
/// where the theme's picture is too small for the screen, marks are drawn in the grid's colors.
class MarkPainter {
 public:
  MarkPainter(Surface& surface, const PaintLook& look, const Scale& scale)
      : surface_(surface), look_(look), scale_(scale) {}
  MarkPainter(const MarkPainter&) = delete;
  ~MarkPainter();

  void check_box(const PixelRect& area, const PixelRect& clip, bool checked);
  void push_button(const PixelRect& area, const PixelRect& clip, bool pressed);

 private:
  HTHEME theme();
  bool check_fills(const PixelRect& area);
  void draw_themed(int part, int state, const PixelRect& area, const PixelRect& clip);
  void draw_classic_check(const PixelRect& area, const PixelRect& clip, bool checked);

  Surface& surface_;
  const PaintLook& look_;
  const Scale& scale_;
  HTHEME theme_ = nullptr;
  bool tried_ = false;
};

}  // namespace kestrelon::grid_paint
