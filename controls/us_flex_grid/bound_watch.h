// Listens to a foreign window that edits a cell: to the keys that end the edit, before any
// container's message loop has a use for them, and to the focus that leaves. The window itself is
// not touched.
#pragma once

#include <windows.h>

namespace kestrelon {

class BoundEditorOwner;

class BoundWatch {
 public:
  /// One window has one watch; a second start replaces the first.
  static void start(HWND grid, HWND window, BoundEditorOwner& owner);
  static void stop(HWND window);
};

}  // namespace kestrelon
