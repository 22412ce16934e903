#include "grid/paint/marks_win.h"

#include <vssym32.h>

#include "grid/paint/text_win.h"

namespace kestrelon::grid_paint {

MarkPainter::~MarkPainter() {
  if (theme_ != nullptr) CloseThemeData(theme_);
}

void MarkPainter::check_box(const PixelRect& area, const PixelRect& clip, bool checked) {
  const PixelRect seen = intersect(area, clip);
  if (seen.empty()) return;
  const int state = (checked ? CBS_CHECKEDNORMAL : CBS_UNCHECKEDNORMAL) + (look_.enabled ? 0 : 3);
  if (look_.high_contrast || (theme() != nullptr && !check_fills(area)))
    draw_check_box(Paper(surface_.pixels(), seen), area, checked, look_, scale_);
  else if (theme() != nullptr)
    draw_themed(BP_CHECKBOX, state, area, seen);
  else
    draw_classic_check(area, seen, checked);
}

void MarkPainter::push_button(const PixelRect& area, const PixelRect& clip, bool pressed) {
  const PixelRect seen = intersect(area, clip);
  if (seen.empty()) return;
  const int state = !look_.enabled ? PBS_DISABLED : pressed ? PBS_PRESSED : PBS_NORMAL;
  if (theme() != nullptr)
    draw_themed(BP_PUSHBUTTON, state, area, seen);
  else
    draw_button(Paper(surface_.pixels(), seen), area, pressed, look_, scale_);
}

HTHEME MarkPainter::theme() {
  if (!tried_ && !look_.high_contrast) theme_ = OpenThemeData(nullptr, L"Button");
  tried_ = true;
  return theme_;
}

// A theme centres a picture that it has in one size only.
bool MarkPainter::check_fills(const PixelRect& area) {
  SIZE size = {};
  if (FAILED(GetThemePartSize(theme_, surface_.dc(), BP_CHECKBOX, CBS_CHECKEDNORMAL, nullptr,
                              TS_TRUE, &size)))
    return true;
  return size.cx * 10 >= (area.right - area.left) * 9;
}

void MarkPainter::draw_themed(int part, int state, const PixelRect& area, const PixelRect& clip) {
  const RECT rect = to_rect(area);
  const RECT bounds = to_rect(clip);
  DrawThemeBackground(theme_, surface_.dc(), part, state, &rect, &bounds);
}

void MarkPainter::draw_classic_check(const PixelRect& area, const PixelRect& clip, bool checked) {
  RECT rect = to_rect(area);
  const int saved = SaveDC(surface_.dc());
  IntersectClipRect(surface_.dc(), clip.left, clip.top, clip.right, clip.bottom);
  DrawFrameControl(surface_.dc(), &rect, DFC_BUTTON,
                   static_cast<UINT>(DFCS_BUTTONCHECK) | (checked ? DFCS_CHECKED : 0) |
                       (look_.enabled ? 0 : DFCS_INACTIVE));
  RestoreDC(surface_.dc(), saved);
}

}  // namespace kestrelon::grid_paint
