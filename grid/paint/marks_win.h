// Check boxes and push buttons as the system draws them.
#pragma once

#include <windows.h>

#include <uxtheme.h>

#include "frame/kit/pixel_view.h"

namespace kestrelon::grid_paint {

/// Opened once a paint, when the first mark is drawn. Without themes, and where they are not
/// wanted, the marks are those of DrawFrameControl in the system's colours.
class SystemMarks {
 public:
  SystemMarks(HDC dc, bool themed) : dc_(dc), themed_(themed) {}
  SystemMarks(const SystemMarks&) = delete;
  ~SystemMarks();

  void check_box(const PixelRect& area, const PixelRect& clip, bool checked, bool enabled);
  void push_button(const PixelRect& area, const PixelRect& clip, bool pressed, bool enabled);

 private:
  void draw(int part, int state, UINT frame_state, const PixelRect& area, const PixelRect& clip);

  HDC dc_;
  bool themed_;
  bool tried_ = false;
  HTHEME theme_ = nullptr;
};

}  // namespace kestrelon::grid_paint
