#include "grid/paint/marks_win.h"

#include <vssym32.h>

#include "grid/paint/text_win.h"

namespace kestrelon::grid_paint {

SystemMarks::~SystemMarks() {
  if (theme_ != nullptr) CloseThemeData(theme_);
}

void SystemMarks::check_box(const PixelRect& area, const PixelRect& clip, bool checked,
                            bool enabled) {
  const int state = (checked ? CBS_CHECKEDNORMAL : CBS_UNCHECKEDNORMAL) + (enabled ? 0 : 3);
  draw(BP_CHECKBOX, state,
       DFCS_BUTTONCHECK | (checked ? DFCS_CHECKED : 0) | (enabled ? 0 : DFCS_INACTIVE), area, clip);
}

void SystemMarks::push_button(const PixelRect& area, const PixelRect& clip, bool pressed,
                              bool enabled) {
  const int state = !enabled ? PBS_DISABLED : pressed ? PBS_PRESSED : PBS_NORMAL;
  draw(BP_PUSHBUTTON, state,
       DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0) | (enabled ? 0 : DFCS_INACTIVE), area, clip);
}

void SystemMarks::draw(int part, int state, UINT frame_state, const PixelRect& area,
                       const PixelRect& clip) {
  if (area.empty() || intersect(area, clip).empty()) return;
  if (!tried_ && themed_) theme_ = OpenThemeData(nullptr, L"Button");
  tried_ = true;
  RECT rect = to_rect(area);
  const RECT bounds = to_rect(clip);
  if (theme_ != nullptr) {
    DrawThemeBackground(theme_, dc_, part, state, &rect, &bounds);
    return;
  }
  const int saved = SaveDC(dc_);
  IntersectClipRect(dc_, bounds.left, bounds.top, bounds.right, bounds.bottom);
  DrawFrameControl(dc_, &rect, DFC_BUTTON, frame_state);
  RestoreDC(dc_, saved);
}

}  // namespace kestrelon::grid_paint
